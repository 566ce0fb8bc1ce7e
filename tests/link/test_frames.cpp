// Frames byte for byte, and the frame routines with scripted channels: which
// channel gets what, which flags change, and what a failure leaves behind.

#include "link/frames.h"
#include "support/hex.h"
#include "support/scripted_plant.h"

using namespace kal;
using namespace kal::test;

namespace {

/// Every channel connected; the memory link notes hold 33 and the answer
/// flags 5, which shows whether a routine set them.
class Frames : public ScriptedPlant {
protected:
    void SetUp() override
    {
        ScriptedPlant::SetUp();
        for (int k = 0; k < KANAL_MAX; ++k) {
            sock[k]->state = SCK_CONNECTED;
            plant.UDP_Read_Adr[k] = plant.UDP_Write_Adr[k] = 33;
        }
        plant.Lese_Antwort = plant.Schreib_Antwort = 5;
    }

    /// The memory link notes of a channel: read address, write address.
    static std::pair<int, int> linkNotes(int k) { return {plant.UDP_Read_Adr[k], plant.UDP_Write_Adr[k]}; }
    static std::pair<int, int> answerFlags() { return {plant.Lese_Antwort, plant.Schreib_Antwort}; }
    int sentCount() const
    {
        int n = 0;
        for (auto *s : sock)
            n += static_cast<int>(s->sent.size());
        return n;
    }
};

TEST(FrameBuilders, ModbusWriteAndCommandByteFields)
{
    EXPECT_EQ(writeFrameIp(1088, {0x0102, -200}),
              hex("00 00 00 00 00 0B 01 10 04 40 00 02 04 01 02 FF 38"));
    // Command values: high byte by truncating division, low byte by mask.
    EXPECT_EQ(commandFrameIp(30, -1).right(2), hex("00 FF"));
    EXPECT_EQ(commandFrameIp(30, -255).right(2), hex("00 01"));
    EXPECT_EQ(runError([] { commandFrameIp(30, -256); }), ERR_INVALID_CALL);
    // 124 words fill the length byte (255); one more does not fit.
    EXPECT_EQ(static_cast<uint8_t>(writeFrameIp(0, QList<i16>(124, 1))[5]), 255);
    EXPECT_EQ(runError([] { writeFrameIp(0, QList<i16>(125, 1)); }), ERR_INVALID_CALL);
}

TEST_F(Frames, MemoryLinkReadAndWriteDirectOverTheServerOrNotAtAll)
{
    plant.Ofen_UDP[0] = TRUE16;
    i16 adr = 100;
    FETCH_UDP(0, adr, 100);
    EXPECT_EQ(sock[0]->sent.value(0), hex("42 00 00 00 00 00 00 06 1B 52 00 64 00 64"));
    EXPECT_EQ(linkNotes(0), both(100, -1));

    // Behind the server the offset reaches the frame, channel 8 and the caller.
    plant.Server_Offset[2] = 3000;
    adr = 100;
    FETCH_UDP(2, adr, 100);
    EXPECT_EQ(adr, 3100);
    EXPECT_EQ(sock[8]->sent.value(0), hex("42 00 00 00 00 00 00 06 1B 52 0C 1C 00 64"));
    EXPECT_EQ(linkNotes(8), both(3100, -1));
    // A write behind the server: offset in the frame, not in the note of channel 8.
    plant.Server_Offset[3] = 5000;
    plant.SPS_Wort(3, 1140) = -2;
    SEND_UDP(3, 1140, 1);
    EXPECT_EQ(sock[8]->sent.value(1), hex("42 00 00 00 00 00 00 08 1B 57 17 FC 00 01 FF FE"));
    EXPECT_EQ(linkNotes(8), both(-1, 1140));
    // An index above 7 goes the server way too.
    SEND_UDP(8, 20, 0);
    EXPECT_EQ(sock[8]->sent.value(2), hex("42 00 00 00 00 00 00 06 1B 57 00 14 00 00"));

    // A TCP furnace without offset gets nothing either way and keeps its notes.
    FETCH_UDP(1, adr, 100);
    SEND_UDP(1, 58, 1);
    EXPECT_EQ(linkNotes(1), both(33, 33));
    EXPECT_EQ(sentCount(), 4);

    // Word 1141 stops the write before anything is noted or sent.
    EXPECT_EQ(SEND_UDP(0, 1140, 2), ERR_SUBSCRIPT);
    EXPECT_EQ(SEND_UDP(8, 20, 1), ERR_SUBSCRIPT);
    EXPECT_EQ(plant.UDP_Write_Adr[0], -1);
    plant.SPS_Wort(0, 58) = 0x0102;
    SEND_UDP(0, 58, 1);
    EXPECT_EQ(sock[0]->sent.value(1), hex("42 00 00 00 00 00 00 08 1B 57 00 3A 00 01 01 02"));
    EXPECT_EQ(linkNotes(0), both(-1, 58));
    EXPECT_EQ(sentCount(), 5);
}

TEST_F(Frames, FetchOfenClearsTheRetriesOfTheFurnaceOnTurn)
{
    // Which link each block takes is checked with a mixed plant in
    // tests/integration; the retry count belongs to Akt_Ofen, not to the argument.
    plant.Akt_Ofen = 1;
    plant.Retry_IP[1] = plant.Retry_IP[4] = 5;
    i16 adr = 500; // never read through this routine
    FETCH_Ofen(4, adr, 100);
    EXPECT_EQ(both(plant.Retry_IP[1], plant.Retry_IP[4]), both(0, 5));
    EXPECT_EQ(sentCount(), 0);
}

TEST_F(Frames, ModbusReadAndWriteNoteFirstAndFailTheirOwnWays)
{
    FETCH_IP(3, 388, 100);
    EXPECT_EQ(sock[3]->sent.value(0), hex("00 00 00 00 00 06 01 03 01 84 00 64"));
    EXPECT_EQ(answerFlags(), both(TRUE16, FALSE16));
    plant.SPS_Wort(2, 388) = 101;
    plant.SPS_Wort(2, 389) = 0x0203;
    SEND_IP(2, 388, 2);
    EXPECT_EQ(sock[2]->sent.value(0), hex("00 00 00 00 00 0B 01 10 01 84 00 02 04 00 65 02 03"));
    EXPECT_EQ(std::tuple(plant.IP_Adr[2], plant.Lese_Antwort, plant.Schreib_Antwort), std::tuple(-2, FALSE16, TRUE16));

    // A read on a channel still connecting is noted as open, nothing more.
    plant.Lese_Antwort = plant.Schreib_Antwort = 5;
    sock[4]->state = 6;
    EXPECT_EQ(FETCH_IP(4, 200, 100), 0);
    EXPECT_EQ((std::vector<int>{plant.IP_Adr[4], plant.IP_Len[4], plant.Lese_Antwort}),
              (std::vector<int>{200, 100, 5}));
    // A write on a closed channel is lost without a message, still marked.
    sock[7]->state = SCK_CLOSED;
    SEND_IP(7, 388, 2);
    EXPECT_EQ(plant.IP_Adr[7], -2);
    // The write lets errors reach the caller; the bounds error comes before
    // flags and send.
    EXPECT_EQ(runError([] { SEND_IP(1, 1139, 3); }), ERR_SUBSCRIPT);
    EXPECT_EQ(both(plant.IP_Adr[1], plant.Schreib_Antwort), both(-2, 5));
    sock[6]->refuseSends = true;
    EXPECT_EQ(runError([] { SEND_IP(6, 388, 2); }), ERR_SOCKET_STATE);
    // The read swallows a refused send; what was stored before it stays.
    sock[5]->refuseSends = true;
    EXPECT_EQ(FETCH_IP(5, 600, 100), ERR_SOCKET_STATE);
    EXPECT_EQ(both(plant.IP_Adr[5], plant.Lese_Antwort), both(600, TRUE16));
    EXPECT_EQ(sentCount(), 2);
}

TEST_F(Frames, SendBefByModbusRestartsThePollSequenceOnlyAfterASend)
{
    EXPECT_EQ(SEND_BEF(3, 30, 4), 0);
    EXPECT_EQ(sock[2]->sent.value(0), hex("00 00 00 00 00 09 01 10 00 1E 00 01 02 00 04"));
    EXPECT_EQ((std::vector<int>{plant.IP_Adr[2], plant.Lese_Antwort, plant.Schreib_Antwort, plant.Next_Ofen,
                                plant.Next_Phase, plant.SPS_Wort(2, 30)}),
              (std::vector<int>{-2, FALSE16, TRUE16, 2, 0, 0}));

    // Value below -255, refused send, closed channel: only the write mark stays.
    plant.Next_Ofen = -1;
    plant.Next_Phase = 4;
    plant.Schreib_Antwort = 5;
    sock[1]->refuseSends = true;
    sock[3]->state = SCK_CLOSED;
    EXPECT_EQ(SEND_BEF(1, 30, -256), ERR_INVALID_CALL);
    EXPECT_EQ(SEND_BEF(2, 30, 4), ERR_SOCKET_STATE);
    EXPECT_EQ(SEND_BEF(4, 30, 4), 0);
    for (int ofen : {0, 1, 3})
        EXPECT_EQ(plant.IP_Adr[ofen], -2) << ofen;
    EXPECT_EQ((std::vector<int>{plant.Next_Ofen, plant.Next_Phase, plant.Schreib_Antwort}),
              (std::vector<int>{-1, 4, 5}));
    EXPECT_EQ(SEND_BEF(0, 30, 4), ERR_SUBSCRIPT); // number 0 is no furnace
    EXPECT_EQ(sentCount(), 1);
}

TEST_F(Frames, SendBefByMemoryLink)
{
    // Mixed TCP furnace number 2: words 300..399 go to the panel on channel 8.
    plant.Server_Akt_IP4 = 20;
    plant.Server_Offset[1] = 3000;
    SEND_BEF(2, 300, 1);
    EXPECT_EQ(sock[8]->sent.value(0), hex("42 00 00 00 00 00 00 08 1B 57 0C E4 00 01 00 01"));
    EXPECT_EQ(linkNotes(8), both(-1, 300));
    EXPECT_EQ(both(plant.Next_Ofen, plant.IP_Adr[1]), both(-1, -1));
    SEND_BEF(2, 400, 1); // outside 300..399: Modbus
    EXPECT_EQ(sock[1]->sent.size(), 1);

    // UDP furnace: own channel, no offset, every value right.
    plant.Ofen_UDP[4] = TRUE16;
    plant.Server_Offset[4] = 6000;
    SEND_BEF(5, 350, -300);
    EXPECT_EQ(sock[4]->sent.value(0), hex("42 00 00 00 00 00 00 08 1B 57 01 5E 00 01 FE D4"));
    EXPECT_EQ(plant.UDP_Write_Adr[4], 350);
    EXPECT_EQ(sentCount(), 3);
}

} // namespace
