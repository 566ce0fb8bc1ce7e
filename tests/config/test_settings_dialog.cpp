// The settings dialog's logic: the limits of every field with their
// replacement values, OK and Cancel, the backup folder check, the disk, the
// message pages, the status line and the language table export.

#include "config_fixture.h"

#include "config/settings_dialog.h"

using namespace kal;
using namespace kal::test;

namespace {

class SettingsTest : public ConfigFixture {
protected:
    void SetUp() override
    {
        ConfigFixture::SetUp();
        makeDefaultFolders();
        for (int k = 1; k <= 3; ++k)
            plant.Pfad[k] = defaultFolder(k);
        plant.Ofen_Name[1] = QStringLiteral("Kammerofen");
        plant.TempLog_Takt[1] = 60;
        openParameters();
    }
};

} // namespace

TEST_F(SettingsTest, EveryFieldKeepsItsLimitsWithTheReplacementValue)
{
    struct Case {
        int option; ///< link kind of the furnace (1: serial limits)
        int feld;
        const char *eingabe;
        const char *gezeigt;
    };
    const Case faelle[] = {
        {0, 0, "192", "192"}, {0, 0, "256", "255"},    {0, 3, "-1", "0"},    {0, 1, "abc", "0"},
        {1, 0, "0", "1"},     {1, 0, "17", "16"},      {1, 0, "16", "16"},   {1, 2, "9", "8"},
        {1, 3, "0", "1"},     {2, 3, "300", "255"},    {0, 4, "4", "60"},    {0, 4, "5", "5"},
        {0, 4, "3601", "3600"}, {0, 13, "-1", "0"},    {0, 13, "301", "300"}, {0, 13, "300", "300"},
        {0, 5, "9", "2"},     {0, 5, "8", "8"},        {0, 12, "  Halle 3 Ost  ", "Halle 3 Ost"},
        {0, 12, "    ", "Kammerofen"}, {0, 12, "Ein sehr langer Name", "Ein sehr langer "},
    };
    for (const Case &c : faelle) {
        setOption1(1, c.option);
        EXPECT_EQ(Text1_LostFocus(1, c.feld, QString::fromLatin1(c.eingabe)), QString::fromLatin1(c.gezeigt))
            << "option " << c.option << " field " << c.feld << " input " << c.eingabe;
    }
    setOption1(1, 2);
    EXPECT_EQ(addressCaption(1), QStringLiteral("TCP/IP-ADD"));
    EXPECT_EQ(Parameter.Ofen[1].UDP, -1);

    const std::tuple<int, const char *, const char *> druck[] = {
        {0, "24", "25"}, {0, "101", "100"}, {0, "87", "87"}, {1, "9", "10"}, {2, "250", "200"}, {2, "x", "10"}};
    for (const auto &[feld, ein, aus] : druck)
        EXPECT_EQ(Text2_LostFocus(feld, QString::fromLatin1(ein)), QString::fromLatin1(aus)) << feld << " " << ein;
}

TEST_F(SettingsTest, OkTakesTheCopyClearsEmptyFurnacesAndSetsChangedOnesUpAnew)
{
    plant.Ofen_Aktiv[0] = plant.Ofen_Aktiv[1] = TRUE16;
    for (int k = 0; k < 4; ++k)
        plant.Ofen_IP(1, k) = plant.Ofen_IP(0, k) = static_cast<u8>(10 + k);
    plant.Ofen_Name[0] = QStringLiteral("Alt");
    plant.Ofen_Serie[0] = QStringLiteral("1203-017-KHP");
    plant.Ofen_Wert216[0] = 12000;
    plant.Ofen_Version[0] = QStringLiteral("07");
    openParameters();

    // Furnace 1 is taken out: address 0.0.0.0 and not active.
    for (int k = 0; k < 4; ++k)
        Text1_LostFocus(0, k, QStringLiteral("0"));
    Parameter.Ofen[0].Aktiv = 0;
    // Furnace 2 moves to another address and picks the serial option.
    Text1_LostFocus(1, 3, QStringLiteral("44"));
    setOption1(1, 1);
    Text1_LostFocus(1, 4, QStringLiteral("30"));
    // Furnace 3 is unchanged.
    ASSERT_TRUE(Command1_OK());

    EXPECT_EQ(QStringList({plant.Ofen_Name[0].trimmed(), plant.Ofen_Serie[0].trimmed(), plant.Ofen_Version[0]}),
              QStringList({"", "", "00"}));
    EXPECT_EQ(plant.Ofen_Wert216[0], 0);
    EXPECT_EQ(plant.Ofen_IP(1, 3), 44);
    EXPECT_EQ((std::vector<int>{plant.Reinit_Ofen[0], plant.Reinit_Ofen[1], plant.Reinit_Ofen[2]}),
              (std::vector<int>{-1, -1, 0}));
    EXPECT_EQ(plant.Ofen_Seriell[1], 0) << "the serial choice never reaches the link";
    EXPECT_EQ(plant.TempLog_Takt[1], 30);
    EXPECT_EQ(plant.Ofen_Name[1], QStringLiteral("Kammerofen"));

    // Written through the configuration file: record 2 holds the new address.
    const QByteArray datei = configBytes();
    EXPECT_EQ(datei.mid(at(2, 0), 4), QByteArray("\x0A\x0B\x0C\x2C", 4));
    EXPECT_TRUE(dlg.shown.empty());
}

