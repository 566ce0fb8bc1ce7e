#pragma once
// Modbus/TCP server of one simulated PLC. A TCP stream may carry a frame in
// pieces or several frames at once; each complete frame is answered in turn.
// While the link is dropped the server doesn't listen (a connect is refused)
// and its connections are closed.

#include "sim/frame_log.h"

#include <QHash>
#include <QHostAddress>
#include <QObject>
#include <QTcpServer>

class QTcpSocket;

namespace kal::sim {

class LinkControl;
class SimClock;
class WordSpace;

class ModbusServer : public QObject {
    Q_OBJECT
public:
    ModbusServer(int furnace, WordSpace &space, LinkControl &link, SimClock &clock, FrameLog &log,
                 QObject *parent = nullptr);
    ~ModbusServer() override;

    /// Listens on the address and port (0 = any free port); false with a reason.
    bool listen(const QHostAddress &address, quint16 port, QString *error);
    quint16 port() const { return port_; }

private:
    void accept();
    void receive(QTcpSocket *s);
    void handle(QTcpSocket *s, const QByteArray &frame);
    void setDown(bool down);
    FrameRecord record(QTcpSocket *s, const QByteArray &bytes) const;

    int furnace_;
    WordSpace &space_;
    LinkControl &link_;
    SimClock &clock_;
    FrameLog &log_;
    QTcpServer server_;
    QHostAddress address_;
    quint16 port_ = 0;
    QHash<QTcpSocket *, QByteArray> buffers_;
};

} // namespace kal::sim
