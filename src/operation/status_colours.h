#pragma once
// Colours of the live page and the message lamps.
//
// The values are kept as the plant's colour tables hold them: 0x00BBGGRR
// (blue in the high byte, red in the low one). One value is not a colour but a
// reference to the system's button face, which every form takes from its own
// palette; `colourRgb` turns the others into 0xAARRGGBB for painting.

#include <cstdint>

namespace kal {

using ColourValue = uint32_t;

constexpr ColourValue Farbe_Normal = 0x8000000F;   ///< the system's button face: idle, not connected
constexpr ColourValue Farbe_Stoerung = 0x8080FF;   ///< light red: a fault is up
constexpr ColourValue Farbe_Warnung = 65535;       ///< yellow: waiting or held
constexpr ColourValue Farbe_Aktiv = 0x80FF80;      ///< light green: a program runs

/// True for the reference to the system's button face (the form paints it with
/// its palette's button colour).
constexpr bool isSystemColour(ColourValue f)
{
    return (f & 0x80000000u) != 0;
}

/// Opaque 0xFFRRGGBB of a BGR table value (meaningless for the system colour).
constexpr uint32_t colourRgb(ColourValue bgr)
{
    const uint32_t r = bgr & 0xFF;
    const uint32_t g = (bgr >> 8) & 0xFF;
    const uint32_t b = (bgr >> 16) & 0xFF;
    return 0xFF000000u | (r << 16) | (g << 8) | b;
}

} // namespace kal
