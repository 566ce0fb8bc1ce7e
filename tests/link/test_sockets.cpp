// The Qt channel sockets on real loopback sockets:
// memory-link reads against a UDP panel responder written here, Modbus reads
// and writes against an independent Modbus server (python3-pymodbus).

#include "core/conversions.h"
#include "link/frames.h"
#include "link/qt_socket.h"
#include "support/events.h"
#include "support/fresh.h"
#include "support/hex.h"

#include <QNetworkDatagram>
#include <QProcess>
#include <QUdpSocket>

using namespace kal;
using namespace kal::test;

namespace {

class SocketTest : public FreshProcess {
protected:
    struct Arrival {
        int index;
        int bytesTotal;
        QByteArray data;
    };
    QList<Arrival> arrivals;
    QByteArray alle; ///< every byte received, in order

    void SetUp() override
    {
        testApp();
        FreshProcess::SetUp();
        Winsock1_Qt();
        // The handler fetches the notified bytes, the first one on its own.
        Winsock1.DataArrival = [this](int index, int bytesTotal) {
            QByteArray data = Winsock1[index].GetData(1);
            data += Winsock1[index].GetData();
            arrivals.append({index, bytesTotal, data});
            alle += data;
        };
    }

    /// Waits for `n` bytes and hands over what came.
    QByteArray received(int n)
    {
        pumpUntil([&] { return alle.size() >= n; });
        return std::exchange(alle, QByteArray());
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

TEST_F(SocketTest, MemoryLinkReadOneDatagramPerArrivalAgainstAPanel)
{
    // The panel answers memory-link reads with a 10-byte header and the words
    // high byte first; word a holds 3a - 500.
    auto answer = [](int start, int count) {
        QByteArray a("B\x00\x00\x00\x00\x00\x00\x00\x1BR", 10);
        for (int i = 0; i < count; ++i)
            a += MKI_BE(static_cast<i16>(3 * (start + i) - 500));
        return a;
    };
    QUdpSocket panel;
    QList<QByteArray> requests;
    panel.bind(QHostAddress::LocalHost, 0);
    QObject::connect(&panel, &QUdpSocket::readyRead, &panel, [&] {
        while (panel.hasPendingDatagrams()) {
            const QNetworkDatagram d = panel.receiveDatagram();
            requests.append(d.data());
            panel.writeDatagram(answer(wordAt(d.data(), 10), wordAt(d.data(), 12)), d.senderAddress(),
                                static_cast<quint16>(d.senderPort()));
        }
    });
    plant.Ofen_UDP[0] = TRUE16;
    Socket &s = channel(0, SocketProtocol::UDP, panel.localPort());
    EXPECT_EQ(s.State(), SCK_CONNECTED); // at once, without an answer

    i16 a = 100, b = 7;
    FETCH_UDP(0, a, 100);
    FETCH_UDP(0, b, 3);
    ASSERT_TRUE(pumpUntil([&] { return arrivals.size() >= 2; }));
    EXPECT_EQ(requests.value(0), readFrameUdp(100, 100));
    for (const auto &[k, start, count] : {std::tuple{0, 100, 100}, {1, 7, 3}}) {
        EXPECT_EQ(arrivals[k].index, 0);
        EXPECT_EQ(arrivals[k].bytesTotal, 10 + 2 * count);
        EXPECT_EQ(arrivals[k].data, answer(start, count));
    }

    s.Close();
    EXPECT_EQ(s.State(), SCK_CLOSED);
    EXPECT_NO_THROW(s.SendData(readFrameUdp(0, 1)));
}

TEST_F(SocketTest, ModbusReadAndWriteAgainstPymodbus)
{
    QProcess peer;
    peer.start(QStringLiteral("/usr/bin/python3"), {QStringLiteral(KALMERON_TEST_DIR "/modbus_server.py")});
    QByteArray out;
    while (!out.contains('\n') && peer.waitForReadyRead(20000))
        out += peer.readAllStandardOutput();
    ASSERT_TRUE(out.startsWith("READY ")) << "Modbus server (python3-pymodbus) did not start: "
                                          << out.constData() << peer.readAllStandardError().constData();
    Socket &s = channel(0, SocketProtocol::TCP, static_cast<quint16>(out.mid(6).trimmed().toUInt()));
    ASSERT_TRUE(pumpUntil([&] { return s.State() == SCK_CONNECTED; }));

    // Read: register a holds a * 0x0101, so 388.. are negative words.
    FETCH_IP(0, 388, 100);
    QByteArray expected = hex("00 00 00 00 00 CB 01 03 C8");
    for (int i = 0; i < 100; ++i)
        expected += MKI_BE(static_cast<i16>((388 + i) * 0x0101));
    EXPECT_EQ(received(209), expected);

    // Write three words of the image, then read them back with their neighbours.
    plant.SPS_Wort(0, 10) = 1234;
    plant.SPS_Wort(0, 11) = -200;
    plant.SPS_Wort(0, 12) = 32767;
    SEND_IP(0, 10, 3);
    EXPECT_EQ(received(12), hex("00 00 00 00 00 06 01 10 00 0A 00 03"));
    FETCH_IP(0, 9, 5);
    EXPECT_EQ(received(19), hex("00 00 00 00 00 0D 01 03 0A 09 09 04 D2 FF 38 7F FF 0D 0D"));

    // The server goes away: the channel no longer reports connected.
    peer.kill();
    peer.waitForFinished(10000);
    EXPECT_TRUE(pumpUntil([&] { return s.State() != SCK_CONNECTED; }));
}

} // namespace
