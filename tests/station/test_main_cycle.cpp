// The main cycle tick by tick against scripted sockets. The connect wait runs
// on a test clock whose every yield moves time on by a quarter second, so a
// two-second wait takes eight yields and no real time.

#include "curves/live_curve.h"
#include "link/channels.h"
#include "link/frames.h"
#include "station/main_cycle.h"
#include "support/scripted_plant.h"

#include <cmath>

using namespace kal;
using namespace kal::test;

namespace {

class Cycle : public ScriptedPlant {
protected:
    double sekunden = 36000;
    int yields = 0;
    double zufall = 0;
    std::function<void()> beimWarten;

    void SetUp() override
    {
        ScriptedPlant::SetUp();
        CycleClock &u = cycleClock();
        u.Sekunden = [this] { return std::fmod(sekunden, 86400.0); };
        u.Nachgeben = [this] {
            sekunden += 0.25;
            ++yields;
            if (beimWarten)
                beimWarten();
        };
        u.Zufall = [this] { return zufall; };
    }

    /// Ticks; after each, the PLC of the furnace on turn answers the read it
    /// was just sent with its word 29 and zeros elsewhere, a write with a bare
    /// answer.
    void ticks(int n, bool antworten = true)
    {
        for (int i = 0; i < n; ++i) {
            const int f = plant.Akt_Ofen >= 0 && plant.Akt_Ofen < OFEN_MAX ? plant.Akt_Ofen : 0;
            const qsizetype vorher = sock[f]->sent.size();
            Timer1_Tick();
            if (!antworten || sock[f]->sent.size() == vorher)
                continue;
            const QByteArray r = sock[f]->sent.last();
            const bool udp = r[0] == 'B';
            const int a = wordAt(r, udp ? 10 : 8);
            std::vector<i16> w(r[udp ? 9 : 7] == (udp ? 'R' : 3) ? 100 : 0, 0);
            if (a <= 29 && a + int(w.size()) > 29)
                w[29 - a] = plant.Ofen_Typ[f + 1];
            sock[f]->arrive(udp ? udpReply(w) : modbusReply(w));
        }
    }

