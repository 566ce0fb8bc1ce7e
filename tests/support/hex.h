#pragma once
// Bytes from a hex text with or without blanks ("42 00 1B 52").

#include <QByteArray>

namespace kal::test {

inline QByteArray hex(const char *text)
{
    return QByteArray::fromHex(QByteArray(text).replace(' ', ""));
}

} // namespace kal::test
