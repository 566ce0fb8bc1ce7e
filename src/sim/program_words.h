#pragma once
// A temperature program as PLC words, in the layout the station writes and
// reads, relative to the program base P (100 for the active program, 300 or
// 1000 for the transfer area):
//   P-10..P-4  name characters 17..30 (long names only)
//   P+k        command word of segment k
//   P+20+k     target, whole °C (a hold carries the target of the segment before)
//   P+40+k     value word: rate (ramp), time (hold), repeat count (cycle), else 0
//   P+60+k     limit word: output limit %, or the target segment of a cycle
//   P+80..87   name characters 1..16, two a word, first in the low byte
//   P+88       place number (transfer area only; left 0 here)
//   P+90..99   outputs of the segments (left 0 here)
// A segment with command 0 or above 5 has all four words 0.

#include "sim/plant_description.h"

#include <QVector>
#include <cstdint>

namespace kal::sim {

/// Words P-10 .. P+99 (110 words; element i is word P-10+i). With short
/// names the first ten are 0 and the name is cut to 16 characters.
QVector<int16_t> programWords(const ProgramDescription &program, bool longNames);

} // namespace kal::sim
