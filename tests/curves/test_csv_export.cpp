// CSV export and value list: the bytes of the file for a headed batch with
// messages and segments and for a plain batch, the two questions, the list
// rows against the file rows, the delayed rebuild of the list.

#include "curve_fixture.h"

#include "core/conversions.h"
#include "curves/csv_export.h"
#include "support/files.h"

#include <QDir>
#include <QFile>
#include <QLocale>

using namespace kal;
using namespace kal::test;

namespace {

class CsvExport : public CurveTest {
protected:
    QString ordner;

    void SetUp() override
    {
        CurveTest::SetUp();
        ordner = dir.filePath(QStringLiteral("CSV"));
        plant.Pfad[3] = ordner;
        plant.CSV_Datei = ordner + QStringLiteral("/B.CSV");
    }
    void TearDown() override
    {
        QLocale::setDefault(QLocale::c());
        CurveTest::TearDown();
    }

    QByteArray exportieren()
    {
        QDir().mkpath(ordner);
        EXPECT_TRUE(CSV_EXPORT(false));
        QFile f(plant.CSV_Datei);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }

    /// Two groups: message 1 is on from the start, then goes while 2 comes;
    /// segment 1 (a ramp to 80 °C at 5 K/h) runs through both.
    QString zweiGruppen()
    {
        SampleGroup a{200, 180, 40, 1234, 25, 1, 1, 1, 800, 50};
        SampleGroup b = a;
        b.ist = 190;
        b.zone = 1240;
        b.meld = 2;
        return headedFile({a, b});
    }
};

const QByteArray KOPF_GRUPPEN = "Datum;Zeit;Sollwert;;  Istwert;;Stellwert;;  Status;;Druck     ;\r\n";

} // namespace

TEST_F(CsvExport, HeadedBatchWithMessagesAndSegmentsInBothLocalesAndEmpty)
{
    laden(zweiGruppen());
    const QByteArray segment = "05.03.24 ;08:00:00;  Segment  1  1 Rampe        80\xB0""C   5.0K/h     0m\xB3/h   40           ";
    const QByteArray erwartet = KOPF_GRUPPEN +
                                // Row 1: message 1 was already on, so it has not "come".
                                "05.03.24 ;08:00:00;      ;01 Text 1\r\n" + segment + "\r\n" +
                                "05.03.24 ;08:00:00;200;180;200;1234;0;40;0;10;0.0;2.5\r\n"
                                "05.03.24 ;08:01:00;geht  ;01 Text 1\r\n"
                                "05.03.24 ;08:01:00;kommt ;02 Text 2\r\n"
                                "05.03.24 ;08:01:00;200;190;200;1240;0;40;0;6;0.0;2.5\r\n";
    EXPECT_EQ(exportieren(), erwartet);

    // A German system writes decimal commas.
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    dlg.answers = {1}; // replace the file
    const QByteArray f = exportieren();
    EXPECT_TRUE(f.contains("05.03.24 ;08:00:00;200;180;200;1234;0;40;0;10;0,0;2,5\r\n")) << f.constData();

    // An empty batch writes the header only.
    laden(headedFile({}, batchPath(8)));
    dlg.answers = {1};
    EXPECT_EQ(exportieren(), KOPF_GRUPPEN);
}

TEST_F(CsvExport, PlainBatchHasNoSetValuesAndRowSwitches)
{
    laden(plainFile());
    const QByteArray m1 = Latin1Bytes(Kurve.Meld_Text[0].trimmed());
    const QByteArray m2 = Latin1Bytes(Kurve.Meld_Text[1].trimmed());
    const QByteArray m21 = Latin1Bytes(Kurve.Meld_Text[20].trimmed());
    // A plain batch has no set value entries: those cells stay empty.
    QByteArray erwartet = "Datum;Zeit;Sollwert;;Istwert;;Stellwert;;Status;\r\n"
                          "05.03.24 ;08:00:00;      ;01 " + m1 + "\r\n"
                          "05.03.24 ;08:00:00;      ;21 " + m21 + "\r\n"
                          "05.03.24 ;08:00:00;;250;;248;;35;;10\r\n"
                          "05.03.24 ;08:01:00;geht  ;01 " + m1 + "\r\n"
                          "05.03.24 ;08:01:00;kommt ;02 " + m2 + "\r\n"
                          "05.03.24 ;08:01:00;geht  ;21 " + m21 + "\r\n"
                          "05.03.24 ;08:01:00;;251;;249;;0;;6\r\n";
    EXPECT_EQ(exportieren(), erwartet);

    // A choice of Ist and Out of channel 0 with both row switches off.
    Listen.Liste_Gewaehlt = true;
    for (int k = 0; k < LISTE_SPALTEN; ++k)
        Liste_Soll(k) = Liste_Ist(k) = Liste_Out(k) = 0;
    Liste_Ist(1) = Liste_Out(1) = TRUE16;
    dlg.answers = {1}; // replace the file
    erwartet = "Datum;Zeit;Sollwert;\r\n"
               "05.03.24 ;08:00:00;250;\r\n"
               "05.03.24 ;08:01:00;251;\r\n";
    EXPECT_EQ(exportieren(), erwartet);
}

