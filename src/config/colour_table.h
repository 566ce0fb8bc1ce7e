#pragma once
// The 24 colours of the curve channels. A channel's colour in the
// configuration (`Kanal_Farbe`) is an index 0..23 into this table. The
// standard colour of channel k is k + 8, so the first sixteen channels take
// entries 8..23: strong colours that stand apart on the white plot.

#include <cstdint>

namespace kal {

constexpr int FARBEN_ANZAHL = 24;

/// Colour `index` (0..23) as 0xRRGGBB; an index outside the table gives black.
uint32_t curveColourRgb(int index);

} // namespace kal
