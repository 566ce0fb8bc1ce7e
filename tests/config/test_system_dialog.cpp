// The system dialog's logic: the furnace limits typed in whole units, the
// serial number check, the panel text files byte for byte, the card copy and
// the drive list.

#include "config_fixture.h"

#include "config/message_files.h"
#include "config/system_dialog.h"
#include "core/conversions.h"

using namespace kal;
using namespace kal::test;

namespace {

class SystemTest : public ConfigFixture {
protected:
    void SetUp() override
    {
        ConfigFixture::SetUp();
        makeDefaultFolders();
        plant.Ofen_Name[2] = QStringLiteral("Kammerofen");
        plant.Ofen_Serie[2] = QStringLiteral("1203-017-KHP");
        plant.Ofen_Wert216[2] = 12000;
        plant.Meld_Anzahl[2] = 32;
        for (int n = 1; n <= 48; ++n)
            plant.Meld_Text(2, n - 1) = QStringLiteral("Text %1").arg(n);
        plant.Spur(2, 0) = QStringLiteral("Regler");
        openSystem(3);
    }
    QString testFolder(const char *name)
    {
        const QString p = tmp.filePath(QString::fromLatin1(name));
        QDir().mkpath(p);
        return p;
    }
};

QByteArray textRecord(const char *text)
{
    return QByteArray(text).leftJustified(40, ' ');
}

} // namespace

TEST_F(SystemTest, LimitsAreTypedInWholeUnitsAndStoredTimesTen)
{
    const std::tuple<int, const char *, const char *, int> faelle[] = {
        {3, "1300", "1300", 13000}, {3, "250", "300", 3000},  {3, "x", "300", 3000}, {3, "3500", "3000", 30000},
        {4, "40", "50", 500},       {4, "600", "500", 5000},  {4, "120", "120", 1200},
        {5, "50", "100", 1000},     {5, "4000", "3200", 32000}, {5, "1500", "1500", 15000},
    };
    for (const auto &[feld, ein, aus, wert] : faelle) {
        EXPECT_EQ(System_Text1_LostFocus(feld, QString::fromLatin1(ein)), QString::fromLatin1(aus)) << feld << " " << ein;
        EXPECT_EQ(System.Werte[size_t(feld - 3)], wert) << feld << " " << ein;
    }
    EXPECT_EQ(System_Text1_LostFocus(SYS_TYP, QStringLiteral("Schutzgas-Kammerofen 2")), QStringLiteral("Schutzgas-Kammer"));

    ASSERT_TRUE(System_OK());
    const QByteArray datei = configBytes();
    EXPECT_EQ(datei.mid(at(33, 6), 6), QByteArray("\x30\x75\xB0\x04\x98\x3A", 6)) << "W1..W3 of record 31+i";
    EXPECT_EQ(datei.mid(at(23, 14), 16), QByteArray("Schutzgas-Kammer"));
}

TEST_F(SystemTest, SerialNumberNeedsDashesAtFiveAndNine)
{
    EXPECT_EQ(System_Text1_LostFocus(SYS_SERIE, QStringLiteral("2401-123-GKD")), QStringLiteral("2401-123-GKD"));
    EXPECT_TRUE(dlg.shown.empty());
    for (const char *falsch : {"2401123-ABCD", "240-1123-ABC", "2401-12-3ABC"}) {
        EXPECT_EQ(System_Text1_LostFocus(SYS_SERIE, QString::fromLatin1(falsch)), QStringLiteral("2401-123-GKD"));
        ASSERT_FALSE(dlg.shown.empty());
        EXPECT_EQ(dlg.shown.back().text, QStringLiteral("Die Serien-Nr. hat nicht das\nFormat: >>>JJMM-NNN-TTT<<<"));
    }
    EXPECT_EQ(dlg.shown.size(), 3u);
    ASSERT_TRUE(System_OK());
    EXPECT_EQ(plant.Ofen_GKD[2], -1);
}

