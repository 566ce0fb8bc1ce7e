#include "support/scripted_socket.h"

#include <utility>

namespace kal::test {

void ScriptedSocket::Connect()
{
    ++connects;
    if (state == SCK_CLOSED)
        state = stateAfterConnect;
}

void ScriptedSocket::Close()
{
    ++closes;
    state = SCK_CLOSED;
    pending.clear();
}

void ScriptedSocket::SendData(const QByteArray &bytes)
{
    if (refuseSends)
        throw RunError(ERR_SOCKET_STATE, "send refused");
    if (state != SCK_CONNECTED)
        return;
    sent.append(bytes);
}

QByteArray ScriptedSocket::GetData()
{
    return std::exchange(pending, {});
}

QByteArray ScriptedSocket::GetData(int maxLen)
{
    const QByteArray out = pending.left(qMax(0, maxLen));
    pending.remove(0, out.size());
    return out;
}

void ScriptedSocket::arrive(const QByteArray &bytes)
{
    pending += bytes;
    if (DataArrival)
        DataArrival(static_cast<int>(pending.size()));
}

std::array<ScriptedSocket *, KANAL_MAX> installScriptedSockets()
{
    std::array<ScriptedSocket *, KANAL_MAX> out{};
    for (int i = 0; i < KANAL_MAX; ++i) {
        auto s = std::make_unique<ScriptedSocket>();
        out[i] = s.get();
        Winsock1.setSocket(i, std::move(s));
    }
    return out;
}

} // namespace kal::test
