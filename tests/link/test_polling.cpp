// The main cycle tick by tick against scripted sockets. The connect wait runs
// on a test clock whose every yield moves time on by a quarter second, so a
// two-second wait takes eight yields and no real time.

#include "link/channels.h"
#include "link/frames.h"
#include "test_polling_fixture.h"

#include <cmath>

using namespace kal;
using namespace kal::test;

namespace {

class Zyklus : public Anlage {
protected:
    double sekunden = 36000;
    int yields = 0;
    double zufall = 0;
    std::function<void()> beimWarten;
    int graphOnline = 0;
    /// Word images the scripted PLCs answer from, per furnace.
    std::array<std::vector<i16>, OFEN_MAX> bild;

    void SetUp() override
    {
        Anlage::SetUp();
        Zyklus_Uhr &u = Zyklus_Uhr_Aktiv();
        u.Sekunden = [this] { return std::fmod(sekunden, 86400.0); };
        u.Nachgeben = [this] {
            sekunden += 0.25;
            ++yields;
            if (beimWarten)
                beimWarten();
        };
        u.Zufall = [this] { return zufall; };
        hooks.Graph_Online = [this] { ++graphOnline; };
        for (auto &b : bild)
            b.assign(SPS_WORTE, 0);
    }

    /// A furnace whose PLC image has the type word too.
    void Ofen_Bild(int f, bool udp, i16 typ)
    {
        Ofen(f, udp, typ);
        bild[f][29] = typ;
    }

    /// Answers the frame just sent on furnace channel f as its PLC would:
    /// a read with the words of its image, a write with the bare answer.
    void Antworten(int f)
    {
        ScriptedSocket &s = *sock[f];
        if (s.sent.isEmpty() || beantwortet[f] == s.sent.size())
            return;
        beantwortet[f] = s.sent.size();
        const QByteArray r = s.sent.last();
        std::vector<i16> worte;
        if (r.size() == 12 && r[7] == 3) {
            const int a = Adresse_im_Rahmen(r, 8), n = Adresse_im_Rahmen(r, 10);
            worte.assign(bild[f].begin() + a, bild[f].begin() + std::min(a + n, SPS_WORTE));
            s.arrive(Modbus_Antwort(worte));
        } else if (r.size() == 14 && r[9] == 'R') {
            const int a = Adresse_im_Rahmen(r, 10), n = Adresse_im_Rahmen(r, 12);
            worte.assign(bild[f].begin() + a, bild[f].begin() + std::min(a + n, SPS_WORTE));
            s.arrive(UDP_Antwort(worte));
        } else if (r[0] == 'B') {
            s.arrive(UDP_Antwort({}));
        } else {
            s.arrive(r.left(12));
        }
    }

    /// One tick, then every PLC answers what it was sent.
    void Takt()
    {
        Timer1_Tick();
        for (int f = 0; f < OFEN_MAX; ++f)
            Antworten(f);
    }

    /// Read addresses a channel was sent, in order.
    QList<int> Lesungen(int k)
    {
        QList<int> a;
        for (const QByteArray &r : sock[k]->sent) {
            if (r.size() == 12 && r[7] == 3)
                a << Adresse_im_Rahmen(r, 8);
            else if (r.size() == 14 && r[9] == 'R')
                a << Adresse_im_Rahmen(r, 10);
        }
        return a;
    }

