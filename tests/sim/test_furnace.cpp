// A furnace that behaves: programs run by the thermal model on plant time,
// the PLC clock and its step command, messages with acknowledgement, and the
// program table of the large layout.

#include "core/dates.h"
#include "sim_test_support.h"

using namespace simtest;

namespace {

class FurnaceTest : public FreshProcess {
protected:
    /// Furnace 1 with this program (message 5 stops it), started when there is one.
    void start(QVector<SegmentDescription> segments, Protocol p = Protocol::MemoryLink)
    {
        FurnaceDescription fd = furnaceDesc(1, p, p == Protocol::Modbus, 500);
        fd.program = {QStringLiteral("Test"), segments};
        fd.stopMessages = {5};
        plant = startPlant({fd});
        f = plant->furnace(0);
        if (!segments.isEmpty())
            f->startProgram();
    }
    /// Advances in steps of `stepMs` until `done`; the plant time it took, in s.
    double runUntil(const std::function<bool()> &done, int64_t stepMs = 10000)
    {
        const int64_t from = plant->clock().ms();
        while (!done() && plant->clock().ms() - from < 100000 * 1000LL)
            plant->advance(stepMs);
        return (plant->clock().ms() - from) / 1000.0;
    }
    double actual() const { return f->word(44) / 10.0; }
    double setpoint() const { return f->word(43) / 10.0; }
    /// Program state bits of words 37 and 74, segment and kind.
    std::vector<int> state() const { return {f->word(37) & 3, f->word(74) & 3, f->word(41), f->word(42)}; }

