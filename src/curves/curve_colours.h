#pragma once
// The colour of a curve channel: its index 0..23 in the configuration
// (`Kanal_Farbe`) looked up in the one colour table of the station, which the
// settings dialog shows too.

#include "config/colour_table.h"
#include "core/plant_state.h"

#include <array>
#include <cstdint>

namespace kal {

/// `Kurve_Farbe`: the colour (0x00BBGGRR) of channel c of the batch on view:
/// the furnace's own colours when the batch belongs to a furnace of the plant
/// (`ofenNr` 1..8), else those of slot 0.
inline uint32_t Kurve_Farbe(int ofenNr, int c)
{
    const int slot = (ofenNr >= 1 && ofenNr <= OFEN_MAX) ? ofenNr : 0;
    const int i = plant.Kanal_Farbe(slot, c);
    const uint32_t rgb = curveColourRgb((i >= 0 && i < FARBEN_ANZAHL) ? i : (c + 8) % FARBEN_ANZAHL);
    return ((rgb & 0xFF) << 16) | (rgb & 0xFF00) | ((rgb >> 16) & 0xFF);
}

} // namespace kal
