#include "sim/modbus_server.h"

#include "sim/link_faults.h"
#include "sim/modbus_codec.h"
#include "sim/sim_clock.h"

#include <QPointer>
#include <QTcpSocket>

namespace kal::sim {

ModbusServer::ModbusServer(int furnace, WordSpace &space, LinkControl &link, SimClock &clock, FrameLog &log,
                           QObject *parent)
    : QObject(parent), furnace_(furnace), space_(space), link_(link), clock_(clock), log_(log)
{
    connect(&server_, &QTcpServer::newConnection, this, &ModbusServer::accept);
    connect(&link_, &LinkControl::downChanged, this, &ModbusServer::setDown);
}

ModbusServer::~ModbusServer()
{
    // The connections are children of the TCP server and go with it; they must
    // not call back into this half-destroyed object on their way out.
    const auto sockets = buffers_.keys();
    for (QTcpSocket *s : sockets)
        s->disconnect(this);
    buffers_.clear();
}

bool ModbusServer::listen(const QHostAddress &address, quint16 port, QString *error)
{
    address_ = address;
    if (!server_.listen(address, port)) {
        if (error)
            *error = QStringLiteral("Modbus %1:%2: %3").arg(address.toString()).arg(port).arg(server_.errorString());
        return false;
    }
    port_ = server_.serverPort();
    if (link_.down())
        server_.close();
    return true;
}

void ModbusServer::setDown(bool down)
{
    if (port_ == 0)
        return; // not started
    if (down) {
        server_.close();
        const auto sockets = buffers_.keys();
        for (QTcpSocket *s : sockets)
            s->abort();
    } else if (!server_.isListening()) {
        server_.listen(address_, port_);
    }
}

void ModbusServer::accept()
{
    while (QTcpSocket *s = server_.nextPendingConnection()) {
        if (link_.down()) {
            s->abort();
            s->deleteLater();
            continue;
        }
        buffers_.insert(s, {});
        connect(s, &QTcpSocket::readyRead, this, [this, s] { receive(s); });
        connect(s, &QTcpSocket::disconnected, this, [this, s] {
            buffers_.remove(s);
            s->deleteLater();
        });
    }
}

FrameRecord ModbusServer::record(QTcpSocket *s, const QByteArray &bytes) const
{
    FrameRecord rec;
    rec.ms = clock_.ms();
    rec.server = Server::Modbus;
    rec.furnace = furnace_;
    rec.peer = QStringLiteral("%1:%2").arg(s->peerAddress().toString()).arg(s->peerPort());
    rec.bytes = bytes;
    return rec;
}

void ModbusServer::receive(QTcpSocket *s)
{
    auto it = buffers_.find(s);
    if (it == buffers_.end())
        return;
    it->append(s->readAll());
    QByteArray frame;
    for (;;) {
        const StreamTake t = takeModbusFrame(*it, frame);
        if (t == StreamTake::NeedMore)
            return;
        if (t == StreamTake::Garbage) {
            FrameRecord rec = record(s, *it);
            rec.verdict = QStringLiteral("no Modbus frame (length field), connection closed");
            log_.add(rec);
            buffers_.erase(it);
            s->abort();
            return;
        }
        handle(s, frame);
        it = buffers_.find(s);
        if (it == buffers_.end())
            return;
    }
}

void ModbusServer::handle(QTcpSocket *s, const QByteArray &frame)
{
    FrameRecord rec = record(s, frame);
    ModbusRequest req = parseModbusRequest(frame);
    const AnswerFault fault = req.ignore.isEmpty() ? link_.faults.take() : AnswerFault::None;
    QByteArray answer;
    if (fault == AnswerFault::Exception) {
        // The PLC fails: it answers with an exception and does nothing else.
        answer = modbusException(req, link_.faults.exceptionCode);
        rec.wellFormed = req.exception == 0;
        rec.verdict = QStringLiteral("function %1, %2 words @ %3, answered with exception %4 (fault)")
                          .arg(req.function)
                          .arg(req.count)
                          .arg(req.address)
                          .arg(link_.faults.exceptionCode);
    } else {
        answer = modbusAnswer(req, space_, serverName(Server::Modbus), rec.verdict, rec.wellFormed);
        answer = link_.faults.spoil(fault, answer);
        if (fault == AnswerFault::Short || fault == AnswerFault::Oversize)
            rec.verdict += QStringLiteral(", answered with %1 bytes").arg(answer.size());
    }
    log_.add(rec);
    if (answer.isEmpty())
        return;
    QPointer<QTcpSocket> to(s);
    clock_.defer(link_.faults.delayMs, [to, answer] {
        if (to && to->state() == QAbstractSocket::ConnectedState)
            to->write(answer);
    });
}

} // namespace kal::sim
