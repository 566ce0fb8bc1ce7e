#pragma once
// Bytes from a hex text with or without blanks ("42 00 1B 52"), and the word
// at a byte position of a frame, high byte first.

#include <QByteArray>

#include <cstdint>

namespace kal::test {

inline QByteArray hex(const char *text)
{
    return QByteArray::fromHex(QByteArray(text).replace(' ', ""));
}

inline uint16_t wordAt(const QByteArray &frame, int pos)
{
    return static_cast<uint16_t>((static_cast<uint8_t>(frame[pos]) << 8) | static_cast<uint8_t>(frame[pos + 1]));
}

} // namespace kal::test