TEST_F(SettingsTest, CancelTakesNothingAndPutsTheLanguageBack)
{
    Text1_LostFocus(1, 3, QStringLiteral("99"));
    chooseLanguage(1);
    EXPECT_EQ(plant.Sprache, 1);
    Command1_Cancel();
    EXPECT_EQ(both(plant.Sprache, plant.Ofen_IP(1, 3)), both(0, 0));
    EXPECT_EQ(plant.Befehl_Name[1].trimmed(), QStringLiteral("Rampe")) << "switched back, not only set";
    EXPECT_EQ(scr.sprache, 2);
    EXPECT_FALSE(QFile::exists(configPath()));
}

TEST_F(SettingsTest, AMissingBackupFolderKeepsTheDialogOpenWithItsMessage)
{
    Parameter.Backup_Aktiv = TRUE16;
    folderPath(ORDNER_SYS) = tmp.filePath(QStringLiteral("nirgends"));
    EXPECT_FALSE(Command1_OK());
    ASSERT_EQ(dlg.shown.size(), 1u);
    EXPECT_EQ(dlg.shown.front().text,
              QStringLiteral("Folder ") + tmp.filePath(QStringLiteral("nirgends")) + " not found!\nselect a real FOLDER!");
    EXPECT_FALSE(QFile::exists(configPath()));

    QDir().mkpath(tmp.filePath(QStringLiteral("Sicherung")));
    folderPath(ORDNER_SYS) = tmp.filePath(QStringLiteral("Sicherung"));
    EXPECT_TRUE(Command1_OK());
    EXPECT_TRUE(QFile::exists(configPath()));
    EXPECT_TRUE(QDir(plant.Charge_Ordner[1]).exists()) << "the mirror's year folder is made at once";
}

TEST_F(SettingsTest, DiskChoiceRebuildsTheFoldersOrRefusesAMissingDisk)
{
    const QString weg = tmp.filePath(QStringLiteral("keine_Platte"));
    EXPECT_FALSE(setDisk(weg));
    ASSERT_EQ(dlg.shown.size(), 1u);
    EXPECT_EQ(dlg.shown.front().text, QStringLiteral("Disk ") + weg + QStringLiteral(": select a real disk!"));

    const QString platte = tmp.filePath(QStringLiteral("platte"));
    QDir().mkpath(platte);
    const QString rest = QDir::fromNativeSeparators(Parameter.Pfad[1]).section(QLatin1Char('/'), 1);
    ASSERT_TRUE(setDisk(platte));
    EXPECT_EQ(QDir::fromNativeSeparators(Parameter.Pfad[1]), platte + QLatin1Char('/') + rest);
}

TEST_F(SettingsTest, MessagePagesSkipTheThirdOnThirtyTwoMessagesAndTheTableIsExported)
{
    plant.Meld_Anzahl[1] = 32;
    plant.Meld_Text(1, 16) = QStringLiteral("Kühlwasser");
    QList<int> seiten;
    for (int i = 0; i < 5; ++i) {
        seiten << Parameter.MTXT_Seite;
        MTXTbutton(1);
    }
    EXPECT_EQ(seiten, (QList<int>{0, 1, 3, 4, 0}));
    Parameter.MTXT_Seite = 1;
    EXPECT_TRUE(MTXT_Text(1).startsWith(QStringLiteral("17: Kühlwasser\n18: ")));
    plant.Meld_Anzahl[1] = 48;
    MTXTbutton(1);
    EXPECT_EQ(Parameter.MTXT_Seite, 2);

    fillStatusTexts();
    plant.Prog_Page[1] = 388;
    plant.SPS_Wort(1, 388) = 1113;
    EXPECT_EQ(statusLine(1), QStringLiteral("Load ERROR 13/16"));
    EXPECT_EQ(LOAD_STAT(1), QStringLiteral("  "));

    ASSERT_TRUE(Command3_Export());
    EXPECT_EQ(readFile(dataFile(QStringLiteral("KM_SP.LNG"))).size(), 172 * 312);
}
