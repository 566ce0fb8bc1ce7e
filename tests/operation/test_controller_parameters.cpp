// Controller parameters: the words a loop uses, the choice of furnace, the
// conversion of an input into the word sent, and what goes out when.

#include "operation_fixture.h"

#include "config/channel_tables.h"
#include "operation/controller_parameters.h"

#include <QLocale>

using namespace kal;
using namespace kal::test;

namespace {

class ControllerTest : public OperationTest {
protected:
    /// A plain Modbus furnace, online, its socket connected.
    void plainFurnace(int f)
    {
        onlineFurnace(f, QStringLiteral("Kammerofen"), QStringLiteral("1203-017-KHP"));
        plant.Ofen_Typ[f + 1] = 3;
        sockets[f]->state = SCK_CONNECTED;
    }
    std::vector<int> addresses() const { return {RegPar.Reg_Adr.begin() + 1, RegPar.Reg_Adr.end()}; }
    QString localDecimal(const char *text) const { return QString::fromLatin1(text).replace('.', QLocale().decimalPoint()); }
};

} // namespace

TEST_F(ControllerTest, InputBecomesTheWordScaledRoundedAndClamped)
{
    struct Case {
        int feld;
        const char *text;
        int wort;
    };
    const Case faelle[] = {
        {0, "1,5", 150},   {0, "4000", 32767}, {0, "1.5", 150},    {3, "0,25", 25},   {1, "12,34", 123},
        {2, "12,35", 124}, {1, "abc", 0},      {2, "-3", 0},       {0, "0,004", 0},   {0, "327,675", 32767},
        {1, " 7 s", 70},   {3, "", 0},
    };
    for (const Case &c : faelle)
        EXPECT_EQ(inputWord(c.feld, QString::fromLatin1(c.text)), c.wort) << c.feld << " " << c.text;
}

TEST_F(ControllerTest, EnterSendsToTheLoopsWordAndLeavingDoesNotRepeatIt)
{
    plainFurnace(1);
    setRegParFurnace(2);
    Reglerwerte_akt();

    EXPECT_FALSE(inputKey(0, 'A', QStringLiteral("1,5")));
    EXPECT_TRUE(sockets[1]->sent.isEmpty()) << "only Enter sends";
    EXPECT_TRUE(inputKey(0, 13, QStringLiteral("1,5")));
    ASSERT_EQ(sockets[1]->sent.size(), 1);
    EXPECT_EQ(sockets[1]->sent.back(), hex("00 00 00 00 00 09 01 10 00 2F 00 01 02 00 96")) << "150 to word 47";
    inputLeft(0, QStringLiteral("1,5"));
    EXPECT_EQ(sockets[1]->sent.size(), 1) << "leaving after Enter sends nothing";

    // A changed field that is left without Enter is sent then; an unchanged one is not.
    inputLeft(3, QStringLiteral("4000"));
    EXPECT_EQ(sockets[1]->sent.back(), hex("00 00 00 00 00 09 01 10 00 34 00 01 02 7F FF")) << "32767 to word 52";
    inputLeft(1, RegPar.Gezeigt[1]);
    EXPECT_EQ(sockets[1]->sent.size(), 2);
}

TEST_F(ControllerTest, LoopWordsOfPlainAndHeadedFurnaces)
{
    plainFurnace(0);
    plant.Reg_Anzahl[0] = 3;
    plant.Reg_Name(0, 2) = QStringLiteral("Decke");
    setRegParFurnace(1);
    EXPECT_EQ(RegPar.MesswertWahl, (QStringList{"1", "2", "3  Decke"}));
    EXPECT_EQ(addresses(), (std::vector<int>{47, 48, 49, 52, 43, 44, 45, 10}));
    Regler_Umwahl(2);
    EXPECT_EQ(RegPar.Mess_Basis, 210);
    EXPECT_EQ(addresses(), (std::vector<int>{257, 258, 259, 262, 253, 254, 255, 220}));

    // A headed furnace: the second channel is a controller with its words in
    // tens from 120 (set value), the first channel has none.
    onlineFurnace(4, QStringLiteral("Haubenofen"), QStringLiteral("1410-003-VAC"));
    plant.Ofen_Typ[5] = static_cast<i16>(0x8000 | 500);
    plant.Ofen_Kennung_A(5, 0) = 0x010A;
    plant.Ofen_Kennung_B(5, 0) = 0x0064;
    plant.Ofen_Kennung_A(5, 1) = 0x410A;
    plant.Ofen_Kennung_B(5, 1) = 0x1078;
    Spuren_Setzen(5);
    setRegParFurnace(5);
    ASSERT_EQ(RegPar.MesswertWahl.size(), 1);
    EXPECT_EQ(addresses(), (std::vector<int>{150, 160, 170, 180, 0, 130, 140, 0}));
    EXPECT_TRUE(RegPar.Reg_Neu);
}

TEST_F(ControllerTest, OfflineFurnaceGivesWayToTheNextOnlineAndNoneLeavesTheFieldsEmpty)
{
    plainFurnace(2);
    plainFurnace(5);
    RegPar.Reg_Ofen = 4; // offline
    Ofen_Wahl();
    EXPECT_EQ(RegPar.Reg_Ofen, 6);
    EXPECT_EQ(regParFurnaces(), (QList<int>{3, 6}));

    plant.SPS_Wort(5, 47) = 250;
    plant.SPS_Wort(5, 48) = 1205;
    plant.SPS_Wort(5, 44) = 8125;
    ControllerValues r = Reglerwerte_akt();
    EXPECT_TRUE(r.eingabe_neu);
    EXPECT_EQ((QStringList{r.Eingabe[0], r.Ausgabe[1], r.Live[1]}),
              (QStringList{localDecimal("2.50"), localDecimal("120.5"), "8125"}));
    plant.SPS_Wort(5, 47) = 300;
    r = Reglerwerte_akt();
    EXPECT_FALSE(r.eingabe_neu) << "the input fields are written once per loop";
    EXPECT_EQ(r.Ausgabe[0], localDecimal("3.00"));
    EXPECT_EQ(RegPar.Verlauf.size(), 2);

    plant.Ofen_Online[2] = plant.Ofen_Online[5] = 0;
    Ofen_Wahl();
    EXPECT_EQ(RegPar.Reg_Ofen, 0);
    r = Reglerwerte_akt();
    EXPECT_TRUE(r.Ausgabe[0].isEmpty() && r.Eingabe[0].isEmpty() && r.Live[1].isEmpty());
    EXPECT_FALSE(inputKey(0, 13, QStringLiteral("2")));
}
