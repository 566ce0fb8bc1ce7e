#pragma once
// Captions of the settings and system dialogs that the language table has no
// row for: German in the German column, English in every other.

#include "core/plant_state.h"

#include <QString>

namespace kal {

inline QString pickWord(const char *de, const char *en)
{
    return QString::fromUtf8(plant.Sprache == 0 ? de : en);
}

} // namespace kal
