#pragma once
// Which batch a log block belongs to: the open one, a new one, or none.
//
// Headed furnaces (type below 0) carry the batch number in every sample group
// (154, and 131 once unpacked). The number of the open batch goes on. Another
// number is dropped the first time it comes, so one stray number never splits
// a batch; seen a second time in a row it opens a new batch, but only when the
// block lies more than five minutes after the start of the open batch, so a
// batch lives at least five minutes. Without a valid start (`Charge_Gueltig`
// 0, as after a restart with an unreadable start date) any number opens a
// batch. Blocks of other kinds are stored under the open batch and need a
// batch number from an earlier group, except the texts (9001, 159).
//
// Plain furnaces (type 0..6) announce a batch with the kind 200 + number and
// store their single samples and operator texts under the batch announced
// last. A furnace of a type above 6 records nothing.
//
// Opening a batch takes the number, the block's time as `Charge_Start`, its
// validity, the segment byte `Charge_Pos` (high byte of w36), and saves them in
// the configuration file, so that a restarted station goes on with the same
// batch file.

#include <QString>

namespace kal {

/// Minutes a batch lives at least before a new number may open the next one.
constexpr int CHARGE_MIN_MINUTEN = 5;

/// The batch test of the block in hand (`Log_Art` already read from the
/// image) for furnace index `ofen`, with the opening of a new batch. Clears
/// `Log_Neu` for a dropped block. True when the block is to be stored: it is
/// still wanted and a batch is open.
bool checkBatch(int ofen);

/// A write of the recorder failed at step `schritt` with error `nummer` on
/// `pfad`. The station goes on; one line goes to the error list, and the
/// same failure again is not repeated there until a block of the furnace has
/// been stored without one.
void recordFailure(int ofen, int schritt, int nummer, const QString &pfad);
/// Starts and ends the failure bookkeeping of one block of the furnace.
void beginBlockFailures(int ofen);
void endBlockFailures(int ofen);

} // namespace kal
