// The page of curves: the reducer against a literal walk over every entry,
// its rules at gaps and held points, the scales, the visibility of segments,
// the programme band, the button bar limits and the cursor.

#include "curve_fixture.h"

#include "core/conversions.h"
#include "core/dates.h"
#include "curves/curve_reduce.h"
#include "curves/curve_scale.h"
#include "curves/cursor.h"
#include "curves/time_axis.h"
#include "recording/batch_reader.h"

#include <cmath>
#include <random>

using namespace kal;
using namespace kal::test;

namespace {

const QDateTime T0(QDate(2024, 6, 1), QTime(6, 0, 30), Qt::UTC);

/// Adds an entry time to the lists' time table.
uint32_t addEntryTime(EntryLists &e, const QDateTime &t)
{
    const RecordTime z = timeOfDate(t);
    e.zeiten.stempel.push_back(Stamp{z.Jahr, z.Monat, z.Tag, z.Stunde, z.Minute, z.Sekunde});
    e.zeiten.minute.push_back(int32_t(minutesValue(z) - int64_t(QDate(2000, 1, 1).toJulianDay()) * 1440));
    return uint32_t(e.zeiten.stempel.size() - 1);
}

// ---- the literal walk: every entry from the first, times from the entry
// texts, date arithmetic on dates. It is the reducer as first written and
// the measure of the fast one.

void takeLiteral(const EntryLists &e, PlotPage &s, int j, int k, int p, i16 typ, bool status)
{
    s.Punkt_Ist[size_t(j)][size_t(p)] = e.Wertliste[size_t(j)].wert[size_t(k)];
    if (j == 0) {
        if (k < e.Meldliste[4].size()) {
            s.Punkt_Eintrag[size_t(p)] = k;
            const QString code = entryText(e, EntryListKind::Meld, 4, k).right(90);
            for (int f = 0; f < 18; ++f)
                s.Punkt_Spur[size_t(f)][size_t(p)] = int32_t(leadingNumber(code.mid(f * 5, 5)));
        }
        if (k < e.Meldliste[3].size())
            s.Punkt_Segment[size_t(p)] = e.Meldliste[3].wert[size_t(k)];
    }
    const EntryList &S = e.Sollliste[size_t(j)];
    if (typ != 0 && !status && k < S.size()) {
        s.Punkt_Soll[size_t(j)][size_t(p)] = S.wert[size_t(k)];
        const int out = int(leadingNumber(entryText(e, EntryListKind::Soll, j, k).right(6)));
        s.Punkt_Out[size_t(j)][size_t(p)] = i16(out > 32767 ? out - 1000000 : out);
    } else {
        s.Punkt_Soll[size_t(j)][size_t(p)] = 0;
        s.Punkt_Out[size_t(j)][size_t(p)] = 0;
    }
}

PlotPage literal(const EntryLists &e, const QDateTime &marke0, int raster, int kanaele, i16 typ)
{
    PlotPage s;
    s.clear();
    const QDateTime marke4 = marke0.addSecs(int64_t(raster) * 360);
    for (int j = 0; j < kanaele; ++j) {
        const bool status = plant.Kanal_Status(0, j) != 0;
        const EntryList &W = e.Wertliste[size_t(j)];
        int punkt = -1;
        QDateTime cursor = marke0;
        bool marke = false;
        bool ende = false;
        for (int k = 0; k < W.size() && !ende; ++k) {
            const i16 wert = W.wert[size_t(k)];
            if (status && wert == 3)
                marke = true;
            const QString t = entryText(e, EntryListKind::Wert, j, k);
            int tag = t.mid(4, 2).toInt(), monat = t.mid(2, 2).toInt();
            const QDateTime zeit = Datum_Bau(tag, monat, t.mid(0, 2).toInt(), t.mid(7, 2).toInt(),
                                             t.mid(10, 2).toInt(), 0);
            if (DateDiff(QStringLiteral("n"), zeit, marke0) > 0)
                continue;
            if (punkt == -1) {
                takeLiteral(e, s, j, k, 0, typ, status);
                punkt = 0;
                cursor = cursor.addSecs(raster);
            }
            qint64 rest = DateDiff(QStringLiteral("s"), cursor, zeit);
            while (rest >= 0) {
                if (++punkt > 360) {
                    ende = true;
                    break;
                }
                if (rest <= raster) {
                    if (!status) {
                        takeLiteral(e, s, j, k, punkt, typ, status);
                    } else {
                        s.Punkt_Ist[size_t(j)][size_t(punkt)] = marke ? i16(3) : wert;
                        marke = false;
                    }
                    const int l = s.Spur_Letzter[size_t(j)];
                    auto &ist = s.Punkt_Ist[size_t(j)];
                    if (punkt - l > 1) {
                        double v = ist[size_t(l)];
                        const double m = double(ist[size_t(punkt)] - ist[size_t(l)]) / (punkt - l);
                        for (int q = l + 1; q < punkt; ++q) {
                            v += m;
                            ist[size_t(q)] = status ? ist[size_t(l)] : i16(std::nearbyint(v));
                            if (j == 0)
                                s.Punkt_Segment[size_t(q)] = s.Punkt_Segment[size_t(l)];
                        }
                    }
                    s.Spur_Letzter[size_t(j)] = i16(punkt);
                } else {
                    s.Punkt_Ist[size_t(j)][size_t(punkt)] = s.Punkt_Ist[size_t(j)][size_t(punkt - 1)];
                    s.Punkt_Soll[size_t(j)][size_t(punkt)] = s.Punkt_Soll[size_t(j)][size_t(punkt - 1)];
                    const EntryList &S = e.Sollliste[size_t(j)];
                    s.Punkt_Out[size_t(j)][size_t(punkt)] =
                        (typ != 0 && !status && k < S.size()) ? S.out[size_t(k)] : i16(0);
                    if (j == 0) {
                        s.Punkt_Segment[size_t(punkt)] = s.Punkt_Segment[size_t(punkt - 1)];
                        for (auto &f : s.Punkt_Spur)
                            f[size_t(punkt)] = f[size_t(punkt - 1)] > 1000 ? 500 : f[size_t(punkt - 1)];
                    }
                }
                cursor = cursor.addSecs(raster);
                rest -= raster;
            }
        }
        (void)marke4;
    }
    edgeRule(s);
    return s;
}

/// Lists of a generated batch: samples 10..90 s apart with gaps of up to
/// two hours, channel 2 a status channel (values 2, 6, 10 and now and then 3),
/// set values and outputs, segment numbers, auxiliary values now and then.
EntryLists generatedLists(std::mt19937 &rnd, int proben)
{
    EntryLists e;
    QDateTime t = T0;
    std::uniform_int_distribution<int> schritt(10, 90), wert(-50, 1200), luecke(0, 40);
    for (int i = 0; i < proben; ++i) {
        t = t.addSecs(luecke(rnd) == 0 ? 600 + schritt(rnd) * 80 : schritt(rnd));
        const uint32_t z = addEntryTime(e, t);
        for (int j = 0; j < 4; ++j) {
            i16 w = i16(wert(rnd));
            if (j == 2)
                w = std::array<i16, 4>{2, 6, 10, 3}[size_t(rnd() % 4)];
            if (j == 1 && rnd() % 17 == 0)
                w = 0;
            e.Wertliste[size_t(j)].push(z, w);
            e.Sollliste[size_t(j)].push(z, i16(w + 5));
            e.Sollliste[size_t(j)].out.push_back(i16(rnd() % 120 - 10));
        }
        e.Meldliste[3].push(z, i16(1 + i / (proben / 6 + 1)));
        e.Meldliste[3].seg.push_back(SegmentFields{});
        if (rnd() % 3 == 0) {
            e.Meldliste[4].push(z, 0);
            std::array<i16, 18> a{};
            for (auto &v : a)
                v = i16(rnd() % 2000 - 100);
            e.Meldliste[4].spur.push_back(a);
        }
    }
    return e;
}

bool samePage(const PlotPage &a, const PlotPage &b)
{
    return a.Punkt_Ist == b.Punkt_Ist && a.Punkt_Soll == b.Punkt_Soll && a.Punkt_Out == b.Punkt_Out &&
           a.Punkt_Segment == b.Punkt_Segment && a.Punkt_Spur == b.Punkt_Spur && a.Punkt_Eintrag == b.Punkt_Eintrag;
}

class CurvePageTest : public CurveTest {
protected:
    void SetUp() override
    {
        CurveTest::SetUp();
        plant.Kanal_Status(0, 2) = TRUE16;
    }
};

} // namespace

