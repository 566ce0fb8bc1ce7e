// Start-up of the station without forms: the order of its steps shows in the
// plant state and the files it leaves.

#include "config/config_file.h"
#include "config/paths.h"
#include "core/plant_state.h"
#include "station/station_start.h"
#include "operation/message_store.h"
#include "support/fresh.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace kal;
using namespace kal::test;

namespace {

class StartupTest : public FreshProcess {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        FreshProcess::SetUp();
        plant.Daten_Ordner_Option = dir.path();
    }

    QTemporaryDir dir;
    ScriptedDialogs &dialogs = dlg;
};

} // namespace

TEST_F(StartupTest, WithoutConfigurationRunsWithEightDisabledFurnaces)
{
    Station_Start();

    // The missing file is reported with the text of id 154 and its path.
    ASSERT_EQ(dialogs.shown.size(), 1u);
    const QString text = dialogs.shown.front().text;
    EXPECT_TRUE(text.startsWith(plant.Sprachtext(0, 154) + QStringLiteral(":"))) << qPrintable(text);
    EXPECT_TRUE(text.contains(QStringLiteral("Kalmeron.DAT")));

    for (int f = 0; f < OFEN_MAX; ++f)
        EXPECT_EQ(both(plant.Ofen_Aktiv[f], plant.Meld_Seite[f]), both(0, -1));
    for (int k = 0; k < KANAL_MAX; ++k)
        EXPECT_EQ(plant.IP_Adr[k], -1);
    EXPECT_EQ(scr.menue, 1);
    const QList<QPair<int, bool>> aus = {{4, false}, {6, false}, {7, false}};
    EXPECT_EQ(scr.formen, aus);

    // The data folder and the message store are there.
    EXPECT_EQ(QDir(plant.Pfad[0]).canonicalPath(), QDir(dir.path()).canonicalPath());
    EXPECT_TRUE(messageStoreOpen());
    EXPECT_TRUE(QFile::exists(dir.filePath(QStringLiteral("Kalmeron.mld"))));

    const QString neujahr = QStringLiteral("01.01.%1").arg(QDate::currentDate().year());
    EXPECT_EQ(plant.Datum_Von, neujahr);
    EXPECT_EQ(plant.Datum_Bis, neujahr);
}

TEST_F(StartupTest, WithConfigurationReadsPlantAndAsksNothing)
{
    // A configuration of two furnaces, written the way the settings would.
    Pfade_Setzen();
    for (int k = 1; k <= 3; ++k) {
        QDir().mkpath(defaultFolder(k));
        plant.Pfad[k] = defaultFolder(k);
    }
    plant.Ofen_Aktiv[0] = TRUE16;
    plant.Ofen_UDP[0] = TRUE16;
    plant.Ofen_Typ[1] = 3;
    for (int o = 0; o < 4; ++o)
        plant.Ofen_IP(0, o) = static_cast<u8>(o == 0 ? 127 : o == 3 ? 11 : 0);
    plant.Ofen_Aktiv[1] = TRUE16;
    plant.Ofen_Typ[2] = static_cast<i16>(0x8000 | 500);
    plant.Sprache = 1;
    Config_Schreiben(false);
    resetPlant();
    plant.Daten_Ordner_Option = dir.path();

    Station_Start();

    EXPECT_TRUE(dialogs.shown.empty()) << qPrintable(dialogs.shown.front().text);
    EXPECT_EQ((std::vector<int>{plant.Ofen_Aktiv[0], plant.Ofen_Aktiv[1], plant.Ofen_Aktiv[2]}),
              (std::vector<int>{-1, -1, 0}));
    // Channel tables follow the type: plain furnace with its log at 90, headed
    // TCP furnace at 400.
    EXPECT_EQ((std::vector<int>{plant.Adr_Trigger[0], plant.Adr_Trigger[1], plant.Ofen_Basis[1]}),
              (std::vector<int>{90, 400, 500}));
    // The language switch ran after the configuration: English command names.
    EXPECT_EQ(plant.Befehl_Name[1].trimmed(), plant.Sprachtext(1, 10).trimmed());
    EXPECT_EQ(scr.menue, 1);
}
