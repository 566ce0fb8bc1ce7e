// The page of curves: the reducer's walk from the page start, its rules at
// gaps, held points and status marks, the scales, the visibility of segments,
// the programme band, the button bar limits and the cursor.

#include "curve_fixture.h"

#include "core/conversions.h"
#include "core/dates.h"
#include "curves/curve_reduce.h"
#include "curves/curve_scale.h"
#include "curves/cursor.h"
#include "curves/time_axis.h"
#include "recording/batch_reader.h"


using namespace kal;
using namespace kal::test;

namespace {

const QDateTime START(QDate(2024, 6, 1), QTime(6, 0), Qt::UTC);

/// Adds an entry time to the lists' time table.
uint32_t addEntryTime(EntryLists &e, const QDateTime &t)
{
    const RecordTime z = timeOfDate(t);
    e.zeiten.stempel.push_back(Stamp{z.Jahr, z.Monat, z.Tag, z.Stunde, z.Minute, z.Sekunde});
    e.zeiten.minute.push_back(int32_t(minutesValue(z) - int64_t(QDate(2000, 1, 1).toJulianDay()) * 1440));
    return uint32_t(e.zeiten.stempel.size() - 1);
}

/// Adds an entry of channel j at minute `m` after t.
void addEntry(EntryLists &e, const QDateTime &t, int m, int j, i16 wert, i16 out = 0)
{
    const uint32_t z = addEntryTime(e, t.addSecs(60 * m));
    e.Wertliste[size_t(j)].push(z, wert);
    e.Sollliste[size_t(j)].push(z, i16(wert + 5));
    e.Sollliste[size_t(j)].out.push_back(out);
}

class CurvePageTest : public CurveTest {
protected:
    void SetUp() override
    {
        CurveTest::SetUp();
        plant.Kanal_Status(0, 2) = TRUE16;
    }
    /// A page of raster 60 from 06:00.
    static PageFrame frame(int kanaele, int typ = 0) { return PageFrame{secondsOf(START), 60, kanaele, i16(typ)}; }
};

} // namespace

TEST_F(CurvePageTest, WalkStartsAtThePageAndFollowsHeldPointsStatusMarksAndThePageEnd)
{
    // Raster 60 from s: channel 0 plain with set values and outputs, channel 2
    // a status channel with a 3 before the page and a 3 in the minute of a
    // point (both wait for the next sample), channels 1 and 3 run to the
    // last point of the page and beyond it.
    // Entries in time order, as a file gives them: minute, channel, value, output.
    struct Entry {
        int m, j;
        i16 wert, out;
    };
    const Entry entries[] = {
        {-2, 0, 100, 1}, {-1, 2, 3, 0}, {0, 0, 200, 2}, {0, 1, 50, 0}, {0, 2, 2, 0}, {0, 3, 50, 0}, {1, 0, 210, 3},
        {1, 2, 6, 0},    {4, 0, 240, 44}, {7, 2, 10, 0}, {7, 2, 3, 0}, {8, 2, 10, 0}, {359, 1, 50, 0}, {360, 3, 50, 0},
    };
    EntryLists e;
    for (const Entry &x : entries)
        addEntry(e, START, x.m, x.j, x.wert, x.out);
    PageFrame r = frame(4, -10);
    PlotPage p;
    std::array<i16, LISTEN_KANAELE> fertig{};
    reducePage(e, r, p, fertig);
    // Points 2 and 3 lie before the sample of minute 4: filled in between, and
    // held with the output of the coming sample.
    EXPECT_EQ((std::vector<int>(p.Punkt_Ist[0].begin(), p.Punkt_Ist[0].begin() + 6)),
              (std::vector<int>{200, 210, 225, 240, 120, 0}));
    EXPECT_EQ((std::vector<int>(p.Punkt_Out[0].begin(), p.Punkt_Out[0].begin() + 5)),
              (std::vector<int>{2, 3, 44, 44, 44}));
    EXPECT_EQ(p.Punkt_Soll[0][1], 215);
    EXPECT_EQ((std::vector<int>(p.Punkt_Ist[2].begin(), p.Punkt_Ist[2].begin() + 10)),
              (std::vector<int>{2, 3, 3, 3, 3, 3, 10, 10, 2, 0}));
    EXPECT_EQ((std::vector<int>(fertig.begin(), fertig.begin() + 4)), (std::vector<int>{0, 0, 0, TRUE16}));
    // A furnace without set curves has neither set values nor outputs.
    r.typ = 0;
    reducePage(e, r, p, fertig);
    EXPECT_EQ(p.Punkt_Soll[0][1] + p.Punkt_Out[0][2], 0);
}