TEST_F(CurvePageTest, FastReducerEqualsLiteralWalk)
{
    std::mt19937 rnd(4711);
    for (int lauf = 0; lauf < 4; ++lauf) {
        const EntryLists e = generatedLists(rnd, 1500);
        const QDateTime erster = T0, letzter = T0.addSecs(1500 * 100);
        for (int raster : {20, 80, 200, 740}) {
            for (const QDateTime &start : {erster, erster.addSecs(3600 * 9 + 17), letzter.addSecs(-raster * 200),
                                           letzter.addSecs(-600)}) {
                for (i16 typ : {i16(-10), i16(0)}) {
                    PageFrame r;
                    r.start = secondsOf(start);
                    r.raster = raster;
                    r.kanaele = 4;
                    r.typ = typ;
                    PlotPage schnell;
                    std::array<i16, LISTEN_KANAELE> fertig{};
                    reducePage(e, r, schnell, fertig);
                    const PlotPage soll = literal(e, start, raster, 4, typ);
                    ASSERT_TRUE(samePage(schnell, soll))
                        << "run " << lauf << " raster " << raster << " start "
                        << qPrintable(start.toString(Qt::ISODate)) << " type " << typ;
                }
            }
        }
    }
}

TEST_F(CurvePageTest, GapsHeldPointsAndTheEdgeRule)
{
    // Channel 0 at raster 60: samples at points 0, 1, 2, then a real 0 at 3,
    // 100 at 4 and 5, a gap to point 9. Channel 0 holds auxiliary values.
    EntryLists e;
    const QDateTime s = QDateTime(QDate(2024, 6, 1), QTime(6, 0), Qt::UTC);
    const int minuten[] = {0, 1, 2, 3, 4, 5, 9};
    const i16 werte[] = {100, 100, 100, 0, 100, 100, 300};
    for (int i = 0; i < 7; ++i) {
        const uint32_t z = addEntryTime(e, s.addSecs(60 * minuten[i]));
        e.Wertliste[0].push(z, werte[i]);
        e.Meldliste[4].push(z, 0);
        std::array<i16, 18> a{};
        a[0] = 1001;
        a[1] = i16(-12345);
        e.Meldliste[4].spur.push_back(a);
    }
    PageFrame r;
    r.start = secondsOf(s);
    r.raster = 60;
    r.kanaele = 1;
    PlotPage p;
    std::array<i16, LISTEN_KANAELE> fertig{};
    reducePage(e, r, p, fertig);
    const auto &ist = p.Punkt_Ist[0];
    // The zero stays and hides the segment before it; its neighbours are halved.
    EXPECT_EQ(ist[2], 50);
    EXPECT_EQ(ist[3], 0);
    EXPECT_EQ(ist[4], 50);
    EXPECT_FALSE(actualVisible(p, 0, 2));
    EXPECT_TRUE(actualVisible(p, 0, 3));
    // The sample of minute 9 lies within one raster of the cursor at point 8
    // and again at point 9: 100 -> 300 in three steps, then the last point
    // before the empty rest is halved.
    EXPECT_EQ((std::vector<int>{ist[5], ist[6], ist[7], ist[8], ist[9], ist[10]}),
              (std::vector<int>{100, 167, 233, 300, 150, 0}));
    // An auxiliary value above 1000 is 500 while held; one of -12345 reads
    // back without its sign from its five places.
    EXPECT_EQ(p.Punkt_Spur[0][5], 1001);
    EXPECT_EQ(p.Punkt_Spur[0][6], 500);
    EXPECT_EQ(p.Punkt_Spur[1][5], 12345);
    // Nothing after point 8: the page is not full, the channel not finished.
    EXPECT_EQ(fertig[0], 0);

    // One sample alone on a page gives a point and no segment.
    EntryLists eins;
    eins.Wertliste[0].push(addEntryTime(eins, s), 250);
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
    EXPECT_EQ(s.Einheit_Zahl, 2);
    EXPECT_EQ(s.Skala_Max[0], 1100);
    EXPECT_EQ(s.Skala_Max[1], 1100);
    EXPECT_EQ(s.Skala_Min[0], -20);
    EXPECT_EQ(s.Skala_Max[2], 140);
    EXPECT_EQ(s.Einheit_Label[0], QStringLiteral("1100 °C  "));
    EXPECT_EQ(s.Einheit_Label[1], QStringLiteral("14.0 bar "));
    EXPECT_DOUBLE_EQ(s.Null_Y, 320 / (20.0 / 1100 + 1));
    EXPECT_DOUBLE_EQ(s.Punkt_Breite, 2.0);

    // -15 and 200 alone: -20 .. 300, the zero line a fifteenth of the upper part up.
    PlotPage q;
    q.clear();
    q.Punkt_Ist[0][1] = 200;
    q.Punkt_Ist[0][2] = -15;
    const CurveScale t = scalePage(q, 1, 0, 320, 720);
    EXPECT_EQ(t.Skala_Min[0], -20);
    EXPECT_EQ(t.Skala_Max[0], 300);
    EXPECT_DOUBLE_EQ(t.Null_Y, 300.0);
    EXPECT_DOUBLE_EQ(yOfValue(t, 0, -20), 320.0);
    EXPECT_DOUBLE_EQ(Y_Out(t, 100), 200.0);

    // An empty page: 20 + 100, the zero line at the bottom.
    PlotPage leer;
    leer.clear();
    const CurveScale u = scalePage(leer, 4, 0, 320, 720);
    EXPECT_EQ(u.Skala_Max[3], 120);
    EXPECT_DOUBLE_EQ(u.Null_Y, 320.0);
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
    EXPECT_EQ(std::vector<int>(sichtbar[0].begin(), sichtbar[0].begin() + 3), (std::vector<int>{1, 12, 23}));
    EXPECT_EQ(sichtbar[1].front(), 2);
    EXPECT_EQ(sichtbar[1][1], 24); // 13 would start on the zero line
    EXPECT_FALSE(setpointVisible(s, p, CurveRules{0, true}, 0, 1));
    plant.Kanal_Soll_Kurve(0, 0) = 0;
    EXPECT_FALSE(setpointVisible(s, p, r, 0, 1));

    EXPECT_TRUE(outputVisible(p, r, 0, 2));
    EXPECT_FALSE(outputVisible(p, r, 0, 3));
    EXPECT_FALSE(outputVisible(p, r, 0, 4)); // the next point is below 0
    EXPECT_FALSE(outputVisible(p, CurveRules{-10, false}, 0, 2));
    EXPECT_FALSE(outputVisible(p, CurveRules{0, true}, 0, 2));
    EXPECT_FALSE(spareVisible(r, 2));
    EXPECT_TRUE(spareVisible(CurveRules{2, false}, 6));
}

