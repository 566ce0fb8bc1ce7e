#include "link/qt_socket.h"

#include <QHostAddress>
#include <QNetworkDatagram>
#include <QTcpSocket>
#include <QUdpSocket>

namespace kal {

namespace {

/// State numbers of a TCP channel, by Qt's socket state.
int tcpState(QAbstractSocket::SocketState s)
{
    switch (s) {
    case QAbstractSocket::UnconnectedState: return 0;
    case QAbstractSocket::BoundState: return 1;
    case QAbstractSocket::ListeningState: return 2;
    case QAbstractSocket::HostLookupState: return 4;
    case QAbstractSocket::ConnectingState: return 6;
    case QAbstractSocket::ConnectedState: return SCK_CONNECTED;
    case QAbstractSocket::ClosingState: return 8;
    }
    return 0;
}

} // namespace

QtSocket::QtSocket() = default;

QtSocket::~QtSocket()
{
    // No notification may reach a half-destroyed channel.
    if (tcp_)
        tcp_->disconnect();
    if (udp_)
        udp_->disconnect();
}

int QtSocket::State() const
{
    if (offen_ == SocketProtocol::UDP)
        return udp_ && udp_->state() == QAbstractSocket::BoundState ? SCK_CONNECTED : SCK_CLOSED;
    return tcp_ ? tcpState(tcp_->state()) : SCK_CLOSED;
}

void QtSocket::Connect()
{
    if (State() != SCK_CLOSED)
        return;
    offen_ = Protocol;
    if (offen_ == SocketProtocol::UDP) {
        if (!udp_) {
            udp_ = std::make_unique<QUdpSocket>();
            QObject::connect(udp_.get(), &QUdpSocket::readyRead, udp_.get(), [this] { udpReady(); });
        }
        // A port of our own for the answers; the panel answers to the sender.
        udp_->bind(QHostAddress::AnyIPv4, 0);
    } else {
        if (!tcp_) {
            tcp_ = std::make_unique<QTcpSocket>();
            QObject::connect(tcp_.get(), &QTcpSocket::readyRead, tcp_.get(), [this] { tcpReady(); });
        }
        tcp_->connectToHost(RemoteHost, static_cast<quint16>(RemotePort));
    }
}

void QtSocket::Close()
{
    if (tcp_)
        tcp_->abort();
    if (udp_)
        udp_->close();
    datagramm_.clear();
}

void QtSocket::SendData(const QByteArray &bytes)
{
    if (State() != SCK_CONNECTED)
        return;
    qint64 geschrieben = -1;
    if (offen_ == SocketProtocol::UDP) {
        geschrieben = udp_->writeDatagram(bytes, QHostAddress(RemoteHost), static_cast<quint16>(RemotePort));
    } else {
        geschrieben = tcp_->write(bytes);
        if (geschrieben >= 0)
            tcp_->flush();
    }
    if (geschrieben != bytes.size())
        throw RunError(ERR_SOCKET_STATE, "send refused");
}

QByteArray QtSocket::GetData()
{
    if (offen_ == SocketProtocol::UDP) {
        QByteArray out;
        out.swap(datagramm_);
        return out;
    }
    return tcp_ ? tcp_->readAll() : QByteArray();
}

QByteArray QtSocket::GetData(int maxLen)
{
    if (maxLen <= 0)
        return {};
    if (offen_ == SocketProtocol::UDP) {
        const QByteArray out = datagramm_.left(maxLen);
        datagramm_.remove(0, out.size());
        return out;
    }
    return tcp_ ? tcp_->read(maxLen) : QByteArray();
}

void QtSocket::tcpReady()
{
    const qint64 n = tcp_->bytesAvailable();
    if (n > 0 && DataArrival)
        DataArrival(static_cast<int>(n));
}

void QtSocket::udpReady()
{
    // One notification per datagram. The handler may close or reconfigure the
    // channel; then the remaining datagrams are dropped with the socket.
    while (offen_ == SocketProtocol::UDP && udp_->state() == QAbstractSocket::BoundState &&
           udp_->hasPendingDatagrams()) {
        datagramm_ = udp_->receiveDatagram().data();
        if (!datagramm_.isEmpty() && DataArrival)
            DataArrival(static_cast<int>(datagramm_.size()));
        // Whatever the handler left of this datagram is gone, as on the wire.
        datagramm_.clear();
    }
}

void Winsock1_Qt()
{
    Winsock1.Fabrik = [](int) { return std::make_unique<QtSocket>(); };
}

} // namespace kal
