#pragma once
// The channel socket of the station on Qt's QTcpSocket and QUdpSocket.
//
// TCP: Connect starts the connection (State 6), the event loop brings it to 7,
// and a lost or refused connection shows as 0. Each readyRead notifies
// DataArrival with all bytes buffered so far.
//
// UDP: Connect binds a local port on every interface and the channel is then
// connected (State 7) at once: the memory link has no connection, and the
// main cycle treats both kinds alike. Frames go to RemoteHost:RemotePort as
// datagrams; answers from the panel arrive on the bound port, one DataArrival
// per datagram, and GetData returns that datagram.

#include "link/socket.h"

#include <QByteArray>
#include <memory>

class QTcpSocket;
class QUdpSocket;

namespace kal {

class QtSocket : public Socket {
public:
    QtSocket();
    ~QtSocket() override;

    int State() const override;
    void Connect() override;
    void Close() override;
    void SendData(const QByteArray &bytes) override;
    QByteArray GetData() override;
    QByteArray GetData(int maxLen) override;

private:
    void tcpReady();
    void udpReady();

    // The kind chosen at the last Connect; Protocol may change while closed.
    SocketProtocol offen_ = SocketProtocol::TCP;
    std::unique_ptr<QTcpSocket> tcp_;
    std::unique_ptr<QUdpSocket> udp_;
    QByteArray datagramm_; ///< the datagram being notified, until fetched
};

/// Lets Winsock1 make Qt sockets for its channels (the station at start-up).
void Winsock1_Qt();

} // namespace kal
