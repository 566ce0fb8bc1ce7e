#pragma once
// Packing of integers into byte strings and the small text helpers that the
// files and frames depend on. A byte string is a QByteArray; each element is
// one byte of a frame or a file field, in the order given per routine.

#include <QByteArray>
#include <QString>
#include <cstdint>

namespace kal {

/// i16 -> 2 bytes, low byte first.
QByteArray MKI(int16_t value);
/// i16 -> 2 bytes, high byte first (address, length and value fields of the
/// memory link).
QByteArray MKI_BE(int16_t value);
/// 2 bytes, low byte first -> i16. Any other length shows
/// "CVI: Illegal Function Call" and ends the program at once.
int16_t CVI(const QByteArray &bytes);
/// 2 bytes, high byte first -> i16. Any other length returns 0 and is no error.
/// Swaps the bytes of its argument in place: the caller's string comes back
/// low byte first.
int16_t CVI_BE(QByteArray &bytes);
/// i32 -> 4 bytes, lowest byte first.
QByteArray MKL(int32_t value);
/// 4 bytes, lowest first -> i32. Any other length shows
/// "CVL: Illegal Function Call" and ends the program at once.
int32_t CVL(const QByteArray &bytes);

/// Text of an 8-bit byte string (Latin-1: codes 0..255 round trip) and back.
QString Latin1Text(const QByteArray &bytes);
QByteArray Latin1Bytes(const QString &text);

/// Sets plant.Zahl_Format: 10 "#0.0", 100 "#0.00", 1000 "#0.000", else "#0".
void Format_Nachkomma(int divisor);
/// Formats a number with a digit format text such as "#0", "#0.0", "##0.00",
/// "#000": one digit place per "#" or "0" before the decimal point, where "0"
/// places are filled with zeros; "0" places after the point are always shown,
/// "#" places only when not zero. Rounds halves away from zero on the number's
/// 15 significant digits; the decimal mark is the one of the system's locale.
QString formatNumber(double value, const QString &format);

/// The number a text starts with, read like the platform's Val: blanks are
/// skipped, then an optional sign, digits, a "." fraction and an exponent
/// ("E" or "D"); reading stops at the first other character. No number gives 0.
double leadingNumber(const QString &text);

/// Removes every character below 32 (closing the gap, a blank padded at the
/// end), then returns the text up to and including the last character of code
/// 33 or higher. Only blanks and control characters give "".
QString Text_Sauber(const QString &text);

/// Text of n words of the PLC image, two characters a word, first character in
/// the low byte (MKI of each word in address order), through Text_Sauber.
QString wordsText(int ofen, int adresse, int worte);

/// Text padded with blanks or cut to exactly `width` characters.
QString fixedWidth(const QString &text, int width);

} // namespace kal
