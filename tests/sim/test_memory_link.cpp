// The memory link of a simulated furnace and of the panel server, checked with
// a raw UDP client against the literal frames the station sends.

#include "sim_test_support.h"

#include <gtest/gtest.h>

using namespace simtest;

namespace {

using MemoryLinkTest = LinkTest;

TEST_F(MemoryLinkTest, ReadAndWriteAreAnsweredWithTheLiteralFrames)
{
    for (int a = 100; a < 200; ++a)
        udp->setWord(a, static_cast<int16_t>(0x0100 * (a - 100) + 0xF0));
    udp->setWord(150, -200); // FF 38 on the wire
    QByteArray a = askUdp(hex("42 00 00 00 00 00 00 06 1B 52 00 64 00 64"));
    ASSERT_EQ(a.size(), 10 + 200);
    EXPECT_EQ(a.left(10), hex("42 00 00 00 00 00 00 CA 1B 52"));
    EXPECT_EQ(a.mid(10, 4), hex("00 F0 01 F0"));
    EXPECT_EQ(a.mid(10 + 2 * 50, 2), hex("FF 38"));
    EXPECT_EQ(answerWords(a), udp->image().get(100, 100));
    ASSERT_EQ(plant->frames().records().size(), 1);
    EXPECT_EQ(plant->frames().records()[0].verdict, QStringLiteral("read 100 @ 100"));

    // A write is answered with the header alone. The station's clock step:
    // 0x0102 at word 58 is "year on" and "minute back".
    const QDateTime before = udp->plcNow();
    a = askUdp(hex("42 00 00 00 00 00 00 08 1B 57 00 3A 00 01 01 02"));
    EXPECT_EQ(a, hex("42 00 00 00 00 00 00 02 1B 57"));
    ASSERT_EQ(udp->writes().size(), 1);
    EXPECT_EQ(udp->writes()[0].address, 58);
    EXPECT_EQ(udp->writes()[0].words, QVector<int16_t>{0x0102});
    EXPECT_EQ(udp->writes()[0].via, QStringLiteral("udp"));
    EXPECT_EQ(udp->word(58), 0) << "the PLC clears the step command once done";
    EXPECT_EQ(udp->plcNow(), before.addYears(1).addSecs(-60));
}

TEST_F(MemoryLinkTest, BeyondTheImageAndMalformedFramesAreRefusedWithoutAnswer)
{
    udp->setWord(1140, 0x1234);
    QByteArray a = askUdp(readFrame(1041, 100));
    ASSERT_EQ(a.size(), 210);
    EXPECT_EQ(a.right(2), hex("12 34"));

    // 1041 + 101 words reaches 1141: refused without an answer. The next good
    // request's answer is then the first datagram that comes back.
    sendUdp(readFrame(1041, 101));
    a = askUdp(readFrame(1140, 1));
    EXPECT_EQ(a, hex("42 00 00 00 00 00 00 04 1B 52 12 34"));
    EXPECT_FALSE(client.pending());
    EXPECT_EQ(plant->frames().refused().size(), 1);
    // A write beyond the image changes nothing.
    sendUdp(writeFrame(1140, {1, 2}));

    const char *bad[] = {
        "42 00 00 00 00 00 00 06 1B 52 00 64 00",          // 13 bytes
        "43 00 00 00 00 00 00 06 1B 52 00 64 00 64",       // not "B"
        "42 01 00 00 00 00 00 06 1B 52 00 64 00 64",       // header byte 1
        "42 00 00 00 00 00 00 06 1C 52 00 64 00 64",       // no ESC
        "42 00 00 00 00 00 00 07 1B 52 00 64 00 64",       // length field
        "42 00 00 00 00 00 00 06 1B 58 00 64 00 64",       // command "X"
        "42 00 00 00 00 00 00 0A 1B 57 00 3A 00 02 01 02", // write of 2 words with 1
    };
    for (const char *frame : bad)
        sendUdp(hex(frame));
    a = askUdp(hex("42 00 00 00 00 00 00 06 1B 52 00 1D 00 01"));
    EXPECT_EQ(a, hex("42 00 00 00 00 00 00 04 1B 52 00 03")) << "word 29 is the plain type 3";
    EXPECT_EQ(plant->frames().refused().size(), 2 + int(std::size(bad)));
    EXPECT_EQ(udp->word(1140), 0x1234);
    EXPECT_TRUE(udp->writes().isEmpty());
    EXPECT_EQ(udp->word(58), 0);
}

TEST(PanelServerTest, ServesEachFurnaceInItsWindowAndRoutesWrites)
{
    PlantDescription d;
    d.panelAddress = QStringLiteral("127.0.0.30");
    FurnaceDescription a = furnaceDesc(2, Protocol::MemoryLink, true, 240);
    a.panelCode = 0x50; // 3000
    FurnaceDescription b = furnaceDesc(4, Protocol::Modbus, true, 500);
    b.panelCode = 0x49; // 3000 + 1000 * index 3
    d.furnaces = {a, b};
    auto plant = startPlant(d);
    SimFurnace *fa = plant->furnace(1);
    SimFurnace *fb = plant->furnace(3);
    const quint16 port = plant->panel()->port();
    UdpClient client;

    EXPECT_EQ(uint16_t(fa->word(215)), 0x501E) << "server code 0x50, server octet 30";
    EXPECT_EQ(uint16_t(fb->word(215)), 0x491E);

    fa->setWord(150, 1111);
    const QByteArray r = client.ask(hex("42 00 00 00 00 00 00 06 1B 52 0C 1C 00 64"), d.panelAddress, port);
    ASSERT_EQ(r.size(), 210);
    EXPECT_EQ(answerWords(r)[50], 1111);

    fb->setWord(299, 2222);
    EXPECT_EQ(answerWords(client.ask(readFrame(6200, 100), d.panelAddress, port)).last(), 2222);

    // A write through the panel reaches the furnace as a station write.
    EXPECT_EQ(client.ask(writeFrame(3000 + 300, {7}), d.panelAddress, port).size(), 10);
    EXPECT_EQ(fa->word(300), 7);
    ASSERT_EQ(fa->writes().size(), 1);
    EXPECT_EQ(fa->writes()[0].via, QStringLiteral("panel"));

    // Outside every window, and across a window's end: refused.
    client.send(readFrame(4000, 100), d.panelAddress, port);
    client.send(readFrame(3950, 100), d.panelAddress, port);
    const QByteArray ok = client.ask(readFrame(3029, 1), d.panelAddress, port);
    EXPECT_EQ(answerWords(ok), QVector<int16_t>{fa->word(29)});
    EXPECT_EQ(plant->frames().refused().size(), 2);
    EXPECT_EQ(plant->frames().of(Server::Panel).size(), 6);
}

} // namespace
