// The Modbus/TCP server of a simulated furnace: checked with an independent
// client (Debian's pymodbus) and with the raw frames the station sends.

#include "sim_test_support.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <gtest/gtest.h>

using namespace simtest;

namespace {

using ModbusTest = LinkTest;

TEST_F(ModbusTest, IndependentClientReadsWritesAndGetsTheAddressException)
{
    tcp->setWord(1140, 4321);
    QProcess py;
    py.start(QStringLiteral("/usr/bin/python3"),
             {QStringLiteral(KALMERON_TEST_DIR "/modbus_client.py"), tcp->description().address,
              QString::number(tcp->modbusPort())});
    ASSERT_TRUE(pumpUntil([&] { return py.state() == QProcess::NotRunning; }, 60000));
    ASSERT_EQ(py.exitCode(), 0) << py.readAllStandardError().constData();
    const QJsonObject out = QJsonDocument::fromJson(py.readAllStandardOutput()).object();
    ASSERT_TRUE(out.value("connect").toBool()) << py.readAllStandardError().constData();

    QJsonArray first, last;
    for (int a = 0; a < 100; ++a) {
        first.append(uint16_t(tcp->word(a)));
        last.append(uint16_t(tcp->word(1041 + a)));
    }
    EXPECT_EQ(out.value("first").toArray(), first);
    EXPECT_EQ(out.value("last").toArray(), last);
    EXPECT_EQ(out.value("outside").toObject().value("exception").toInt(), 2);

    EXPECT_EQ(out.value("write").toObject(), QJsonObject({{"error", false}, {"address", 300}, {"count", 4}}));
    EXPECT_EQ(out.value("back").toArray(), QJsonArray({1, 2, 3, 0xFFFF}));
    EXPECT_EQ(tcp->word(303), -1);
    EXPECT_EQ(out.value("writeOutside").toObject().value("exception").toInt(), 2);
    EXPECT_EQ(tcp->word(1140), 4321) << "a refused write changes nothing";
}

TEST_F(ModbusTest, StationCommandIsEchoedAndCarriedOut)
{
    tcp->raiseMessage(3);
    tcp->clearMessage(3);
    ASSERT_EQ(tcp->word(87), 4) << "latched until acknowledged";
    EXPECT_EQ(modbus.ask(hex("00 00 00 00 00 09 01 10 00 1E 00 01 02 00 04"), 12),
              hex("00 00 00 00 00 06 01 10 00 1E 00 01"));
    EXPECT_EQ(tcp->word(87), 0);
    EXPECT_EQ(tcp->word(30), 0) << "the command word is cleared after the command";
    EXPECT_EQ(tcp->lastWritten(30), std::optional<int16_t>(4));
}

TEST_F(ModbusTest, FramesInPiecesAndBackToBackAreAllAnswered)
{
    const QByteArray read = hex("00 07 00 00 00 06 01 03 00 1D 00 01");
    modbus.socket.write(read.left(5));
    modbus.socket.flush();
    pumpPending();
    modbus.socket.write(read.mid(5) + hex("00 08 00 00 00 06 01 03 00 1D 00 02"));
    const QByteArray a = modbus.receive(11 + 13);
    EXPECT_EQ(a.left(11), hex("00 07 00 00 00 05 01 03 02 81 F4"));
    EXPECT_EQ(a.mid(11, 9), hex("00 08 00 00 00 07 01 03 04"));
}

TEST_F(ModbusTest, BadRequestsGetExceptionsOrNoAnswer)
{
    // Another unit is not this PLC: no answer; the next frame's answer comes first.
    modbus.socket.write(hex("00 01 00 00 00 06 02 03 00 00 00 01"));
    EXPECT_EQ(modbus.ask(hex("00 02 00 00 00 06 01 04 00 00 00 01"), 9), hex("00 02 00 00 00 03 01 84 01"));
    EXPECT_EQ(modbus.ask(hex("00 03 00 00 00 06 01 03 00 00 00 00"), 9), hex("00 03 00 00 00 03 01 83 03"));
    EXPECT_EQ(modbus.ask(hex("00 04 00 00 00 06 01 03 00 00 00 7E"), 9), hex("00 04 00 00 00 03 01 83 03"));
    EXPECT_EQ(modbus.ask(hex("00 05 00 00 00 09 01 10 00 1E 00 01 04 00 04"), 9), hex("00 05 00 00 00 03 01 90 03"))
        << "byte count that doesn't match the words";
    EXPECT_EQ(modbus.ask(hex("00 06 00 00 00 06 01 03 04 75 00 01"), 9), hex("00 06 00 00 00 03 01 83 02"))
        << "word 1141";
    EXPECT_TRUE(tcp->writes().isEmpty());
    EXPECT_EQ(plant->frames().refused().size(), 6) << "the foreign unit counts too";

    // A length field no Modbus frame has: the stream is lost and closed.
    modbus.socket.write(hex("00 00 00 00 01 00 01 03"));
    EXPECT_TRUE(pumpUntil([&] { return modbus.socket.state() == QAbstractSocket::UnconnectedState; }));
}

} // namespace
