#pragma once
// `Timer1`, the main cycle of the station, every 100 ms: serves one furnace
// (steps 20..150, src/link/polling.h), derives program times, clock
// correction and identity of all online furnaces (170..290), writes the
// configuration when the identity check asked for it (300), and feeds the live
// page (the time of each furnace's last block 0, the page's refresh wait). The
// main window's timer only calls `Timer1_Tick`.
//
// Errors: until the first error is logged, a run-time error ends the tick
// through `Timer1_Error`, which logs one line; from then on (`Fehler_Pause`
// at 1 or more) errors are ignored and the tick goes on with its next step.

namespace kal {

/// One tick of the main cycle. A tick called while another one waits inside a
/// connect wait returns at once.
void Timer1_Tick();

/// `Timer2`, once a second: the temperature log of each furnace in turn. A
/// furnace whose log fails (a full disk, a missing folder) loses that line;
/// the others go on.
void Timer2_Tick();

/// The error handler of the tick: error `nummer` at step `schritt`. Error
/// 10048 takes `Akt_Ofen` off (`Ofen_Aktiv` 0); a repeat of the last error is
/// not logged and counts `Fehler_Pause` down; a new one sets it to 100 and adds
/// the line: date and time, "   Line", step, "   Err:", number, "   ", the
/// address of `Akt_Ofen`.
void Timer1_Error(int nummer, int schritt);

/// Error number given to a failure that carries none of its own (a failure of
/// the library rather than a run-time error of the station).
constexpr int ERR_UNBEKANNT = 5;

} // namespace kal
