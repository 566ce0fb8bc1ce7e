#pragma once
// Display names and units of the controllers of each furnace, from the text
// file "OVDSFUNC.TXT" in the data folder.
//
// The file has one section per furnace, begun by "SERIE=" and the furnace's
// serial number, with the keys "REG_Name_1=" .. "REG_Name_6=" and
// "REG_Einh_1=" .. "REG_Einh_6=" in any order; a value runs to the end of its
// line. A section whose serial matches no furnace is skipped.

#include <QString>

namespace kal {

/// `Reg_Namen_Lesen`: controller 1 of every furnace gets the unit "°C"; then
/// the names and units of the file are taken, and Reg_Anzahl of a furnace
/// becomes at least the highest controller number found for it. Without the
/// file only the default unit is set.
void Reg_Namen_Lesen();

/// The same from a file at `path` (tests and other folders).
void Reg_Namen_Lesen(const QString &path);

} // namespace kal
