#pragma once
// The frames of both furnace protocols and the six routines that send them.
//
// Memory link (panel, UDP port 1024): "B" 00 0000 0000, a big-endian count of
// the bytes behind it, ESC "R" or ESC "W", address, word count, data.
// Modbus/TCP (port Modbus_Port, unit 1): function 3 read, function 16 write,
// transaction id always 0 (one request open per channel at most).
// Every multi-byte field on the wire is high byte first.
//
// The builders are pure functions over bytes. The routines pick the channel,
// set the channel state of the plant (UDP_Read_Adr, UDP_Write_Adr, IP_Adr,
// IP_Len) and the answer flags Lese_Antwort / Schreib_Antwort, and send
// through Winsock1. Answers come back later through DataArrival.
//
// Error behaviour: FETCH_UDP, FETCH_IP, SEND_UDP and SEND_BEF swallow every
// run-time error (a refused send, a word past the image, a field that does not
// fit) and keep what they stored before the failing step; they return the
// number of the swallowed error, 0 when all went well, so a caller or a test
// can see it. SEND_IP and FETCH_Ofen let errors travel to their caller.
//
// Every write frame handed to a socket (SEND_UDP, SEND_IP, SEND_BEF) is
// appended to the write journal (write_journal.h).

#include "core/plant_state.h"

#include <QByteArray>
#include <QList>

namespace kal {

/// Error of a byte field that cannot hold its value (a negative high byte, a
/// count above 255): "invalid procedure call".
constexpr int ERR_INVALID_CALL = 5;

// ---- frame builders ---------------------------------------------------------

/// Memory link read request, 14 bytes: 42 00 00 00 00 00 00 06 1B 52 AH AL NH NL.
QByteArray readFrameUdp(i16 adresse, i16 anzahl);
/// Memory link write request, 14 + 2n bytes: header with 2n+6, 1B 57, address,
/// n, then each word high byte first.
QByteArray writeFrameUdp(i16 adresse, const QList<i16> &worte);
/// Modbus read holding registers, 12 bytes: 00 00 00 00 00 06 01 03 AH AL NH NL.
QByteArray readFrameIp(i16 adresse, i16 anzahl);
/// Modbus write multiple registers, 13 + 2n bytes: 00 00 00 00 00 (2n+7) 01 10
/// AH AL 00 n (2n) data. Raises ERR_INVALID_CALL when 2n+7 does not fit a byte.
QByteArray writeFrameIp(i16 adresse, const QList<i16> &worte);
/// Modbus single command: 00 00 00 00 00 09 01 10 AH AL 00 01 02 VH VL. The
/// high byte of the value is value / 256 truncated toward zero and the low byte
/// value AND 255: -255..-1 go out with high byte 0, below -255 the high byte
/// cannot be made and ERR_INVALID_CALL is raised.
QByteArray commandFrameIp(i16 adresse, i16 wert);

/// n words of furnace `ofen` from SPS_Wort, starting at `adresse`. A word past
/// 1140 (or a furnace outside 0..7) raises the bounds error.
QList<i16> fetchWords(int ofen, int adresse, int n);

// ---- frame routines -------------------------------------------------------------

/// Cyclic read of the poll sequence: clears Retry_IP of Akt_Ofen, does nothing
/// for a serial Akt_Ofen, then reads blocks 0, 100, 200, 600 by Modbus unless
/// the furnace is UDP, and 300, 400 by Modbus only for a TCP furnace without
/// panel server; the memory link otherwise. Any other address sends nothing.
/// `adresse` comes back with the server offset added when the memory link
/// was chosen (it is handed on to FETCH_UDP).
void FETCH_Ofen(i16 ofen, i16 &adresse, i16 anzahl);

/// Memory link read of a furnace. Adds Server_Offset to `adresse` (the caller
/// sees it), then sends on the furnace's channel (no offset, UDP furnace) or on
/// channel 8 (offset above 0); a TCP furnace without offset gets nothing.
int FETCH_UDP(i16 ofen, i16 &adresse, i16 anzahl);

/// Modbus read on a channel. IP_Adr and IP_Len are stored first, so a request
/// on a closed channel still counts as open; sends only when State is 7.
int FETCH_IP(i16 kanal, i16 adresse, i16 anzahl);

/// Memory link write of n words of SPS_Wort of the furnace. Direct for a UDP
/// furnace without offset, over channel 8 with the offset added when the
/// furnace has an offset or the index is above 7; a TCP furnace without offset
/// gets nothing.
int SEND_UDP(i16 ofen, i16 adresse, i16 n);

/// Modbus write of n words of SPS_Wort of the furnace on its channel. IP_Adr
/// becomes -2 even when the channel is closed and the write is lost.
/// Errors (bounds, a refused send) travel to the caller.
void SEND_IP(i16 kanal, i16 adresse, i16 n);

/// One command word to furnace number 1..8, at once, bypassing Write_Len and
/// SPS_Wort. TCP furnaces get a Modbus single command and are served again on
/// the next tick from a fresh poll sequence (Next_Ofen / Next_Phase); words
/// 300..399 of a furnace behind a panel server and UDP furnaces get a memory
/// link write. `anlass` names the cause for the write journal; empty, the
/// journal tells it from the address.
int SEND_BEF(u8 ofenNr, i16 adresse, i16 wert, const QString &anlass = QString());

} // namespace kal
