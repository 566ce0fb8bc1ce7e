#pragma once
// The temperature text log: beside the batch file, one plain text file per
// furnace, "Temp-X<n>.TXT" in the CSV folder, for use outside the station.
// While a program runs (and after its end until the furnace has stayed below
// the threshold `TempLog_Schwelle` for ten seconds) a line of time stamp, set
// value, actual value and their difference is written every `TempLog_Takt`
// seconds, but only from words of a fresh poll round. A new batch number of
// the PLC recreates the file with a head that names the batch and lists the
// temperature program as the PLC holds it. Lines end in CR LF, fields are
// separated by one tab; the text is Latin-1 ("°" is 0xB0).

#include "core/plant_state.h"

#include <QByteArray>
#include <QString>

namespace kal {

constexpr int NACHLAUF_TAKTE = 10;   ///< seconds below the threshold before the log stops

/// Own state of the temperature log, per furnace index.
struct TempLogState {
    Table<i16, OFEN_MAX> TempLog_Nachlauf;   ///< countdown 10..0 before logging stops
    Table<i16, OFEN_MAX> TempLog_Zaehler;    ///< ticks since the last line
    Table<QString, OFEN_MAX> TempLog_Datei;  ///< path of the log
};
extern TempLogState TempLog;

/// `Ofen_Charge_SPS`: the running batch number of the PLC, which it keeps in
/// the 32-bit words 67/68 (memory link) or 7/8 (Modbus), the value the decoder
/// takes into `Ofen_Stunden` at block 0.
i32 Ofen_Charge_SPS(int ofen);

/// "Temp-X<n>.TXT" of furnace index `ofen` in the CSV folder.
QString tempLogPath(int ofen);

/// One tick of `Timer2` (once a second) for furnace index `ofen`: the
/// run/after-run state, the interval count and, when due and the poll round
/// is fresh (`Block1_Zahl` 2), a line.
void tempLogTick(int ofen);

/// `TempLog_Zeile(furnace index)`: writes one line, or, when the PLC's batch
/// number differs from `TempLog_Charge`, creates the file anew with its head
/// and saves the new number in the configuration. Nothing while the PLC's
/// batch number is 0 or below. A file that can't be written raises
/// RunError(ERR_FILE).
void TempLog_Zeile(int ofen);

/// The head of a new log (lines 1..11, each ending in CR LF), as Latin-1.
QByteArray tempLogHead(int ofen);
/// One data line: stamp, SP, PV, DIFF with CR LF.
QByteArray tempLogLine(int ofen);

} // namespace kal
