#pragma once
// Memory link server on UDP: takes the panel's "B" ... ESC "R"/"W" frames for
// one word space (a furnace, or the windows of a panel server) and answers to
// the sender's address and port.

#include "sim/frame_log.h"

#include <QObject>
#include <QUdpSocket>

class QNetworkDatagram;

namespace kal::sim {

class LinkControl;
class SimClock;
class WordSpace;

class MemoryLinkServer : public QObject {
    Q_OBJECT
public:
    MemoryLinkServer(Server kind, int furnace, WordSpace &space, LinkControl &link, SimClock &clock, FrameLog &log,
                     QObject *parent = nullptr);

    /// Binds to the address and port (0 = any free port); false with a reason.
    bool listen(const QHostAddress &address, quint16 port, QString *error);
    quint16 port() const { return socket_.localPort(); }

private:
    void readPending();
    void handle(const QNetworkDatagram &d);

    Server kind_;
    int furnace_;
    WordSpace &space_;
    LinkControl &link_;
    SimClock &clock_;
    FrameLog &log_;
    QUdpSocket socket_;
};

} // namespace kal::sim
