// Block_Decode and MeldScan from word images.

#include "link/decoder.h"
#include "test_polling_fixture.h"

using namespace kal;
using namespace kal::test;

namespace {

class Decoder : public Anlage {};

TEST_F(Decoder, ServerBaseTableFromHighByteOfWord215)
{
    const std::pair<int, int> tabelle[] = {{0x48, 3000}, {0x50, 3000}, {0x51, 4000}, {0x52, 5000},
                                           {0x53, 6000}, {0x54, 7000}, {0x55, 8000}, {0x56, 9000},
                                           {0x47, 0},    {0x57, 0},    {0x00, 0},    {0xC9, 0}};
    for (auto [hoch, basis] : tabelle)
        EXPECT_EQ(Server_Basis(6, static_cast<i16>(hoch << 8)), basis) << std::hex << hoch;
    // 0x49: one window per furnace index.
    EXPECT_EQ(Server_Basis(0, 0x4900), 3000);
    EXPECT_EQ(Server_Basis(5, 0x4900), 8000);
}

TEST_F(Decoder, Word215OnFurnace2SetsWindowAndServerOctetAndSetsChannel8Up)
{
    Ofen(2, true);
    plant.SPS_Wort(2, 200) = 0x4B4F; // a name and a serial number are there
    plant.SPS_Wort(2, 208) = 0x3132;
    plant.SPS_Wort(2, 215) = 0x4905;
    Block_Decode(2, 200, 100);
    EXPECT_EQ(plant.Server_Offset[2], 5000);
    EXPECT_EQ(plant.Server_IP4[2], 5);
    EXPECT_EQ(plant.Block2_Neu[2], -1);
    // The server changed: channel 8 is set up for 10.0.0.5 and connected.
    EXPECT_EQ(plant.Server_Neu[2], 0);
    EXPECT_EQ(plant.Server_Akt_IP4, 5);
    EXPECT_EQ(sock[8]->RemoteHost, QStringLiteral("10.0.0.5"));
    EXPECT_EQ(sock[8]->RemotePort, 1024);
    EXPECT_EQ(sock[8]->connects, 1);

    // The same word again changes nothing: no second set-up.
    Block_Decode(2, 200, 100);
    EXPECT_EQ(sock[8]->connects, 1);

    // High byte 0x47: no server; the octet stays as it was.
    plant.SPS_Wort(2, 215) = 0x4707;
    plant.SPS_Wort(2, 200) = 0;
    Block_Decode(2, 299, 1);
    EXPECT_EQ(plant.Server_Offset[2], 0);
    EXPECT_EQ(plant.Server_IP4[2], 5);
    EXPECT_EQ(plant.Block2_Neu[2], 0) << "no name yet";
}

TEST_F(Decoder, ServerFurnacesInDifferentSubnetsWarnOnceInElevenAnswers)
{
    Ofen(0, true);
    Ofen(1, true);
    plant.Server_IP4[0] = 5;
    plant.Ofen_IP(1, 2) = 9; // furnace 1 names a server in another subnet
    plant.Server_IP4[1] = 5;
    plant.SPS_Wort(1, 215) = 0x5105;
    for (int i = 0; i < 12; ++i)
        Block_Decode(1, 299, 1);
    ASSERT_EQ(dlg.shown.size(), 2u);
    EXPECT_EQ(dlg.shown[0].text, QStringLiteral("Proface Server, Kanal 1\nIP 10 0 0 5\n\n"
                                                 "wrong IP-adress, Kanal 2\nIP 10 0 9 5"));
    EXPECT_TRUE(dlg.shown[0].title.isEmpty());
    // Channel 8 is left alone while the addresses disagree.
    EXPECT_EQ(sock[8]->connects, 0);
}

TEST_F(Decoder, Block0TakesLayoutFromWord29AndHoursByLinkKind)
{
    Ofen(0, true, 0);
    plant.Ofen_Basis[0] = 77;
    plant.SPS_Wort(0, 67) = 0x5678; // low half first
    plant.SPS_Wort(0, 68) = 0x0012;
    Block_Decode(0, 99, 1);
    EXPECT_EQ(plant.Ofen_Stunden[0], 0x00125678);
    EXPECT_EQ(plant.Ofen_Basis[0], 0);
    EXPECT_EQ(plant.Block1_Neu[0], -1) << "a plain furnace has no identity block to wait for";
    EXPECT_EQ(plant.Block0_Neu[0], -1);
    EXPECT_EQ(plant.Block1_Zahl[0], 1);

    Ofen(3, false);
    plant.SPS_Wort(3, 7) = -1;
    plant.SPS_Wort(3, 8) = 0x7FFF;
    plant.SPS_Wort(3, 29) = static_cast<i16>(0x91F4); // layout block at 500, large layout
    Block_Decode(3, 99, 1);
    EXPECT_EQ(plant.Ofen_Stunden[3], 0x7FFFFFFF);
    EXPECT_EQ(plant.Ofen_Basis[3], 500);
    EXPECT_EQ(plant.Ofen_Gross[3], -1);
    EXPECT_EQ(plant.Ofen_Spuren[3], 30);
    EXPECT_EQ(plant.Prog_Page[3], 1088);
    EXPECT_EQ(plant.Adr_Block[3], 900);
    EXPECT_EQ(plant.Block1_Neu[3], 0);

    plant.SPS_Wort(3, 29) = static_cast<i16>(0x8032); // base 50, plain layout
    Block_Decode(3, 99, 1);
    EXPECT_EQ(plant.Ofen_Basis[3], 50);
    EXPECT_EQ(plant.Ofen_Gross[3], 0);
    EXPECT_EQ(plant.Prog_Page[3], 388);
    EXPECT_EQ(plant.Adr_Block[3], 200);

    // 199 after block 0 steps Block1_Zahl to 2, a second time to 0.
    Block_Decode(3, 100, 100);
    EXPECT_EQ(plant.Block1_Zahl[3], 2);
    EXPECT_EQ(plant.Block1_Neu[3], 0);
    Block_Decode(3, 199, 1);
    EXPECT_EQ(plant.Block1_Zahl[3], 0);
    // The identity block is seen at its own address, here 50.
    Block_Decode(3, 40, 20);
    EXPECT_EQ(plant.Block1_Neu[3], -1);
}

TEST_F(Decoder, Block0StampSetsProgNeuOnlyWhenValid)
{
    Ofen(0, true);
    auto [a, b] = Stempel(jetzt);
    plant.SPS_Wort(0, 80) = a;
    plant.SPS_Wort(0, 81) = b;
    Block_Decode(0, 0, 100);
    EXPECT_EQ(plant.Prog_Neu[0], -1);
    EXPECT_EQ(plant.Datum_Block0[0], QStringLiteral("15.03.2024 10:00:00"));

    plant.Prog_Neu[0] = 0;
    plant.SPS_Wort(0, 80) = static_cast<i16>(a & ~(0xF << 7)); // month 0
    Block_Decode(0, 99, 1);
    EXPECT_EQ(plant.Prog_Neu[0], 0);
}

TEST_F(Decoder, ShortWriteAnswerRunsNothing)
{
    Ofen(0, true);
    plant.SPS_Wort(0, 699) = static_cast<i16>(0xAB00);
    Block_Decode(0, 58, 10);
    EXPECT_EQ(plant.Block0_Neu[0], 0);
    EXPECT_EQ(plant.Meld_Pruefen, 0);
    EXPECT_TRUE(meldungen.empty());
}

class LogTrigger : public Anlage {
protected:
    void SetUp() override
    {
        Anlage::SetUp();
        Ofen(1, false, static_cast<i16>(0x8064));
        plant.Adr_Trigger[1] = 400;
        plant.Trigger_Len[1] = 40;
        plant.Ofen_Charge[1] = -1;
        plant.Poll_Rounds[1] = 5;
    }
    void Anbieten(const QDateTime &d, i16 art = 154)
    {
        auto [a, b] = Stempel(d);
        plant.SPS_Wort(1, 400) = art;
        plant.SPS_Wort(1, 401) = a;
        plant.SPS_Wort(1, 402) = b;
    }
};

TEST_F(LogTrigger, ValidRecordGoesToRecorderAndIsAcknowledged)
{
    Anbieten(jetzt.addSecs(-600));
    Block_Decode(1, 400, 100);
    EXPECT_EQ(chargen, std::vector<int>{2});
    EXPECT_EQ(plant.Trigger_Wert[1], 154);
    EXPECT_EQ(plant.SPS_Wort(1, 400), 0);
    EXPECT_EQ(plant.Write_Adr[1], 400);
    EXPECT_EQ(plant.Write_Len[1], 1);
    EXPECT_EQ(plant.Log_Neu[1], 0);
    EXPECT_EQ(plant.Poll_Skip[1], 0) << "ten minutes behind is no backlog";

    // While that acknowledgement is queued the next record waits.
    Anbieten(jetzt);
    Block_Decode(1, 400, 100);
    EXPECT_EQ(chargen.size(), 1u);
    EXPECT_EQ(plant.SPS_Wort(1, 400), 154);
}

TEST_F(LogTrigger, BadDateIsRefusedWithoutRecording)
{
    Anbieten(jetzt);
    plant.SPS_Wort(1, 401) = static_cast<i16>(plant.SPS_Wort(1, 401) | (13 << 7)); // month 13
    Block_Decode(1, 400, 100);
    EXPECT_TRUE(chargen.empty());
    EXPECT_EQ(plant.SPS_Wort(1, 400), 0);
    EXPECT_EQ(plant.Write_Adr[1], 400);
    EXPECT_EQ(plant.Write_Len[1], 1);
}

TEST_F(LogTrigger, YearFieldOfSixOrLessDependsOnThePreviousStamp)
{
    const QDateTime alt(QDate(2005, 6, 1), QTime(8, 0), Qt::UTC);
    plant.SPS_Datum_OK = -1;
    Anbieten(alt);
    Block_Decode(1, 402, 1);
    EXPECT_EQ(chargen.size(), 1u) << "flag left set: taken";

    plant.Write_Len[1] = 0;
    plant.SPS_Datum_OK = 0;
    Anbieten(alt);
    Block_Decode(1, 402, 1);
    EXPECT_EQ(chargen.size(), 1u) << "flag left clear: refused";
    EXPECT_EQ(plant.SPS_Wort(1, 400), 0);
}

TEST_F(LogTrigger, BacklogForcesTriggerReadsAndRecordingOffLeavesRecordStanding)
{
    Anbieten(jetzt.addSecs(-31 * 60));
    Block_Decode(1, 400, 100);
    EXPECT_EQ(plant.Poll_Skip[1], 20);
    EXPECT_EQ(plant.Poll_Rounds[1], 0);

    plant.Write_Len[1] = 0;
    plant.Ofen_Charge[1] = 0;
    Anbieten(jetzt);
    Block_Decode(1, 400, 100);
    EXPECT_EQ(chargen.size(), 1u);
    EXPECT_EQ(plant.SPS_Wort(1, 400), 154) << "nothing is acknowledged while recording is off";
    EXPECT_EQ(plant.Log_Neu[1], 0);
}

TEST_F(Decoder, Block3StartsTextLoadOnlyWhenLoadRunsAndNoWriteWaits)
{
    Ofen(4, true);
    plant.Prog_Page[4] = 388;
    plant.SPS_Wort(4, 388) = 1122;
    Block_Decode(4, 300, 100);
    EXPECT_TRUE(textLaden.empty()) << "Meld_Seite -1: no load";
    EXPECT_EQ(plant.Prog_Page_Fehlt[4], -1);

    plant.Meld_Seite[4] = 13;
    plant.SPS_Wort(4, 388) = 1000;
    Block_Decode(4, 300, 100);
    EXPECT_EQ(textLaden, std::vector<int>{5});
    EXPECT_EQ(plant.Prog_Page_Fehlt[4], 0);
    EXPECT_EQ(plant.Block3_Neu[4], 0);

    plant.Write_Len[4] = 1;
    Block_Decode(4, 300, 100);
    EXPECT_EQ(textLaden.size(), 1u);
}

TEST_F(Decoder, MessageConfigurationIsCopiedAndReportedWhenChanged)
{
    Ofen(0, true);
    plant.SPS_Wort(0, 690) = 0x0010;
    plant.SPS_Wort(0, 699) = static_cast<i16>(0xAB05);
    Block_Decode(0, 600, 100);
    EXPECT_EQ(plant.Meld_Config_Da[0], -1);
    EXPECT_EQ(plant.Meld_Config(0, 0), 0x0010);
    EXPECT_EQ(plant.Meld_Config(0, 9), static_cast<i16>(0xAB05));
    ASSERT_EQ(alarme.size(), 1u);
    EXPECT_TRUE(alarme[0].second);

    Block_Decode(0, 600, 100); // unchanged, not on view: nothing to tell
    EXPECT_EQ(alarme.size(), 1u);
    plant.Seite_Ofen = 1; // on view: the lamps are refreshed
    Block_Decode(0, 600, 100);
    ASSERT_EQ(alarme.size(), 2u);
    EXPECT_FALSE(alarme[1].second);

    plant.SPS_Wort(0, 699) = 0x0A05;
    Block_Decode(0, 699, 1);
    EXPECT_EQ(plant.Meld_Config_Da[0], 0);
}

TEST_F(Decoder, MessageScanReportsComingAndGoingLowerBitFirst)
{
    Ofen(2, true);
    plant.Meld_Letzt(2, 1) = 0x0004; // message 19 active from before
    plant.SPS_Wort(2, 87) = 0x0011;  // messages 1 and 5 come
    plant.SPS_Wort(2, 89) = static_cast<i16>(0x8000); // message 48: bit 15
    Block_Decode(2, 0, 100);
    const std::vector<std::pair<int, int>> erwartet = {{2, 1}, {2, 5}, {2, -19}, {2, 48}};
    EXPECT_EQ(meldungen, erwartet);
    EXPECT_EQ(plant.Meld_Letzt(2, 2), -32768);
    EXPECT_EQ(plant.Meld_Pruefen, 0);

    meldungen.clear();
    Block_Decode(2, 0, 100);
    EXPECT_TRUE(meldungen.empty()) << "unchanged words report nothing";
}

} // namespace
