#include "link/data_arrival.h"

#include "core/conversions.h"
#include "core/plant_state.h"
#include "link/decoder.h"
#include "link/socket.h"

#include <exception>

namespace kal {

namespace {

constexpr int SERVER_KANAL = 8;
constexpr int KOPF_UDP = 10;      ///< header bytes of a memory link answer
constexpr int FENSTER = 1000;     ///< words of a furnace's server window
constexpr int BLOCK_WORTE = 100;

/// Word of a memory link answer at 1-based byte position `pos`, high byte
/// first. A pair cut off at the end of the answer reads as 0.
i16 answerWord(const QByteArray &daten, int pos)
{
    QByteArray paar = daten.mid(pos - 1, 2);
    return CVI_BE(paar);
}

/// Stores an arriving word, unless it lies in the furnace's queued write: the
/// station's own words there (a program, an acknowledgement) wait to go out,
/// and a read answered just before must not put the PLC's old words back
/// into the block that will be written.
void storeWord(int ofen, int a, i16 w)
{
    if (Table<i16, OFEN_MAX>::valid(ofen) && plant.Write_Len[ofen] > 0 && a >= plant.Write_Adr[ofen] &&
        a < plant.Write_Adr[ofen] + plant.Write_Len[ofen])
        return;
    plant.SPS_Wort(ofen, a) = w;
}

/// The words of a direct memory link answer into the furnace's image at `a`.
void storeDirect(int kanal, int a, const QByteArray &daten, int &schritt)
{
    const int start = a;
    for (int pos = KOPF_UDP + 1; pos <= daten.size(); pos += 2)
        storeWord(kanal, a++, answerWord(daten, pos));
    if (a > start)
        Block_Decode(kanal, start, a - start);
    schritt = 20;
}

/// A channel 8 answer: into the server image at `a`, then its 100-word read
/// window to the furnace whose server window holds `a`. The furnace, or -1
/// when the address lies in no window.
int storeServerAnswer(int a, const QByteArray &daten, int &schritt)
{
    schritt = 30;
    const int start = a;
    for (int pos = KOPF_UDP + 1; pos <= daten.size(); pos += 2)
        plant.Server_Wort[a++] = answerWord(daten, pos);
    // The start of the read inside a window, for a read of 100 words. A write
    // answer brings no words and gives nonsense here: it finds no window, or
    // moves words of the server image that were never filled.
    const int fenster = a % FENSTER - BLOCK_WORTE;
    int ofen = -1;
    for (int f = 0; f < OFEN_MAX; ++f) {
        const int basis = plant.Server_Offset[f];
        // A furnace without a server (offset 0) owns addresses 0..999 here.
        if (start >= basis && start < basis + FENSTER) {
            ofen = f;
            break;
        }
    }
    schritt = 40;
    if (ofen < 0)
        return -1;
    const int basis = plant.Server_Offset[ofen];
    for (int k = 0; k < BLOCK_WORTE; ++k)
        storeWord(ofen, fenster + k, plant.Server_Wort[basis + fenster + k]);
    Block_Decode(ofen, fenster, BLOCK_WORTE);
    schritt = 50;
    return ofen;
}

/// Memory link answer on a furnace channel or on channel 8.
void udpAnswer(int Index, int &schritt)
{
    plant.Ofen_UDP[SERVER_KANAL] = 0; // channel 8 takes its own path below
    int a = -1;
    if (plant.UDP_Write_Adr[Index] >= 0)
        a = plant.UDP_Write_Adr[Index];
    if (plant.UDP_Read_Adr[Index] >= 0)
        a = plant.UDP_Read_Adr[Index];
    schritt = 10;
    // The bytes are taken off the socket in any case, so that the channel's
    // next answer can come in; nothing is stored while no address was noted.
    const QByteArray daten = Winsock1[Index].GetData();
    int ofen = 0; // a direct answer resets the fields of furnace 0, see below
    if (a >= 0) {
        if (plant.Ofen_UDP[Index] == -1) {
            storeDirect(Index, a, daten, schritt);
        } else {
            ofen = storeServerAnswer(a, daten, schritt);
            if (ofen < 0)
                return;
        }
    }
    // The fields reset here are those of furnace 0 for every direct answer,
    // not those of the answering channel; in a plant that mixes kinds this
    // frees an open Modbus read of furnace 0 early. The station has always
    // worked this way and the polling copes with it.
    schritt = 60;
    plant.Empfang_Fehler[ofen] = 0;
    plant.IP_Adr[ofen] = -1;
    plant.IP_Len[ofen] = 0;
}

/// Modbus answer on a furnace's TCP channel.
void tcpAnswer(int Index, int &schritt)
{
    schritt = 70;
    const QByteArray daten = Winsock1[Index].GetData();
    for (int i = 0; i < daten.size(); ++i)
        plant.Empfang_Puffer[i + 1] = static_cast<u8>(daten[i]); // past 1000: the bounds error
    schritt = 71;
    if (plant.IP_Len[Index] > 0) {
        if (plant.IP_Adr[Index] < 0) {
            plant.Empfang_Fehler[Index] = 0;
        } else {
            if (plant.Lese_Antwort != 0) {
                // Byte 9 counts the data bytes; what has not arrived reads as
                // the buffer's old content.
                int a = plant.IP_Adr[Index];
                const int bytes = plant.Empfang_Puffer[9];
                for (int pos = 10; pos <= bytes + 9; pos += 2) {
                    QByteArray paar;
                    paar.append(static_cast<char>(plant.Empfang_Puffer[pos + 1]));
                    paar.append(static_cast<char>(plant.Empfang_Puffer[pos]));
                    storeWord(Index, a++, CVI(paar));
                }
            }
            schritt = 80;
            Block_Decode(Index, plant.IP_Adr[Index], plant.IP_Len[Index]);
            schritt = 81;
            plant.Empfang_Fehler[Index] = 0;
        }
    }
    plant.IP_Adr[Index] = -1;
    plant.IP_Len[Index] = 0;
}

} // namespace

void DataArrival(int Index, int bytesTotal)
{
    // bytesTotal is what the socket announced; the handler works on the bytes
    // it fetches, which are the same.
    (void)bytesTotal;
    if (Index < 0 || Index >= KANAL_MAX)
        return;
    int schritt = 0;
    try {
        plant.Ofen_UDP[SERVER_KANAL] = -1;
        if (plant.Ofen_UDP[Index] == -1)
            udpAnswer(Index, schritt);
        else
            tcpAnswer(Index, schritt);
    } catch (const std::exception &) {
        plant.Empfang_Fehler[Index] = static_cast<i16>(schritt);
        plant.IP_Adr[Index] = -1;
        plant.IP_Len[Index] = 0;
    }
}

void connectReceivers()
{
    Winsock1.DataArrival = DataArrival;
}

} // namespace kal
