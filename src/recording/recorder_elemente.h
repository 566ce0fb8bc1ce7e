#pragma once
// Where the recorder hands each stored sample group on to the heating element
// store and its statistics.

#include "recording/batch_record.h"

#include <QString>
#include <array>

namespace kal {

/// A sample group (154..157 or 160..163) was stored for furnace number
/// `ofenNr` (0 when no furnace is known, as in an import). `zeit` is the time
/// of the sample, "TT.MM.JJJJ HH:MM:SS". The element store takes the element
/// currents of 160..162 and the group outputs of 155 from here; until it is
/// part of the station nothing happens.
void Element_Daten_Nehmen(int ofenNr, const std::array<BatchRecord, 4> &gruppe, const QString &zeit);

} // namespace kal
