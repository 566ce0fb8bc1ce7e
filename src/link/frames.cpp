#include "link/frames.h"

#include "core/conversions.h"
#include "link/socket.h"
#include "link/write_journal.h"

#include <exception>

namespace kal {

namespace {

constexpr char ESC = 0x1B;
constexpr int SERVER_KANAL = 8;
constexpr int MODBUS_UNIT = 1;
/// Number reported for a failure that is not a run-time error of the station.
constexpr int ERR_INTERNAL = 51;

/// A one-byte field of a frame. A value outside 0..255 cannot be made into a
/// byte; the frame is not built.
char byteFeld(int v)
{
    if (v < 0 || v > 255)
        throw RunError(ERR_INVALID_CALL, "byte field out of range: " + std::to_string(v));
    return static_cast<char>(v);
}

/// 16-bit sum of an address and an offset; a sum outside i16 is an overflow.
i16 summe16(int a, int b)
{
    const int s = a + b;
    if (s < -32768 || s > 32767)
        throw RunError(ERR_OVERFLOW, "address overflow: " + std::to_string(s));
    return static_cast<i16>(s);
}

/// Memory link header: "B", 00, 00 00, 00 00, then the count of bytes behind it.
QByteArray mlKopf(int bytesDahinter)
{
    QByteArray f;
    f.append('B');
    f.append(5, '\0');
    f.append(MKI_BE(static_cast<i16>(bytesDahinter)));
    return f;
}

/// Modbus/TCP header: transaction 0, protocol 0, one length byte, unit, function.
QByteArray modbusKopf(int laenge, int funktion)
{
    QByteArray f(5, '\0');
    f.append(byteFeld(laenge));
    f.append(static_cast<char>(MODBUS_UNIT));
    f.append(static_cast<char>(funktion));
    return f;
}

/// Runs a routine that ignores its errors and goes on: what it stored before
/// the failing step stays, nothing after it happens. Gives the error number.
template <typename F>
int fehlerIgnorieren(F &&schritte)
{
    try {
        schritte();
        return 0;
    } catch (const RunError &e) {
        return e.number;
    } catch (const std::exception &) {
        return ERR_INTERNAL;
    }
}

} // namespace

// ---- frame builders ---------------------------------------------------------

QByteArray Rahmen_Lesen_UDP(i16 adresse, i16 anzahl)
{
    QByteArray f = mlKopf(6);
    f.append(ESC);
    f.append('R');
    f.append(MKI_BE(adresse));
    f.append(MKI_BE(anzahl));
    return f;
}

QByteArray Rahmen_Schreiben_UDP(i16 adresse, const QList<i16> &worte)
{
    const int n = static_cast<int>(worte.size());
    QByteArray f = mlKopf(2 * n + 6);
    f.append(ESC);
    f.append('W');
    f.append(MKI_BE(adresse));
    f.append(MKI_BE(static_cast<i16>(n)));
    for (i16 w : worte)
        f.append(MKI_BE(w));
    return f;
}

QByteArray Rahmen_Lesen_IP(i16 adresse, i16 anzahl)
{
    QByteArray f = modbusKopf(6, 3);
    f.append(MKI_BE(adresse));
    f.append(MKI_BE(anzahl));
    return f;
}

QByteArray Rahmen_Schreiben_IP(i16 adresse, const QList<i16> &worte)
{
    const int n = static_cast<int>(worte.size());
    QByteArray f = modbusKopf(2 * n + 7, 16);
    f.append(MKI_BE(adresse));
    f.append('\0');
    f.append(byteFeld(n));
    f.append(byteFeld(2 * n));
    for (i16 w : worte)
        f.append(MKI_BE(w));
    return f;
}

QByteArray Rahmen_Befehl_IP(i16 adresse, i16 wert)
{
    // The value bytes are made by division and masking, not by two's
    // complement: commands are never negative, so the high byte of a value
    // below -255 is simply not representable and the command is not built.
    const char hoch = byteFeld(wert / 256);
    const char tief = byteFeld(wert & 255);
    QByteArray f = modbusKopf(9, 16);
    f.append(MKI_BE(adresse));
    f.append('\0');
    f.append('\x01');
    f.append('\x02');
    f.append(hoch);
    f.append(tief);
    return f;
}

QList<i16> Worte_Holen(int ofen, int adresse, int n)
{
    QList<i16> worte;
    for (int i = 0; i < n; ++i)
        worte.append(plant.SPS_Wort(ofen, adresse + i));
    return worte;
}

// ---- frame routines -------------------------------------------------------------

void FETCH_Ofen(i16 ofen, i16 &adresse, i16 anzahl)
{
    // The retry counter and the serial test belong to the furnace of this
    // tick, the protocol choice to the furnace asked for.
    plant.Retry_IP[plant.Akt_Ofen] = 0;
    if (plant.Ofen_Seriell[plant.Akt_Ofen] != 0)
        return;
    switch (adresse) {
    case 0:
    case 100:
    case 200:
    case 600:
        if (plant.Ofen_UDP[ofen] != TRUE16)
            FETCH_IP(ofen, adresse, anzahl);
        else
            FETCH_UDP(ofen, adresse, anzahl);
        break;
    case 300:
    case 400:
        // A mixed furnace (panel server octet set) gets these two blocks from
        // the panel, everything else from its PLC.
        if (plant.Server_IP4[ofen] == 0 && plant.Ofen_UDP[ofen] != TRUE16)
            FETCH_IP(ofen, adresse, anzahl);
        else
            FETCH_UDP(ofen, adresse, anzahl);
        break;
    default:
        // Blocks 500, 900 and 1000 are read by the main cycle with FETCH_IP.
        break;
    }
}

int FETCH_UDP(i16 ofen, i16 &adresse, i16 anzahl)
{
    return fehlerIgnorieren([&] {
        const i16 offset = plant.Server_Offset[ofen];
        adresse = summe16(adresse, offset);
        const QByteArray rahmen = Rahmen_Lesen_UDP(adresse, anzahl);
        if (offset == 0) {
            if (plant.Ofen_UDP[ofen] != TRUE16)
                return;
            plant.UDP_Read_Adr[ofen] = adresse;
            plant.UDP_Write_Adr[ofen] = -1;
            Winsock1[ofen].SendData(rahmen);
        } else if (offset > 0) {
            plant.UDP_Read_Adr[SERVER_KANAL] = adresse;
            plant.UDP_Write_Adr[SERVER_KANAL] = -1;
            Winsock1[SERVER_KANAL].SendData(rahmen);
        }
    });
}

int FETCH_IP(i16 kanal, i16 adresse, i16 anzahl)
{
    return fehlerIgnorieren([&] {
        // Noted before the state test: a read on a closed channel counts as
        // open until the main cycle's retry limit gives it up.
        plant.IP_Adr[kanal] = adresse;
        plant.IP_Len[kanal] = anzahl;
        Socket &s = Winsock1[kanal];
        if (s.State() != SCK_CONNECTED)
            return;
        const QByteArray rahmen = Rahmen_Lesen_IP(adresse, anzahl);
        plant.Lese_Antwort = TRUE16;
        plant.Schreib_Antwort = FALSE16;
        s.SendData(rahmen);
    });
}

int SEND_UDP(i16 ofen, i16 adresse, i16 n)
{
    return fehlerIgnorieren([&] {
        // An index above 7 has no window of its own and goes the server way.
        const bool server = ofen > 7;
        const i16 offset = server ? 0 : plant.Server_Offset[ofen];
        if (!server && offset == 0) {
            if (plant.Ofen_UDP[ofen] != TRUE16)
                return;
            // The frame is built before anything is noted: a word past the
            // image stops the write here.
            const QList<i16> worte = Worte_Holen(ofen, adresse, n);
            const QByteArray rahmen = Rahmen_Schreiben_UDP(adresse, worte);
            plant.UDP_Read_Adr[ofen] = -1;
            plant.UDP_Write_Adr[ofen] = adresse;
            Winsock1[ofen].SendData(rahmen);
            Journal_Schreiben(ofen, adresse, worte, QString(), true);
        } else if (server || offset > 0) {
            const QList<i16> worte = Worte_Holen(ofen, adresse, n);
            const QByteArray rahmen = Rahmen_Schreiben_UDP(summe16(offset, adresse), worte);
            plant.UDP_Read_Adr[SERVER_KANAL] = -1;
            plant.UDP_Write_Adr[SERVER_KANAL] = adresse; // without the offset
            Winsock1[SERVER_KANAL].SendData(rahmen);
            Journal_Schreiben(ofen, adresse, worte, QString(), true);
        }
    });
}

void SEND_IP(i16 kanal, i16 adresse, i16 n)
{
    // Marked as a write even when it is lost on a closed channel; the next
    // read replaces the mark.
    plant.IP_Adr[kanal] = -2;
    Socket &s = Winsock1[kanal];
    if (s.State() != SCK_CONNECTED)
        return;
    const QList<i16> worte = Worte_Holen(kanal, adresse, n);
    const QByteArray rahmen = Rahmen_Schreiben_IP(adresse, worte);
    plant.Lese_Antwort = FALSE16;
    plant.Schreib_Antwort = TRUE16;
    s.SendData(rahmen);
    Journal_Schreiben(kanal, adresse, worte, QString(), true);
}

int SEND_BEF(u8 ofenNr, i16 adresse, i16 wert, const QString &anlass)
{
    return fehlerIgnorieren([&] {
        const int ofen = ofenNr - 1;
        // Words 300..399 of a furnace behind the panel server live in the panel.
        const bool Ueber_Server =
            plant.Server_Akt_IP4 != 0 && ofenNr != 0 && adresse >= 300 && adresse <= 399;
        const bool udp = plant.Ofen_UDP[ofen] == TRUE16;
        if (!udp && !Ueber_Server) {
            plant.IP_Adr[ofen] = -2;
            Socket &s = Winsock1[ofen];
            if (s.State() != SCK_CONNECTED)
                return;
            s.SendData(Rahmen_Befehl_IP(adresse, wert));
            Journal_Schreiben(ofen, adresse, {wert}, anlass, false);
            plant.Lese_Antwort = FALSE16;
            plant.Schreib_Antwort = TRUE16;
            // Serve this furnace again on the next tick, from the start of its
            // poll sequence, so the effect of the command shows at once.
            plant.Next_Phase = 0;
            plant.Next_Ofen = static_cast<i16>(ofen);
        } else if (!udp) {
            const QByteArray rahmen =
                Rahmen_Schreiben_UDP(summe16(plant.Server_Offset[ofen], adresse), {wert});
            plant.UDP_Read_Adr[SERVER_KANAL] = -1;
            plant.UDP_Write_Adr[SERVER_KANAL] = adresse;
            Winsock1[SERVER_KANAL].SendData(rahmen);
            Journal_Schreiben(ofen, adresse, {wert}, anlass, false);
        } else {
            // A UDP furnace takes the command on its own channel, without the
            // server offset.
            const QByteArray rahmen = Rahmen_Schreiben_UDP(adresse, {wert});
            plant.UDP_Read_Adr[ofen] = -1;
            plant.UDP_Write_Adr[ofen] = adresse;
            Winsock1[ofen].SendData(rahmen);
            Journal_Schreiben(ofen, adresse, {wert}, anlass, false);
        }
    });
}

} // namespace kal
