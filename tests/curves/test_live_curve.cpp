// The live ring: its clock, the one write position of all furnaces, the
// sampling of each furnace type, the page order and the time labels.

#include "core/dates.h"
#include "core/word_map.h"
#include "curves/live_curve.h"
#include "support/fresh.h"

using namespace kal;
using namespace kal::test;

namespace {

class LiveCurve : public FreshProcess {
protected:
    /// Runs `n` ticks of the main cycle's step 310.
    static void ticks(int n)
    {
        for (int i = 0; i < n; ++i)
            Graph_Online();
    }
    static i16 ist(int ofen, int c, int p) { return Live.ofen[size_t(ofen)].Live_Ist[size_t(c)][size_t(p)]; }
};

} // namespace

TEST_F(LiveCurve, OneSampleEveryRasterTimesTenTicksForAllFurnaces)
{
    plant.Live_Raster = 10;
    plant.Ofen_Online[0] = plant.Ofen_Online[7] = TRUE16;
    plant.SPS_Wort(0, word::ACTUAL_VALUE) = 8505;
    plant.SPS_Wort(7, word::ACTUAL_VALUE) = 200;
    ticks(99);
    EXPECT_EQ(both(Live.Live_Punkt, ist(0, 1, 0)), both(0, 0));
    ticks(1);
    // 850.5 rounds to even.
    EXPECT_EQ((std::vector<int>{Live.Live_Punkt, ist(0, 1, 0), ist(7, 1, 0)}), (std::vector<int>{1, 850, 20}));

    // Furnace 8 goes offline for one sample: its ring stands still, and the
    // others are not shifted.
    plant.Ofen_Online[7] = 0;
    plant.SPS_Wort(0, word::ACTUAL_VALUE) = 8600;
    ticks(100);
    EXPECT_EQ(both(ist(0, 1, 1), ist(7, 1, 1)), both(860, 0));
    plant.Ofen_Online[7] = TRUE16;
    ticks(100);
    EXPECT_EQ(both(Live.Live_Punkt, ist(7, 1, 2)), both(3, 20));
    EXPECT_EQ(scr.liveKurve, 0); // no furnace on view: no repaint

    // Point 360 is the last of the ring, then it starts again at 0; a furnace
    // on view repaints.
    plant.Seite_Ofen = 1;
    Live.Live_Punkt = 360;
    ticks(100);
    EXPECT_EQ(both(Live.Live_Punkt, ist(0, 1, 360)), both(361, 860));
    ticks(100);
    EXPECT_EQ((std::vector<int>{Live.Live_Punkt, ist(0, 1, 0), scr.liveKurve}), (std::vector<int>{1, 860, 2}));
}

TEST_F(LiveCurve, PlainTypesTheResistanceRuleAndTypeOne)
{
    plant.Ofen_Typ[1] = 0;
    plant.SPS_Wort(0, word::SET_VALUE) = 9000;
    plant.SPS_Wort(0, word::OUTPUT) = 55;
    struct Case {
        i16 strom, spannung, ohm;
    };
    // Word 85 of 0 gives 0, results outside 1..32000 give 0.
    const Case faelle[] = {{0, 230, 0}, {10, 230, 23000}, {2, 100, 0}, {3000, 1, 0}, {7, 100, 14286}};
    for (const Case &f : faelle) {
        plant.SPS_Wort(0, 85) = f.strom;
        plant.SPS_Wort(0, 86) = f.spannung;
        liveSample(0, 5);
        EXPECT_EQ(ist(0, 6, 5), f.ohm) << f.strom << " A, " << f.spannung << " V";
    }
    EXPECT_EQ((std::vector<int>{ist(0, 0, 5), ist(0, 2, 5), ist(0, 4, 5), ist(0, 5, 5)}),
              (std::vector<int>{900, 55, 7, 100}));

    // Type 1 has its fixed map.
    plant.Ofen_Typ[3] = 1;
    plant.SPS_Wort(2, 293) = 12345;
    plant.SPS_Wort(2, 294) = 12351;
    plant.SPS_Wort(2, 68) = 444;
    plant.SPS_Wort(2, 260) = 17;
    liveSample(2, 360);
    // 123.51 rounds up; the spare column is word 68 / 10.
    const Live_Kanaele &k = Live.ofen[2];
    EXPECT_EQ((std::vector<int>{k.Live_Soll[2][360], k.Live_Ist[2][360], k.Live_Ist[1][360],
                                k.Live_Ist[RESERVE_KURVE][360], k.Live_Out[6][360]}),
              (std::vector<int>{123, 124, 44, 44, 17}));
}

