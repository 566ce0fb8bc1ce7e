#pragma once
// The colour table of the curves: 24 colours (0x00BBGGRR) that the channel
// colours `Kanal_Farbe` (0..23) index. The standard colour of channel k is
// k + 8, so the first sixteen channels take entries 8..23: strong colours
// that stand apart on the white plot.

#include "core/plant_state.h"

#include <array>
#include <cstdint>

namespace kal {

constexpr std::array<uint32_t, 24> Kurven_Farben = {
    0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080, 0x008080, 0xC0C0C0,
    0x1C1CD8, 0xC05A00, 0x2A9A2A, 0x0080E0, 0x8A2BB0, 0x7A7A00, 0x4040A0, 0x505050,
    0xB0A000, 0x0050A0, 0xA000A0, 0x00A0A0, 0x606000, 0xA06060, 0x307030, 0x6060C0,
};

/// `Kurve_Farbe`: the colour (0x00BBGGRR) of channel c of the batch on view:
/// the furnace's own colours when the batch belongs to a furnace of the plant
/// (`ofenNr` 1..8), else those of slot 0.
inline uint32_t Kurve_Farbe(int ofenNr, int c)
{
    const int slot = (ofenNr >= 1 && ofenNr <= OFEN_MAX) ? ofenNr : 0;
    const int i = plant.Kanal_Farbe(slot, c);
    return Kurven_Farben[size_t((i >= 0 && i < 24) ? i : (c + 8) % 24)];
}

} // namespace kal
