#include "sim/udp_server.h"

#include "sim/link_faults.h"
#include "sim/memory_link_codec.h"
#include "sim/sim_clock.h"
#include "sim/word_space.h"

#include <QNetworkDatagram>
#include <QPointer>

namespace kal::sim {

MemoryLinkServer::MemoryLinkServer(Server kind, int furnace, WordSpace &space, LinkControl &link, SimClock &clock,
                                   FrameLog &log, QObject *parent)
    : QObject(parent), kind_(kind), furnace_(furnace), space_(space), link_(link), clock_(clock), log_(log)
{
    connect(&socket_, &QUdpSocket::readyRead, this, &MemoryLinkServer::readPending);
}

bool MemoryLinkServer::listen(const QHostAddress &address, quint16 port, QString *error)
{
    if (socket_.bind(address, port))
        return true;
    if (error)
        *error = QStringLiteral("UDP %1:%2: %3").arg(address.toString()).arg(port).arg(socket_.errorString());
    return false;
}

void MemoryLinkServer::readPending()
{
    while (socket_.hasPendingDatagrams())
        handle(socket_.receiveDatagram());
}

void MemoryLinkServer::handle(const QNetworkDatagram &d)
{
    FrameRecord rec;
    rec.ms = clock_.ms();
    rec.server = kind_;
    rec.furnace = furnace_;
    rec.peer = QStringLiteral("%1:%2").arg(d.senderAddress().toString()).arg(d.senderPort());
    rec.bytes = d.data();

    const MemoryLinkRequest req = parseMemoryLinkRequest(rec.bytes);
    if (!req.ok) {
        rec.verdict = req.error;
        log_.add(rec);
        return;
    }
    rec.verdict = QStringLiteral("%1 %2 @ %3")
                      .arg(req.command == 'R' ? QStringLiteral("read") : QStringLiteral("write"))
                      .arg(req.count)
                      .arg(req.address);
    if (link_.down()) {
        // The panel is unreachable: the frame is seen here but never reaches its memory.
        rec.wellFormed = true;
        rec.verdict += QStringLiteral(", link down: not answered");
        log_.add(rec);
        return;
    }

    QByteArray answer;
    if (req.command == 'R') {
        QVector<int16_t> words;
        if (!space_.read(req.address, req.count, words)) {
            rec.verdict += QStringLiteral(": outside the memory, not answered");
            log_.add(rec);
            return;
        }
        answer = memoryLinkAnswer('R', words);
    } else {
        if (!space_.write(req.address, req.words, serverName(kind_))) {
            rec.verdict += QStringLiteral(": outside the memory, not answered");
            log_.add(rec);
            return;
        }
        answer = memoryLinkAnswer('W', {});
    }
    rec.wellFormed = true;
    const AnswerFault fault = link_.faults.take();
    answer = link_.faults.spoil(fault, answer);
    if (fault == AnswerFault::Short || fault == AnswerFault::Oversize)
        rec.verdict += QStringLiteral(", answered with %1 bytes").arg(answer.size());
    log_.add(rec);

    QPointer<MemoryLinkServer> self(this);
    const QHostAddress to = d.senderAddress();
    const quint16 port = d.senderPort();
    clock_.defer(link_.faults.delayMs, [self, answer, to, port] {
        if (self)
            self->socket_.writeDatagram(answer, to, port);
    });
}

} // namespace kal::sim
