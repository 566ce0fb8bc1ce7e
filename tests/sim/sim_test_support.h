#pragma once
// Shared helpers of the simulator tests: an event loop to pump, plants on
// loopback with free ports, and raw clients that speak to them.

#include "sim/plant.h"

#include <QByteArray>
#include <QHostAddress>
#include <QTcpSocket>
#include <QUdpSocket>
#include <functional>
#include <memory>

namespace simtest {

using namespace kal::sim;

/// The plant clock of every test starts here: 1 March 2024, 07:05:00.
QDateTime testStart();

/// Processes events until `done` holds; false when it doesn't within a
/// generous limit (a guard against a hang, not a timing condition).
bool pumpUntil(const std::function<bool()> &done, int limitMs = 10000);
/// Processes the events that are waiting now (several passes, so that a
/// datagram sent on loopback has been delivered and handled).
void pumpPending();

/// Bytes from "42 00 1B ..." notation.
QByteArray hex(const char *text);

/// A furnace description with the fields the tests need.
FurnaceDescription furnaceDesc(int number, Protocol p, bool headed, int base = 0);

/// Builds and starts a plant on free ports (furnaces on 127.0.0.11 + index,
/// the panel server, when given, on 127.0.0.30).
std::unique_ptr<SimPlant> startPlant(PlantDescription d);

/// A raw memory link client: sends one datagram, waits for one answer.
class UdpClient {
public:
    UdpClient();
    void send(const QByteArray &frame, const QString &host, quint16 port);
    /// The next datagram received; empty when none comes.
    QByteArray receive();
    /// Send, then receive.
    QByteArray ask(const QByteArray &frame, const QString &host, quint16 port);
    bool pending() { return socket.hasPendingDatagrams(); }
    QUdpSocket socket;
};

/// A raw Modbus/TCP client.
class TcpClient {
public:
    bool connectTo(const QString &host, quint16 port);
    /// Bytes until at least `n` have come (or the guard ran out).
    QByteArray receive(int n);
    QByteArray ask(const QByteArray &frame, int answerLength);
    QTcpSocket socket;
    QByteArray got;
};

/// Memory link read and write requests as the station sends them.
QByteArray readFrame(int address, int count);
QByteArray writeFrame(int address, const QVector<int16_t> &words);
/// The words of a memory link answer (behind the 10-byte header).
QVector<int16_t> answerWords(const QByteArray &answer);

} // namespace simtest
