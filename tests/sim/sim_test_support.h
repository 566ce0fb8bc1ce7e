#pragma once
// Shared helpers of the simulator tests: an event loop to pump, plants on
// loopback with free ports, and raw clients that speak to them.

#include "core/conversions.h"
#include "sim/plant.h"
#include "support/events.h"
#include "support/fresh.h"
#include "support/hex.h"

#include <QHostAddress>
#include <QTcpSocket>
#include <QUdpSocket>
#include <memory>

namespace simtest {

using namespace kal::sim;
using kal::test::FreshProcess;
using kal::test::hex;
using kal::test::pumpUntil;
using kal::test::testApp;

/// Processes the events that are waiting now (several passes, so that a
/// datagram sent on loopback has been delivered and handled).
inline void pumpPending()
{
    testApp();
    for (int i = 0; i < 20; ++i)
        QCoreApplication::processEvents(QEventLoop::AllEvents);
}

/// A furnace description with the fields the tests need.
inline FurnaceDescription furnaceDesc(int number, Protocol p, bool headed, int base = 0)
{
    FurnaceDescription f;
    f.index = number - 1;
    f.address = QStringLiteral("127.0.0.%1").arg(10 + number);
    f.protocol = p;
    f.headed = headed;
    f.base = base;
    f.name = QStringLiteral("Testofen %1").arg(number);
    f.serial = QStringLiteral("2401-00%1-TST").arg(number);
    f.sampleSeconds = 1;
    return f;
}

/// Builds and starts a plant on free ports (furnaces on 127.0.0.11 + index,
/// the panel server, when given, on 127.0.0.30). Its clock starts at
/// 1 March 2024, 07:05:00.
inline std::unique_ptr<SimPlant> startPlant(PlantDescription d)
{
    testApp();
    d.udpPort = 0;
    d.modbusPort = 0;
    auto plant = std::make_unique<SimPlant>(d, QDateTime(QDate(2024, 3, 1), QTime(7, 5, 0), Qt::UTC));
    QString error;
    if (!plant->start(&error))
        qFatal("plant does not start: %s", qPrintable(error));
    return plant;
}

/// A plant of these furnaces and nothing else.
inline std::unique_ptr<SimPlant> startPlant(const QVector<FurnaceDescription> &furnaces)
{
    PlantDescription d;
    d.furnaces = furnaces;
    return startPlant(d);
}

/// Writes `value` to `address` as the station does; the word as the PLC leaves it.
inline int16_t writeWord(SimFurnace *f, int address, int16_t value)
{
    EXPECT_TRUE(f->write(address, {value}, QStringLiteral("test"))) << "word " << address;
    return f->word(address);
}

/// A raw memory link client: sends one datagram, waits for one answer.
class UdpClient {
public:
    UdpClient()
    {
        testApp();
        socket.bind(QHostAddress::LocalHost, 0);
    }
    void send(const QByteArray &frame, const QString &host, quint16 port)
    {
        socket.writeDatagram(frame, QHostAddress(host), port);
    }
    /// The next datagram received; empty when none comes.
    QByteArray receive()
    {
        if (!pumpUntil([this] { return socket.hasPendingDatagrams(); }))
            return {};
        QByteArray d(int(socket.pendingDatagramSize()), '\0');
        socket.readDatagram(d.data(), d.size());
        return d;
    }
    /// Send, then receive.
    QByteArray ask(const QByteArray &frame, const QString &host, quint16 port)
    {
        send(frame, host, port);
        return receive();
    }
    bool pending() { return socket.hasPendingDatagrams(); }
    QUdpSocket socket;
};

/// A raw Modbus/TCP client.
class TcpClient {
public:
    bool connectTo(const QString &host, quint16 port)
    {
        testApp();
        // The kernel completes the handshake for a listening server; no events needed.
        socket.connectToHost(host, port);
        return socket.waitForConnected(10000);
    }
    /// Bytes until at least `n` have come (or the guard ran out).
    QByteArray receive(int n)
    {
        pumpUntil([&] {
            got.append(socket.readAll());
            return got.size() >= n || socket.state() != QAbstractSocket::ConnectedState;
        });
        got.append(socket.readAll());
        const QByteArray out = got.left(n);
        got.remove(0, out.size());
        return out;
    }
    QByteArray ask(const QByteArray &frame, int answerLength)
    {
        socket.write(frame);
        return receive(answerLength);
    }
    QTcpSocket socket;
    QByteArray got;
};

/// Memory link read and write requests as the station sends them.
inline QByteArray readFrame(int address, int count)
{
    return hex("42 00 00 00 00 00 00 06 1B 52") + kal::MKI_BE(int16_t(address)) + kal::MKI_BE(int16_t(count));
}

inline QByteArray writeFrame(int address, const QVector<int16_t> &words)
{
    const int n = int(words.size());
    QByteArray f = hex("42 00 00 00 00 00") + kal::MKI_BE(int16_t(2 * n + 6)) + hex("1B 57") +
                   kal::MKI_BE(int16_t(address)) + kal::MKI_BE(int16_t(n));
    for (int16_t w : words)
        f += kal::MKI_BE(w);
    return f;
}

/// The words of a memory link answer (behind the 10-byte header).
inline QVector<int16_t> answerWords(const QByteArray &a)
{
    QVector<int16_t> w;
    for (int i = 10; i + 1 < a.size(); i += 2)
        w.append(static_cast<int16_t>(kal::test::wordAt(a, i)));
    return w;
}

/// Furnace 1 on the memory link (plain layout) and furnace 2 on Modbus/TCP
/// (headed, identity at 500), each with a raw client; the Modbus client is
/// connected before the test begins.
class LinkTest : public FreshProcess {
protected:
    void SetUp() override
    {
        FreshProcess::SetUp();
        plant = startPlant({furnaceDesc(1, Protocol::MemoryLink, false), furnaceDesc(2, Protocol::Modbus, true, 500)});
        udp = plant->furnace(0);
        tcp = plant->furnace(1);
        ASSERT_TRUE(modbus.connectTo(tcp->description().address, tcp->modbusPort()));
    }
    void sendUdp(const QByteArray &frame) { client.send(frame, udp->description().address, udp->udpPort()); }
    QByteArray askUdp(const QByteArray &frame) { return client.ask(frame, udp->description().address, udp->udpPort()); }

    std::unique_ptr<SimPlant> plant;
    SimFurnace *udp = nullptr;
    SimFurnace *tcp = nullptr;
    UdpClient client;
    TcpClient modbus;
};

} // namespace simtest
