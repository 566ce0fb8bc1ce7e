// A recorded batch on screen, end to end: the station records the sample
// groups of a simulated headed furnace (Modbus/TCP on loopback) whose PLC
// describes its channels in its identity block; the browser lists the file,
// the curve store loads it, and the recorder's live refresh appends the new
// records only while the furnace goes on logging.

#include "core/dates.h"
#include "curves/curve_fixture.h"
#include "curves/curve_store.h"
#include "plant_fixture.h"
#include "recording/batch_browser.h"
#include "sim/log_blocks.h"


using namespace kal;
using namespace kal::test;
using kal::sim::Protocol;

namespace {

constexpr i32 CHARGE = 31;

class CurvePlant : public PlantFixture {
protected:
    QDateTime t0;
    int gruppen = 0;

    void SetUp() override
    {
        PlantFixture::SetUp();
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
        writeConfig();
        startStation();
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
    }
    bool allTaken() { return plc(0).log().taken().size() == gruppen; }
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
    EXPECT_EQ(plant.Kanal_Zahl[0], 5);
    ASSERT_EQ(Kurve.listen.Wertliste[0].size(), 6);
    EXPECT_EQ(Kurve.listen.Wertliste[0].wert[5], 705);
    EXPECT_EQ(Kurve.listen.Wertliste[1].wert[0], 695); // zone 1: 5 below the lead
    EXPECT_EQ(Kurve.Kurve_Erster, t0);
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
}
