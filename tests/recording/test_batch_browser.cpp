// The batch browser on file names (name rules, filter, date, sort order),
// the user folder button and its file, the info box; the log book line.

#include "config/languages.h"
#include "core/plant_state.h"
#include "recording/batch_browser.h"
#include "recording/log_book.h"
#include "test_recorder_fixture.h"

#include <QDir>

using namespace kal;
using namespace kal::test;

namespace {

class Browser : public FileTest {
protected:
    void SetUp() override
    {
        FileTest::SetUp();
        buildLanguageTable();
        plant.Ofen_Serie[2] = QStringLiteral("2402-300-TST");
        plant.Ofen_Bezeichnung[2] = QStringLiteral("Anlassofen 3");
        plant.Datum_Von = QStringLiteral("01.01.2020");
    }
    static std::vector<BrowserFile> browserFiles(std::initializer_list<const char *> namen)
    {
        std::vector<BrowserFile> v;
        for (const char *n : namen)
            v.push_back({QString::fromLatin1(n), 3});
        return v;
    }
    static QStringList lineNames(const std::vector<BrowserLine> &z)
    {
        QStringList l;
        for (const auto &x : z)
            l << x.text.left(x.text.size() - 10).right(27);
        return l;
    }
};

} // namespace

TEST_F(Browser, NameRules)
{
    // Number, serial and date by position; an import name has two letters in
    // front and a number of five digits.
    for (const char *n :
         {"D2402300TST000123060324.OVD", "US2402300TST00123060324.OVD", "DS2402300TST00123060324.OVD"}) {
        const FileNameParts p = parseBatchName(QString::fromLatin1(n));
        EXPECT_TRUE(p.ok && p.import == (n[1] == 'S')) << n;
        EXPECT_EQ(QStringList({QString::number(p.nummer), p.serie, p.datum}),
                  QStringList({"123", "2402-300-TST", "24/03/06"}))
            << n;
    }
    // 26 and 28 characters, another extension, a plain "U": no batch.
    for (const char *n : {"D2402300TST00123060324.OVD", "D2402300TST0000123060324.OVD", "D2402300TST000123060324.OVX",
                          "UX2402300TST00042060324.OVD"})
        EXPECT_FALSE(parseBatchName(QString::fromLatin1(n)).ok) << n;
    EXPECT_EQ(matchingFurnace(QStringLiteral("2402-300-TST")), 3);
    EXPECT_EQ(matchingFurnace(QStringLiteral("2402 300 TST")), 3); // the dashes don't count
    EXPECT_EQ(matchingFurnace(QStringLiteral("9999-999-XXX")), 0);
}

TEST_F(Browser, FilterDateAndSortOrder)
{
    const auto alle = browserFiles({"D2402300TST000005060324.OVD", "D9999999XXX000007010224.OVD",
                               "D2402300TST000009010105.OVD", "D2402300TST000001150124.OVD"});
    auto z = Liste_Aufbauen(alle);
    // A file of 2005 never shows; the newest first; an unknown serial shows
    // with furnace digit 0 and a blank name.
    EXPECT_EQ(lineNames(z), (QStringList{"D2402300TST000005060324.OVD", "D9999999XXX000007010224.OVD",
                                     "D2402300TST000001150124.OVD"}));
    EXPECT_EQ(z[1].text.left(43), QStringLiteral("24/02/01 0:                 Charge 000007 D"));
    EXPECT_TRUE(z[0].text.endsWith(QStringLiteral("       3kB")));

    plant.Ofen_Filter = 1 << 2;
    EXPECT_EQ(lineNames(Liste_Aufbauen(alle)),
              (QStringList{"D2402300TST000005060324.OVD", "D2402300TST000001150124.OVD"}));
    plant.Ofen_Filter = 1 << 1;
    EXPECT_TRUE(Liste_Aufbauen(alle).empty());

    plant.Ofen_Filter = 0;
    plant.Sort_Art = 1;
    z = Liste_Aufbauen(alle);
    EXPECT_EQ(lineNames(z).first(), QStringLiteral("D9999999XXX000007010224.OVD"));
    EXPECT_TRUE(z[0].text.startsWith(QStringLiteral("Charge 000007 0:")));

    // Earliest date: a date in the box, then a year folder.
    ASSERT_TRUE(Datum_IN_LostFocus(QStringLiteral("01.03.24")));
    EXPECT_EQ(Datum_IN_Text(), QStringLiteral("01.03.24"));
    EXPECT_EQ(Liste_Aufbauen(alle).size(), 1u);
    EXPECT_FALSE(Datum_IN_LostFocus(QStringLiteral("kein Datum")));
    changeFolder(QStringLiteral("/daten/LogBuch/2024"));
    EXPECT_EQ(plant.Datum_Von, QStringLiteral("01.01.2024"));
    EXPECT_EQ(Liste_Aufbauen(alle).size(), 3u);
    changeFolder(QStringLiteral("/daten/LogBuch"));
    EXPECT_EQ(plant.Datum_Von, QStringLiteral("01.01.2000"));
}

