// Log blocks through the trigger handshake: offered at the trigger word,
// kept until the station writes 0 there, then the next. And the word layouts
// of the block kinds and the kinds each layout logs. That blocks logged while
// the link is down come out in order is checked with the station, in
// tests/integration.

#include "sim/log_blocks.h"
#include "sim_test_support.h"

#include <gtest/gtest.h>

using namespace simtest;

namespace {

QVector<int16_t> kinds(const QVector<QVector<int16_t>> &blocks)
{
    QVector<int16_t> k;
    for (const auto &b : blocks)
        k.append(b[0]);
    return k;
}

TEST(LogHandshakeTest, BlockStaysUntilAcknowledgedThenTheNextFollows)
{
    auto plant = startPlant({furnaceDesc(1, Protocol::Modbus, true, 500)});
    SimFurnace *f = plant->furnace(0);

    QVector<int16_t> a(40, 0), b(40, 0);
    a[0] = 154;
    a[39] = 39;
    b[0] = 160;
    f->queueBlock(a);
    f->queueBlock(b);
    EXPECT_EQ(f->word(400), 154);
    EXPECT_EQ(f->word(439), 39);
    plant->advance(60000);
    EXPECT_EQ(f->word(400), 154) << "no timeout: the block waits for the station";

    EXPECT_EQ(writeWord(f, 400, 1), 1) << "only 0 takes the block";
    writeWord(f, 401, 0);
    EXPECT_EQ(f->log().waiting(), 1);

    EXPECT_EQ(writeWord(f, 400, 0), 160);
    EXPECT_EQ(f->word(439), 0) << "the words of the old block don't stay behind";
    EXPECT_EQ(writeWord(f, 400, 0), 0);
    writeWord(f, 400, 0); // nothing offered: nothing taken
    EXPECT_EQ(kinds(f->log().taken()), (QVector<int16_t>{154, 160}));
}

TEST(LogBlockLayoutTest, KindsCarryTheirWordsInPlace)
{
    // Set, actual, output, state, messages, segment, kind, target, time left, batch.
    const SampleValues v{QDateTime(QDate(2024, 3, 1), QTime(7, 5, 2), Qt::UTC), 5000, 4985, 63, 1, {0x0004, 0x0100, 0},
                         2, 1, 650, 125, 0x00012345};

    // Word A: day 1, month 3, year 24; word B: 07:05:02.
    const QVector<int16_t> stamp{int16_t(1 << 11 | 3 << 7 | 24), int16_t(7 << 11 | 5 << 5 | 1)};

    // In the group: kind in the low byte of w36, segment in the high byte.
    const QVector<int16_t> g = groupBlock(v);
    ASSERT_EQ(g.size(), 40);
    EXPECT_EQ(g.mid(0, 10), (QVector<int16_t>{154, stamp[0], stamp[1], 5000, 4985, 63, 0x2345, 0x0001, 4, 0x100}));
    EXPECT_EQ((QVector<int16_t>{g[30], g[36], g[37]}), (QVector<int16_t>{125, 0x0201, 650}));

    const QVector<int16_t> c = compactBlock(v);
    ASSERT_EQ(c.size(), 16);
    EXPECT_EQ(c, (QVector<int16_t>{131, stamp[0], stamp[1], 0x2345, 0x0001, 4, 0x100, 0x0201, 0, 650, 125, 5000,
                                   4985, 63, 0, 0}));

    const QVector<int16_t> p = plainSampleBlock(v);
    EXPECT_EQ(p.mid(0, 6) + p.mid(8), (QVector<int16_t>{1, stamp[0], stamp[1], 4985, 5000, 63, 1, 4}));
    EXPECT_EQ(announcementBlock(7, v.stamp).mid(0, 3), (QVector<int16_t>{207, stamp[0], stamp[1]}));

    // Program text: characters 1 and 2 in w31, low byte first.
    const QVector<int16_t> t = programTextBlock(QStringLiteral("Härten 820"), v.stamp, 5);
    EXPECT_EQ((std::vector<int>{uint16_t(t[31]), t[6]}), (std::vector<int>{'H' | 0xE4 << 8, 5}));
    const QVector<int16_t> o = operatorTextBlock(QStringLiteral("Charge 4711 Welle"), v.stamp);
    EXPECT_EQ((std::vector<int>{int(o.size()), o[0], uint16_t(o[10])}), (std::vector<int>{20, 9001, 'C' | 'h' << 8}));
    const QVector<int16_t> e = elementBlock({300, 301, 999, 303}, v.stamp, 9);
    EXPECT_EQ(e.mid(3, 6), (QVector<int16_t>{300, 301, 999 & 0xFF, 9, 0, 303}));
}

TEST(LogHandshakeTest, ProgramStartAnnouncesTheBatchFirstAndEachLayoutLogsItsKind)
{
    // Plain, headed on the memory link (16-word trigger), headed on Modbus.
    QVector<FurnaceDescription> d = {furnaceDesc(1, Protocol::MemoryLink, false),
                                     furnaceDesc(2, Protocol::MemoryLink, true, 240),
                                     furnaceDesc(3, Protocol::Modbus, true, 500)};
    d[0].firstBatch = 41;
    d[2].trackCode = 406;
    for (FurnaceDescription &f : d)
        f.program = {QStringLiteral("Anlassen"), {{1, 300, 3000, 100}}};
    auto plant = startPlant(d);
    for (int i : {0, 1, 2}) {
        SimFurnace *f = plant->furnace(i);
        f->startProgram();
        plant->advance(6000);
        f->stopProgram();
        f->startProgram();
        plant->advance(1000);
        while (f->log().offering())
            f->write(f->log().triggerAddress(), {0}, QStringLiteral("test"));
    }
    EXPECT_EQ(kinds(plant->furnace(0)->log().taken()), (QVector<int16_t>{241, 1, 1, 1, 1, 1, 1, 1, 242, 1}))
        << "announcement, a sample a second, the last sample at the stop, the next batch";
    EXPECT_EQ(kinds(plant->furnace(1)->log().taken()), QVector<int16_t>(8, 131))
        << "compact blocks on the 16-word trigger";
    EXPECT_EQ(kinds(plant->furnace(2)->log().taken()),
              (QVector<int16_t>{159, 154, 154, 154, 154, 154, 154, 160, 154, 159, 154}))
        << "program text first, element currents after every sixth sample";
    EXPECT_EQ(plant->furnace(2)->log().taken()[0].mid(31, 4), textWords(QStringLiteral("Anlassen"), 4));
}

} // namespace
