#include "link/polling.h"

#include "config/text_ids.h"
#include "core/plant_state.h"
#include "core/screen.h"
#include "core/word_map.h"
#include "link/channels.h"
#include "link/frames.h"
#include "link/socket.h"
#include "link/write_journal.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QRandomGenerator>
#include <QTime>
#include <QTimer>
#include <cmath>

namespace kal {

namespace {

constexpr int BLOCK_WORTE = 100;
/// Turns a Modbus read may stay unanswered; at the next it is given up.
constexpr int RETRY_GRENZE = 6;
/// Rounds a furnace rests at most after a failed connect.
constexpr int RUHE_RUNDEN = 20;
constexpr int STRIP_LAENGE = 12;
/// Milliseconds of one yield of the connect wait: long enough not to spin,
/// short enough that the two-second limit is kept closely.
constexpr int NACHGEBEN_MS = 10;

CycleClock realClock()
{
    CycleClock u;
    u.Sekunden = [] { return QTime::currentTime().msecsSinceStartOfDay() / 1000.0; };
    u.Nachgeben = [] {
        if (!QCoreApplication::instance())
            return;
        QEventLoop schleife;
        QTimer::singleShot(NACHGEBEN_MS, &schleife, &QEventLoop::quit);
        schleife.exec();
    };
    u.Zufall = [] { return QRandomGenerator::global()->generateDouble(); };
    return u;
}

CycleClock &clockInUse()
{
    static CycleClock u = realClock();
    return u;
}

StateReset reset{[] { clockInUse() = realClock(); }};

int channelState(int kanal)
{
    return Winsock1[kanal].State();
}

/// The block of the log trigger word, as a poll phase.
u8 triggerPhase(int ofen)
{
    const int adr = plant.Adr_Trigger[ofen];
    if (adr == 150)
        return 1;
    if (adr == 220)
        return 2;
    return adr < 400 ? 0 : 5;
}

/// Last phase of a furnace's poll sequence: UDP furnaces and plain TCP ones
/// read up to block 400; TCP furnaces with a layout block add the rare blocks
/// 500/900/1000, except those with base 50, which stop at block 300.
i16 lastPhase(int ofen)
{
    if (plant.Ofen_UDP[ofen] == -1)
        return 5;
    if (plant.SPS_Wort(ofen, word::TYPE) >= 0)
        return 5;
    return plant.Ofen_Basis[ofen] == 50 ? 3 : 6;
}

void sendWrite(int ofen)
{
    // The queue is emptied before the send: a write that the socket refuses is
    // lost, it does not block the furnace's reads.
    const i16 adr = plant.Write_Adr[ofen];
    const i16 len = plant.Write_Len[ofen];
    plant.Write_Len[ofen] = 0;
    // The cause named for this queue is gone with it, also when the write is
    // lost, so that it never labels a later write.
    struct ForgetCause {
        int ofen;
        ~ForgetCause() { nameWriteCause(ofen, QString()); }
    } vergessen{ofen};
    const auto f = static_cast<i16>(ofen);
    if (plant.Ofen_UDP[ofen] != 0)
        SEND_UDP(f, adr, len);
    else if (plant.Server_IP4[ofen] != 0 && adr >= 300 && adr <= 499)
        SEND_UDP(f, adr, len); // words 300..499 of a mixed furnace live in the panel
    else
        SEND_IP(f, adr, len);
}

} // namespace

CycleClock &cycleClock()
{
    return clockInUse();
}

void resetCycleClock()
{
    clockInUse() = realClock();
}

void startRound()
{
    if (plant.Akt_Ofen >= 0 && plant.Akt_Ofen < OFEN_MAX)
        return;
    plant.Akt_Ofen = 0;
    if (plant.Import_Pause > 0)
        --plant.Import_Pause;
    if (plant.Any_Online != 0) {
        plant.Any_Online = 0;
        screen().mnuRegler(true);
    } else {
        screen().mnuRegler(false);
    }
}

bool furnaceResting(int ofen)
{
    if (plant.Reconnect_Wait[ofen] <= 0)
        return false;
    --plant.Reconnect_Wait[ofen];
    ++plant.Akt_Ofen;
    return true;
}

bool takeDown(int ofen, const QString &tag)
{
    if (plant.Ofen_Aktiv[ofen] != 0 && plant.Reinit_Ofen[ofen] == 0)
        return false;
    if (channelState(ofen) > 0) {
        Winsock1[ofen].Close();
        while (channelState(ofen) != 0)
            clockInUse().Nachgeben();
    }
    plant.Ofen_Online[ofen] = 0;
    if (plant.Reinit_Ofen[ofen] != 0) {
        plant.Server_Akt_IP4 = 0;
        Kanal_Setup(ofen);
        plant.Reinit_Ofen[ofen] = 0;
    }
    Status_Panel(ofen, Text_Id(text::OFFLINE) + QLatin1Char(' ') + tag);
    return true;
}

bool checkConnection(int ofen, const QString &tag, int &schritt)
{
    schritt = 60;
    const bool war_Online = plant.Ofen_Online[ofen] != 0;
    plant.Ofen_Online[ofen] = flag(channelState(ofen) == SCK_CONNECTED);
    if (plant.Ofen_Online[ofen] != 0) {
        // A furnace with a version word that comes online hands over its
        // message texts; a load cut by the lost link goes on from its counter.
        if (!war_Online && plant.Ofen_Typ[ofen + 1] < 0 && plant.Meld_Seite[ofen] < 0)
            plant.Meld_Seite[ofen] = 13;
        return true;
    }

    schritt = 70;
    Socket &s = Winsock1[ofen];
    if (s.State() > 0)
        s.Close();
    s.Connect();
    // The connect try holds the cycle up to two seconds; answers of the other
    // channels keep coming in meanwhile. The limit is in seconds since
    // midnight, so a try begun just before midnight waits for its socket.
    const double start = clockInUse().Sekunden();
    while (clockInUse().Sekunden() < start + CONNECT_SEKUNDEN && s.State() != SCK_CONNECTED)
        clockInUse().Nachgeben();
    // Connected now: the furnace goes online on its next turn.
    if (s.State() == SCK_CONNECTED)
        return false;

    schritt = 80;
    plant.Ofen_Online[ofen] = 0;
    if (plant.Seite_Ofen == ofen + 1)
        plant.Seite_Ofen = 0;
    // A random rest, so that several lost furnaces don't stall the cycle in step.
    plant.Reconnect_Wait[ofen] = static_cast<i16>(std::floor(RUHE_RUNDEN * clockInUse().Zufall() + 1));
    Status_Panel(ofen, Text_Id(text::CONNECT) + QLatin1Char(' ') + tag);
    return false;
}

void exchange(int ofen, int &schritt)
{
    schritt = 90;
    plant.Any_Online = -1;
    if (plant.Parameter_Ofen - 1 == ofen)
        return; // the settings dialog does its own traffic with this furnace
    schritt = 100;
    if (plant.Write_Len[ofen] > 0) {
        sendWrite(ofen);
        return;
    }
    schritt = 110;
    if (plant.IP_Adr[ofen] >= 0) {
        // A Modbus read is still open; it is never sent again, only given up.
        if (plant.Retry_IP[ofen] >= RETRY_GRENZE) {
            plant.IP_Adr[ofen] = -3;
            plant.Retry_IP[ofen] = 0;
        } else {
            ++plant.Retry_IP[ofen];
        }
        return;
    }
    schritt = 120;
    pollRead(ofen);
}

void pollRead(int ofen)
{
    if (plant.Ofen_Charge[ofen] == 0)
        plant.Poll_Skip[ofen] = 0;
    if (plant.Poll_Skip[ofen] != 0) {
        // After a backlog seven of eight reads go to the trigger block; the
        // eighth repeats the last phase.
        if ((plant.Poll_Skip[ofen] & 7) != 0)
            plant.Poll_Phase[ofen] = triggerPhase(ofen);
        --plant.Poll_Skip[ofen];
    } else {
        ++plant.Poll_Phase[ofen];
    }
    plant.Poll_Max[ofen] = lastPhase(ofen);
    if (plant.Poll_Phase[ofen] > plant.Poll_Max[ofen]) {
        plant.Poll_Phase[ofen] = 0;
        if (plant.Poll_Rounds[ofen] < 10)
            ++plant.Poll_Rounds[ofen];
    }

    const auto f = static_cast<i16>(ofen);
    static constexpr i16 Block_Adresse[] = {0, 100, 200, 300, 600, 400};
    const int phase = plant.Poll_Phase[ofen];
    if (phase <= 5) {
        i16 adr = Block_Adresse[phase];
        FETCH_Ofen(f, adr, BLOCK_WORTE);
        return;
    }
    // Phase 6: one of the rare blocks, in turn, always by Modbus.
    plant.Retry_IP[ofen] = 0;
    if (plant.Poll_Sub[ofen] > 2)
        plant.Poll_Sub[ofen] = 0;
    static constexpr i16 Selten_Adresse[] = {500, 900, 1000};
    FETCH_IP(f, Selten_Adresse[plant.Poll_Sub[ofen]], BLOCK_WORTE);
    ++plant.Poll_Sub[ofen];
}

void Status_Online(int ofen, const QString &tag)
{
    QString text = Text_Id(text::ONLINE) + QLatin1Char(' ') + tag;
    if (plant.Empfang_Fehler[ofen] != 0) {
        Status_Panel(ofen, text + QStringLiteral(" Fehler") + signedText(plant.Empfang_Fehler[ofen]));
        return;
    }
    i16 &pos = plant.Strip_Pos[ofen];
    ++pos;
    if (pos > STRIP_LAENGE || pos < 1)
        pos = 1;
    QChar marke(127);
    if (plant.Meld_Seite[ofen] < 1) {
        if (plant.Kennung_Fehler[ofen] >= 1)
            marke = QLatin1Char(char('0' + plant.Kennung_Fehler[ofen] % 10));
    } else {
        marke = QLatin1Char('L'); // the text load runs
    }
    QString strip(STRIP_LAENGE, QLatin1Char(' '));
    strip[pos - 1] = marke;
    if (plant.Server_IP4[ofen] != 0)
        text += QStringLiteral(" S") + signedText(plant.Server_IP4[ofen]);
    Status_Panel(ofen, text + QLatin1Char(' ') + strip);
}

void nextFurnace()
{
    if (plant.Next_Ofen < 0) {
        ++plant.Akt_Ofen;
        return;
    }
    plant.Akt_Ofen = plant.Next_Ofen;
    plant.Poll_Phase[plant.Next_Ofen] = static_cast<u8>(plant.Next_Phase);
    plant.Next_Ofen = -1;
}

} // namespace kal
