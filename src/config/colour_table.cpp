#include "config/colour_table.h"

namespace kal {

uint32_t Kurven_Farbe_RGB(int index)
{
    static constexpr uint32_t tabelle[FARBEN_ANZAHL] = {
        0x000000, 0x000080, 0x008000, 0x008080, 0x800000, 0x800080, 0x808000, 0xC0C0C0,
        0x808080, 0x0000FF, 0x00C000, 0x00C0C0, 0xFF0000, 0xFF00FF, 0xC0C000, 0xFFFFFF,
        0xFF8000, 0x804000, 0x80FF00, 0x0080FF, 0x8000FF, 0xFF0080, 0x00FF80, 0x404040,
    };
    return index >= 0 && index < FARBEN_ANZAHL ? tabelle[index] : 0;
}

} // namespace kal
