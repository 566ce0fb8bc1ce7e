#pragma once
// The word image of one simulated PLC: 1141 signed 16-bit words, addresses
// 0..1140, exactly as the furnace's memory is laid out for the station.

#include <QDateTime>
#include <QString>
#include <QVector>
#include <array>
#include <cstdint>

namespace kal::sim {

class WordImage {
public:
    static constexpr int kWords = 1141;

    /// True when the n words from `address` on all lie inside the image.
    static bool contains(int address, int n) { return address >= 0 && n >= 0 && address + n <= kWords; }

    /// Word at an address; an address outside 0..1140 raises kal::RunError 9.
    int16_t get(int address) const;
    void set(int address, int16_t value);
    /// n words from `address` on (the range must lie inside).
    QVector<int16_t> get(int address, int n) const;
    void set(int address, const QVector<int16_t> &words);

    /// Stores a text two characters a word, the first character in the low
    /// byte, Latin-1; unused bytes of the `words` words are 0, as on the PLC.
    void putText(int address, int words, const QString &text);
    /// The text of `words` words, up to the first 0 byte.
    QString text(int address, int words) const;

    void clear() { w_.fill(0); }

private:
    std::array<int16_t, kWords> w_{};
};

/// Text as PLC words: two Latin-1 characters a word, first one in the low byte,
/// padded with 0 bytes to `words` words (a longer text is cut).
QVector<int16_t> textWords(const QString &text, int words);

/// The PLC's packed two-word time stamp: word A = day << 11 | month << 7 |
/// year - 2000, word B = hour << 11 | minute << 5 | seconds / 2.
std::array<int16_t, 2> stampWords(const QDateTime &t);

/// Low and high half of a 32-bit value, the order in which the PLC keeps
/// counters and batch numbers in two words.
inline std::array<int16_t, 2> longWords(int32_t v)
{
    return {static_cast<int16_t>(v & 0xFFFF), static_cast<int16_t>((static_cast<uint32_t>(v) >> 16) & 0xFFFF)};
}

} // namespace kal::sim