TEST_F(CurvePageTest, GapsHeldPointsAndTheEdgeRule)
{
    // Channel 0 at raster 60: samples at points 0, 1, 2, then a real 0 at 3,
    // 100 at 4 and 5, a gap to point 9. Channel 0 holds auxiliary values.
    EntryLists e;
    const int minuten[] = {0, 1, 2, 3, 4, 5, 9};
    const i16 werte[] = {100, 100, 100, 0, 100, 100, 300};
    for (int i = 0; i < 7; ++i) {
        const uint32_t z = addEntryTime(e, START.addSecs(60 * minuten[i]));
        e.Wertliste[0].push(z, werte[i]);
        e.Meldliste[4].push(z, 0);
        std::array<i16, 18> a{};
        a[0] = 1001;
        a[1] = i16(-12345);
        e.Meldliste[4].spur.push_back(a);
    }
    const PageFrame r = frame(1);
    PlotPage p;
    std::array<i16, LISTEN_KANAELE> fertig{};
    reducePage(e, r, p, fertig);
    const auto &ist = p.Punkt_Ist[0];
    // The zero stays and hides the segment before it; its neighbours are halved.
    EXPECT_EQ((std::vector<int>{ist[2], ist[3], ist[4]}), (std::vector<int>{50, 0, 50}));
    EXPECT_FALSE(actualVisible(p, 0, 2));
    EXPECT_TRUE(actualVisible(p, 0, 3));
    // The sample of minute 9 lies within one raster of the cursor at point 8
    // and again at point 9: 100 -> 300 in three steps, then the last point
    // before the empty rest is halved.
    EXPECT_EQ((std::vector<int>{ist[5], ist[6], ist[7], ist[8], ist[9], ist[10]}),
              (std::vector<int>{100, 167, 233, 300, 150, 0}));
    // An auxiliary value above 1000 is 500 while held; one of -12345 reads
    // back without its sign from its five places.
    EXPECT_EQ((std::vector<int>{p.Punkt_Spur[0][5], p.Punkt_Spur[0][6], p.Punkt_Spur[1][5]}),
              (std::vector<int>{1001, 500, 12345}));
    // Nothing after point 8: the page is not full, the channel not finished.
    EXPECT_EQ(fertig[0], 0);

    // One sample alone on a page gives a point and no segment.
    EntryLists eins;
    eins.Wertliste[0].push(addEntryTime(eins, START), 250);
    reducePage(eins, r, p, fertig);
    EXPECT_EQ(p.Punkt_Ist[0][0], 250);
    for (int i = 0; i < SEGMENTE; ++i)
        ASSERT_FALSE(actualVisible(p, 0, i)) << i;
}

TEST_F(CurvePageTest, ScalesUnitGroupsAndZeroLine)
{
    PlotPage p;
    p.clear();
    plant.Kanal_Status(0, 2) = 0;
    plant.Kanal_Einheit(0, 0) = plant.Kanal_Einheit(0, 1) = QStringLiteral(" °C  ");
    plant.Kanal_Teiler(0, 0) = 1;
    plant.Kanal_Teiler(0, 1) = 10; // same unit, another divider: one scale by raw numbers
    plant.Kanal_Einheit(0, 2) = QStringLiteral(" bar ");
    plant.Kanal_Teiler(0, 2) = 10;
    p.Punkt_Ist[0][10] = 200;
    p.Punkt_Soll[0][11] = -15;
    p.Punkt_Ist[1][5] = 1000;
    p.Punkt_Ist[2][5] = 44;
    const CurveScale s = scalePage(p, 3, 0, 320, 720);
    EXPECT_EQ((std::vector<int>{s.Einheit_Zahl, s.Skala_Min[0], s.Skala_Max[0], s.Skala_Max[1], s.Skala_Max[2]}),
              (std::vector<int>{2, -20, 1100, 1100, 140}));
    EXPECT_EQ(QStringList({s.Einheit_Label[0], s.Einheit_Label[1]}), QStringList({"1100 °C  ", "14.0 bar "}));
    EXPECT_DOUBLE_EQ(s.Null_Y, 320 / (20.0 / 1100 + 1));
    EXPECT_DOUBLE_EQ(s.Punkt_Breite, 2.0);

    // -15 and 200 alone: -20 .. 300, the zero line a fifteenth of the upper part up.
    PlotPage q;
    q.clear();
    q.Punkt_Ist[0][1] = 200;
    q.Punkt_Ist[0][2] = -15;
    const CurveScale t = scalePage(q, 1, 0, 320, 720);
    EXPECT_EQ(both(t.Skala_Min[0], t.Skala_Max[0]), both(-20, 300));
    EXPECT_EQ((std::vector<double>{t.Null_Y, yOfValue(t, 0, -20), Y_Out(t, 100)}), (std::vector<double>{300, 320, 200}));

    // An empty page: 20 + 100, the zero line at the bottom.
    PlotPage leer;
    leer.clear();
    const CurveScale u = scalePage(leer, 4, 0, 320, 720);
    EXPECT_EQ((std::vector<double>{double(u.Skala_Max[3]), u.Null_Y}), (std::vector<double>{120, 320}));
}

