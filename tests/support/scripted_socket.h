#pragma once
// A channel socket driven by a test script: no network, no event loop. Used
// where the real socket cannot be driven deterministically: the tick-level
// tests of the main cycle and the receive path.
//
// The script sets the state, decides what Connect leads to, makes sends fail,
// queues answer bytes and fires DataArrival; every frame the station sent is
// kept in `sent`. Like a real channel, a send on a socket that is not
// connected is dropped without a trace.

#include "link/socket.h"

#include <array>

#include <QList>

namespace kal::test {

class ScriptedSocket : public Socket {
public:
    int state = SCK_CLOSED;            ///< what State() reports
    int stateAfterConnect = SCK_CONNECTED; ///< what Connect leads to (0 or 6: a furnace that does not answer)
    bool refuseSends = false;          ///< SendData raises RunError(ERR_SOCKET_STATE) and keeps nothing
    QList<QByteArray> sent;            ///< every frame sent, in order
    QByteArray pending;                ///< received bytes not yet fetched
    int connects = 0;                  ///< calls of Connect
    int closes = 0;                    ///< calls of Close

    int State() const override { return state; }
    void Connect() override;
    void Close() override;
    void SendData(const QByteArray &bytes) override;
    QByteArray GetData() override;
    QByteArray GetData(int maxLen) override;

    /// Queues the bytes and fires DataArrival: one datagram or segment arrives.
    void arrive(const QByteArray &bytes);
};

/// Installs a scripted socket on every channel 0..8 of Winsock1 (replacing
/// what was there) and returns them by channel.
std::array<ScriptedSocket *, KANAL_MAX> installScriptedSockets();

} // namespace kal::test
