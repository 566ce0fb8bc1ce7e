// The Qt channel sockets on real loopback sockets:
// memory-link reads against a UDP panel responder written here, Modbus reads
// and writes against an independent Modbus server (python3-pymodbus).

#include "core/conversions.h"
#include "link/frames.h"
#include "link/qt_socket.h"
#include "link/scripted_socket.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QNetworkDatagram>
#include <QProcess>
#include <QTcpServer>
#include <QTimer>
#include <QUdpSocket>
#include <gtest/gtest.h>

using namespace kal;

namespace {

/// Runs the event loop until `done` holds or a generous limit runs out; the
/// limit only keeps a broken peer from hanging the run, it asserts no timing.
bool waitUntil(const std::function<bool()> &done, int limitMs = 20000)
{
    QElapsedTimer t;
    t.start();
    QEventLoop loop;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
        if (done() || t.elapsed() >= limitMs)
            loop.quit();
    });
    poll.start(5);
    if (!done())
        loop.exec();
    return done();
}

struct Arrival {
    int index;
    int bytesTotal;
    QByteArray data;
};

uint16_t wordAt(const QByteArray &b, int pos)
{
    return static_cast<uint16_t>((static_cast<uint8_t>(b[pos]) << 8) | static_cast<uint8_t>(b[pos + 1]));
}

class SocketTest : public ::testing::Test {
protected:
    QList<Arrival> arrivals;

    void SetUp() override
    {
        if (!QCoreApplication::instance()) {
            static int argc = 1;
            static char name[] = "link_tests";
            static char *argv[] = {name, nullptr};
            new QCoreApplication(argc, argv); // kept to the end of the process
        }
        resetPlant();
        Winsock1.clear();
        Winsock1_Qt();
        // The handler fetches the notified bytes, the first one on its own.
        Winsock1.DataArrival = [this](int index, int bytesTotal) {
            QByteArray data = Winsock1[index].GetData(1);
            data += Winsock1[index].GetData();
            arrivals.append({index, bytesTotal, data});
        };
    }
    void TearDown() override { Winsock1.clear(); }

    QByteArray received() const
    {
        QByteArray all;
        for (const Arrival &a : arrivals)
            all += a.data;
        return all;
    }
    Socket &channel(int i, SocketProtocol p, quint16 port)
    {
        Socket &s = Winsock1[i];
        s.Protocol = p;
        s.RemoteHost = QStringLiteral("127.0.0.1");
        s.RemotePort = port;
        s.Connect();
        return s;
    }
};

/// A panel that answers memory-link reads: a 10-byte header, then the words
/// high byte first. Word a holds 3a - 500.
class PanelResponder {
public:
    QUdpSocket sock;
    QList<QByteArray> requests;
    static i16 word(int a) { return static_cast<i16>(3 * a - 500); }

    PanelResponder()
    {
        sock.bind(QHostAddress::LocalHost, 0);
        QObject::connect(&sock, &QUdpSocket::readyRead, &sock, [this] {
            while (sock.hasPendingDatagrams()) {
                const QNetworkDatagram d = sock.receiveDatagram();
                const QByteArray q = d.data();
                requests.append(q);
                if (q.size() != 14 || q[8] != 0x1B || q[9] != 'R')
                    continue;
                QByteArray answer("B\x00\x00\x00\x00\x00\x00\x00\x1BR", 10);
                for (int i = 0; i < wordAt(q, 12); ++i)
                    answer += MKI_BE(word(wordAt(q, 10) + i));
                sock.writeDatagram(answer, d.senderAddress(), static_cast<quint16>(d.senderPort()));
            }
        });
    }
};

TEST_F(SocketTest, MemoryLinkReadOneDatagramPerArrival)
{
    PanelResponder panel;
    plant.Ofen_UDP[0] = TRUE16;
    Socket &s = channel(0, SocketProtocol::UDP, panel.sock.localPort());
    EXPECT_EQ(s.State(), SCK_CONNECTED); // at once, without an answer

    i16 a = 100, b = 7;
    FETCH_UDP(0, a, 100);
    FETCH_UDP(0, b, 3);
    ASSERT_TRUE(waitUntil([&] { return arrivals.size() >= 2; }));
    EXPECT_EQ(panel.requests.value(0), Rahmen_Lesen_UDP(100, 100));

    const int starts[] = {100, 7};
    const int counts[] = {100, 3};
    for (int k = 0; k < 2; ++k) {
        const Arrival &r = arrivals[k];
        EXPECT_EQ(r.index, 0);
        EXPECT_EQ(r.bytesTotal, 10 + 2 * counts[k]);
        ASSERT_EQ(r.data.size(), r.bytesTotal);
        for (int i = 0; i < counts[k]; ++i)
            EXPECT_EQ(static_cast<i16>(wordAt(r.data, 10 + 2 * i)), PanelResponder::word(starts[k] + i));
    }

    s.Close();
    EXPECT_EQ(s.State(), SCK_CLOSED);
    EXPECT_NO_THROW(s.SendData(Rahmen_Lesen_UDP(0, 1)));
}

