#pragma once
// `ElementStatistik`: the history of a furnace's heating element figures as a
// CSV file "RX_<serial>.CSV" in the CSV folder, one row a day, newest first,
// each value the day's mean figure times 100 as a whole number.

namespace kal {

/// Exports the history of furnace number 1..8. Nothing without a history
/// file or with an empty history; false then, and when the operator refused
/// or the file could not be written.
bool ElementStatistik(int ofenNr);

} // namespace kal
