#pragma once
// Colours of the plant's tables (0x00BBGGRR, or the system's button face) as
// the forms paint them.

#include "operation/status_colours.h"

#include <QColor>
#include <QPalette>

namespace kal {

inline QColor qtColour(ColourValue f, const QPalette &palette)
{
    if (isSystemColour(f))
        return palette.color(QPalette::Button);
    return QColor::fromRgb(colourRgb(f));
}

} // namespace kal
