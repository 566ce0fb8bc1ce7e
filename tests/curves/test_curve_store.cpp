// Loading a batch into the curve store: kind of file and slot 0, span and
// raster, the two passes, the group decoder, the texts, the live refresh.

#include "curve_fixture.h"

#include "config/text_ids.h"
#include "core/conversions.h"
#include "curves/time_axis.h"

using namespace kal;
using namespace kal::test;

namespace {

using CurveLoading = CurveTest;

QString valueText(int j, int k)
{
    return entryText(Kurve.listen, EntryListKind::Wert, j, k);
}

} // namespace

TEST_F(CurveLoading, HeadedFileFillsSlotZeroAndDecodesGroups)
{
    SampleGroup a{200, 180, 40, 1234, 25, 0, 1, 1, 800, 50};
    SampleGroup b = a;
    b.ist = 190;
    b.zone = 1240;
    b.meld = 0x0002; // held
    laden(headedFile({a, b}));

    EXPECT_EQ((std::vector<int>{plant.Ofen_Typ[0], Kurve.Neu_Datei, plant.Kanal_Zahl[0], Kurve.Satz_Letzter}),
              (std::vector<int>{-10, true, 5, 47}));
    EXPECT_EQ(QStringList({Kurve.Charge_Name, Kurve.Meld_Text[2].trimmed(), Kurve.Label_Charge}),
              QStringList({"Ofen Test       ", "Text 3", "2401-100-TST, Charge 7"}));

    // One entry a group and channel; channel 0 direct, the others by address.
    // Channel 3 is a status channel: off, then held.
    const auto &L = Kurve.listen;
    EXPECT_EQ((std::vector<int>{L.Wertliste[0].size(), L.Wertliste[0].wert[1], L.Wertliste[1].wert[1],
                                L.Sollliste[1].wert[0], L.Sollliste[1].out[0], L.Wertliste[3].wert[0], L.Wertliste[3].wert[1]}),
              (std::vector<int>{2, 190, 1240, 200, 40, 2, 6}));
    EXPECT_EQ(valueText(4, 0), QStringLiteral("240305 08:00:00   2.5 bar "));
    EXPECT_EQ(valueText(3, 1).mid(18), plant.Run_State_Text[1]);
    EXPECT_EQ(entryText(Kurve.listen, EntryListKind::Soll, 1, 0), QStringLiteral("240305 08:00:00   000040"));
    EXPECT_EQ(entryText(Kurve.listen, EntryListKind::Meld, 1, 0).mid(18), QStringLiteral("0000"));
    EXPECT_EQ(entryText(Kurve.listen, EntryListKind::Meld, 3, 0).mid(18),
              QStringLiteral(" 11  800   50  0  0  40    0"));

    // The segment line and the message that came.
    EXPECT_TRUE(Kurve.Segment_Text[1].startsWith(QStringLiteral("S01 B1 ")));
    EXPECT_TRUE(Kurve.Info_Text.contains(QStringLiteral("240305 08:01:00    kommt 02 Text 2\r\n")))
        << qPrintable(Kurve.Info_Text);

    // A refresh takes only the records behind the last one taken; the info
    // lines are made once, not once per refresh.
    const QString info = Kurve.Info_Text;
    SampleGroup c = b;
    c.ist = 120;
    const auto g = groupRecords(groupBlock(c), recordTime(t0.addSecs(7200)));
    appendRecords(plant.Kurve_Datei, {g.begin(), g.end()});
    Charge_Online();
    EXPECT_EQ((std::vector<int>{L.Wertliste[0].size(), L.Wertliste[0].wert[2], Kurve.Satz_Letzter}),
              (std::vector<int>{3, 120, 51}));
    EXPECT_EQ(Kurve.Info_Text, info);
}

TEST_F(CurveLoading, GroupsOutOfOrderAreLostAloneAndRepeatsDrop)
{
    std::vector<SampleGroup> p(5);
    for (int i = 0; i < 5; ++i)
        p[size_t(i)] = SampleGroup{200, i16(100 + i), 0, 0, 0, 0, 1, 1};
    p[1].seg = 2;
    p[2].seg = 4; // jumps by 2: this group is lost ...
    p[3].seg = 5; // ... the next one counts again
    p[4].seg = 6;
    const QString f = headedFile(p);
    // An exact repeat of the last record vanishes; the same time with another
    // value stays.
    BatchFile d;
    d.open(f);
    BatchRecord letzter = d.read(d.count());
    d.close();
    appendRecords(f, {letzter});
    laden(f);
    std::vector<int> ist(Kurve.listen.Wertliste[0].wert.begin(), Kurve.listen.Wertliste[0].wert.end());
    EXPECT_EQ(ist, (std::vector<int>{100, 101, 103, 104}));

    // A 156 out of its place breaks the group it is in.
    auto g = groupRecords(groupBlock(SampleGroup{1, 2}), recordTime(t0.addSecs(600)));
    appendRecords(f, {g[0], g[2], g[1], g[3]});
    Charge_Online();
    EXPECT_EQ(Kurve.listen.Wertliste[0].size(), 4);
}