TEST_F(SocketTest, TcpToAPortWithoutServerFallsBackToClosed)
{
    QTcpServer probe;
    ASSERT_TRUE(probe.listen(QHostAddress::LocalHost, 0));
    const quint16 port = probe.serverPort();
    probe.close();

    Socket &s = channel(1, SocketProtocol::TCP, port);
    EXPECT_NE(s.State(), SCK_CONNECTED);
    ASSERT_TRUE(waitUntil([&] { return s.State() == SCK_CLOSED; }));
    // A send on the dead channel is dropped; a read noted on it stays open.
    EXPECT_EQ(FETCH_IP(1, 0, 100), 0);
    EXPECT_EQ(plant.IP_Adr[1], 0);
    EXPECT_TRUE(arrivals.isEmpty());
}

/// The Modbus server process; killed when the test ends, whatever happened.
struct ModbusPeer {
    QProcess proc;
    ~ModbusPeer()
    {
        if (proc.state() != QProcess::NotRunning) {
            proc.kill();
            proc.waitForFinished(10000);
        }
    }
};

TEST_F(SocketTest, ModbusReadAndWriteAgainstPymodbus)
{
    ModbusPeer peer;
    peer.proc.start(QStringLiteral("/usr/bin/python3"),
                    {QStringLiteral(KALMERON_TEST_DIR "/modbus_server.py")});
    ASSERT_TRUE(peer.proc.waitForStarted(20000)) << "cannot run /usr/bin/python3";
    QByteArray out;
    waitUntil([&] {
        out += peer.proc.readAllStandardOutput();
        return out.contains('\n') || peer.proc.state() == QProcess::NotRunning;
    });
    ASSERT_TRUE(out.startsWith("READY ")) << "Modbus server (python3-pymodbus) did not start: "
                                          << out.constData() << peer.proc.readAllStandardError().constData();
    const quint16 port = static_cast<quint16>(out.mid(6).trimmed().toUInt());

    Socket &s = channel(0, SocketProtocol::TCP, port);
    ASSERT_TRUE(waitUntil([&] { return s.State() == SCK_CONNECTED; }));

    // Read: register a holds a * 0x0101, so 388.. are negative words.
    FETCH_IP(0, 388, 100);
    ASSERT_TRUE(waitUntil([&] { return received().size() >= 209; }));
    QByteArray answer = received();
    EXPECT_EQ(answer.size(), 209);
    EXPECT_EQ(answer.left(9), QByteArray::fromHex("00 00 00 00 00 CB 01 03 C8"));
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(wordAt(answer, 9 + 2 * i), ((388 + i) * 0x0101) & 0xFFFF) << "register " << 388 + i;

    // Write three words of the image, then read them back with their neighbours.
    arrivals.clear();
    plant.SPS_Wort(0, 10) = 1234;
    plant.SPS_Wort(0, 11) = -200;
    plant.SPS_Wort(0, 12) = 32767;
    SEND_IP(0, 10, 3);
    ASSERT_TRUE(waitUntil([&] { return received().size() >= 12; }));
    EXPECT_EQ(received(), QByteArray::fromHex("00 00 00 00 00 06 01 10 00 0A 00 03"));

    arrivals.clear();
    FETCH_IP(0, 9, 5);
    ASSERT_TRUE(waitUntil([&] { return received().size() >= 19; }));
    answer = received();
    const uint16_t expected[] = {9 * 0x0101, 1234, 0xFF38, 0x7FFF, 13 * 0x0101};
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(wordAt(answer, 9 + 2 * i), expected[i]) << "register " << 9 + i;

    // The server goes away: the channel no longer reports connected.
    peer.proc.kill();
    peer.proc.waitForFinished(10000);
    EXPECT_TRUE(waitUntil([&] { return s.State() != SCK_CONNECTED; }));
}

} // namespace