TEST_F(Browser, ChoosingALineAndTheInfoBox)
{
    plant.Browser_Ordner = dir.path();
    plant.Pfad[3] = QStringLiteral("/csv");
    const QString name = QStringLiteral("D2402300TST000005060324.OVD");
    BatchFile f;
    f.open(pathOf(name));
    const auto text = batchDataRecords(QStringLiteral("Auftrag 4711").leftJustified(40) + QStringLiteral("Zeile 2"));
    f.write(40, text.data(), TEXT_SAETZE);
    f.close();
    ASSERT_TRUE(chooseLine(QStringLiteral("24/03/06 3:Anlassofen 3     Charge 000005 ") + name +
                              QStringLiteral("       3kB")));
    EXPECT_EQ(
        QStringList({plant.Kurve_Datei, plant.CSV_Datei, plant.CSV_Info_Datei, QString::number(plant.Wahl_Charge)}),
        QStringList({pathOf(name), "/csv/D2402300TST000005060324.CSV", "/csv/I2402300TST000005060324.CSV", "5"}));
    EXPECT_EQ(INFO_anzeigen().split(QLatin1Char('\n')).mid(0, 2),
              (QStringList{QStringLiteral("Auftrag 4711").leftJustified(40), QStringLiteral("Zeile 2").leftJustified(40)}));
    plant.Kurve_Datei = pathOf(QStringLiteral("fehlt.OVD"));
    EXPECT_TRUE(INFO_anzeigen().trimmed().isEmpty());
}

TEST_F(Browser, UserFolderButtonStates)
{
    plant.Pfad[0] = dir.path();
    plant.Charge_Ordner[0] = pathOf(QStringLiteral("2024"));
    const QString eigen = pathOf(QStringLiteral("eigen"));
    QDir().mkpath(plant.Charge_Ordner[0]);
    QDir().mkpath(eigen);

    // No saved folder: off at the year folder, "Save" elsewhere.
    plant.Browser_Ordner = plant.Charge_Ordner[0];
    ASSERT_TRUE(loadBrowser());
    EXPECT_EQ(User_Taste_Setzen().zustand, USER_AUS);
    plant.Browser_Ordner = eigen;
    UserButton k = User_Taste_Setzen();
    EXPECT_EQ(k.zustand, USER_SICHERN);
    EXPECT_EQ(k.text, QStringLiteral("Save ") + eigen);
    USER_LogButton_Click(k.zustand);
    EXPECT_EQ(fileContents(plant.User_Datei).split('\n').first().trimmed(), eigen.toLatin1());
    EXPECT_EQ(User_Taste_Setzen().zustand, USER_STANDARD);

    // Back at the year folder with a saved one: "Open", which goes there.
    USER_LogButton_Click(USER_STANDARD);
    EXPECT_EQ(plant.Browser_Ordner, plant.Charge_Ordner[0]);
    ASSERT_TRUE(loadBrowser());
    k = User_Taste_Setzen();
    EXPECT_EQ(k.zustand, USER_OEFFNEN);
    USER_LogButton_Click(k.zustand);
    EXPECT_EQ(plant.Browser_Ordner, eigen);

    // A folder that is gone: the message of the load.
    plant.Browser_Ordner = pathOf(QStringLiteral("weg"));
    plant.Charge_Ordner[0] = pathOf(QStringLiteral("auch-weg"));
    EXPECT_FALSE(loadBrowser());
    ASSERT_EQ(dlg.shown.size(), 1u);
    EXPECT_TRUE(dlg.shown.front().text.endsWith(QStringLiteral(" nicht gefunden!\nAuswahl des Quellverzeichnisses!")));
}

TEST_F(Browser, LogBookLines)
{
    const BatchRecord s{154, 6, 3, 24, 7, 5, 9, {850, -12, 12345, 7, -1, 0, 32767}};
    // A five-digit value in Wert[2] loses its first digit.
    EXPECT_EQ(LogSatz_Zeile(s), QStringLiteral("06.03.2024 07:05:09  154    850    -12  2345     7    -1     0  2767"));
    // A header record shows its characters as numbers and its bytes as a date.
    const BatchRecord kopf = nameRecord(QStringLiteral("Ofen"), RecordTime{});
    EXPECT_TRUE(LogSatz_Zeile(kopf).startsWith(QStringLiteral("00.00.2000 00:00:00")));

    const QString p = pathOf(QStringLiteral("leer.OVD"));
    rawFile(p, QByteArray());
    LogBookPage L = readLogBook(p);
    EXPECT_TRUE(L.zeilen.isEmpty());
    EXPECT_EQ(L.titel, plant.Sprachtext(0, 28) + QStringLiteral(": ") + p);
    BatchFile f;
    f.open(p);
    f.write(2, s);
    f.close();
    L = readLogBook(p);
    ASSERT_EQ(L.zeilen.size(), 2);
    EXPECT_EQ(L.werte[1], -12);
    EXPECT_EQ(readLogBook(pathOf(QStringLiteral("x.OVD"))).titel,
              QStringLiteral("Logdatei: ") + pathOf(QStringLiteral("x.OVD")) + QStringLiteral(" , nicht vorhanden!"));
}