TEST_F(SystemTest, TextFileRecordsOfBothFormsRoundTrip)
{
    // The 32 form: header, 32 texts, empty records up to 48, tracks at 49..52.
    MldList t = System.Texte;
    ASSERT_EQ(t.Anzahl, 32);
    ASSERT_EQ(t.Zeilen.size(), 36);
    EXPECT_EQ(t.Zeilen[0], QStringLiteral("01:Text 1"));
    EXPECT_EQ(t.Zeilen[32], QStringLiteral("33:Regler"));
    setLine(1, QString::fromUtf8("Türkontakt offen, bitte prüfen"));
    t = System.Texte;
    t.Kopf = textRecord("PANEL M02 V1.3");
    const QByteArray b = mldBytes(t);
    ASSERT_EQ(b.size(), 52 * 40);
    EXPECT_EQ(b.left(120), textRecord("PANEL M02 V1.3") + textRecord("Text 1") +
                               Latin1Bytes(QString::fromUtf8("Türkontakt offen, bitt")).leftJustified(40, ' '));
    EXPECT_EQ(b.mid(33 * 40, 16 * 40), QByteArray(15 * 40, ' ') + textRecord("Regler"));

    const QString dir = testFolder("karte");
    QString meldung;
    ASSERT_TRUE(MLD_XXX_Sichern(dir, t, meldung));
    MldList gelesen;
    EXPECT_EQ(loadMld(dir, MLD_XXX_DATEI, gelesen), QString());
    EXPECT_EQ(gelesen.Zeilen, t.Zeilen);
    EXPECT_EQ(gelesen.Kopf, t.Kopf);

    // The 48 form has 49 records and no track names.
    chooseMessageCount(48);
    ASSERT_EQ(System.Texte.Zeilen.size(), 48);
    EXPECT_EQ(System.Texte.Zeilen[47], QStringLiteral("48:"));
    System.Texte.Zeilen[47] = QStringLiteral("48:Letzte");
    ASSERT_TRUE(MLD_XXX_Sichern(dir, System.Texte, meldung));
    EXPECT_EQ(readFile(QDir(dir).filePath(MLD_XXX_DATEI)).size(), 49 * 40);
    EXPECT_EQ(loadMld(dir, MLD_XXX_DATEI, gelesen), QString());
    EXPECT_EQ(both(gelesen.Anzahl, mldCount(52)), both(48, 32));
    EXPECT_EQ(gelesen.Zeilen[47], QStringLiteral("48:Letzte"));
}

TEST_F(SystemTest, MissingFilesAndFoldersAreReportedAndNothingIsWritten)
{
    const QString dir = testFolder("leer");
    MldList t;
    EXPECT_EQ(loadMld(dir, MLD_IMPORT_DATEI, t),
              QStringLiteral("Quellfile:   ") + QDir::toNativeSeparators(QDir(dir).filePath("MLD_IMPORT.TXT")) +
                  QStringLiteral(">>> Bitte anlegen!"));
    EXPECT_TRUE(dlg.shown.empty());

    const QString weg = tmp.filePath(QStringLiteral("weg"));
    EXPECT_EQ(loadMld(weg, MLD_IMPORT_DATEI, t), QStringLiteral("Ordner ") + weg + QStringLiteral(" nicht gefunden!"));
    ASSERT_EQ(dlg.shown.size(), 1u);
    EXPECT_EQ(dlg.shown.front().text, QStringLiteral("Auswahl des Quellverzeichnisses!"));
    QString meldung;
    EXPECT_FALSE(MLD_XXX_Sichern(weg, System.Texte, meldung));
    EXPECT_FALSE(QDir(weg).exists());
}

TEST_F(SystemTest, CardCopyMakesTheTreeCopiesTheFilesAndReportsAGap)
{
    const QString quelle = testFolder("MEM_CARD");
    QDir().mkpath(quelle + "/DATEN");
    QDir().mkpath(quelle + "/SYSTEM/FONTS");
    for (const char *name : {"PROG1.txt", "PROG7.txt", "Prog.txt", "PID.txt", "COD_M02.txt", "MLD_M02.txt",
                             "COD_P01.txt", "MLD_P01.txt"})
        writeFile(quelle + "/DATEN/" + name, QByteArray(name).leftJustified(16, ' '));
    const QString ziel = testFolder("CF/DATEN").section('/', 0, -2);
    writeFile(ziel + "/DATEN/PID.txt", "alt");

    EXPECT_TRUE(DateiCopy(quelle, ziel));
    EXPECT_TRUE(dlg.shown.empty());
    EXPECT_TRUE(QDir(ziel + "/SYSTEM/FONTS").exists());
    EXPECT_EQ(readFile(ziel + "/DATEN/PROG7.txt"), QByteArray("PROG7.txt       "));
    EXPECT_EQ(readFile(ziel + "/DATEN/PID.txt"), QByteArray("PID.txt         ")) << "an older file is replaced";
    EXPECT_FALSE(QFile::exists(ziel + "/DATEN/PROG2.txt"));

    QFile::remove(quelle + "/DATEN/COD_P01.txt");
    EXPECT_FALSE(DateiCopy(quelle, ziel));
    ASSERT_EQ(dlg.shown.size(), 1u);
    EXPECT_EQ(dlg.shown.front().text, QString::fromUtf8("CF-Karte nicht vollständig kopiert!"));
}

TEST_F(SystemTest, DriveLinesTypeWordsAndReadyCheck)
{
    EXPECT_EQ(driveLine({QStringLiteral("E:\\"), 3}), QStringLiteral("E:\\ : Network"));
    for (int t = 0; t <= 5; ++t)
        EXPECT_EQ(driveUsable(t), t == 2 || t == 3) << t;
    EXPECT_FALSE(drives().isEmpty());
    EXPECT_TRUE(driveReady(tmp.path()));
    const QString weg = tmp.filePath(QStringLiteral("kein_Laufwerk"));
    EXPECT_FALSE(driveReady(weg));
    EXPECT_NE(startFolder(weg), weg);
    EXPECT_EQ(listLines(LISTE_SPUR).first(), QStringLiteral("Spur 1: Regler"));
    EXPECT_EQ(listLines(LISTE_MELD).mid(30), QStringList({"Meld 31: Text 31", "Meld 32: Text 32"}));
}