TEST_F(CsvExport, FolderAndReplaceQuestions)
{
    laden(zweiGruppen());
    // No CSV folder and "No": nothing is written, in either mode.
    dlg.answers = {0, 0};
    EXPECT_FALSE(CSV_EXPORT(false));
    EXPECT_FALSE(CSV_EXPORT(true));
    ASSERT_EQ(dlg.shown.size(), 2u);
    EXPECT_EQ(dlg.shown[0].title + "|" + dlg.shown[0].text, "Folder Not found!|CSV-Files\n" + ordner + "\n\nCreate? ");
    EXPECT_FALSE(QDir(ordner).exists() || !Listen.CSV_LIST.isEmpty());

    // An existing file and "No": it stays as it was.
    QDir().mkpath(ordner);
    writeFile(plant.CSV_Datei, "alt");
    dlg.shown.clear();
    dlg.answers = {0};
    EXPECT_FALSE(CSV_EXPORT(false));
    ASSERT_EQ(dlg.shown.size(), 1u);
    EXPECT_EQ(dlg.shown[0].title + "|" + dlg.shown[0].text.right(9), "Datei vorhanden!|ersetzen?");
    EXPECT_EQ(readFile(plant.CSV_Datei), QByteArray("alt"));
}

TEST_F(CsvExport, ListHoldsTheRowsOfTheFileInCellsOfTen)
{
    laden(zweiGruppen());
    const QList<QByteArray> datei = exportieren().split('\n');
    ASSERT_TRUE(CSV_EXPORT(true));
    ASSERT_EQ(Listen.CSV_Text.size(), 2);
    EXPECT_EQ(Listen.CSV_Text[0], QStringLiteral("Datum     Zeit    Sollwert                Istwert             "
                                                 "Stellwert               Status              Druck                "));
    EXPECT_EQ(Listen.CSV_Text[1].left(17 + 22), QString(18, QLatin1Char(' ')) + QStringLiteral("[ °C  ]    [ °C  ]   "));
    // Header line of the file aside, the same rows in the same order.
    ASSERT_EQ(Listen.CSV_LIST.size(), datei.size() - 2);
    for (int i = 0; i < Listen.CSV_LIST.size(); ++i)
        EXPECT_EQ(Listen.CSV_LIST[i].left(18), Latin1Text(datei[i + 1]).left(18).replace(QLatin1Char(';'), QLatin1Char(' ')));
    // The first data row names the unit in every cell; later rows show numbers.
    EXPECT_EQ(Listen.CSV_LIST[2], QStringLiteral("05.03.24  08:00:00     200 °C     180 °C     200 °C    1234 °C"
                                                 "        0 %       40 %          0         10    0.0 bar    2.5 bar"));
    EXPECT_EQ(Listen.CSV_LIST[5].mid(18, 22), QStringLiteral("        200        190"));
}

TEST_F(CsvExport, TwoClicksWithinThePauseRebuildOnce)
{
    laden(zweiGruppen());
    QDir().mkpath(ordner);
    CSV_EXPORT(true);
    Listen.CSV_LIST.clear();
    listChecked();
    for (int i = 0; i < 5; ++i)
        listTick();
    Liste_Ist(1) = 0;
    listChecked(); // the second click starts the pause again
    for (int i = 0; i < 9; ++i)
        listTick();
    EXPECT_TRUE(Listen.CSV_LIST.isEmpty());
    listTick();
    ASSERT_FALSE(Listen.CSV_LIST.isEmpty());
    EXPECT_TRUE(Listen.Liste_Gewaehlt);
    Listen.CSV_LIST.clear();
    for (int i = 0; i < 200; ++i)
        listTick();
    EXPECT_TRUE(Listen.CSV_LIST.isEmpty());
    EXPECT_EQ(Listen.Zaehler, LISTE_TAKTE);
}
