#pragma once
// Interface words of the operation forms in the language chosen now, and the
// number format they share.

#include "config/text_ids.h"

namespace kal {

/// A number in the "00" format: at least two digits.
inline QString twoDigits(int n)
{
    return QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0'));
}

} // namespace kal
