#include "link/decoder.h"

#include "core/conversions.h"
#include "core/dates.h"
#include "core/dialogs.h"
#include "core/hooks.h"
#include "core/plant_state.h"
#include "core/word_map.h"
#include "link/channels.h"

namespace kal {

namespace {

constexpr int MELD_CONFIG_GUELTIG = 0xAB; ///< high byte of word 699: configuration valid

/// Minutes a log stamp may lie behind the station's clock before the decoder
/// counts the furnace as behind a backlog of records.
constexpr int RUECKSTAND_MINUTEN = 30;
/// Turns the poll sequence keeps reading the trigger block after a backlog.
constexpr int RUECKSTAND_RUNDEN = 20;
/// Answers during which the wrong-server box stays quiet once it was shown.
constexpr int SERVER_MELDUNG_PAUSE = 10;

i16 &plcWord(int ofen, int adr)
{
    return plant.SPS_Wort(ofen, adr);
}

int highByte(i16 w)
{
    return (static_cast<uint16_t>(w) >> 8) & 0xFF;
}

/// Sets the layout values of a furnace from its type word: plain (at or above
/// 0) or a furnace with a layout block at `Ofen_Basis`, plain or large.
void takeLayout(int ofen, i16 typ)
{
    if (typ >= 0)
        plant.Block1_Neu[ofen] = -1; // no identity block to wait for
    setFurnaceLayout(ofen, typ);
}

/// The last word of block 0: operating hours, layout, time stamp.
void Block0(int ofen)
{
    const int lo = plant.Ofen_UDP[ofen] == -1 ? word::HOURS_UDP : word::HOURS_TCP;
    plant.Ofen_Stunden[ofen] = CVL(MKI(plcWord(ofen, lo)) + MKI(plcWord(ofen, lo + 1)));
    plant.Block1_Zahl[ofen] = 1;
    plant.Block0_Neu[ofen] = -1;
    // The furnace's own type word overrides the one of the configuration file.
    takeLayout(ofen, plcWord(ofen, word::TYPE));
    plant.Meld_Pruefen = -1;
    plant.Datum_Block0[ofen] = SPS_Datum(plcWord(ofen, word::STAMP), plcWord(ofen, word::STAMP + 1));
    if (plant.SPS_Datum_OK == -1)
        plant.Prog_Neu[ofen] = -1;
}

/// Address of a furnace behind a panel server as the wrong-address check
/// compares and shows it: the first three octets and the server's octet, each
/// as a number with its sign blank (" 192 168 1 5").
QString serverAddress(int ofen)
{
    return signedText(plant.Ofen_IP(ofen, 0)) + signedText(plant.Ofen_IP(ofen, 1)) +
           signedText(plant.Ofen_IP(ofen, 2)) + signedText(plant.Server_IP4[ofen]);
}

/// Every active furnace behind a server must name the same server as this
/// one. On the first that doesn't, the operator is told (at most every
/// tenth time) and false comes back: channel 8 is then left as it is.
bool sameServer(int ofen)
{
    const QString eigene = serverAddress(ofen);
    for (int i = 0; i < OFEN_MAX; ++i) {
        if (plant.Ofen_Aktiv[i] == 0 || plant.Server_IP4[i] == 0)
            continue;
        const QString andere = serverAddress(i);
        if (andere == eigene) {
            plant.Server_Meldung[i] = 0;
            continue;
        }
        if (plant.Server_Meldung[i] > 0) {
            --plant.Server_Meldung[i];
        } else {
            dialogs().message(QStringLiteral("Proface Server, Kanal") + signedText(i + 1) + QLatin1Char('\n') +
                              QStringLiteral("IP") + andere + QLatin1Char('\n') + QLatin1Char('\n') +
                              QStringLiteral("wrong IP-adress, Kanal") + signedText(ofen + 1) +
                              QLatin1Char('\n') + QStringLiteral("IP") + eigene);
            plant.Server_Meldung[i] = SERVER_MELDUNG_PAUSE;
        }
        return false;
    }
    return true;
}

/// The last word of block 2: name and serial present, server window and the
/// server's address; channel 8 is set up again when the server changed.
void Block2(int ofen)
{
    plant.Block2_Neu[ofen] = flag(plcWord(ofen, word::NAME) != 0 && plcWord(ofen, word::SERIAL) != 0);
    const i16 w215 = plcWord(ofen, word::SERVER);
    plant.Server_Offset[ofen] = serverBase(ofen, w215);
    if (plant.Server_Offset[ofen] == 0)
        return;
    if (w215 != 0) {
        const u8 ip4 = static_cast<u8>(w215 & 0xFF);
        if (ip4 != plant.Server_IP4[ofen]) {
            plant.Server_Neu[ofen] = -1;
            plant.Server_IP4[ofen] = ip4;
        }
    }
    if (!sameServer(ofen))
        return;
    if (plant.Server_Akt_IP4 == plant.Server_IP4[ofen] && plant.Server_Neu[ofen] != -1)
        return;
    plant.Server_Neu[ofen] = 0;
    plant.Server_Akt_IP4 = 0;
    Kanal_Setup(ofen);
}

void Block3(int ofen)
{
    plant.Block3_Neu[ofen] = -1;
    const i16 seite = plcWord(ofen, plant.Prog_Page[ofen]);
    plant.Prog_Page_Fehlt[ofen] = flag(!(seite > 0 && seite <= 1000));
}

/// Queues the word at `Adr_Trigger` as 0: tells the PLC its record was taken
/// (or refused) so that it can offer the next one.
void acknowledgeTrigger(int ofen)
{
    const int adr = plant.Adr_Trigger[ofen];
    plcWord(ofen, adr) = 0;
    plant.Write_Adr[ofen] = static_cast<i16>(adr);
    plant.Write_Len[ofen] = 1;
}

/// The log trigger: a record is offered when the word at `Adr_Trigger` isn't
/// 0; its stamp follows. A record whose stamp is no date is refused at once.
void decodeTrigger(int ofen)
{
    const int adr = plant.Adr_Trigger[ofen];
    plant.Trigger_Wert[ofen] = plcWord(ofen, adr);
    if (plant.Trigger_Wert[ofen] == 0)
        return;
    plant.Datum_Log[ofen] = SPS_Datum(plcWord(ofen, adr + 1), plcWord(ofen, adr + 2));
    if (plant.SPS_Datum_OK == -1)
        plant.Log_Neu[ofen] = -1;
    else if (plant.Write_Len[ofen] <= 0)
        acknowledgeTrigger(ofen);
}

/// The message configuration page at 690..699, valid when word 699 carries
/// 0xAB in its high byte.
void readMessageConfig(int ofen)
{
    if (highByte(plcWord(ofen, word::MESSAGE_CODE)) != MELD_CONFIG_GUELTIG) {
        plant.Meld_Config_Da[ofen] = 0;
        return;
    }
    plant.Meld_Config_Da[ofen] = -1;
    bool anders = false;
    for (int k = 0; k < 10; ++k) {
        const i16 w = plcWord(ofen, word::MESSAGE_STOP + k);
        if (plant.Meld_Config(ofen, k) != w)
            anders = true;
        plant.Meld_Config(ofen, k) = w;
    }
    // The message form refreshes its lamps for the furnace on view and
    // rebuilds its list when the configuration changed; it ignores the call
    // while it isn't shown.
    if (plant.Seite_Ofen == ofen + 1 || anders)
        callHook(hooks.Alarme_Refresh, ofen, anders);
}

/// The log block of a stamp more than half an hour old means the PLC holds a
/// backlog: the poll sequence then reads the trigger block more often.
void checkBacklog(int ofen)
{
    const QDateTime stempel = dateValue(plant.Datum_Log[ofen]);
    if (!stempel.isValid())
        return;
    if (DateDiff(QStringLiteral("n"), now(), stempel) < -RUECKSTAND_MINUTEN && plant.Poll_Rounds[ofen] > 1) {
        plant.Poll_Skip[ofen] = RUECKSTAND_RUNDEN;
        plant.Poll_Rounds[ofen] = 0;
    }
}

} // namespace

int16_t serverBase(int ofen, int16_t wort215)
{
    switch (highByte(wort215)) {
    case 0x48: return 3000;
    case 0x49: return static_cast<int16_t>(3000 + 1000 * ofen);
    case 0x50: return 3000;
    case 0x51: return 4000;
    case 0x52: return 5000;
    case 0x53: return 6000;
    case 0x54: return 7000;
    case 0x55: return 8000;
    case 0x56: return 9000;
    default: return 0;
    }
}

void Block_Decode(int ofen, int start, int count)
{
    for (int adr = start; adr < start + count; ++adr) {
        // One action per address, in this order; the identity block's address
        // and the trigger address come from the plant state and are read anew
        // at each address (block 0 may just have changed `Ofen_Basis`).
        if (adr == plant.Ofen_Basis[ofen])
            plant.Block1_Neu[ofen] = -1;
        else if (adr == word::BLOCK0_END)
            Block0(ofen);
        else if (adr == word::BLOCK1_END)
            plant.Block1_Zahl[ofen] = plant.Block1_Zahl[ofen] == 1 ? 2 : 0;
        else if (adr == word::BLOCK2_END)
            Block2(ofen);
        else if (adr == word::BLOCK3_END)
            Block3(ofen);
        else if (adr == plant.Adr_Trigger[ofen] + 2)
            decodeTrigger(ofen);
        else if (adr == word::BLOCK6_END)
            readMessageConfig(ofen);
    }

    if (plant.Block3_Neu[ofen] != 0) {
        plant.Block3_Neu[ofen] = 0;
        if (plant.Meld_Seite[ofen] >= 0 && plant.Write_Len[ofen] <= 0)
            callHook(hooks.Load_Text, ofen + 1);
    }
    if (plant.Log_Neu[ofen] != 0) {
        checkBacklog(ofen);
        // Without a recorder the block stays raised in the PLC: it is never
        // acknowledged unless something has taken it.
        if (plant.Ofen_Charge[ofen] == -1 && plant.Write_Len[ofen] <= 0 && hooks.Charge_Schreiben) {
            hooks.Charge_Schreiben(ofen + 1);
            acknowledgeTrigger(ofen);
        }
        plant.Log_Neu[ofen] = 0;
    }
    if (plant.Meld_Pruefen != 0)
        MeldScan(ofen);
}

void MeldScan(int ofen)
{
    plant.Meld_Pruefen = 0;
    for (int w = 0; w < 3; ++w) {
        const i32 neu = plant.SPS_Wort(ofen, word::MESSAGES + w);
        const i32 alt = plant.Meld_Letzt(ofen, w);
        if (neu == alt)
            continue;
        for (int b = 0; b < 16; ++b) {
            const bool jetzt = (neu >> b) & 1;
            const bool vorher = (alt >> b) & 1;
            const int n = 16 * w + b + 1;
            if (jetzt && !vorher)
                callHook(hooks.MeldEintrag, ofen, n);
            else if (!jetzt && vorher)
                callHook(hooks.MeldEintrag, ofen, -n);
        }
        plant.Meld_Letzt(ofen, w) = neu;
    }
}

} // namespace kal
