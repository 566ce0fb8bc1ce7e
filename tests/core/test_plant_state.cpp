#include "core/plant_state.h"
#include "support/fresh.h"

using namespace kal;
using namespace kal::test;

namespace {

using PlantState = FreshProcess;

TEST_F(PlantState, WordImageAndTablesCheckEveryIndex)
{
    plant.SPS_Wort(7, 1140) = static_cast<int16_t>(0xFF38);
    EXPECT_EQ(plant.SPS_Wort(7, 1140), -200);
    // Word 1141 and furnace 8 are errors of the caller; nothing changes.
    // Furnace 8, word 0 would lie inside the storage as 8 + 8 * 0: still an error.
    EXPECT_EQ(runError([] { plant.SPS_Wort(0, 1141) = 1; }), ERR_SUBSCRIPT);
    EXPECT_EQ(runError([] { plant.SPS_Wort(8, 0) = 1; }), ERR_SUBSCRIPT);
    EXPECT_EQ(runError([] { plant.Ofen_Aktiv[8] = 1; }), ERR_SUBSCRIPT);
    EXPECT_EQ(plant.SPS_Wort(0, 1), 0);
    // Channel tables take index 8 (the server channel); Ofen_Typ is indexed
    // by furnace number 1..8 (0 is the batch on view).
    plant.IP_Adr[8] = -1;
    EXPECT_EQ(runError([] { plant.Ofen_Typ[9] = 1; }), ERR_SUBSCRIPT);
    plant.Ofen_Typ[8] = 1;
    EXPECT_TRUE(Ist_Typ_1(8));
}

TEST_F(PlantState, PredicatesAndStatusRows)
{
    plant.Ofen_Serie[3] = QStringLiteral("1203-017-GKD");
    Ist_GKD(3);
    EXPECT_EQ(plant.Ofen_GKD[3], -1);
    plant.Ofen_Serie[3] = QStringLiteral("1203-017-QRV");
    Ist_GKD(3);
    EXPECT_EQ(plant.Ofen_GKD[3], 0);
    plant.Spur(1, 3) = QStringLiteral("Argon 2");
    EXPECT_TRUE(Ist_Argon(2));
    EXPECT_FALSE(Ist_Argon(3));

    fillStatusTexts();
    EXPECT_EQ(plant.Status_Text[106], QStringLiteral("Download Prog 6 "));
    EXPECT_EQ(plant.Status_Text[121], QStringLiteral("Load ERROR 45/48"));
    for (int i = 0; i <= 200; ++i)
        EXPECT_EQ(plant.Status_Text[i].size(), 16) << i;
}

} // namespace