TEST_F(CurveLoading, SpanAndRaster)
{
    // One group: span 0, the raster that shows the file is 2, the time axis
    // puts the page at raster 20 and both zoom buttons are off.
    laden(headedFile({SampleGroup{100, 100}}));
    EXPECT_EQ((std::vector<int>{Kurve.Kurve_Dauer, Kurve.Raster_Start, Kurve.Zeit_Raster}), (std::vector<int>{0, 2, 20}));
    EXPECT_FALSE(Kurve.Taste_An[TASTE_ZOOM_EIN] || Kurve.Taste_An[TASTE_ZOOM_AUS]);
    EXPECT_EQ(Kurve.Label_Dauer, QStringLiteral("0,00:00"));

    // A span over 2 400 000 s is cut. (The span's dates are the reader's, checked there.)
    const QString p = batchPath(8);
    appendRecords(p, {singleSample(QDateTime(QDate(2024, 1, 2), QTime(5, 0), Qt::UTC), {10, 20}),
                  singleSample(QDateTime(QDate(2024, 3, 1), QTime(5, 0), Qt::UTC), {10, 20})});
    laden(p);
    EXPECT_EQ(plant.Ofen_Typ[0], 0);
    EXPECT_EQ((std::vector<int>{Kurve.Kurve_Dauer, Kurve.Raster_Start}),
              (std::vector<int>{2400000, 2400000 / 360 + 1}));
}

TEST_F(CurveLoading, EmptyAndMissingFilesShowNothing)
{
    const QString p = batchPath(9);
    appendRecords(p, {});
    BatchFile d;
    d.open(dir.filePath(QStringLiteral("D2401100TST000001050324.OVD")));
    d.write(1, singleSample(t0, {1, 2}));
    d.close();
    for (const QString &f : {d.path(), dir.filePath(QStringLiteral("fehlt.OVD"))}) {
        laden(f);
        EXPECT_FALSE(Kurve.zeitDa) << qPrintable(f);
        EXPECT_TRUE(Kurve.Label_Erster.isEmpty());
        EXPECT_EQ(Kurve.listen.Wertliste[0].size(), 0);
        EXPECT_FALSE(Kurve.Taste_An[TASTE_VOR]);
    }
}

TEST_F(CurveLoading, PlainSamplesFillSevenListsWithTheirTexts)
{
    laden(plainFile());
    EXPECT_EQ(plant.Kanal_Zahl[0], 4);
    EXPECT_EQ(Kurve.Meld_Text[0], fixedWidth(plant.Sprachtext(0, text::MESSAGE_FIRST), 22));
    const QString z = QStringLiteral("240305 08:00:00   ");
    // 2300 / 120 * 1000 = 19167 mOhm; W3 of 0 gives no resistance.
    EXPECT_EQ(QStringList({valueText(0, 0), valueText(2, 0), valueText(3, 0), valueText(4, 0), valueText(6, 0)}),
              QStringList({z + "250°C", z + "35%", z + plant.Run_State_Text[2], z + "12.0A", z + "19.167 Ohm"}));
    EXPECT_EQ(valueText(3, 1).mid(18), plant.Run_State_Text[1]);
    EXPECT_EQ(both(Kurve.listen.Wertliste[6].wert[0], Kurve.listen.Wertliste[6].wert[1]), both(19167, 0));
    EXPECT_EQ(entryText(Kurve.listen, EntryListKind::Meld, 1, 0), z + QStringLiteral("0010"));
    EXPECT_EQ(entryText(Kurve.listen, EntryListKind::Meld, 2, 0), z + QString(45, QLatin1Char(' ')));
    // Message 21 (word 1, bit 4) came and went.
    EXPECT_TRUE(Kurve.Info_Text.contains(QStringLiteral("  kommt 21 ")));
    EXPECT_TRUE(Kurve.Info_Text.contains(QStringLiteral("  geht 21 ")));
}

TEST_F(CurveLoading, SegmentLinesByKind)
{
    plant.Befehl_Name[1] = QStringLiteral("Rampe    ");
    SegmentFields s{0, 1, 8000, 1205, 12, 0, 77, 345};
    const QString z = Segment_Zeile(s, QStringLiteral("m³/h"), false);
    EXPECT_EQ(z.size(), 54);
    EXPECT_EQ(z, QStringLiteral("1 Rampe       800°C 120.5K/h    12m³/h   77 345kWh    "));
    s.art = 4;
    EXPECT_EQ(Segment_Zeile(s, QStringLiteral(" L/M"), true).mid(23, 4), QStringLiteral("100%"));
    EXPECT_EQ(Segment_Zeile(s, QStringLiteral(" L/M"), true).mid(31, 7), QStringLiteral("1.2 L/M"));
    s.art = 9; // no kind: the line holds its digit 0 and nothing else
    EXPECT_EQ(Segment_Zeile(s, QString(), false).trimmed(), QStringLiteral("0 ") + plant.Befehl_Name[0].trimmed());
}
