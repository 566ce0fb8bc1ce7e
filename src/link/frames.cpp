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
char byteField(int v)
{
    if (v < 0 || v > 255)
        throw RunError(ERR_INVALID_CALL, "byte field out of range: " + std::to_string(v));
    return static_cast<char>(v);
}

/// 16-bit sum of an address and an offset; a sum outside i16 is an overflow.
i16 sum16(int a, int b)
{
    const int s = a + b;
    if (s < -32768 || s > 32767)
        throw RunError(ERR_OVERFLOW, "address overflow: " + std::to_string(s));
    return static_cast<i16>(s);
}

/// Memory link header: "B", 00, 00 00, 00 00, then the count of bytes behind it.
QByteArray memoryLinkHeader(int bytesDahinter)
{
    QByteArray f;
    f.append('B');
    f.append(5, '\0');
    f.append(MKI_BE(static_cast<i16>(bytesDahinter)));
    return f;
}

/// Modbus/TCP header: transaction 0, protocol 0, one length byte, unit, function.
QByteArray modbusHeader(int laenge, int funktion)
{
    QByteArray f(5, '\0');
    f.append(byteField(laenge));
    f.append(static_cast<char>(MODBUS_UNIT));
    f.append(static_cast<char>(funktion));
    return f;
}

/// Runs a routine that ignores its errors and goes on: what it stored before
/// the failing step stays, nothing after it happens. Gives the error number.
template <typename F>
int ignoringErrors(F &&schritte)
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

QByteArray readFrameUdp(i16 adresse, i16 anzahl)
{
    QByteArray f = memoryLinkHeader(6);
    f.append(ESC);
    f.append('R');
    f.append(MKI_BE(adresse));
    f.append(MKI_BE(anzahl));
    return f;
}

QByteArray writeFrameUdp(i16 adresse, const QList<i16> &worte)
{
    const int n = static_cast<int>(worte.size());
    QByteArray f = memoryLinkHeader(2 * n + 6);
    f.append(ESC);
    f.append('W');
    f.append(MKI_BE(adresse));
    f.append(MKI_BE(static_cast<i16>(n)));
    for (i16 w : worte)
        f.append(MKI_BE(w));
    return f;
}

QByteArray readFrameIp(i16 adresse, i16 anzahl)
{
    QByteArray f = modbusHeader(6, 3);
    f.append(MKI_BE(adresse));
    f.append(MKI_BE(anzahl));
    return f;
}

QByteArray writeFrameIp(i16 adresse, const QList<i16> &worte)
{
    const int n = static_cast<int>(worte.size());
    QByteArray f = modbusHeader(2 * n + 7, 16);
    f.append(MKI_BE(adresse));
    f.append('\0');
    f.append(byteField(n));
    f.append(byteField(2 * n));
    for (i16 w : worte)
        f.append(MKI_BE(w));
    return f;
}

QByteArray commandFrameIp(i16 adresse, i16 wert)
{
    // The value bytes are made by division and masking, not by two's
    // complement: commands are never negative, so the high byte of a value
    // below -255 is simply not representable and the command is not built.
    const char hoch = byteField(wert / 256);
    const char tief = byteField(wert & 255);
    QByteArray f = modbusHeader(9, 16);
    f.append(MKI_BE(adresse));
    f.append('\0');
    f.append('\x01');
    f.append('\x02');
    f.append(hoch);
    f.append(tief);
    return f;
}

QList<i16> fetchWords(int ofen, int adresse, int n)
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
    return ignoringErrors([&] {
        const i16 offset = plant.Server_Offset[ofen];
        adresse = sum16(adresse, offset);
        const QByteArray rahmen = readFrameUdp(adresse, anzahl);
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
    return ignoringErrors([&] {
        // Noted before the state test: a read on a closed channel counts as
        // open until the main cycle's retry limit gives it up.
        plant.IP_Adr[kanal] = adresse;
        plant.IP_Len[kanal] = anzahl;
        Socket &s = Winsock1[kanal];
        if (s.State() != SCK_CONNECTED)
            return;
        const QByteArray rahmen = readFrameIp(adresse, anzahl);
        plant.Lese_Antwort = TRUE16;
        plant.Schreib_Antwort = FALSE16;
        s.SendData(rahmen);
    });
}

int SEND_UDP(i16 ofen, i16 adresse, i16 n)
{
    return ignoringErrors([&] {
        // An index above 7 has no window of its own and goes the server way.
        const bool server = ofen > 7;
        const i16 offset = server ? 0 : plant.Server_Offset[ofen];
        if (!server && offset == 0) {
            if (plant.Ofen_UDP[ofen] != TRUE16)
                return;
            // The frame is built before anything is noted: a word past the
            // image stops the write here.
            const QList<i16> worte = fetchWords(ofen, adresse, n);
            const QByteArray rahmen = writeFrameUdp(adresse, worte);
            plant.UDP_Read_Adr[ofen] = -1;
            plant.UDP_Write_Adr[ofen] = adresse;
            Winsock1[ofen].SendData(rahmen);
            writeJournal(ofen, adresse, worte, QString(), true);
        } else if (server || offset > 0) {
            const QList<i16> worte = fetchWords(ofen, adresse, n);
            const QByteArray rahmen = writeFrameUdp(sum16(offset, adresse), worte);
            plant.UDP_Read_Adr[SERVER_KANAL] = -1;
            plant.UDP_Write_Adr[SERVER_KANAL] = adresse; // without the offset
            Winsock1[SERVER_KANAL].SendData(rahmen);
            writeJournal(ofen, adresse, worte, QString(), true);
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
    const QList<i16> worte = fetchWords(kanal, adresse, n);
    const QByteArray rahmen = writeFrameIp(adresse, worte);
    plant.Lese_Antwort = FALSE16;
    plant.Schreib_Antwort = TRUE16;
    s.SendData(rahmen);
    writeJournal(kanal, adresse, worte, QString(), true);
}

int SEND_BEF(u8 ofenNr, i16 adresse, i16 wert, const QString &anlass)
{
    return ignoringErrors([&] {
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
            s.SendData(commandFrameIp(adresse, wert));
            writeJournal(ofen, adresse, {wert}, anlass, false);
            plant.Lese_Antwort = FALSE16;
            plant.Schreib_Antwort = TRUE16;
            // Serve this furnace again on the next tick, from the start of its
            // poll sequence, so the effect of the command shows at once.
            plant.Next_Phase = 0;
            plant.Next_Ofen = static_cast<i16>(ofen);
        } else if (!udp) {
            const QByteArray rahmen =
                writeFrameUdp(sum16(plant.Server_Offset[ofen], adresse), {wert});
            plant.UDP_Read_Adr[SERVER_KANAL] = -1;
            plant.UDP_Write_Adr[SERVER_KANAL] = adresse;
            Winsock1[SERVER_KANAL].SendData(rahmen);
            writeJournal(ofen, adresse, {wert}, anlass, false);
        } else {
            // A UDP furnace takes the command on its own channel, without the
            // server offset.
            const QByteArray rahmen = writeFrameUdp(adresse, {wert});
            plant.UDP_Read_Adr[ofen] = -1;
            plant.UDP_Write_Adr[ofen] = adresse;
            Winsock1[ofen].SendData(rahmen);
            writeJournal(ofen, adresse, {wert}, anlass, false);
        }
    });
}

} // namespace kal
