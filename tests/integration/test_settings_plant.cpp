// The settings dialog on a running station: OK with a changed address takes
// the furnace's channel down and sets it up anew on its next turn, so that the
// station talks to the new address without a restart.

#include "config/settings_dialog.h"
#include "link/socket.h"
#include "plant_fixture.h"


using namespace kal;
using namespace kal::test;

namespace {

class SettingsPlant : public PlantFixture {
protected:
    void SetUp() override
    {
        PlantFixture::SetUp();
        // Two Modbus furnaces; the station knows only the first, as furnace 1.
        beschreibung.furnaces = {furnaceDescription(0, sim::Protocol::Modbus, false, 0),
                                 furnaceDescription(1, sim::Protocol::Modbus, false, 0)};
        ASSERT_NO_FATAL_FAILURE(startSimPlant());
        dataFolders();
        configureFurnaces();
        plant.Ofen_Aktiv[1] = 0;
        setUpChannels();
    }
    qsizetype readCount(int f) { return sim->frames().of(sim::Server::Modbus, f).size(); }
};

} // namespace

TEST_F(SettingsPlant, OkWithAnotherAddressMovesTheFurnaceToIt)
{
    ASSERT_TRUE(runCycles([&] { return plant.Ofen_Online[0] != 0 && readCount(0) >= 3; }));
    EXPECT_EQ(readCount(1), 0);

    openParameters();
    EXPECT_EQ(Text1_LostFocus(0, 3, QStringLiteral("12")), QStringLiteral("12"));
    ASSERT_TRUE(Command1_OK());
    EXPECT_EQ(plant.Reinit_Ofen[0], -1);

    // Its next turn closes the channel and sets it up for the new address.
    ASSERT_TRUE(runCycles([&] { return plant.Reinit_Ofen[0] == 0; }));
    EXPECT_EQ(Winsock1[0].RemoteHost, subnet() + QStringLiteral("12"));
    const qsizetype alt = readCount(0);
    ASSERT_TRUE(runCycles([&] { return plant.Ofen_Online[0] != 0 && readCount(1) >= 3; }));
    EXPECT_EQ(readCount(0), alt) << "the old address hears nothing more";
    EXPECT_TRUE(QFile::exists(QDir(daten.path()).filePath(QStringLiteral("Kalmeron.DAT"))));
}