TEST_F(CurvePageTest, SetOutputAndSpareSegmentsTakeTurns)
{
    PlotPage p;
    p.clear();
    for (int c = 0; c < 3; ++c) {
        plant.Kanal_Soll_Kurve(0, c) = TRUE16;
        for (int i = 0; i < PUNKTE; ++i) {
            p.Punkt_Soll[size_t(c)][size_t(i)] = 500;
            p.Punkt_Out[size_t(c)][size_t(i)] = 50;
        }
    }
    p.Punkt_Soll[1][13] = 0; // on the zero line: left out
    p.Punkt_Out[0][5] = -1;
    const CurveScale s = scalePage(p, 3, 0, 300, 720);
    const CurveRules r{-10, true};
    std::vector<int> sichtbar[3];
    for (int c = 0; c < 3; ++c)
        for (int i = 0; i < SEGMENTE; ++i)
            if (setpointVisible(s, p, r, c, i))
                sichtbar[c].push_back(i);
    // Channel 1's segment 13 would start on the zero line.
    EXPECT_EQ((std::vector<int>{sichtbar[0][0], sichtbar[0][1], sichtbar[0][2], sichtbar[1][0], sichtbar[1][1]}),
              (std::vector<int>{1, 12, 23, 2, 24}));
    EXPECT_FALSE(setpointVisible(s, p, CurveRules{0, true}, 0, 1));
    plant.Kanal_Soll_Kurve(0, 0) = 0;
    EXPECT_FALSE(setpointVisible(s, p, r, 0, 1));

    // Segment 4's next point is below 0.
    EXPECT_EQ((std::vector<bool>{outputVisible(p, r, 0, 2), outputVisible(p, r, 0, 3), outputVisible(p, r, 0, 4),
                                 outputVisible(p, CurveRules{-10, false}, 0, 2), outputVisible(p, CurveRules{0, true}, 0, 2),
                                 spareVisible(r, 2), spareVisible(CurveRules{2, false}, 6)}),
              (std::vector<bool>{true, false, false, false, false, false, true}));
}

TEST_F(CurvePageTest, ProgrammeBandFields)
{
    PlotPage p;
    p.clear();
    for (int i = 10; i < 100; ++i)
        p.Punkt_Segment[size_t(i)] = 1;
    p.Punkt_Segment[100] = 2;
    for (int i = 101; i < 200; ++i)
        p.Punkt_Segment[size_t(i)] = 1; // back to 1: no new field
    std::array<QString, 21> texte;
    texte[1] = QStringLiteral("S01 B1 Rampe");
    texte[2] = QStringLiteral("S02 B2 Haltezeit");
    CurveScale s;
    s.Punkt_Breite = 2;
    s.Bild_Breite = 720;
    const auto band = programBand(p, texte, s);
    ASSERT_EQ(band.size(), 2u);
    // The second field runs to the last point with programme.
    EXPECT_EQ((std::vector<double>{band[0].x, band[0].breite, band[1].breite}),
              (std::vector<double>{20, 180, 398 - 200}));
    EXPECT_EQ(both(band[0].farbe, band[1].farbe), both(0x8080FF, 0x80FFFF));
}

