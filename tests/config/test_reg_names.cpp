// Controller names and units from the text file of the data folder.

#include "config_fixture.h"

#include "config/reg_names.h"

using namespace kal;
using namespace kal::test;

namespace {

class RegNames : public ConfigFixture {};

TEST_F(RegNames, SectionsByTheirSerialWithKeysInAnyOrder)
{
    plant.Ofen_Serie[1] = QStringLiteral("2301-002-BBB");
    plant.Ofen_Serie[2] = QStringLiteral("2301-002-BBB"); // same serial: the first furnace wins
    plant.Ofen_Serie[3] = QStringLiteral("2301-004-DDD");
    plant.Reg_Anzahl[3] = 4;                             // the count only grows
    writeFile(dataFile(REG_NAMEN_DATEI),
              "REG_Name_1=before any section\r\n"
              "SERIE=2301-002-BBB\r\n"
              "REG_Einh_5=mbar\r\n"
              "REG_Name_3=Randzone\r\n"
              "REG_Name_1=Kern\n" // a lone LF ends a line too
              "SERIE=9999-999-ZZZ\r\n"
              "REG_Name_2=fremder Ofen\r\n"
              "SERIE=\r\n"
              "REG_Name_4=ohne Serie\r\n"
              "SERIE=2301-004-DDD\r\n"
              "REG_Einh_1=\xb0" "F\r\n" // Latin-1 degree sign
              "REG_Name_2=\r\n"); // an empty value is no value

    Reg_Namen_Lesen();
    EXPECT_EQ(plant.Reg_Name(1, 0), QStringLiteral("Kern"));
    EXPECT_EQ(plant.Reg_Name(1, 2), QStringLiteral("Randzone"));
    EXPECT_EQ(plant.Reg_Name(1, 1), QString());
    EXPECT_EQ(plant.Reg_Name(1, 3), QString());
    EXPECT_EQ(plant.Reg_Einheit(1, 4), QStringLiteral("mbar"));
    EXPECT_EQ(plant.Reg_Einheit(1, 0), QStringLiteral("°C"));
    EXPECT_EQ(both(plant.Reg_Anzahl[1], plant.Reg_Anzahl[2]), both(5, 0));
    EXPECT_EQ(plant.Reg_Name(0, 0), QString());
    EXPECT_EQ(plant.Reg_Einheit(3, 0), QStringLiteral("°F"));
    EXPECT_EQ(plant.Reg_Name(3, 1), QString());
    EXPECT_EQ(plant.Reg_Anzahl[3], 4);

    // Without the file only the default unit is set.
    Reg_Namen_Lesen(tmp.filePath(QStringLiteral("fehlt.TXT")));
    EXPECT_EQ(plant.Reg_Einheit(3, 0), QStringLiteral("°C"));
    EXPECT_EQ(plant.Reg_Name(1, 0), QStringLiteral("Kern"));
}

} // namespace
