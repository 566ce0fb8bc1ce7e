#pragma once
// The write journal: every write the station sends to a PLC (a queued block
// of Write_Adr/Write_Len, a command of SEND_BEF) is appended as one line to
// "Kalmeron-Writes.log" in the data folder, so that an audit can tell who
// changed what in a furnace and when. A line is tab-separated:
//
//   YYYY-MM-DD HH:MM:SS.mmm  furnace number  serial  start word  count
//   words (four hex digits each, blank-separated)  cause
//
// The frame routines write the line when the frame has been handed to the
// socket; nothing else calls the journal. The file is only ever appended to
// and is kept open, so a line costs one small write and never holds up the
// main cycle. When the file cannot be written the lines wait in memory (a
// bounded number) and go out with the next line that can be written.

#include "core/plant_state.h"

#include <QDateTime>
#include <QList>
#include <QString>

namespace kal {

/// Name of the journal in the data folder `Pfad`[0].
inline const QString JOURNAL_DATEI = QStringLiteral("Kalmeron-Writes.log");

/// Lines held in memory at most while the file cannot be written; the oldest
/// go first beyond that.
constexpr int JOURNAL_WARTEND_MAX = 10000;

/// Names the cause of the write a caller has just queued for furnace index
/// `ofen` (Write_Adr/Write_Len); it is used, and forgotten, when the queue
/// goes out.
void nameWriteCause(int ofen, const QString &anlass);

/// The cause of a write to `adresse` that no caller named, as the words tell
/// it: acknowledge, program start or stop and other commands at word 30, the
/// clock step at 58, the taken log block at the trigger word, the page word.
/// Empty when the address tells nothing.
QString causeFromAddress(int ofen, int adresse, const QList<i16> &worte);

/// One journal line, without line end.
QString journalLine(const QDateTime &zeit, int ofenNr, const QString &serie, int adresse,
                      const QList<i16> &worte, const QString &anlass);

/// Appends the line of a write that went out to furnace index `ofen` (an
/// index above 7, the panel server's own way, is journaled as such). An
/// empty `anlass` takes the queued cause of the furnace when `queue` is set,
/// else the one the address tells.
void writeJournal(int ofen, int adresse, const QList<i16> &worte, const QString &anlass, bool queue);

/// Full name of the journal file now in use.
QString journalFile();

} // namespace kal