    /// Read addresses a channel was sent, in order.
    QList<int> readAddresses(int k)
    {
        QList<int> a;
        for (const QByteArray &r : sock[k]->sent) {
            if (r.size() == 12 && r[7] == 3)
                a << wordAt(r, 8);
            else if (r.size() == 14 && r[9] == 'R')
                a << wordAt(r, 10);
        }
        return a;
    }
};

TEST_F(Cycle, EightFurnacesAreEachServedEveryEighthTickAndACommandCutsIn)
{
    for (int f = 0; f < OFEN_MAX; ++f)
        Ofen(f, f % 2 != 0);
    for (int t = 0; t < 24; ++t) {
        const qsizetype vorher = sock[t % 8]->sent.size();
        ticks(1);
        EXPECT_EQ(sock[t % 8]->sent.size(), vorher + 1) << "tick " << t;
    }
    for (int f = 0; f < OFEN_MAX; ++f)
        EXPECT_EQ(sock[f]->sent.size(), 3) << "furnace " << f;
    EXPECT_EQ(scr.regler, (QList<bool>{true, true})) << "the controller menu follows the rounds";

    // A command by Modbus serves its furnace again on the next tick, from phase 1.
    ticks(5);
    ASSERT_EQ(plant.Akt_Ofen, 5);
    SEND_BEF(3, 30, 4);
    ticks(2); // furnace 5's turn, then furnace 2 again at once
    EXPECT_EQ(both(readAddresses(2).last(), plant.Akt_Ofen), both(100, 3));
}

TEST_F(Cycle, PollSequenceByKindAndLayout)
{
    Ofen(0, false, static_cast<i16>(0x8064)); // TCP, layout block at 100
    Ofen(1, false, static_cast<i16>(0x8032)); // TCP, base 50
    Ofen(2, true, static_cast<i16>(0x8064));  // UDP, layout block
    Ofen(3, false, 0);                        // plain TCP
    ticks(8 * 21);
    EXPECT_EQ(readAddresses(0), (QList<int>{100, 200, 300, 600, 400, 500, 0,  100, 200, 300, 600,
                                       400, 900, 0,   100, 200, 300, 600, 400, 1000, 0}));
    EXPECT_EQ(readAddresses(1).mid(0, 6), (QList<int>{100, 200, 300, 0, 100, 200}));
    EXPECT_EQ(readAddresses(2).mid(0, 7), (QList<int>{100, 200, 300, 600, 400, 0, 100}));
    EXPECT_EQ(readAddresses(3).mid(0, 7), (QList<int>{100, 200, 300, 600, 400, 0, 100}));
    EXPECT_EQ(both(plant.Poll_Rounds[0], Live.Live_Punkt), both(3, 1)) << "a live sample every hundredth tick";
}

TEST_F(Cycle, UnansweredModbusReadIsGivenUpAtTheSeventhTurn)
{
    Ofen(0, false);
    ticks(8, false);
    for (int runde = 1; runde <= 6; ++runde) {
        ticks(8, false);
        EXPECT_EQ(plant.Retry_IP[0], runde);
    }
    ASSERT_EQ(plant.IP_Adr[0], 100);
    ticks(8, false);
    EXPECT_EQ(plant.IP_Adr[0], -3);
    EXPECT_EQ(readAddresses(0), QList<int>{100}) << "a read is never sent again";
    ticks(1, false);
    EXPECT_EQ(readAddresses(0), (QList<int>{100, 200}));
}

TEST_F(Cycle, QueuedWriteGoesFirstByItsLinkAndIsClearedEvenWhenRefused)
{
    Ofen(0, false);
    plant.SPS_Wort(0, 388) = 0x0102;
    plant.SPS_Wort(0, 389) = 0x0304;
    plant.Write_Adr[0] = 388;
    plant.Write_Len[0] = 2;
    ticks(1, false);
    ASSERT_EQ(sock[0]->sent.size(), 1);
    EXPECT_EQ(sock[0]->sent[0].toHex(' '), QByteArray("00 00 00 00 00 0b 01 10 01 84 00 02 04 01 02 03 04"));
    EXPECT_EQ(plant.Write_Len[0], 0);
    ticks(8, false);
    EXPECT_EQ(readAddresses(0), QList<int>{100}) << "a write answer is no open read";

    // A mixed furnace writes words 300..499 through the panel server.
    Ofen(1, false);
    plant.Server_IP4[1] = 5;
    plant.Server_Offset[1] = 4000;
    sock[8]->state = SCK_CONNECTED;
    plant.Write_Adr[1] = 400;
    plant.Write_Len[1] = 1;
    ticks(8, false);
    ASSERT_EQ(sock[8]->sent.size(), 1);
    EXPECT_EQ(wordAt(sock[8]->sent[0], 10), 4400);

    // The socket refuses: the queue empties all the same, and the failure is
    // logged once however often it comes again.
    sock[0]->refuseSends = true;
    for (int i = 0; i < 3; ++i) {
        plant.Write_Len[0] = 1;
        plant.IP_Adr[0] = -1;
        ticks(8, false);
        EXPECT_EQ(plant.Write_Len[0], 0);
    }
    EXPECT_EQ(plant.LogList, QStringList{"15.03.2024 10:00:00   Line 100   Err: 40006   10.0.0.11"});
}

TEST_F(Cycle, TheFirstErrorPausesTheLogForAHundredRepeats)
{
    Timer1_Error(40006, 100);
    ASSERT_EQ(plant.Fehler_Pause, 100);
    for (int i = 0; i < 99; ++i)
        Timer1_Error(40006, 100);
    EXPECT_EQ(both(plant.Fehler_Pause, plant.Fehler_Letzter), both(1, 40006));
    Timer1_Error(40006, 100); // the hundredth repeat ends the pause
    EXPECT_EQ((std::vector<int>{plant.Fehler_Pause, plant.Fehler_Letzter, int(plant.LogList.size())}),
              (std::vector<int>{0, -1, 1}));
    Timer1_Error(40006, 100);
    EXPECT_EQ(plant.LogList.size(), 2) << "logged again once the pause ran out";
    EXPECT_EQ(scr.logList, plant.LogList);
}

TEST_F(Cycle, FailedConnectWaitsTwoSecondsWhileEventsRunThenRests)
{
    Ofen(0, false);
    Ofen(3, true);
    sock[0]->state = SCK_CLOSED;
    sock[0]->stateAfterConnect = 6; // the PLC never takes the connection
    plant.Seite_Ofen = 1;
    plant.UDP_Read_Adr[3] = 100;
    beimWarten = [&] {
        if (yields == 1) {
            sock[3]->arrive(udpReply({77})); // answers of other channels come in
            Timer1_Tick();                      // a timer tick now does nothing
        }
    };
    zufall = 0.999;
    Timer1_Tick();
    EXPECT_EQ((std::vector<int>{yields, plant.SPS_Wort(3, 100), int(sock[3]->sent.size()), plant.Reconnect_Wait[0],
                                plant.Seite_Ofen}),
              (std::vector<int>{8, 77, 0, 20, 0}));
    EXPECT_EQ(panel[1], QStringLiteral("Connect T:1"));

    ticks(7 + 8 * 20, false); // twenty rounds of rest
    EXPECT_EQ(sock[0]->connects, 1);
    // A try begun just before midnight can't reach its limit: it waits for the socket.
    sekunden = 86399.5;
    yields = 0;
    beimWarten = [&] {
        if (yields == 40)
            sock[0]->state = SCK_CONNECTED;
    };
    ticks(1, false);
    EXPECT_EQ((std::vector<int>{yields, plant.Reconnect_Wait[0], plant.Ofen_Online[0]}), (std::vector<int>{40, 0, 0}))
        << "online from its next turn";
    ticks(8, false);
    EXPECT_EQ(panel[1].left(10), QStringLiteral("Online T:1"));
}

TEST_F(Cycle, BacklogReadsTheTriggerBlockSevenTimesInEight)
{
    Ofen(0, true, static_cast<i16>(0x8064));
    plant.Adr_Trigger[0] = 400;
    plant.Ofen_Charge[0] = -1;
    plant.Poll_Phase[0] = 3;
    plant.Poll_Skip[0] = 8;
    ticks(8 * 10, false);
    // At 8 the last phase is read again, at 7..1 the trigger block; then on.
    EXPECT_EQ(readAddresses(0), (QList<int>{300, 400, 400, 400, 400, 400, 400, 400, 0, 100}));
    plant.Poll_Skip[0] = 5;
    plant.Ofen_Charge[0] = 0; // not recording: no reason to hurry
    ticks(8, false);
    EXPECT_EQ(readAddresses(0).last(), 200);
}

TEST_F(Cycle, StatusPanelShowsStripServerIdentityLoadAndError)
{
    Ofen(0, false);
    plant.Server_IP4[0] = 5;
    ticks(1, false);
    EXPECT_EQ(panel[1], QStringLiteral("Online M:1 S 5 ") + QChar(127) + QString(11, QLatin1Char(' ')));
    ticks(8 * 12, false);
    EXPECT_EQ(panel[1].right(12), QChar(127) + QString(11, QLatin1Char(' '))) << "wraps after 12";
    plant.Kennung_Fehler[0] = 8;
    ticks(8, false);
    EXPECT_EQ(panel[1].right(12), QStringLiteral(" 8          "));
    plant.Empfang_Fehler[0] = 70;
    ticks(8, false);
    EXPECT_EQ(panel[1], QStringLiteral("Online M:1 Fehler 70"));
}

TEST_F(Cycle, TakeDownAndNewAddressSetTheChannelsUpAgain)
{
    Ofen(1, true);
    plant.Ofen_Aktiv[1] = 0;
    ticks(2, false);
    EXPECT_EQ(sock[1]->closes, 1);
    EXPECT_EQ(panel[2], QStringLiteral("Offline P:2"));

    plant.Ofen_Aktiv[1] = plant.Reinit_Ofen[1] = -1;
    plant.Ofen_IP(1, 3) = 99;
    plant.Server_IP4[1] = 7;
    plant.Ofen_UDP[1] = 0;
    ticks(8, false);
    EXPECT_EQ(both(plant.Reinit_Ofen[1], sock[1]->RemotePort), both(0, 502)) << "now a Modbus channel";
    EXPECT_EQ(sock[1]->RemoteHost + "/" + sock[8]->RemoteHost, QStringLiteral("10.0.0.99/10.0.0.7"));

    Kanal_Setup(1);
    EXPECT_EQ(panel[2], QStringLiteral("Ofen 2 IP:10.0.0.99 / .7"));
    EXPECT_EQ(sock[8]->connects, 1) << "channel 8 already points at that server";
    plant.Ofen_UDP[1] = -1;
    Kanal_Setup(1);
    for (int k : {1, 8}) {
        EXPECT_EQ(sock[k]->Protocol, SocketProtocol::UDP) << k;
        EXPECT_EQ(sock[k]->RemotePort, 1024) << "the panel's memory link port";
    }
}

} // namespace
