// The decoder and the data derived from the image, from word images.

#include "link/decoder.h"
#include "link/derived_data.h"
#include "support/scripted_plant.h"

using namespace kal;
using namespace kal::test;

namespace {

class Decoder : public ScriptedPlant {};

TEST_F(Decoder, ServerWindowAndOctetFromWord215)
{
    const std::pair<int, int> tabelle[] = {{0x48, 3000}, {0x50, 3000}, {0x51, 4000}, {0x56, 9000},
                                           {0x47, 0},    {0x57, 0},    {0xC9, 0}};
    for (auto [hoch, basis] : tabelle)
        EXPECT_EQ(serverBase(6, static_cast<i16>(hoch << 8)), basis) << hoch;

    Ofen(2, true);
    plant.SPS_Wort(2, 215) = 0x4905; // 0x49: one window per furnace index
    Block_Decode(2, 200, 100);
    EXPECT_EQ((std::vector<int>{plant.Server_Offset[2], plant.Server_IP4[2], plant.Block2_Neu[2]}),
              (std::vector<int>{5000, 5, 0})) << "no name and serial yet";
    EXPECT_EQ(sock[8]->RemoteHost, QStringLiteral("10.0.0.5")) << "the new server gets channel 8";
    EXPECT_EQ(sock[8]->connects, 1);
    Block_Decode(2, 299, 1);
    EXPECT_EQ(sock[8]->connects, 1) << "the same server again: no new set-up";

    plant.SPS_Wort(2, 215) = 0x4707; // no server: the octet stays
    Block_Decode(2, 299, 1);
    EXPECT_EQ(both(plant.Server_Offset[2], plant.Server_IP4[2]), both(0, 5));
}

TEST_F(Decoder, ServersInDifferentSubnetsAreReportedEveryEleventhAnswer)
{
    Ofen(0, true);
    Ofen(1, true);
    plant.Server_IP4[0] = plant.Server_IP4[1] = 5;
    plant.Ofen_IP(1, 2) = 9;
    plant.SPS_Wort(1, 215) = 0x5105;
    for (int i = 0; i < 11; ++i)
        Block_Decode(1, 299, 1);
    EXPECT_EQ(dlg.shown.size(), 1u) << "ten answers stay quiet";
    Block_Decode(1, 299, 1);
    ASSERT_EQ(dlg.shown.size(), 2u);
    EXPECT_EQ(dlg.shown[0].text,
              QStringLiteral("Proface Server, Kanal 1\nIP 10 0 0 5\n\nwrong IP-adress, Kanal 2\nIP 10 0 9 5"));
    EXPECT_EQ(sock[8]->connects, 0);
}

TEST_F(Decoder, Block0TakesLayoutFromWord29HoursByLinkKindAndScansMessages)
{
    // The message scan is checked with the message store; here it matters
    // that block 0 runs it, and that the furnace's own word 29 gives the
    // layout over the configuration's type.
    Ofen(3, false);
    plant.SPS_Wort(3, 7) = -1; // low half first
    plant.SPS_Wort(3, 8) = 0x7FFF;
    plant.SPS_Wort(3, 29) = static_cast<i16>(0x91F4); // layout block at 500, large
    plant.SPS_Wort(3, 88) = 0x0004;
    Block_Decode(3, 99, 1);
    EXPECT_EQ(meldungen, std::vector<int>{19}) << "block 0 brings the message words";
    EXPECT_EQ((std::vector<int>{plant.Ofen_Stunden[3], plant.Ofen_Basis[3], plant.Ofen_Gross[3], plant.Ofen_Spuren[3],
                                plant.Adr_Block[3], plant.Block1_Neu[3]}),
              (std::vector<int>{0x7FFFFFFF, 500, -1, 30, 900, 0}));

    Ofen(0, true, 3);
    plant.Ofen_Basis[0] = 77;
    plant.SPS_Wort(0, 67) = 0x5678;
    plant.SPS_Wort(0, 68) = 0x0012;
    Block_Decode(0, 99, 1);
    EXPECT_EQ((std::vector<int>{plant.Ofen_Stunden[0], plant.Ofen_Basis[0], plant.Prog_Page[0], plant.Block1_Neu[0]}),
              (std::vector<int>{0x00125678, 0, 388, -1}))
        << "a plain furnace has no identity block to wait for";
}

TEST_F(Decoder, LogTriggerRecordsRefusesBadDatesAndRaisesBacklog)
{
    Ofen(1, false, static_cast<i16>(0x8064));
    plant.Adr_Trigger[1] = 400;
    plant.Ofen_Charge[1] = -1;
    plant.Poll_Rounds[1] = 5;
    // The PLC offers a record stamped `d`; taken or refused, the trigger word
    // goes back as 0.
    auto anbieten = [&](const QDateTime &d) {
        plant.SPS_Wort(1, 400) = 154;
        std::tie(plant.SPS_Wort(1, 401), plant.SPS_Wort(1, 402)) = PlcStamp(d);
        plant.Write_Len[1] = 0;
    };
    auto quittiert = [&] {
        EXPECT_EQ((std::vector<int>{plant.SPS_Wort(1, 400), plant.Write_Adr[1], plant.Write_Len[1]}),
                  (std::vector<int>{0, 400, 1}));
    };
    anbieten(jetzt.addSecs(-600));
    Block_Decode(1, 400, 100);
    EXPECT_EQ(chargen, std::vector<int>{2});
    quittiert();
    EXPECT_EQ(plant.Poll_Skip[1], 0) << "ten minutes behind is no backlog";

    anbieten(jetzt);
    plant.SPS_Wort(1, 401) |= 13 << 7; // month 13
    Block_Decode(1, 400, 100);
    EXPECT_EQ(chargen.size(), 1u);
    quittiert();

    // A year field of 6 or less goes by what the previous stamp left; the
    // stamp lies far back: a backlog, the trigger block is read more often.
    anbieten(QDateTime(QDate(2005, 6, 1), QTime(8, 0), Qt::UTC));
    plant.SPS_Datum_OK = -1;
    Block_Decode(1, 402, 1);
    EXPECT_EQ(chargen.size(), 2u);
    EXPECT_EQ(both(plant.Poll_Skip[1], plant.Poll_Rounds[1]), both(20, 0));

    anbieten(jetzt); // while a write waits the record stays offered
    plant.Write_Len[1] = 1;
    Block_Decode(1, 400, 100);
    EXPECT_EQ(chargen.size(), 2u);
    EXPECT_EQ(plant.SPS_Wort(1, 400), 154);

    // Recording off, or no recorder: nothing may tell the PLC its record was taken.
    for (bool ohneRecorder : {false, true}) {
        plant.Ofen_Charge[1] = ohneRecorder ? -1 : 0;
        if (ohneRecorder)
            hooks.Charge_Schreiben = nullptr;
        anbieten(jetzt);
        Block_Decode(1, 400, 100);
        EXPECT_EQ(both(plant.SPS_Wort(1, 400), plant.Write_Len[1]), both(154, 0));
    }
    EXPECT_EQ(chargen.size(), 2u);
}

class DerivedData : public ScriptedPlant {
protected:
    int schritt = 0;
    void SetUp() override
    {
        ScriptedPlant::SetUp();
        Ofen(0, false, static_cast<i16>(0x81F4)); // layout block at 500: takes clock steps
        plant.Ofen_Online[0] = -1;
    }
    void Block0(const QDateTime &d)
    {
        plant.Datum_Block0[0] = systemDateText(d);
        plant.Prog_Neu[0] = -1;
        deriveFurnace(0, schritt);
    }
};

TEST_F(DerivedData, ForecastEndSumsSegmentsUntilAKindOutsideOneToFive)
{
    plant.SPS_Wort(0, 41) = 1;
    plant.SPS_Wort(0, 57) = 50; // 0.5 h left in segment 1
    const int ziele[] = {100, 600, 600, 600, 400, 900}; // start of segment 2 .. end of 6
    for (int i = 0; i < 6; ++i)
        plant.SPS_Wort(0, 121 + i) = static_cast<i16>(ziele[i]);
    // Segment: command (low 4 bits), time or rate.
    const int seg[][2] = {{1, 1000}, {0x12, 15}, {5, 999}, {3, 0}, {4, 0}, {0, 0}, {2, 100}};
    for (int n = 2; n <= 8; ++n) {
        plant.SPS_Wort(0, 99 + n) = static_cast<i16>(seg[n - 2][0]);
        plant.SPS_Wort(0, 139 + n) = static_cast<i16>(seg[n - 2][1]);
    }
    Block0(QDateTime(QDate(2024, 3, 15), QTime(9, 59, 48), Qt::UTC));
    EXPECT_EQ(QStringList({plant.Prog_Start_Text[0], plant.Prog_Dauer_Text[0], plant.Prog_Ende_Text[0]}),
              QStringList({"15.03.24 09:59", "  0:30h", "15.03.24 19:59"}));
    // 30 + ramp 5 h + hold 1.5 h + kind 5 nothing + 2 h + 1 h; kind 0 ends.
    EXPECT_EQ(plant.Rest_Min[0], 30 + 300 + 90 + 120 + 60);

    plant.SPS_Wort(0, 57) = 1234;
    plant.SPS_Wort(0, 41) = 0;
    Block0(jetzt);
    EXPECT_EQ(plant.Prog_Dauer_Text[0] + plant.Prog_Ende_Text[0], QStringLiteral(" 12:20h15.03.24 19:59"))
        << "no segment runs: no forecast";
}

TEST_F(DerivedData, ClockStepsTheLargestUnitThatDiffers)
{
    const std::pair<QDateTime, int> faelle[] = {
        {jetzt.addDays(-1), 32}, {jetzt.addDays(40), 4},      {jetzt.addYears(-1), 2},
        {jetzt.addSecs(7200), 64}, {jetzt.addSecs(300), 256}, {jetzt.addSecs(-300), 128}, // 09:55: another hour
    };
    for (const auto &[plc, befehl] : faelle) {
        plant.SPS_Wort(0, 58) = plant.Write_Len[0] = 0;
        Block0(plc);
        EXPECT_EQ(plant.SPS_Wort(0, 58), befehl) << plc.toString().toStdString();
        EXPECT_EQ(both(plant.Write_Adr[0], plant.Write_Len[0]), both(58, 1));
    }
    plant.SPS_Wort(0, 58) = 16; // a step still under way
    plant.Write_Len[0] = 0;
    Block0(jetzt.addDays(-3));
    EXPECT_EQ(both(plant.SPS_Wort(0, 58), plant.Write_Len[0]), both(16, 0));
}

TEST_F(DerivedData, IdentityFailureCountsOnlyOnTheSecondPass)
{
    plant.Ofen_Typ[1] = plant.SPS_Wort(0, 29) = 5;
    plant.Ofen_Basis[0] = 100;
    plant.Ofen_Name[0] = QStringLiteral("AB");
    plant.SPS_Wort(0, 200) = 0x4241;
    plant.SPS_Wort(0, 278) = 305;
    auto pass = [&] {
        plant.Block0_Neu[0] = plant.Block1_Neu[0] = plant.Block2_Neu[0] = -1;
        deriveFurnace(0, schritt);
    };
    pass();
    EXPECT_EQ((std::vector<int>{plant.Kennung_Fehler[0], plant.Element_Anz[0], plant.Element_Spuren[0]}),
              (std::vector<int>{0, 3, 5}));

    plant.SPS_Wort(0, 200) = 0x4341; // a torn read of the name
    plant.SPS_Wort(0, 217) = 3;      // a later comparison overwrites: 6
    pass();
    EXPECT_EQ((std::vector<int>{plant.Kennung_Fehler[0], plant.Kennung_Zaehler[0], plant.Config_Save}),
              (std::vector<int>{6, 1, 0}));
    pass();
    EXPECT_EQ(plant.Config_Save, -1) << "plain type: the configuration takes the PLC's identity";

    plant.SPS_Wort(0, 217) = 0;
    plant.SPS_Wort(0, 200) = 0x4241;
    plant.Ofen_Typ[1] = plant.SPS_Wort(0, 29) = -5;
    plant.Ofen_Kennung_A(1, 3) = 11; // word 106 is 0, not delivered yet: counts as equal
    plant.Ofen_Kennung_B(1, 10) = 4;
    plant.SPS_Wort(0, 121) = 9; // pair 10 differs: 8
    pass();
    EXPECT_EQ(both(plant.Kennung_Fehler[0], plant.Meld_Seite[0]), both(8, 13)) << "a layout block loads its texts";
}

} // namespace
