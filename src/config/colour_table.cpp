#include "config/colour_table.h"

namespace kal {

uint32_t curveColourRgb(int index)
{
    static constexpr uint32_t tabelle[FARBEN_ANZAHL] = {
        0x000000, 0x000080, 0x008000, 0x008080, 0x800000, 0x800080, 0x808000, 0xC0C0C0,
        0xD81C1C, 0x005AC0, 0x2A9A2A, 0xE08000, 0xB02B8A, 0x007A7A, 0xA04040, 0x505050,
        0x00A0B0, 0xA05000, 0xA000A0, 0xA0A000, 0x006060, 0x6060A0, 0x307030, 0xC06060,
    };
    return index >= 0 && index < FARBEN_ANZAHL ? tabelle[index] : 0;
}

} // namespace kal