TEST_F(LiveCurve, HeadedTypesReadTheChannelTables)
{
    const int slot = 2, ofen = 1;
    plant.Ofen_Typ[slot] = -10;
    plant.Kanal_Adr_Soll(slot, 0) = 600;
    plant.Kanal_Adr_Ist(slot, 0) = 610;
    plant.Kanal_Adr_Out(slot, 0) = 620;
    plant.Kanal_Status(slot, 1) = TRUE16;
    plant.Kanal_Adr_Ist(slot, 2) = 1141; // out of the image: skipped
    plant.SPS_Wort(ofen, 600) = 800;
    plant.SPS_Wort(ofen, 610) = 795;
    plant.SPS_Wort(ofen, 620) = 4550;
    plant.SPS_Wort(ofen, word::PROGRAM_STATE) = 2;
    Live.ofen[size_t(ofen)].Live_Ist[2][4] = 77;

    plant.Ofen_UDP[ofen] = 0; // Modbus: the output in hundredths
    liveSample(ofen, 4);
    // Channel 1 reads "held"; channel 2 is left as it was.
    const Live_Kanaele &k = Live.ofen[size_t(ofen)];
    EXPECT_EQ((std::vector<int>{k.Live_Soll[0][4], k.Live_Ist[0][4], k.Live_Out[0][4], k.Live_Ist[1][4], k.Live_Ist[2][4]}),
              (std::vector<int>{800, 795, 46, 6, 77}));
    plant.Ofen_UDP[ofen] = -1;
    plant.SPS_Wort(ofen, word::PROGRAM_STATE) = 3;
    liveSample(ofen, 4);
    EXPECT_EQ(both(k.Live_Out[0][4], k.Live_Ist[1][4]), both(4550, 10));
}

TEST_F(LiveCurve, PageRunsFromTheOldestToTheNewest)
{
    for (int p = 0; p < 360; ++p)
        Live.ofen[0].Live_Ist[0][size_t(p)] = i16(1000 + p);
    Live.Live_Punkt = 9; // point 9 was written last
    const PlotPage s = livePage(0);
    const auto &ist = s.Punkt_Ist[0];
    EXPECT_EQ((std::vector<int>{ist[0], ist[349], ist[350], ist[359], ist[360]}),
              (std::vector<int>{1010, 1359, 1000, 1009, 1009}));

    // Right after start the ring is all zeros: every actual segment is hidden.
    const PlotPage leer = livePage(3);
    for (int i = 0; i < SEGMENTE; ++i)
        ASSERT_FALSE(actualVisible(leer, 0, i));
}

TEST_F(LiveCurve, ScaleLeavesAStepBelowAndKeepsItsLowerLimit)
{
    PlotPage s;
    s.clear();
    plant.Kanal_Zahl[1] = 2;
    s.Punkt_Ist[0].fill(200);
    s.Punkt_Ist[1].fill(500);
    s.Punkt_Ist[1][7] = -400;
    const CurveScale k = scalePage(s, 2, 1, 300, 360, liveScaleOptions(0));
    // -410 cut at the lower limit, shared by the unit.
    EXPECT_EQ(both(k.Skala_Min[0], k.Skala_Max[1]), both(-100, 600));

    s.Punkt_Ist[1].fill(500);
    s.Punkt_Ist[0].fill(0);
    plant.Kanal_Einheit(1, 1) = QStringLiteral(" bar ");
    plant.Ofen_Typ[1] = 2; // channel 0 lends its scale to channels 1..5
    const CurveScale z = scalePage(s, 2, 1, 300, 360, liveScaleOptions(0));
    EXPECT_EQ((std::vector<int>{z.Skala_Min[0], z.Skala_Max[0], z.Skala_Max[1]}), (std::vector<int>{-10, 120, 120}));
}

TEST_F(LiveCurve, TimeLabelsSpanAnHourAndWrapInSixteenBits)
{
    const QDateTime jetzt(QDate(2024, 6, 1), QTime(14, 30, 0), Qt::UTC);
    plant.Datum_Log[0] = QStringLiteral("01.06.2024 14:29:40");
    LiveLabels b = liveMarks(0, jetzt);
    EXPECT_EQ(b.Label2, QStringLiteral("01.06.24 14:29"));
    EXPECT_EQ(b.marken, (std::array<QString, 5>{QStringLiteral("13:30"), QStringLiteral("13:45"), QStringLiteral("14:00"),
                                                QStringLiteral("14:15"), QStringLiteral("14:30")}));
    // Raster 100: 36000 seconds do not fit 16 bits and count forward.
    plant.Live_Raster = 100;
    b = liveMarks(0, jetzt);
    EXPECT_EQ(b.marken[0], QStringLiteral("22:42"));
    EXPECT_EQ(b.marken[4], QStringLiteral("14:30"));
}