    std::unique_ptr<SimPlant> plant;
    SimFurnace *f = nullptr;
};

TEST_F(FurnaceTest, RampAtItsRateThenHoldCycleAndEnd)
{
    // 300 K/h to 620 °C, hold 0.1 h, back to segment 2 twice more, then end.
    start({{1, 620, 3000, 100}, {2, 0, 1, 100}, {5, 0, 2, 2}});
    plant->advance(1000);
    EXPECT_EQ(state(), (std::vector<int>{1, 1, 1, 1}));
    plant->advance(3600 * 1000 - 1000);
    EXPECT_NEAR(setpoint(), 320, 5) << "one hour at 300 K/h from 20 °C";
    EXPECT_NEAR(actual(), setpoint(), 15) << "the actual value follows";
    EXPECT_NEAR(f->word(57), 100, 3) << "300 K left: one hour, in 1/100 h";
    EXPECT_NEAR(3600 + runUntil([&] { return f->word(41) == 2; }), 7200, 7200 * 0.05);
    EXPECT_NEAR(actual(), 620, 15);

    plant->advance(180 * 1000);
    EXPECT_NEAR(f->word(57), 5, 1) << "half of 0.1 h left, in 1/100 h";
    // The cycle jumps back at once, so segment 2 shows for three holds in a row.
    EXPECT_NEAR(180 + runUntil([&] { return f->word(41) != 2; }, 1000), 3 * 360, 3);
    EXPECT_EQ(state(), (std::vector<int>{0, 0, 0, 0}));
    EXPECT_EQ(f->word(43), 0) << "heating off at the end";
    plant->advance(600 * 1000);
    EXPECT_LT(actual(), 610) << "the furnace cools";
}

TEST_F(FurnaceTest, ManualSegmentOnModbusAndStopMessage)
{
    start({{3, 900, 0, 40}}, Protocol::Modbus);
    plant->advance(5000);
    EXPECT_EQ(f->word(45), 4000) << "40 % in 0.01 % on Modbus";
    EXPECT_NEAR(setpoint(), 20 + 100.0 * 5 / 3600, 0.2) << "the set value moves at 100 K/h";

    start({{1, 500, 3600, 100}});
    plant->advance(600 * 1000);
    const int16_t sp = f->word(43);
    f->raiseMessage(5);
    plant->advance(600 * 1000);
    EXPECT_EQ(f->word(37) & 3, 2) << "held";
    EXPECT_EQ(f->word(43), sp);
    EXPECT_EQ(uint16_t(f->word(699)), 0xAB00 | 1 | 2);
    f->clearMessage(5, false);
    plant->advance(60 * 1000);
    EXPECT_EQ(f->word(37) & 3, 1);
    EXPECT_GT(f->word(43), sp);
}

TEST_F(FurnaceTest, PlcClockIsPackedAndStepped)
{
    start({});
    // 1.3.2024 07:05:00
    EXPECT_EQ(f->word(80), int16_t(1 << 11 | 3 << 7 | 24));
    EXPECT_EQ(f->word(81), int16_t(7 << 11 | 5 << 5));
    plant->advance(3000);
    EXPECT_EQ(f->word(81), int16_t(7 << 11 | 5 << 5 | 1)) << "seconds / 2";

    // Day on, hour back, minute on: 2.3.2024 06:06:03; the station's own
    // unpacking reads the same time (seconds in steps of two).
    EXPECT_EQ(writeWord(f, 58, 32 + 64 + 512), 0);
    EXPECT_EQ(f->plcNow(), QDateTime(QDate(2024, 3, 2), QTime(6, 6, 3), Qt::UTC));
    EXPECT_EQ(kal::SPS_Datum(f->word(80), f->word(81)), QStringLiteral("02.03.2024 06:06:02"));
    // The 16th of the month sets the sign bit of word A.
    f->plcClock().setOffsetSeconds(15 * 86400);
    plant->advance(0);
    plant->advance(1000);
    EXPECT_EQ(uint16_t(f->word(80)), uint16_t(16 << 11 | 3 << 7 | 24));
}

TEST_F(FurnaceTest, MessagesLatchUntilAcknowledgedAlsoOverTemperature)
{
    start({{4, 1300, 0, 100}}); // maximum 1200 °C
    f->raiseMessage(16);
    f->raiseMessage(17);
    f->raiseMessage(48);
    EXPECT_EQ((std::vector<int>{uint16_t(f->word(87)), f->word(88), uint16_t(f->word(89)), uint16_t(f->word(699))}),
              (std::vector<int>{0x8000, 1, 0x8000, 0xAB01}));
    f->clearMessage(16);
    f->write(30, {4}, QStringLiteral("test")); // acknowledged; 17 and 48 still have their cause
    EXPECT_EQ(f->word(87), 0);
    EXPECT_EQ(f->word(88), 1);
    f->clearMessage(17);
    EXPECT_EQ(f->word(88), 0) << "acknowledged before: it goes with its cause";
    // The station switches SMS on for message 48; the status shows it.
    f->write(698, {int16_t(0x8000)}, QStringLiteral("test"));
    EXPECT_EQ(uint16_t(f->word(699)), 0xAB01 | 8);

    runUntil([&] { return f->messages().cause(2); });
    EXPECT_GT(actual(), 1210);
    EXPECT_EQ(f->word(87), 2);
    f->stopProgram();
    runUntil([&] { return !f->messages().cause(2); });
    EXPECT_EQ(f->word(87), 2) << "latched until acknowledged";
    f->acknowledgeMessages();
    EXPECT_EQ(f->word(87), 0);
}

TEST_F(FurnaceTest, LongProgramNamesAndModbusHoursCounter)
{
    // Name, serial and words 216..218 of each layout are compared by the
    // station with its configuration in tests/integration. Long program
    // names: 1..16 at 180, 17..30 at 90; the block at 100 is part of the
    // program table.
    FurnaceDescription c = furnaceDesc(3, Protocol::Modbus, true, 100);
    c.program = {QStringLiteral("Ein langer Programmname"), {{1, 850, 9000, 80}}};
    c.large = true;
    plant = startPlant({c});
    SimFurnace *fc = plant->furnace(2);
    EXPECT_EQ(uint16_t(fc->word(29)), 0x9064) << "large layout: bit 12";
    EXPECT_EQ(fc->image().text(180, 8) + fc->image().text(90, 7), QStringLiteral("Ein langer Programmname"));
    EXPECT_EQ(fc->image().get(100, 24), c.identityWords());
    EXPECT_EQ((std::vector<int>{fc->word(100), fc->word(160), fc->word(7)}), (std::vector<int>{1, 80, 0}))
        << "hours counter of a Modbus PLC at 7/8";
}

} // namespace
