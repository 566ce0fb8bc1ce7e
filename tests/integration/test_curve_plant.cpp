// A recorded batch on screen, end to end: the station polls a simulated
// headed furnace (Modbus/TCP on loopback) whose PLC describes its channels
// in its identity block, and records the sample groups it offers. The batch
// browser lists the file, the curve store loads it, and while the furnace
// goes on logging, the recorder's live refresh appends the new records only.

#include "config/channel_tables.h"
#include "config/config_file.h"
#include "config/paths.h"
#include "core/dates.h"
#include "core/hooks.h"
#include "curves/curve_fixture.h"
#include "curves/curve_store.h"
#include "curves/time_axis.h"
#include "plant_fixture.h"
#include "recording/batch_browser.h"
#include "recording/recorder.h"
#include "sim/log_blocks.h"

#include <QDir>
#include <QTemporaryDir>

using namespace kal;
using namespace kal::test;
using kal::sim::Protocol;

namespace {

constexpr i32 CHARGE = 31;

class CurvePlant : public PlantFixture {
protected:
    QTemporaryDir daten;
    QString cwd = QDir::currentPath();
    QDateTime t0;
    int gruppen = 0;
    int angeboten = 0;

    void SetUp() override
    {
        PlantFixture::SetUp();
        ASSERT_TRUE(daten.isValid());
        QDateTime jetzt = now().addSecs(-7200);
        if (jetzt.time() > QTime(23, 0))
            jetzt = jetzt.addSecs(-7200);
        t0 = QDateTime(jetzt.date(), QTime(jetzt.time().hour(), jetzt.time().minute(), 0), Qt::UTC);
        sim::FurnaceDescription d = furnaceDescription(0, Protocol::Modbus, true, 500);
        // The identity block names the channels of the batch: pairs A, B.
        d.identity.clear();
        for (int p = 0; p < 12; ++p)
            d.identity << identityA()[size_t(p)] << identityB()[size_t(p)];
        beschreibung.furnaces = {d};
        ASSERT_NO_FATAL_FAILURE(startSimPlant());

        resetPlant();
        plant.Pfad[0] = daten.path();
        for (int k = 1; k <= 3; ++k) {
            plant.Pfad[k] = daten.filePath(QStringLiteral("Ordner%1").arg(k));
            QDir().mkpath(plant.Pfad[k]);
        }
        configureFurnaces();
        plant.Ofen_Charge[0] = TRUE16;
        Config_Schreiben(false);

        resetPlant();
        plant.Daten_Ordner_Option = daten.path();
        Pfade_Setzen();
        Config_Lesen();
        setUpChannels();
        for (int f = 0; f < OFEN_MAX; ++f)
            Spuren_Setzen(f + 1);
        hooks.Charge_Schreiben = Charge_Schreiben;
        hooks.Charge_Online = Charge_Online;
    }
    void TearDown() override
    {
        QDir::setCurrent(cwd);
        PlantFixture::TearDown();
    }

    /// A sample group one minute after the last, actual value 700 + its number.
    void addGroup()
    {
        sim::SampleValues v;
        v.stamp = t0.addSecs(60 * gruppen);
        v.setpoint = 720;
        v.actual = int16_t(700 + gruppen);
        v.output = 30;
        v.segment = 1;
        v.kind = 2;
        v.batch = CHARGE;
        plc(0).queueBlock(sim::groupBlock(v));
        ++gruppen;
        ++angeboten;
    }
    bool allTaken() { return plc(0).log().taken().size() == angeboten; }
};

} // namespace

TEST_F(CurvePlant, RecordedBatchIsListedLoadedAndGrowsLive)
{
    for (int i = 0; i < 6; ++i)
        addGroup();
    ASSERT_TRUE(runCycles([&] { return allTaken(); }));
    ASSERT_FALSE(plant.Charge_Datei[0].isEmpty());

    // The browser lists the batch in the year folder and chooses it.
    plant.Browser_Ordner.clear();
    ASSERT_TRUE(loadBrowser());
    EXPECT_EQ(plant.Browser_Ordner, plant.Charge_Ordner[0]);
    plant.Datum_Von.clear();
    const auto zeilen = Liste_Aufbauen(folderFiles(plant.Browser_Ordner));
    ASSERT_EQ(zeilen.size(), 1u);
    EXPECT_TRUE(zeilen[0].text.contains(QStringLiteral("1:")));
    ASSERT_TRUE(chooseLine(zeilen[0].text));
    EXPECT_EQ(QFileInfo(plant.Kurve_Datei), QFileInfo(plant.Charge_Datei[0]));
    EXPECT_EQ(plant.Wahl_Charge, CHARGE);

    // The curve store: the channels of the identity block, one entry a group.
    Charge_geladen();
    plant.Kurve_Datei = plant.Charge_Datei[0]; // the path the recorder compares
    EXPECT_EQ(Kurve.Kurve_Ofen, 1);
    EXPECT_EQ(plant.Ofen_Typ[0], -10);
    EXPECT_EQ(plant.Kanal_Zahl[0], 5);
    ASSERT_EQ(Kurve.listen.Wertliste[0].size(), 6);
    EXPECT_EQ(Kurve.listen.Wertliste[0].wert[5], 705);
    EXPECT_EQ(Kurve.listen.Wertliste[1].wert[0], 695); // zone 1: 5 below the lead
    EXPECT_EQ(Kurve.Kurve_Erster, t0);
    EXPECT_EQ(Kurve.seite.Punkt_Ist[0][0], 700);
    const int satz = Kurve.Satz_Letzter;

    // While the furnace goes on, the open batch grows by its new records only.
    plant.Kurve_Online = TRUE16;
    for (int i = 0; i < 3; ++i)
        addGroup();
    ASSERT_TRUE(runCycles([&] { return allTaken(); }));
    ASSERT_EQ(Kurve.listen.Wertliste[0].size(), 9);
    EXPECT_EQ(Kurve.listen.Wertliste[0].wert[8], 708);
    EXPECT_EQ(Kurve.Satz_Letzter, satz + 12);
    EXPECT_EQ(Kurve.Kurve_Letzter, t0.addSecs(8 * 60));

    // Paging within the batch: eight minutes fit one page at the closest zoom.
    EXPECT_EQ(Kurve.Zeit_Raster, RASTER_MIN);
    EXPECT_FALSE(Kurve.Taste_An[TASTE_VOR]);
    EXPECT_FALSE(curvePageKey(TASTE_LADEN));
    EXPECT_TRUE(curvePageKey(TASTE_ZURUECK));
    EXPECT_EQ(Kurve.Zeit_Marke[0], t0);
}