TEST_F(CurvePageTest, ProgrammeBandFields)
{
    PlotPage p;
    p.clear();
    for (int i = 10; i < 100; ++i)
        p.Punkt_Segment[size_t(i)] = 1;
    for (int i = 100; i < 101; ++i)
        p.Punkt_Segment[size_t(i)] = 2;
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
    EXPECT_DOUBLE_EQ(band[0].x, 20);
    EXPECT_DOUBLE_EQ(band[0].breite, 180);
    EXPECT_EQ(band[0].farbe, 0x8080FFu);
    EXPECT_EQ(band[1].farbe, 0x80FFFFu);
    EXPECT_DOUBLE_EQ(band[1].breite, 398 - 200); // to the last point with programme
}

TEST_F(CurvePageTest, ButtonBarPagesAndZoomsWithinItsLimits)
{
    std::vector<SampleGroup> proben(400, SampleGroup{100, 100});
    laden(headedFile(proben)); // 399 minutes
    EXPECT_EQ(Kurve.Raster_Start, 67);
    EXPECT_EQ(Kurve.Zeit_Raster, 67);
    EXPECT_FALSE(Kurve.Taste_An[TASTE_ZOOM_AUS]);
    EXPECT_TRUE(Kurve.Taste_An[TASTE_ZOOM_EIN]);
    EXPECT_FALSE(Kurve.Taste_An[TASTE_ZURUECK]);
    EXPECT_FALSE(Kurve.Taste_An[TASTE_VOR]);

    ASSERT_TRUE(curvePageKey(TASTE_ZOOM_EIN));
    EXPECT_EQ(Kurve.Zeit_Raster, 20); // 7 is below the closest zoom
    EXPECT_FALSE(Kurve.Taste_An[TASTE_ZOOM_EIN]);
    EXPECT_TRUE(Kurve.Taste_An[TASTE_ZOOM_AUS]);
    EXPECT_TRUE(Kurve.Taste_An[TASTE_VOR]);
    EXPECT_EQ(Kurve.Zeit_Marke[4], t0.addSecs(7200));
    EXPECT_EQ(Kurve.Label_Marke[2], QStringLiteral("05.03.24 09:00"));

    ASSERT_TRUE(curvePageKey(TASTE_VOR));
    EXPECT_EQ(Kurve.Zeit_Marke[0], t0.addSecs(9000));
    EXPECT_TRUE(Kurve.Taste_An[TASTE_ZURUECK]);
    EXPECT_EQ(Kurve.seite.Punkt_Ist[0][0], 100);
    ASSERT_TRUE(curvePageKey(TASTE_ZURUECK));
    ASSERT_TRUE(curvePageKey(TASTE_ZURUECK));
    EXPECT_EQ(Kurve.Zeit_Marke[0], t0); // not before the first time
    ASSERT_TRUE(curvePageKey(TASTE_ZOOM_AUS));
    EXPECT_EQ(Kurve.Zeit_Raster, 67); // 80 is beyond the whole file
    EXPECT_FALSE(curvePageKey(TASTE_CSV));
}

TEST_F(CurvePageTest, LiveRefreshStopsWhenEveryChannelReachedThePageEnd)
{
    std::vector<SampleGroup> proben(400, SampleGroup{100, 100});
    const QString f = headedFile(proben);
    laden(f);
    curvePageKey(TASTE_ZOOM_EIN); // a page of two hours: every channel runs past its end
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
    const CursorFrame r{QDateTime(QDate(2024, 6, 1), QTime(6, 0), Qt::UTC), 20, -10};

    // Left of the first segment: segment 1; time of X, not of the segment.
    CursorReading a = Mouse_Werte(1, -3, 50, s, p, r);
    EXPECT_TRUE(a.linie);
    EXPECT_DOUBLE_EQ(a.x, 2);
    EXPECT_TRUE(a.text[0].isEmpty());
    a = Mouse_Werte(1, 90, 50, s, p, r);
    EXPECT_EQ(a.text[0], QStringLiteral("01.06.24"));
    EXPECT_EQ(a.text[1], QStringLiteral("06:15"));
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
