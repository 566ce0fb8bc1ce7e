// The data folder, the drive rule and the checks of the working folders.

#include "config_fixture.h"

#include "config/paths_check.h"

#include <QFileInfo>
#include <stdexcept>

using namespace kal;
using namespace kal::test;

namespace {

TEST(DriveRule, DTakenOnlyWhenFixedOrNetworkElseC)
{
    auto rule = [](int d, int c) {
        return chooseDrive([=](const QString &drive) {
            if (d == -2 && drive.startsWith('D'))
                throw std::runtime_error("drive not ready");
            return drive.startsWith('D') ? d : c;
        });
    };
    EXPECT_EQ(rule(LW_FEST, LW_FEST), QStringLiteral("D:\\"));
    EXPECT_EQ(rule(LW_NETZ, LW_FEST), QStringLiteral("D:\\"));
    EXPECT_EQ(rule(LW_CD, LW_FEST), QStringLiteral("C:\\"));
    EXPECT_EQ(rule(LW_WECHSEL, LW_NETZ), QStringLiteral("C:\\"));
    EXPECT_EQ(rule(-2, LW_FEST), QStringLiteral("C:\\")); // a failing query
    EXPECT_EQ(rule(LW_CD, LW_RAM), QString());           // nothing is tried after C:
}

class Paths : public ConfigFixture {};

TEST_F(Paths, DataFolderOptionProgramFolderAndMemoryCard)
{
    const QString data = QDir::toNativeSeparators(tmp.filePath(QStringLiteral("data")));
    EXPECT_EQ(plant.Pfad[0], data);
    EXPECT_EQ(plant.Prog_Ordner, joinPath(data, QStringLiteral("Programme")));
    EXPECT_TRUE(QFileInfo(plant.Prog_Ordner).isDir());
    EXPECT_EQ(plant.Karte_Da, 0);

    QDir().mkpath(joinPath(data, QStringLiteral("MEM_CARD")));
    plant.Daten_Ordner_Option += QStringLiteral("/"); // a trailing separator changes nothing
    Pfade_Setzen();
    EXPECT_EQ(plant.Pfad[0], data);
    EXPECT_EQ(plant.Karte_Da, TRUE16);
}

TEST_F(Paths, FolderCheckTakesDefaultsAndAsksBeforeCreating)
{
    const QString eigen = tmp.filePath(QStringLiteral("eigene-logs"));
    QDir().mkpath(eigen);
    QDir().mkpath(defaultFolder(2));
    plant.Pfad[1] = eigen;                                    // exists: kept
    plant.Pfad[2] = tmp.filePath(QStringLiteral("weg"));      // missing, default exists
    plant.Pfad[3] = tmp.filePath(QStringLiteral("auch-weg")); // missing, default missing
    dlg.answers = {1};
    Ordner_Pruefen();

    EXPECT_EQ(QStringList({plant.Pfad[1], plant.Pfad[2]}), QStringList({eigen, defaultFolder(2)}));
    ASSERT_EQ(dlg.shown.size(), 1u);
    EXPECT_EQ(dlg.shown[0].title, QStringLiteral("Folder Not found!"));
    EXPECT_EQ(dlg.shown[0].text, QStringLiteral("CSV-Files\n") + defaultFolder(3) + QStringLiteral("\nCreate? "));
    EXPECT_TRUE(QFileInfo(defaultFolder(3)).isDir());
    EXPECT_TRUE(QFile::exists(configPath())); // Yes also writes the configuration

    // No: the default path stays, nothing is created or written.
    QFile::remove(configPath());
    plant.Pfad[1] = plant.Pfad[3] = QString();
    QDir(defaultFolder(3)).removeRecursively();
    dlg.shown.clear();
    dlg.answers = {0, 0};
    Ordner_Pruefen();
    EXPECT_EQ(shown(QStringLiteral("question")).size(), 2);
    EXPECT_TRUE(dlg.shown[0].text.startsWith(QStringLiteral("LOG-Files\n")));
    EXPECT_EQ(plant.Pfad[1], defaultFolder(1));
    EXPECT_FALSE(QFileInfo::exists(plant.Pfad[1]));
    EXPECT_FALSE(QFile::exists(configPath()));
}

// The year folders of the log book and of the mirror; a mirror that is the
// log book's year folder, however written, switches the mirror off.
TEST_F(Paths, YearFoldersAndMirrorFolder)
{
    plant.Pfad[1] = tmp.filePath(QStringLiteral("log"));
    plant.Pfad[4] = tmp.filePath(QStringLiteral("mirror"));
    QDir().mkpath(plant.Pfad[1]);
    QDir().mkpath(plant.Pfad[4]);
    plant.Backup_Aktiv = TRUE16;
    Backup_Pruefen();
    EXPECT_EQ(QStringList({plant.Charge_Ordner[0], plant.Charge_Ordner[1]}),
              QStringList({joinPath(plant.Pfad[1], QStringLiteral("2024")), joinPath(plant.Pfad[4], QStringLiteral("2024"))}));
    EXPECT_TRUE(QFileInfo(plant.Charge_Ordner[1]).isDir());
    EXPECT_EQ(plant.Backup_Aktiv, TRUE16);
    EXPECT_TRUE(dlg.shown.empty());

    for (const QString &mirror : {plant.Pfad[1], tmp.filePath(QStringLiteral("log/../log"))}) {
        dlg.shown.clear();
        plant.Pfad[4] = mirror;
        plant.Backup_Aktiv = TRUE16;
        Backup_Pruefen();
        EXPECT_EQ(plant.Backup_Aktiv, 0);
        EXPECT_EQ(shown(QStringLiteral("message")),
                  QStringList{QStringLiteral("Backup-Folder ") + plant.Charge_Ordner[1] +
                              QStringLiteral("\nis the same as the Logfile-Folder!\nselect a real FOLDER!")});
    }

    // A year folder under a log book folder that the user refused is not forced.
    plant.Pfad[1] = tmp.filePath(QStringLiteral("abgelehnt"));
    Backup_Pruefen();
    EXPECT_FALSE(QFileInfo::exists(plant.Charge_Ordner[0]));
}

} // namespace