    std::array<qsizetype, OFEN_MAX> beantwortet{};
};

TEST_F(Zyklus, EightFurnacesOnlineAreEachServedEveryEighthTick)
{
    for (int f = 0; f < OFEN_MAX; ++f)
        Ofen_Bild(f, f % 2 == 0, 0);
    Takt(); // the first turn of each furnace finds it connected and online
    EXPECT_EQ(plant.Ofen_Online[0], -1);
    for (int t = 1; t < 24; ++t) {
        const int vorher = static_cast<int>(sock[t % 8]->sent.size());
        Takt();
        EXPECT_EQ(sock[t % 8]->sent.size(), vorher + 1) << "tick " << t;
    }
    for (int f = 0; f < OFEN_MAX; ++f) {
        EXPECT_EQ(sock[f]->sent.size(), 3) << "furnace " << f;
        EXPECT_EQ(plant.Ofen_Online[f], -1);
    }
    // One round ended with furnaces online: the controller menu is on.
    EXPECT_EQ(regler, (std::vector<bool>{true, true}));
    EXPECT_EQ(graphOnline, 24);
}

TEST_F(Zyklus, PollSequenceByKindAndLayout)
{
    Ofen_Bild(0, false, static_cast<i16>(0x8064)); // TCP with a layout block at 100
    Ofen_Bild(1, false, static_cast<i16>(0x8032)); // TCP with base 50
    Ofen_Bild(2, true, static_cast<i16>(0x8064));  // UDP with a layout block
    Ofen_Bild(3, false, 0);                        // plain TCP
    for (int i = 0; i < 8 * 21; ++i)
        Takt();
    EXPECT_EQ(Lesungen(0).mid(0, 21),
              (QList<int>{100, 200, 300, 600, 400, 500, 0, 100, 200, 300, 600, 400, 900, 0, 100, 200, 300,
                          600, 400, 1000, 0}));
    EXPECT_EQ(Lesungen(1).mid(0, 6), (QList<int>{100, 200, 300, 0, 100, 200}));
    EXPECT_EQ(Lesungen(2).mid(0, 7), (QList<int>{100, 200, 300, 600, 400, 0, 100}));
    EXPECT_EQ(Lesungen(3).mid(0, 7), (QList<int>{100, 200, 300, 600, 400, 0, 100}));
    EXPECT_EQ(plant.Poll_Max[0], 6);
    EXPECT_EQ(plant.Poll_Rounds[0], 3);
}

TEST_F(Zyklus, UnansweredModbusReadIsGivenUpAtTheSeventhTurn)
{
    Ofen_Bild(0, false, 0);
    Timer1_Tick(); // round 1: read of block 100
    for (int i = 0; i < 7; ++i)
        Timer1_Tick();
    ASSERT_EQ(Lesungen(0), QList<int>{100});
    for (int runde = 1; runde <= 6; ++runde) {
        for (int i = 0; i < 8; ++i)
            Timer1_Tick();
        EXPECT_EQ(plant.Retry_IP[0], runde);
        EXPECT_EQ(plant.IP_Adr[0], 100);
    }
    for (int i = 0; i < 8; ++i)
        Timer1_Tick();
    EXPECT_EQ(plant.IP_Adr[0], -3);
    EXPECT_EQ(Lesungen(0), QList<int>{100}) << "no request is sent again";
    Timer1_Tick();
    EXPECT_EQ(Lesungen(0), (QList<int>{100, 200}));
}

TEST_F(Zyklus, QueuedWriteGoesFirstAndIsClearedEvenWhenRefused)
{
    Ofen_Bild(0, false, 0);
    plant.SPS_Wort(0, 388) = 0x0102;
    plant.SPS_Wort(0, 389) = 0x0304;
    plant.Write_Adr[0] = 388;
    plant.Write_Len[0] = 2;
    Timer1_Tick();
    ASSERT_EQ(sock[0]->sent.size(), 1);
    EXPECT_EQ(sock[0]->sent[0].toHex(' '), QByteArray("00 00 00 00 00 0b 01 10 01 84 00 02 04 01 02 03 04"));
    EXPECT_EQ(plant.Write_Len[0], 0);
    EXPECT_EQ(plant.IP_Adr[0], -2) << "a write answer is no open read";
    for (int i = 0; i < 8; ++i)
        Timer1_Tick();
    EXPECT_EQ(Lesungen(0), QList<int>{100});

    // The socket refuses the next write: the queue is empty all the same and
    // the failure is logged once, however often it comes again.
    sock[0]->refuseSends = true;
    for (int i = 0; i < 3; ++i) {
        plant.Write_Len[0] = 1;
        plant.IP_Adr[0] = -1;
        for (int k = 0; k < 8; ++k)
            Timer1_Tick();
        EXPECT_EQ(plant.Write_Len[0], 0);
    }
    ASSERT_EQ(LogList.size(), 1);
    EXPECT_TRUE(LogList[0].endsWith(QStringLiteral("   Line 100   Err: 40006   10.0.0.11")))
        << LogList[0].toStdString();
}

TEST_F(Zyklus, QueuedWriteChoosesTheLinkByKindAndAddress)
{
    Ofen_Bild(1, false, 0);
    plant.Server_IP4[1] = 5; // mixed: words 300..499 are in the panel
    plant.Server_Offset[1] = 4000;
    sock[8]->state = SCK_CONNECTED;
    Ofen_Bild(2, true, 0);
    plant.Write_Adr[1] = 400;
    plant.Write_Len[1] = 1;
    plant.Write_Adr[2] = 58;
    plant.Write_Len[2] = 1;
    for (int i = 0; i < 3; ++i)
        Timer1_Tick();
    ASSERT_EQ(sock[8]->sent.size(), 1);
    EXPECT_EQ(Adresse_im_Rahmen(sock[8]->sent[0], 10), 4400);
    EXPECT_TRUE(sock[1]->sent.isEmpty());
    ASSERT_EQ(sock[2]->sent.size(), 1);
    EXPECT_EQ(sock[2]->sent[0][9], 'W');

    plant.Write_Adr[1] = 500; // outside 300..499: straight to the PLC
    plant.Write_Len[1] = 1;
    for (int i = 0; i < 8; ++i)
        Timer1_Tick();
    ASSERT_EQ(sock[1]->sent.size(), 1);
    EXPECT_EQ(sock[1]->sent[0][7], 0x10);
}

TEST_F(Zyklus, CommandByModbusServesTheSameFurnaceNextTickWithPhase1)
{
    for (int f = 0; f < OFEN_MAX; ++f)
        Ofen_Bild(f, f != 2, 0);
    for (int i = 0; i < 8 * 3 + 5; ++i)
        Takt();
    ASSERT_EQ(plant.Akt_Ofen, 5);
    ASSERT_EQ(plant.Poll_Phase[2], 4);
    SEND_BEF(3, 30, 4);
    Takt(); // furnace 5's turn
    Takt(); // furnace 2 again at once
    EXPECT_EQ(Lesungen(2).last(), 100);
    EXPECT_EQ(plant.Akt_Ofen, 3);
    EXPECT_EQ(plant.Next_Ofen, -1);
}

TEST_F(Zyklus, FailedConnectWaitsTwoSecondsThenRests)
{
    Ofen_Bild(0, false, 0);
    Ofen_Bild(3, true, 0);
    sock[0]->state = SCK_CLOSED;
    sock[0]->stateAfterConnect = 6; // the PLC never answers the connect
    plant.Seite_Ofen = 1;
    plant.UDP_Read_Adr[3] = 100;
    bool einmal = false;
    beimWarten = [&] {
        // Answers of other channels keep coming during the wait, and a timer
        // tick that comes now does nothing.
        if (!einmal) {
            einmal = true;
            sock[3]->arrive(UDP_Antwort({77}));
            Timer1_Tick();
        }
    };
    zufall = 0.999;
    Timer1_Tick();
    EXPECT_EQ(yields, 8);
    EXPECT_EQ(plant.SPS_Wort(3, 100), 77);
    EXPECT_TRUE(sock[3]->sent.isEmpty()) << "the nested tick did not run";
    EXPECT_EQ(plant.Akt_Ofen, 1);
    EXPECT_EQ(plant.Reconnect_Wait[0], 20);
    EXPECT_EQ(plant.Seite_Ofen, 0);
    EXPECT_EQ(panel[1], QStringLiteral("Connect T:1"));

    // Twenty rounds of rest, then the next try.
    for (int i = 0; i < 7 + 8 * 20; ++i)
        Timer1_Tick();
    EXPECT_EQ(sock[0]->connects, 1);
    EXPECT_EQ(plant.Reconnect_Wait[0], 0);
    zufall = 0;
    sock[0]->stateAfterConnect = SCK_CONNECTED;
    Timer1_Tick();
    EXPECT_EQ(sock[0]->connects, 2);
    EXPECT_EQ(plant.Ofen_Online[0], 0) << "online from its next turn";
    for (int i = 0; i < 8; ++i)
        Timer1_Tick();
    EXPECT_EQ(plant.Ofen_Online[0], -1);
    EXPECT_EQ(panel[1].left(10), QStringLiteral("Online T:1"));
}

TEST_F(Zyklus, ConnectBegunJustBeforeMidnightWaitsForTheSocket)
{
    Ofen_Bild(0, false, 0);
    sock[0]->state = SCK_CLOSED;
    sock[0]->stateAfterConnect = 6;
    sekunden = 86399.5;
    beimWarten = [&] {
        if (yields == 40)
            sock[0]->state = SCK_CONNECTED;
    };
    Timer1_Tick();
    EXPECT_EQ(yields, 40);
    EXPECT_EQ(plant.Reconnect_Wait[0], 0);
    EXPECT_FALSE(panel.contains(1));
}

TEST_F(Zyklus, DisabledAndReaddressedFurnacesAreTakenDown)
{
    Ofen_Bild(1, true, 0);
    plant.Ofen_Aktiv[1] = 0;
    plant.Ofen_Online[1] = -1;
    Timer1_Tick();
    Timer1_Tick();
    EXPECT_EQ(sock[1]->closes, 1);
    EXPECT_EQ(plant.Ofen_Online[1], 0);
    EXPECT_EQ(panel[2], QStringLiteral("Offline P:2"));

    plant.Ofen_Aktiv[1] = -1;
    plant.Reinit_Ofen[1] = -1;
    plant.Ofen_IP(1, 3) = 99;
    plant.Server_IP4[1] = 7;
    plant.Akt_Ofen = 1;
    Timer1_Tick();
    EXPECT_EQ(plant.Reinit_Ofen[1], 0);
    EXPECT_EQ(sock[1]->RemoteHost, QStringLiteral("10.0.0.99"));
    EXPECT_EQ(sock[8]->RemoteHost, QStringLiteral("10.0.0.7"));
    EXPECT_EQ(plant.Server_Akt_IP4, 7);
    EXPECT_EQ(panel[2], QStringLiteral("Offline P:2"));
}

TEST_F(Zyklus, BacklogReadsTheTriggerBlockSevenTimesInEight)
{
    Ofen_Bild(0, true, static_cast<i16>(0x8064));
    plant.Adr_Trigger[0] = 400;
    plant.Ofen_Charge[0] = -1;
    plant.Poll_Phase[0] = 3;
    plant.Poll_Skip[0] = 8;
    for (int i = 0; i < 8 * 10; ++i)
        Timer1_Tick();
    // At 8 the last phase is read again, at 7..1 the trigger block; then on.
    EXPECT_EQ(Lesungen(0), (QList<int>{300, 400, 400, 400, 400, 400, 400, 400, 0, 100}));

    plant.Poll_Skip[0] = 5;
    plant.Ofen_Charge[0] = 0; // no recording: no reason to hurry
    for (int i = 0; i < 8; ++i)
        Timer1_Tick();
    EXPECT_EQ(Lesungen(0).last(), 200);
    EXPECT_EQ(plant.Poll_Skip[0], 0);
}

TEST_F(Zyklus, StatusPanelShowsStripServerErrorAndLoad)
{
    Ofen_Bild(0, false, 0);
    plant.Server_IP4[0] = 5;
    Timer1_Tick();
    EXPECT_EQ(panel[1], QStringLiteral("Online M:1 S 5 ") + QChar(127) + QString(11, QLatin1Char(' ')));
    for (int i = 0; i < 8 * 11; ++i)
        Timer1_Tick();
    EXPECT_EQ(panel[1].right(12), QString(11, QLatin1Char(' ')) + QChar(127));
    for (int i = 0; i < 8; ++i)
        Timer1_Tick();
    EXPECT_EQ(panel[1].right(12), QChar(127) + QString(11, QLatin1Char(' '))) << "wraps to the first place";

    plant.Kennung_Fehler[0] = 8;
    for (int i = 0; i < 8; ++i)
        Timer1_Tick();
    EXPECT_EQ(panel[1].right(12), QStringLiteral(" 8          "));
    plant.Meld_Seite[0] = 3;
    for (int i = 0; i < 8; ++i)
        Timer1_Tick();
    EXPECT_EQ(panel[1].right(12), QStringLiteral("  L         "));
    plant.Empfang_Fehler[0] = 70;
    for (int i = 0; i < 8; ++i)
        Timer1_Tick();
    EXPECT_EQ(panel[1], QStringLiteral("Online M:1 Fehler 70"));
}

TEST_F(Zyklus, RoundStartCountsImportPauseAndSwitchesControllerMenu)
{
    plant.Import_Pause = 2;
    for (int i = 0; i < 8 * 3 + 1; ++i)
        Timer1_Tick();
    EXPECT_EQ(plant.Import_Pause, 0);
    EXPECT_EQ(regler, (std::vector<bool>{false, false, false}));
}

TEST_F(Zyklus, IdentitySaveRequestWritesConfigurationOnce)
{
    plant.Config_Save = -1;
    Timer1_Tick();
    Timer1_Tick();
    EXPECT_EQ(configSchreiben, std::vector<bool>{true});
    EXPECT_EQ(plant.Config_Save, 0);
}

TEST_F(Zyklus, ErrorHandlerLogsNoRepeatsAndTakesFurnaceOffOnAddressInUse)
{
    Ofen_Bild(2, false, 0);
    plant.Akt_Ofen = 2;
    Timer1_Fehler(ERR_ADDRESS_IN_USE, 70);
    EXPECT_EQ(plant.Ofen_Aktiv[2], 0);
    ASSERT_EQ(LogList.size(), 1);
    EXPECT_EQ(LogList[0], QStringLiteral("15.03.2024 10:00:00   Line 70   Err: 10048   10.0.0.13"));
    EXPECT_EQ(plant.Fehler_Pause, 100);

    // A repeat counts the pause down and logs nothing; at 0 the last number
    // is forgotten, so the same error is logged again.
    plant.Fehler_Pause = 2;
    Timer1_Fehler(ERR_ADDRESS_IN_USE, 70);
    Timer1_Fehler(ERR_ADDRESS_IN_USE, 70);
    EXPECT_EQ(plant.Fehler_Pause, 0);
    EXPECT_EQ(plant.Fehler_Letzter, -1);
    Timer1_Fehler(ERR_ADDRESS_IN_USE, 70);
    EXPECT_EQ(LogList.size(), 2);
}

TEST_F(Zyklus, ChannelSetUpByKindAndServer)
{
    Ofen(0, true);
    Ofen(1, false);
    Ofen(2, false);
    plant.Server_IP4[2] = 4;
    Modbus_Port = 1502;
    for (int f = 0; f < 3; ++f)
        Kanal_Setup(f);
    Modbus_Port = 502;
    EXPECT_EQ(sock[0]->Protocol, SocketProtocol::UDP);
    EXPECT_EQ(sock[0]->RemotePort, 1024);
    EXPECT_EQ(sock[1]->Protocol, SocketProtocol::TCP);
    EXPECT_EQ(sock[1]->RemotePort, 1502);
    EXPECT_EQ(sock[1]->RemoteHost, QStringLiteral("10.0.0.12"));
    EXPECT_EQ(sock[1]->state, SCK_CLOSED);
    EXPECT_EQ(panel[1], QStringLiteral("Ofen 1 IP:10.0.0.11"));
    EXPECT_EQ(panel[3], QStringLiteral("Ofen 3 IP:10.0.0.13 / .4"));
    EXPECT_EQ(sock[8]->RemoteHost, QStringLiteral("10.0.0.4"));
    EXPECT_EQ(sock[8]->connects, 1);
    EXPECT_EQ(plant.Server_Akt_IP4, 4);

    // A second server furnace finds channel 8 set up; one without a server
    // in between makes the next one set it up again.
    Ofen(3, true);
    plant.Server_IP4[3] = 4;
    Kanal_Setup(3);
    EXPECT_EQ(sock[8]->connects, 1);
    Kanal_Setup(0);
    EXPECT_EQ(plant.Server_Akt_IP4, 0);
    Kanal_Setup(3);
    EXPECT_EQ(sock[8]->closes, 2);
}

} // namespace
