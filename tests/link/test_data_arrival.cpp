// The receive handler: where the words of an answer go, and what a short,
// long, late or wrong answer does.

#include "test_polling_fixture.h"

using namespace kal;
using namespace kal::test;

namespace {

class Empfang : public Anlage {};

std::vector<i16> Folge(int n, int ab)
{
    std::vector<i16> w;
    for (int i = 0; i < n; ++i)
        w.push_back(static_cast<i16>(ab + i));
    return w;
}

TEST_F(Empfang, MemoryLinkAnswerGoesToTheNotedAddressAndResetsFurnace0)
{
    Ofen(0, false);
    Ofen(3, true);
    plant.IP_Adr[0] = 200; // furnace 0 has a Modbus read open
    plant.IP_Len[0] = 100;
    plant.Empfang_Fehler[3] = 10;
    plant.UDP_Read_Adr[3] = 0;
    plant.UDP_Write_Adr[3] = 58; // the read address has priority
    plant.Adr_Trigger[3] = 90;
    std::vector<i16> w = Folge(100, 1000);
    w[87] = 0x0001; // message 1 comes
    w[88] = w[89] = w[90] = 0;
    sock[3]->arrive(UDP_Antwort(w));
    EXPECT_EQ(plant.SPS_Wort(3, 0), 1000);
    EXPECT_EQ(plant.SPS_Wort(3, 99), 1099);
    EXPECT_EQ(plant.Block0_Neu[3], -1) << "the decoder ran";
    EXPECT_EQ(meldungen, (std::vector<std::pair<int, int>>{{3, 1}}));
    // The reset goes to furnace 0, not to the answering channel.
    EXPECT_EQ(plant.IP_Adr[0], -1);
    EXPECT_EQ(plant.IP_Len[0], 0);
    EXPECT_EQ(plant.Empfang_Fehler[3], 10);
}

TEST_F(Empfang, TenByteAnswerAndAnswerWithoutNotedAddressStoreNothing)
{
    Ofen(1, true);
    plant.SPS_Wort(1, 58) = 7;
    plant.UDP_Write_Adr[1] = 58;
    sock[1]->arrive(UDP_Antwort({}));
    EXPECT_EQ(plant.SPS_Wort(1, 58), 7);
    EXPECT_EQ(plant.Block0_Neu[1], 0);

    plant.UDP_Write_Adr[1] = -1;
    sock[1]->arrive(UDP_Antwort(Folge(100, 1)));
    EXPECT_EQ(plant.SPS_Wort(1, 0), 0);
    EXPECT_TRUE(sock[1]->pending.isEmpty()) << "the answer is taken off the channel all the same";

    // An odd byte at the end is a word whose low byte never came: it reads 0.
    plant.UDP_Read_Adr[1] = 10;
    QByteArray a = UDP_Antwort({0x0102});
    a.append(char(0x55));
    plant.SPS_Wort(1, 11) = 9;
    sock[1]->arrive(a);
    EXPECT_EQ(plant.SPS_Wort(1, 10), 0x0102);
    EXPECT_EQ(plant.SPS_Wort(1, 11), 0);
}

TEST_F(Empfang, AnswerPastTheImageStopsAtWord1140WithStep10)
{
    Ofen(2, true);
    plant.UDP_Read_Adr[2] = 1100;
    plant.IP_Adr[2] = 5;
    sock[2]->arrive(UDP_Antwort(Folge(100, 1)));
    EXPECT_EQ(plant.SPS_Wort(2, 1140), 41);
    EXPECT_EQ(plant.Empfang_Fehler[2], 10);
    EXPECT_EQ(plant.IP_Adr[2], -1);
}

TEST_F(Empfang, Channel8AnswerReachesTheFurnaceWhoseWindowHoldsIt)
{
    Ofen(0, true);
    Ofen(2, true);
    Ofen(5, true);
    plant.Server_Offset[0] = 3000;
    plant.Server_Offset[2] = 5000;
    plant.Server_Offset[5] = 8000;
    plant.IP_Adr[2] = 3;
    plant.Empfang_Fehler[2] = 30;
    plant.UDP_Read_Adr[8] = 5300;
    std::vector<i16> w = Folge(100, 1);
    w[99] = 0; // word 399
    plant.Meld_Seite[2] = 12;
    sock[8]->arrive(UDP_Antwort(w));
    EXPECT_EQ(plant.Server_Wort[5300], 1);
    EXPECT_EQ(plant.SPS_Wort(2, 300), 1);
    EXPECT_EQ(plant.SPS_Wort(2, 398), 99);
    EXPECT_EQ(plant.SPS_Wort(0, 300), 0);
    EXPECT_EQ(textLaden, std::vector<int>{3}) << "block 3 of furnace 3 was decoded";
    EXPECT_EQ(plant.Empfang_Fehler[2], 0);
    EXPECT_EQ(plant.IP_Adr[2], -1);
    EXPECT_EQ(plant.Ofen_UDP[8], 0);

    // 6300 lies in no furnace's window: only the server image takes it.
    plant.UDP_Read_Adr[8] = 6300;
    plant.Empfang_Fehler[0] = 40;
    sock[8]->arrive(UDP_Antwort(Folge(100, 500)));
    EXPECT_EQ(plant.Server_Wort[6300], 500);
    for (int f = 0; f < OFEN_MAX; ++f)
        EXPECT_NE(plant.SPS_Wort(f, 300), 500);
    EXPECT_EQ(plant.Empfang_Fehler[0], 40) << "no furnace found: nothing is reset";
}

TEST_F(Empfang, Channel8AnswerPastTheServerImageShowsStep30)
{
    Ofen(0, true);
    plant.Server_Offset[0] = 9000;
    plant.UDP_Read_Adr[8] = 8990;
    sock[8]->arrive(UDP_Antwort(Folge(100, 1)));
    EXPECT_EQ(plant.Server_Wort[9000], 11);
    EXPECT_EQ(plant.Empfang_Fehler[8], 30);
}

class ModbusEmpfang : public Anlage {
protected:
    void SetUp() override
    {
        Anlage::SetUp();
        Ofen(4, false);
        plant.IP_Adr[4] = 100;
        plant.IP_Len[4] = 100;
        plant.Lese_Antwort = -1;
        plant.Empfang_Fehler[4] = 71;
    }
};

TEST_F(ModbusEmpfang, ReadAnswerIsStoredAndDecoded)
{
    sock[4]->arrive(Modbus_Antwort(Folge(100, -50)));
    EXPECT_EQ(plant.SPS_Wort(4, 100), -50);
    EXPECT_EQ(plant.SPS_Wort(4, 199), 49);
    EXPECT_EQ(plant.Block1_Zahl[4], 0) << "199 without block 0 before";
    EXPECT_EQ(plant.Empfang_Fehler[4], 0);
    EXPECT_EQ(plant.IP_Adr[4], -1);
    EXPECT_EQ(plant.IP_Len[4], 0);
    // An answer nobody waits for is dropped.
    sock[4]->arrive(Modbus_Antwort(Folge(100, 7)));
    EXPECT_EQ(plant.SPS_Wort(4, 100), -50);
}

TEST_F(ModbusEmpfang, WriteAnswerAndWriteFlagStoreNothingButFreeTheChannel)
{
    plant.IP_Adr[4] = -2;
    sock[4]->arrive(Modbus_Antwort(Folge(2, 9)));
    EXPECT_EQ(plant.SPS_Wort(4, 100), 0);
    EXPECT_EQ(plant.IP_Adr[4], -1);
    EXPECT_EQ(plant.Empfang_Fehler[4], 0);

    // After a write frame the read's words are not taken, the decoder runs.
    plant.IP_Adr[4] = 0;
    plant.IP_Len[4] = 100;
    plant.Lese_Antwort = 0;
    sock[4]->arrive(Modbus_Antwort(Folge(100, 9)));
    EXPECT_EQ(plant.SPS_Wort(4, 0), 0);
    EXPECT_EQ(plant.Block0_Neu[4], -1);
}

TEST_F(ModbusEmpfang, ExceptionAnswerReadsItsCodeAsCountAndTheRestFromTheOldBuffer)
{
    sock[4]->arrive(Modbus_Antwort(Folge(3, 0x0A0B))); // leaves bytes 10..15 in the buffer
    plant.IP_Adr[4] = 300;
    plant.IP_Len[4] = 100;
    QByteArray ausnahme(7, '\0');
    ausnahme.append(char(0x83)).append(char(0x02));
    sock[4]->arrive(ausnahme);
    EXPECT_EQ(plant.SPS_Wort(4, 300), 0x0A0B);
    EXPECT_EQ(plant.SPS_Wort(4, 301), 0);
    EXPECT_EQ(plant.Empfang_Fehler[4], 0);
}

TEST_F(ModbusEmpfang, MoreThan1000BytesFailAtStep70)
{
    QByteArray lang = Modbus_Antwort(Folge(100, 1));
    lang.append(QByteArray(1001 - lang.size(), '\x01'));
    sock[4]->arrive(lang);
    EXPECT_EQ(plant.Empfang_Fehler[4], 70);
    EXPECT_EQ(plant.IP_Adr[4], -1);
    EXPECT_EQ(plant.SPS_Wort(4, 100), 0);
    EXPECT_TRUE(sock[4]->pending.isEmpty());

    // A byte count that runs past the image stops at word 1140 with step 71.
    plant.IP_Adr[4] = 1100;
    plant.IP_Len[4] = 100;
    QByteArray b = Modbus_Antwort(Folge(100, 1));
    b[8] = char(0xFF);
    sock[4]->arrive(b);
    EXPECT_EQ(plant.SPS_Wort(4, 1140), 41);
    EXPECT_EQ(plant.Empfang_Fehler[4], 71);
    EXPECT_EQ(plant.IP_Adr[4], -1);
}

} // namespace
