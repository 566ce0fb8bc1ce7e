// The main cycle on real loopback sockets against the simulated plant: eight
// furnaces of every kind come online and their images follow the PLCs; a
// Modbus read that is never answered is given up, a dropped link shows
// "Connect", and both furnaces come back with current images.

#include "core/hooks.h"
#include "core/plant_state.h"
#include "station/main_cycle.h"
#include "plant_fixture.h"

#include <QMap>

using namespace kal;
using namespace kal::test;
using kal::sim::Protocol;

namespace {

/// Marker words the tests set in the PLCs, one per block the cycle reads.
constexpr int MARKEN[] = {150, 350, 450, 640};

sim::FurnaceDescription Ofen(int f, Protocol p, bool headed, int base, int panel = 0, bool gross = false)
{
    sim::FurnaceDescription d = furnaceDescription(f, p, headed, base);
    d.large = gross;
    d.panelCode = panel;
    d.version = QStringLiteral("0%1").arg(f);
    d.values216 = {int16_t(f), int16_t(2 * f), int16_t(3 * f)};
    return d;
}

class PollingPlant : public PlantFixture {
protected:
    QMap<int, QString> &panel = scr.panel;

    void SetUp() override
    {
        PlantFixture::SetUp();
        beschreibung.panelAddress = subnet() + QStringLiteral("20");
        beschreibung.furnaces = {
            Ofen(0, Protocol::MemoryLink, false, 0),
            Ofen(1, Protocol::MemoryLink, true, 240),
            Ofen(2, Protocol::Modbus, true, 100),
            Ofen(3, Protocol::Modbus, true, 500),
            Ofen(4, Protocol::MemoryLink, false, 0, 0x51), // behind the panel server
            Ofen(5, Protocol::Modbus, true, 500, 0x50),    // mixed: 300..499 in the panel
            Ofen(6, Protocol::Modbus, false, 0),
            Ofen(7, Protocol::MemoryLink, true, 240, 0, true),
        };
        ASSERT_NO_FATAL_FAILURE(startSimPlant());
        for (int f = 0; f < OFEN_MAX; ++f)
            for (int k = 0; k < 4; ++k)
                plc(f).setWord(MARKEN[k], static_cast<int16_t>(1000 * f + k + 1));

        resetPlant();
        configureFurnaces();
        setUpChannels();
    }

    bool runRounds(int runden)
    {
        for (int f = 0; f < OFEN_MAX; ++f)
            if (plant.Ofen_Online[f] == 0 || plant.Poll_Rounds[f] < runden)
                return false;
        return true;
    }

    void expectSameImage(int f)
    {
        EXPECT_EQ(plant.SPS_Wort(f, 29), plc(f).word(29)) << "furnace " << f;
        for (int w = 200; w <= 218; ++w)
            EXPECT_EQ(plant.SPS_Wort(f, w), plc(f).word(w)) << "furnace " << f << " word " << w;
        for (int m : MARKEN)
            EXPECT_EQ(plant.SPS_Wort(f, m), plc(f).word(m)) << "furnace " << f << " word " << m;
    }
};

TEST_F(PollingPlant, MixedPlantComesOnlineWithImagesOfThePlcs)
{
    ASSERT_TRUE(runCycles([&] { return runRounds(3); }));
    for (int f = 0; f < OFEN_MAX; ++f) {
        expectSameImage(f);
        EXPECT_TRUE(panel[f + 1].startsWith(QStringLiteral("Online "))) << panel[f + 1].toStdString();
        EXPECT_EQ(plant.Kennung_Fehler[f], 0) << "furnace " << f;
        EXPECT_EQ(plant.Empfang_Fehler[f], 0) << "furnace " << f;
    }
    // The identity block at 500 and the rare blocks come only over Modbus.
    for (int w = 500; w < 524; ++w)
        EXPECT_EQ(plant.SPS_Wort(3, w), plc(3).word(w)) << w;
    // Furnaces 5 and 6 found their windows in the panel server through word 215.
    EXPECT_EQ((std::vector<int>{plant.Server_Offset[4], plant.Server_Offset[5], plant.Server_Akt_IP4}),
              (std::vector<int>{4000, 3000, 20}));
    EXPECT_EQ(panel[6].left(12), QStringLiteral("Online M:6 S"));
    EXPECT_TRUE(plant.LogList.isEmpty()) << plant.LogList.join(QLatin1Char('\n')).toStdString();

    // The PLCs change words; the images follow within a round of sequences.
    for (int f = 0; f < OFEN_MAX; ++f)
        plc(f).setWord(350, static_cast<int16_t>(-7 - f));
    const int runden = plant.Poll_Rounds[0];
    ASSERT_TRUE(runCycles([&] {
        for (int f = 0; f < OFEN_MAX; ++f)
            if (plant.SPS_Wort(f, 350) != -7 - f)
                return false;
        return true;
    }));
    EXPECT_LE(plant.Poll_Rounds[0], runden + 2);
}

TEST_F(PollingPlant, LostAndSilentModbusLinksAreShownAndComeBackCurrent)
{
    ASSERT_TRUE(runCycles([&] { return runRounds(1); }));
    sim::SimFurnace &still = plc(2);
    sim::SimFurnace &weg = plc(6);
    still.link().setDelay(3600 * 1000); // answers an hour late: never, for this test
    weg.link().dropLink();
    ASSERT_TRUE(runCycles([&] { return plant.IP_Adr[2] == -3 && panel[7] == QStringLiteral("Connect T:7"); }));
    EXPECT_EQ(plant.Ofen_Online[2], -1) << "a silent PLC keeps its connection; its read is given up";
    EXPECT_EQ(plant.Ofen_Online[6], 0);

    still.link().dropLink();
    ASSERT_TRUE(runCycles([&] { return panel[3] == QStringLiteral("Connect T:3"); }));
    still.setWord(640, -4242);
    weg.setWord(450, 4242);
    still.link().resume();
    weg.link().resume();
    ASSERT_TRUE(runCycles([&] { return plant.SPS_Wort(2, 640) == -4242 && plant.SPS_Wort(6, 450) == 4242; }));
    EXPECT_TRUE(panel[3].startsWith(QStringLiteral("Online T:3")));
    EXPECT_TRUE(panel[7].startsWith(QStringLiteral("Online T:7")));
}

} // namespace
