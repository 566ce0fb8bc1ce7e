#pragma once
// Interface words of the operation forms in the language chosen now.

#include "core/plant_state.h"

namespace kal {

/// `Sprachtext` row `id` in the current language `Sprache`.
inline QString Text_Id(int id)
{
    return plant.Sprachtext(plant.Sprache, id);
}

/// A number in the "00" format: at least two digits.
inline QString Zwei_Stellen(int n)
{
    return QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0'));
}

} // namespace kal
