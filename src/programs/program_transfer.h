#pragma once
// A program on its way to and from the furnace. In the word image a program
// stands at a base P: 100 for the active program, 300 (short names) or 1000
// (long names) for the transfer area of the memory places.
//
//   P-10 .. P-4   long names only: name characters 17..30, two a word
//   P+k           command word of segment k: `Befehl`, plus `Analog` * 16 on
//                 a furnace with a version word
//   P+20+k        `Sollwert`
//   P+40+k        value word: ramp `Gradient`, hold `Haltezeit`, cycle
//                 `Gradient` (the count), manual and jump 0
//   P+60+k        limit word: `MaxOut`, with `Zuluft` in the high byte on a
//                 furnace that has it (halved for version word 1); a cycle's
//                 target segment alone
//   P+80 .. P+87  name characters 1..16, the first in the low byte
//   P+88          transfer area only: the memory place (the page word)
//   P+90+j        `Ausgang` of segment 2j in bits 0..3, of 2j+1 in bits 4..7
//
// Sending fills the image and queues the block (Write_Adr/Write_Len); the
// main cycle writes it at the furnace's next turn. Fetching a memory place
// asks the PLC by the page word: 100 + n, answered 1100 + n when the place
// stands in the transfer area.

#include "programs/program_model.h"

namespace kal {

/// Start words of `Prog_Senden`.
constexpr int START_AKTIV = 100;       ///< active program, short names
constexpr int START_AKTIV_LANG = 90;   ///< active program, long names
constexpr int START_PLATZ = 300;       ///< memory place, short names
constexpr int START_PLATZ_LANG = 990;  ///< memory place, long names
constexpr int PLAETZE = 6;             ///< memory places of a furnace

enum class SendResult {
    Gesendet,   ///< the block is queued; the progress form may open
    Abgelehnt,  ///< the furnace does not take "Manuell" or "Zyklus"; the message was shown
    Belegt,     ///< a write of this furnace is still pending; nothing happened
    Kein_Ofen,  ///< no furnace chosen
};

/// `Prog_Senden(start, place)`: the working copy to `Prog_Ofen`, at start word
/// 100/90 (active program, place 0) or 300/990 (memory place 1..6). A program
/// with "Manuell" on a furnace without option bit 8, or "Zyklus" without bit
/// 9, is refused with language row 148 and a line break, then row 149 (both),
/// 150 (Manuell) or 151 (Zyklus). Sent: the block is queued with its cause
/// for the write journal, and on the large layout bit 15 of word 188 is set.
SendResult Prog_Senden(int start, int platz);

/// Start word of a send to place n (0 the active program) for the furnace of
/// the working copy, by its name length.
int startWord(int platz);

/// The program standing in the image of furnace index `ofen` at base
/// `offset` + 100 (offset 0 the active program, 200 or 900 the transfer
/// area), taken apart: with a version word the command is the low 4 bits and
/// `Analog` the rest; `MaxOut` the limit word's low byte, `Zuluft` its high
/// byte (doubled for version word 1); a cycle's `MaxOut` the whole limit
/// word. The name has 16 characters, 30 with long names.
Program programFromWords(int ofen, int offset);

/// `ProgCopy_aus_SPS()`: the program of the furnace index at `offset` into
/// the copy buffer.
void ProgCopy_aus_SPS(int ofen, int offset);
/// `ProgCopy_aus_PC()`: the working copy into the copy buffer.
void ProgCopy_aus_PC();
/// `Programm_Einfuegen()`: the copy buffer into the working copy, dated now.
void Programm_Einfuegen();

/// Memory offset of a furnace index: 900 on the large layout, else 200.
int memoryOffset(int ofen);
/// Asks furnace index `ofen` for memory place n (1..6): the page word becomes
/// 100 + n in the image and goes out by SEND_BEF.
void requestPlace(int ofen, int n);
/// The PLC answered the request for place n: the page word reads 1100 + n.
bool placeReady(int ofen, int n);
/// Status text of the page word of furnace index `ofen` (`Status_Text` of
/// its value, of value - 1000 for the PLC's answers); empty for others.
QString Page_Status(int ofen);

/// A write of the furnace index is pending (the lock of a send).
bool writePending(int ofen);
/// Turns of the main cycle until furnace index `ofen` is served: 0 when it
/// is on turn now.
int turnsUntil(int ofen);

} // namespace kal
