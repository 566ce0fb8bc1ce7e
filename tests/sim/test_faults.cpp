// Faults of a simulated link on request: a dropped link, late answers, and
// answers that come back wrong; and that `resume` ends them. A dropped Modbus
// link is checked with the station's own socket, in tests/integration.

#include "sim_test_support.h"

#include <gtest/gtest.h>

using namespace simtest;

namespace {

using FaultTest = LinkTest;

TEST_F(FaultTest, DroppedUdpLinkIsSilentUntilResumed)
{
    udp->link().dropLink();
    sendUdp(readFrame(0, 100));
    sendUdp(writeFrame(30, {4}));
    pumpUntil([&] { return plant->frames().records().size() == 2; });
    udp->link().resume();
    // The first answer after the drop belongs to the request sent after it.
    EXPECT_EQ(askUdp(readFrame(29, 1)).size(), 12);
    EXPECT_FALSE(client.pending());
    EXPECT_TRUE(udp->writes().isEmpty()) << "a frame sent while down never reached the PLC";
    EXPECT_TRUE(plant->frames().records()[0].verdict.contains(QStringLiteral("link down")));
}

TEST_F(FaultTest, DelayedAnswerGoesOutWhenPlantTimeHasPassed)
{
    udp->link().setDelay(500);
    sendUdp(readFrame(29, 1));
    ASSERT_TRUE(pumpUntil([&] { return plant->frames().records().size() == 1; }));
    plant->advance(499);
    pumpPending();
    EXPECT_FALSE(client.pending());
    plant->advance(1);
    EXPECT_EQ(client.receive().size(), 12);
}

TEST_F(FaultTest, ShortAndOversizeAnswersForACountOfAnswers)
{
    udp->link().setAnswerFault(AnswerFault::Short, 1);
    EXPECT_EQ(askUdp(readFrame(0, 100)).size(), 5);
    EXPECT_EQ(askUdp(readFrame(0, 100)).size(), 210) << "the fault was for one answer";

    udp->link().setAnswerFault(AnswerFault::Oversize);
    const QByteArray big = askUdp(readFrame(0, 100));
    EXPECT_EQ(big.size(), 1100);
    EXPECT_EQ(big.left(210), askUdp(readFrame(0, 100)).left(210));
    udp->link().resume();
    EXPECT_EQ(askUdp(readFrame(0, 100)).size(), 210);

    tcp->link().setAnswerFault(AnswerFault::Oversize, 1);
    EXPECT_EQ(modbus.ask(hex("00 00 00 00 00 06 01 03 00 00 00 64"), 1100).size(), 1100);
}

TEST_F(FaultTest, ModbusExceptionFaultAnswersWithoutActing)
{
    tcp->link().setAnswerFault(AnswerFault::Exception, 1);
    EXPECT_EQ(modbus.ask(hex("00 00 00 00 00 09 01 10 01 2C 00 01 02 00 07"), 9), hex("00 00 00 00 00 03 01 90 04"));
    EXPECT_EQ(tcp->word(300), 0);
    EXPECT_TRUE(tcp->writes().isEmpty());
    EXPECT_EQ(modbus.ask(hex("00 00 00 00 00 09 01 10 01 2C 00 01 02 00 07"), 12).size(), 12);
    EXPECT_EQ(tcp->word(300), 7);
}

} // namespace
