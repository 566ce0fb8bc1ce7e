#pragma once
// The channel sockets of the station: one small socket interface per channel
// and the array `Winsock1` of the nine channels 0..8 (0..7 the furnaces, 8 the
// shared panel-server channel).
//
// A socket has the properties `Protocol`, `RemoteHost` (dotted text) and
// `RemotePort`, which take effect at the next `Connect`, the state `State()`
// (0 closed, 7 connected, any other value on the way), the operations
// `Connect`, `Close`, `SendData`, `GetData`, and the notification
// `DataArrival(bytesTotal)` on the event-loop thread.
//
// The station installs Qt sockets (qt_socket.h) through the factory
// `Winsock1.Fabrik`; tests install scripted ones (scripted_socket.h). The logic
// only ever talks to this interface, so it runs without a window and without a
// network.

#include "core/plant_state.h"

#include <QByteArray>
#include <QString>
#include <array>
#include <functional>
#include <memory>

namespace kal {

/// Remote port of the panel memory link (UDP).
constexpr int Panel_Port = 1024;

/// Error a socket raises when it refuses a send ("wrong protocol or connection
/// state for the requested transaction").
constexpr int ERR_SOCKET_STATE = 40006;
/// Error raised when a channel has no socket and no factory can make one.
constexpr int ERR_NO_OBJECT = 91;

/// Socket states the station tests for.
constexpr int SCK_CLOSED = 0;
constexpr int SCK_CONNECTED = 7;

enum class SocketProtocol { TCP = 0, UDP = 1 };

class Socket {
public:
    virtual ~Socket() = default;

    // Properties; set them while the socket is closed, they apply at Connect.
    SocketProtocol Protocol = SocketProtocol::TCP;
    QString RemoteHost;  ///< dotted address, e.g. "192.168.1.20"
    int RemotePort = 0;

    /// 0 closed, 7 connected; in between: 4 resolving, 6 connecting, 8 closing.
    /// A UDP channel is 7 as soon as Connect has set it up.
    virtual int State() const = 0;
    /// Opens the channel: TCP starts connecting (State 7 comes later, through
    /// the event loop); UDP is ready at once. Does nothing when not closed.
    virtual void Connect() = 0;
    /// Closes the channel at once (State 0) and drops unread data.
    virtual void Close() = 0;
    /// Sends the bytes. Does nothing when the socket is not connected; a socket
    /// that is connected but refuses the bytes raises RunError(ERR_SOCKET_STATE).
    virtual void SendData(const QByteArray &bytes) = 0;
    /// All bytes received and not yet fetched. On UDP: the rest of the datagram
    /// being notified.
    virtual QByteArray GetData() = 0;
    /// At most maxLen of those bytes (GetData one byte at a time: maxLen 1).
    virtual QByteArray GetData(int maxLen) = 0;

    /// Received data: bytesTotal bytes can be fetched with GetData. On UDP one
    /// notification per datagram. Runs on the event-loop thread. Installing a
    /// socket in Winsock1 points this at Winsock1.DataArrival with the index.
    std::function<void(int bytesTotal)> DataArrival;
};

/// The nine channel sockets. Owns them; a slot left empty is filled through
/// `Fabrik` on first use.
struct SocketArray {
    /// Channel event: `DataArrival(Index, bytesTotal)`.
    std::function<void(int Index, int bytesTotal)> DataArrival;
    /// Makes the socket of a channel (the station: Qt sockets; tests: scripted).
    std::function<std::unique_ptr<Socket>(int Index)> Fabrik;

    /// The socket of channel i (0..8). An index outside 0..8 raises the bounds
    /// error; an empty slot without a factory raises ERR_NO_OBJECT.
    Socket &operator[](int i);
    /// Installs the socket of channel i, replacing (and destroying) the old one,
    /// and routes its DataArrival to the array's. Not from inside that socket's
    /// own DataArrival.
    void setSocket(int i, std::unique_ptr<Socket> s);
    /// The socket of channel i, or nullptr while the slot is empty.
    Socket *get(int i) const;
    /// Empties every slot and forgets the handler and the factory.
    void clear();

private:
    std::array<std::unique_ptr<Socket>, KANAL_MAX> slots_;
};

extern SocketArray Winsock1;

} // namespace kal
