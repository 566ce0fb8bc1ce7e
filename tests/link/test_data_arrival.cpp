// The receive handler: where an answer's words go, and what a short, long,
// wrong or unexpected answer does.

#include "support/scripted_plant.h"

using namespace kal;
using namespace kal::test;

namespace {

class ArrivalTest : public ScriptedPlant {};

TEST_F(ArrivalTest, MemoryLinkAnswersGoByTheNotedAddressOnly)
{
    Ofen(0, false);
    Ofen(3, true);
    plant.IP_Adr[0] = 200; // furnace 0 has a Modbus read open
    plant.Empfang_Fehler[3] = 10;
    plant.Adr_Trigger[3] = 90;
    plant.UDP_Read_Adr[3] = 0;
    plant.UDP_Write_Adr[3] = 58; // the read address has priority
    // The header claims ESC "W" and 200 bytes, and the first words look like an
    // address and a count: none of it is checked, the words start at byte 10.
    sock[3]->arrive(QByteArray("B\0\0\0\0\0\0\xC8\x1BW\x12\x34\0\x3A", 14) + udpReply(wordSequence(98, 1002)).mid(10));
    EXPECT_EQ((std::vector<int>{plant.SPS_Wort(3, 0), plant.SPS_Wort(3, 1), plant.SPS_Wort(3, 99)}),
              (std::vector<int>{0x1234, 58, 1099}));
    EXPECT_EQ(plant.Block0_Neu[3], -1) << "the decoder ran";
    EXPECT_EQ(plant.IP_Adr[0], -1) << "the reset goes to furnace 0";
    EXPECT_EQ(plant.Empfang_Fehler[3], 10);

    Ofen(1, true);
    plant.UDP_Write_Adr[1] = 58;
    sock[1]->arrive(udpReply({})); // a write's answer: 10 bytes
    EXPECT_EQ(plant.Block0_Neu[1], 0);
    sock[1]->arrive(QByteArray(3, '\x07')); // shorter than the header
    EXPECT_EQ(plant.SPS_Wort(1, 58), 0);

    plant.UDP_Write_Adr[1] = -1; // nothing asked: dropped, but taken off the channel
    sock[1]->arrive(udpReply(wordSequence(100, 1)));
    EXPECT_EQ(plant.SPS_Wort(1, 0), 0);
    EXPECT_TRUE(sock[1]->pending.isEmpty());

    plant.UDP_Read_Adr[1] = 10; // an odd last byte is a word whose low byte never came
    plant.SPS_Wort(1, 11) = 9;
    sock[1]->arrive(udpReply({0x0102}) + QByteArray(1, '\x55'));
    EXPECT_EQ(both(plant.SPS_Wort(1, 10), plant.SPS_Wort(1, 11)), both(0x0102, 0));

    plant.UDP_Read_Adr[1] = 1100; // past word 1140: stored up to it, step 10
    sock[1]->arrive(udpReply(wordSequence(100, 1)));
    EXPECT_EQ(both(plant.SPS_Wort(1, 1140), plant.Empfang_Fehler[1]), both(41, 10));
}

TEST_F(ArrivalTest, Channel8AnswerReachesOnlyTheFurnaceWhoseWindowHoldsIt)
{
    for (int f : {0, 2, 5})
        Ofen(f, true);
    plant.Server_Offset[0] = 3000;
    plant.Server_Offset[2] = 5000;
    plant.Server_Offset[5] = 8000;
    plant.IP_Adr[2] = 3;
    plant.UDP_Read_Adr[8] = 5300;
    sock[8]->arrive(udpReply(wordSequence(100, 1)));
    EXPECT_EQ((std::vector<int>{plant.Server_Wort[5300], plant.SPS_Wort(2, 300), plant.SPS_Wort(2, 399)}),
              (std::vector<int>{1, 1, 100}));
    EXPECT_EQ(plant.Prog_Page_Fehlt[2], -1) << "block 3 of that furnace was decoded";
    EXPECT_EQ(plant.IP_Adr[2], -1);

    plant.UDP_Read_Adr[8] = 6300; // no furnace's window
    plant.Empfang_Fehler[0] = 40;
    sock[8]->arrive(udpReply(wordSequence(100, 500)));
    EXPECT_EQ(plant.Server_Wort[6300], 500);
    for (int f = 0; f < OFEN_MAX; ++f)
        EXPECT_NE(plant.SPS_Wort(f, 300), 500);
    EXPECT_EQ(plant.Empfang_Fehler[0], 40) << "nobody's fields are reset";

    plant.UDP_Read_Adr[8] = 8990; // past the server image: step 30
    sock[8]->arrive(udpReply(wordSequence(100, 1)));
    EXPECT_EQ(both(plant.Server_Wort[9000], plant.Empfang_Fehler[8]), both(11, 30));
}

class ModbusArrival : public ScriptedPlant {
protected:
    void SetUp() override
    {
        ScriptedPlant::SetUp();
        Ofen(4, false);
        pendingRead(100);
        plant.Lese_Antwort = -1;
        plant.Empfang_Fehler[4] = 71;
    }
    void pendingRead(int adr)
    {
        plant.IP_Adr[4] = static_cast<i16>(adr);
        plant.IP_Len[4] = 100;
    }
};

TEST_F(ModbusArrival, ReadAnswerIsStoredOnceAndFreesTheChannel)
{
    sock[4]->arrive(modbusReply(wordSequence(100, -50)));
    EXPECT_EQ((std::vector<int>{plant.SPS_Wort(4, 100), plant.SPS_Wort(4, 199), plant.Empfang_Fehler[4],
                                plant.IP_Adr[4], plant.IP_Len[4]}),
              (std::vector<int>{-50, 49, 0, -1, 0}));
    sock[4]->arrive(modbusReply(wordSequence(100, 7))); // nobody waits: dropped
    EXPECT_EQ(plant.SPS_Wort(4, 100), -50);

    plant.IP_Adr[4] = -2; // a write's answer stores nothing
    plant.IP_Len[4] = 2;
    sock[4]->arrive(modbusReply(wordSequence(2, 9)));
    EXPECT_EQ(plant.IP_Adr[4], -1);

    pendingRead(0); // after a write frame the words are not taken, the decoder runs
    plant.Lese_Antwort = 0;
    sock[4]->arrive(modbusReply(wordSequence(100, 9)));
    EXPECT_EQ(both(plant.SPS_Wort(4, 0), plant.Block0_Neu[4]), both(0, -1));
}

TEST_F(ModbusArrival, ExceptionOversizeAndLongCountAreHandledAndReported)
{
    sock[4]->arrive(modbusReply(wordSequence(3, 0x0A0B))); // leaves bytes 10..15 in the buffer
    pendingRead(300);
    sock[4]->arrive(QByteArray(7, '\0') + QByteArray("\x83\x02", 2));
    EXPECT_EQ(plant.SPS_Wort(4, 300), 0x0A0B) << "exception code read as a count, words from the old buffer";
    EXPECT_EQ(plant.Empfang_Fehler[4], 0);

    pendingRead(200);
    QByteArray lang = modbusReply(wordSequence(100, 1));
    sock[4]->arrive(lang + QByteArray(1001 - lang.size(), '\x01'));
    EXPECT_EQ((std::vector<int>{plant.Empfang_Fehler[4], plant.IP_Adr[4], plant.SPS_Wort(4, 200)}),
              (std::vector<int>{70, -1, 0}));

    pendingRead(1100); // a count that runs past the image stops at word 1140, step 71
    lang[8] = char(0xFF);
    sock[4]->arrive(lang);
    EXPECT_EQ(both(plant.SPS_Wort(4, 1140), plant.Empfang_Fehler[4]), both(41, 71));
}

TEST_F(ArrivalTest, ReadAnsweredJustBeforeAQueuedWriteLeavesItsWordsAlone)
{
    // A program block waits at 110..129 of a memory link furnace and of a
    // Modbus furnace; a read of block 100 that was on its way arrives first.
    Ofen(0, true);
    Ofen(1, false);
    for (int f : {0, 1}) {
        for (int a = 110; a < 130; ++a)
            plant.SPS_Wort(f, a) = 7;
        plant.Write_Adr[f] = 110;
        plant.Write_Len[f] = 20;
    }
    plant.UDP_Read_Adr[0] = 100;
    sock[0]->arrive(udpReply(wordSequence(100, 100)));
    plant.IP_Adr[1] = 100;
    plant.IP_Len[1] = 100;
    plant.Lese_Antwort = -1;
    sock[1]->arrive(modbusReply(wordSequence(100, 100)));
    for (int f : {0, 1})
        EXPECT_EQ((std::vector<int>{plant.SPS_Wort(f, 109), plant.SPS_Wort(f, 110), plant.SPS_Wort(f, 129),
                                    plant.SPS_Wort(f, 130)}),
                  (std::vector<int>{109, 7, 7, 130}))
            << f;
}

} // namespace
