#include "core/plant_state.h"

#include <gtest/gtest.h>

using namespace kal;

class PlantStateTest : public ::testing::Test {
protected:
    void SetUp() override { resetPlant(); }
};

TEST_F(PlantStateTest, WordImageBoundsAreCheckedPerIndex)
{
    plant.SPS_Wort(7, 1140) = 5;
    EXPECT_EQ(plant.SPS_Wort(7, 1140), 5);
    plant.SPS_Wort(2, 44) = static_cast<int16_t>(0xFF38);
    EXPECT_EQ(plant.SPS_Wort(2, 44), -200);
    // Word 1141 and furnace 8 are errors of the caller; nothing changes.
    try {
        plant.SPS_Wort(0, 1141) = 1;
        FAIL() << "word 1141 accepted";
    } catch (const RunError &e) {
        EXPECT_EQ(e.number, ERR_SUBSCRIPT);
    }
    // Furnace 8, word 0 would lie inside the storage as 8 + 8 * 0: still an error.
    EXPECT_THROW(plant.SPS_Wort(8, 0) = 1, RunError);
    EXPECT_THROW(plant.Ofen_Aktiv[8] = 1, RunError);
    EXPECT_EQ(plant.SPS_Wort(0, 1), 0);
    // Channel tables take index 8 (the server channel).
    plant.IP_Adr[8] = -1;
    EXPECT_EQ(plant.IP_Adr[8], -1);
    // Ofen_Typ is indexed by furnace number 1..8 (0 is the batch on view).
    EXPECT_THROW(plant.Ofen_Typ[9] = 1, RunError);
    plant.Ofen_Typ[8] = 1;
    EXPECT_TRUE(Ist_Typ_1(8));
}

TEST_F(PlantStateTest, PredicatesAndStatusRows)
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

    Status_Text_Fuellen();
    EXPECT_EQ(plant.Status_Text[1], QStringLiteral("Upload Prog 1   "));
    EXPECT_EQ(plant.Status_Text[106], QStringLiteral("Download Prog 6 "));
    EXPECT_EQ(plant.Status_Text[110], QStringLiteral("Load ERROR 01/04"));
    EXPECT_EQ(plant.Status_Text[121], QStringLiteral("Load ERROR 45/48"));
    EXPECT_EQ(plant.Status_Text[122], QStringLiteral("Load Spur / CODE"));
    EXPECT_EQ(plant.Status_Text[0], QString(16, QLatin1Char(' ')));
    for (int i = 0; i <= 200; ++i)
        EXPECT_EQ(plant.Status_Text[i].size(), 16) << i;
}