TEST_F(CurvePageTest, ButtonBarPagesAndZoomsWithinItsLimitsAndAFullPageEndsTheRefresh)
{
    std::vector<SampleGroup> proben(400, SampleGroup{100, 100});
    // The keys on: zoom out, zoom in, back, forward.
    const auto tasten = [] {
        const auto &t = Kurve.Taste_An;
        return std::vector<bool>{t[TASTE_ZOOM_AUS], t[TASTE_ZOOM_EIN], t[TASTE_ZURUECK], t[TASTE_VOR]};
    };
    const QString f = headedFile(proben);
    laden(f); // 399 minutes
    EXPECT_EQ(both(Kurve.Raster_Start, Kurve.Zeit_Raster), both(67, 67));
    EXPECT_EQ(tasten(), (std::vector<bool>{false, true, false, false}));

    ASSERT_TRUE(curvePageKey(TASTE_ZOOM_EIN));
    EXPECT_EQ(Kurve.Zeit_Raster, 20); // 7 is below the closest zoom
    EXPECT_EQ(tasten(), (std::vector<bool>{true, false, false, true}));
    EXPECT_EQ(Kurve.Zeit_Marke[4], t0.addSecs(7200));
    EXPECT_EQ(Kurve.Label_Marke[2], QStringLiteral("05.03.24 09:00"));

    ASSERT_TRUE(curvePageKey(TASTE_VOR));
    EXPECT_EQ(Kurve.Zeit_Marke[0], t0.addSecs(9000));
    EXPECT_TRUE(tasten()[2]);
    EXPECT_EQ(Kurve.seite.Punkt_Ist[0][0], 100);
    ASSERT_TRUE(curvePageKey(TASTE_ZURUECK));
    ASSERT_TRUE(curvePageKey(TASTE_ZURUECK));
    EXPECT_EQ(Kurve.Zeit_Marke[0], t0); // not before the first time
    ASSERT_TRUE(curvePageKey(TASTE_ZOOM_AUS));
    EXPECT_EQ(Kurve.Zeit_Raster, 67); // 80 is beyond the whole file
    EXPECT_FALSE(curvePageKey(TASTE_CSV));

    // A page of two hours: every channel runs past its end, so the live
    // refresh takes no more records.
    curvePageKey(TASTE_ZOOM_EIN);
    const int vorher = Kurve.listen.Wertliste[0].size();
    const auto g = groupRecords(groupBlock(SampleGroup{1, 1}), recordTime(t0.addSecs(60 * 400)));
    appendRecords(f, {g.begin(), g.end()});
    Charge_Online();
    EXPECT_EQ(Kurve.listen.Wertliste[0].size(), vorher);
    EXPECT_EQ(Kurve.Kurve_Letzter, t0.addSecs(60 * 400)); // the span still follows the file
}

TEST_F(CurvePageTest, CursorReadsFromTheDrawnSegments)
{
    plant.Kanal_Teiler(0, 0) = 10;
    plant.Kanal_Einheit(0, 0) = QStringLiteral(" °C  ");
    plant.Kanal_Soll_Kurve(0, 0) = TRUE16;
    plant.Kanal_Adr_Out(0, 0) = 620;
    PlotPage p;
    p.clear();
    for (int i = 0; i < PUNKTE; ++i) {
        p.Punkt_Ist[0][size_t(i)] = i16(1000 + i);
        p.Punkt_Soll[0][size_t(i)] = 1100;
        p.Punkt_Out[0][size_t(i)] = -5;
        p.Punkt_Ist[2][size_t(i)] = 6;
    }
    const CurveScale s = scalePage(p, 3, 0, 300, 720);
    const CursorFrame r{START, 20, -10};

    // Left of the first segment: segment 1; time of X, not of the segment.
    CursorReading a = Mouse_Werte(1, -3, 50, s, p, r);
    EXPECT_TRUE(a.linie && a.x == 2 && a.text[0].isEmpty());
    a = Mouse_Werte(1, 90, 50, s, p, r);
    EXPECT_EQ(QStringList({a.text[0], a.text[1]}), QStringList({"01.06.24", "06:15"}));
    // Rising segment 45 -> 46: the lower value, as the reading leans to zero;
    // the output below 0 reads 0.
    EXPECT_EQ(a.text[2], QStringLiteral("110.0/104.5 °C    0%"));
    EXPECT_EQ(a.text[4], plant.Run_State_Text[1]); // a status channel reads the height: 6 is "held"
    // Segment 359 is beyond the search.
    EXPECT_FALSE(Mouse_Werte(1, 718.5, 50, s, p, r).linie);
    EXPECT_FALSE(Mouse_Werte(1, 10, 50, s, p, CursorFrame{}).text[0].size());

    // The right button reads the height on every unit scale.
    const CursorReading b = Mouse_Werte(2, 100, s.Null_Y / 2, s, p, r);
    EXPECT_TRUE(b.einheiten);
    EXPECT_EQ(b.einheitText[0], formatNumber(s.Skala_Max[0] / 20.0, QStringLiteral("#0.0")) + QStringLiteral(" °C  "));
    EXPECT_DOUBLE_EQ(b.Einheit_Y, s.Null_Y / 2 - EINHEIT_ABSTAND);
    EXPECT_FALSE(MAUS_AUS().linie);
}
