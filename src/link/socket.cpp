#include "link/socket.h"

namespace kal {

SocketArray Winsock1;

namespace {
// A fresh plant has no sockets: each test installs its own.
StateReset reset{[] { Winsock1.clear(); }};
} // namespace

Socket &SocketArray::operator[](int i)
{
    if (i < 0 || i >= KANAL_MAX)
        raiseBounds("Winsock1", i);
    if (!slots_[i]) {
        if (!Fabrik)
            throw RunError(ERR_NO_OBJECT, "Winsock1: channel " + std::to_string(i) + " has no socket");
        setSocket(i, Fabrik(i));
        if (!slots_[i])
            throw RunError(ERR_NO_OBJECT, "Winsock1: no socket made for channel " + std::to_string(i));
    }
    return *slots_[i];
}

void SocketArray::setSocket(int i, std::unique_ptr<Socket> s)
{
    if (i < 0 || i >= KANAL_MAX)
        raiseBounds("Winsock1", i);
    if (s) {
        s->DataArrival = [this, i](int bytesTotal) {
            if (DataArrival)
                DataArrival(i, bytesTotal);
        };
    }
    slots_[i] = std::move(s);
}

Socket *SocketArray::get(int i) const
{
    if (i < 0 || i >= KANAL_MAX)
        return nullptr;
    return slots_[i].get();
}

void SocketArray::clear()
{
    for (auto &s : slots_)
        s.reset();
    DataArrival = nullptr;
    Fabrik = nullptr;
}

} // namespace kal
