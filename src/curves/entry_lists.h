#pragma once
// The entry lists of the curve store: what a loaded batch keeps in memory.
//
// Each list is an ordered list of entries in file order; an entry has a text
// and a signed 16-bit value. The text always begins with the time key of its
// record ("JJMMTT HH:MM:SS") and three blanks, followed by what the list
// shows: a formatted value with its unit, a status word, hexadecimal message
// words, the segment code, the auxiliary track values.
//
// A batch of four weeks holds a quarter of a million samples, so the entries
// are kept as numbers and their texts are formatted when asked for:
//   - the time keys of all lists share one table (`TimeKeys`): an entry holds
//     the index of its key there (low 30 bits) and two flag bits;
//   - the value, the output of a set value entry, the segment fields and the
//     auxiliary values are kept as the record gave them.
// `entryText` builds the text exactly as it would have been stored.

#include "core/plant_state.h"

#include <QString>
#include <array>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace kal {

constexpr int LISTEN_KANAELE = 11; ///< Wertliste and Sollliste 0..10
constexpr int MELD_LISTEN = 5;     ///< Meldliste 0..4
constexpr int HILFS_SPUREN = 18;   ///< auxiliary track values of Meldliste 4

/// The six time bytes of a record as the time key shows them.
struct Stamp {
    u8 Jahr = 0;
    u8 Monat = 0;
    u8 Tag = 0;
    u8 Stunde = 0;
    u8 Minute = 0;
    u8 Sekunde = 0;
};

/// Time keys of the entries, one per record that carried a time, shared by
/// every list. `minute` is the key's time at minute resolution (minutes on
/// the scale of `minutesValue`, relative to 01.01.2000), which is all the page
/// reduction reads of it.
struct TimeKeys {
    std::vector<Stamp> stempel;
    std::vector<int32_t> minute;
    void clear();
    /// Whether the minutes never run back (true for every batch the recorder
    /// writes). Checks only what was appended since the last question.
    bool forwardOnly() const;

private:
    mutable size_t geprueft_ = 0;
    mutable bool zurueck_ = false;
};

/// Fields of one segment code (`Segment_Code`, Meldliste 3).
struct SegmentFields {
    i16 nr = 0;      ///< Segment_Nr
    i16 art = 0;     ///< Segment_Art
    i16 ziel = 0;    ///< Segment_Ziel, target
    i16 rest = 0;    ///< Segment_Rest
    i16 wert3 = 0;   ///< Segment_Wert3
    i16 wert2 = 0;   ///< Segment_Wert2
    i16 wort35 = 0;  ///< recorded word 35
    i16 wert4 = 0;   ///< Segment_Wert4
};

/// Flag bits of an entry's time index.
constexpr uint32_t EINTRAG_INDEX = 0x3FFFFFFF;
/// Wertliste: the entry came from a single-record sample (`Eintrag_Messpunkt`);
/// Meldliste 2: the entry shows 45 blanks.
constexpr uint32_t EINTRAG_EINZEL = 0x80000000;
/// Wertliste, single-record entry: a coded group was decoded before it, so its
/// number format is the one the last channel of that group left set.
constexpr uint32_t EINTRAG_FORMAT = 0x40000000;

/// One entry list. `zeit` and `wert` are filled for every entry; the other
/// columns only where the list needs them.
struct EntryList {
    std::vector<uint32_t> zeit;   ///< index into Zeitachse | flags
    std::vector<i16> wert;        ///< the entry value
    std::vector<i16> out;         ///< Sollliste: output value
    std::vector<SegmentFields> seg;                    ///< Meldliste 3
    std::vector<std::array<i16, HILFS_SPUREN>> spur;   ///< Meldliste 4
    /// Wertliste 6 of single-record samples: resistances in milliohm whose
    /// entry value had to be 0 (below 1 or 32000 and above), by entry index.
    std::unordered_map<int, int32_t> ohm;

    int size() const { return int(wert.size()); }
    void clear();
    /// Room for n entries more, in every column the list uses.
    void reserve(int n);
    void push(uint32_t zeitIndex, i16 value)
    {
        zeit.push_back(zeitIndex);
        wert.push_back(value);
    }
    int timeIndex(int k) const { return int(zeit[size_t(k)] & EINTRAG_INDEX); }
    /// Whether an entry before entry k has the value v (the lists of status
    /// channels are asked for 3). Remembers the entries it has seen.
    bool valueBefore(int k, i16 v) const;

private:
    mutable std::vector<int32_t> treffer_;
    mutable size_t gesehen_ = 0;
    mutable i16 gesucht_ = 0;
};

/// Which list an entry belongs to.
enum class EntryListKind { Wert, Soll, Meld };

/// The lists of the batch on view.
struct EntryLists {
    TimeKeys zeiten;
    std::array<EntryList, LISTEN_KANAELE> Wertliste;
    std::array<EntryList, LISTEN_KANAELE> Sollliste;
    std::array<EntryList, MELD_LISTEN> Meldliste;
    void clear();
};

/// The time key "JJMMTT HH:MM:SS" of a time index.
QString timeKey(const TimeKeys &z, int index);
/// The right n characters of a number's decimal text, blank padded on the left.
QString rightNumber(int64_t value, int n);

/// The text of entry k of a list, exactly as stored: time key, three blanks,
/// the shown part. Formats that depend on the channel read slot 0 of the
/// channel tables (the batch on view).
QString entryText(const EntryLists &e, EntryListKind liste, int index, int k);
/// The part behind the time key and its three blanks.
QString entryContent(const EntryLists &e, EntryListKind liste, int index, int k);

/// The 28-character segment code of segment fields.
QString Segment_Code(const SegmentFields &s);
/// The 90 characters of the auxiliary values: each the right 5 characters of
/// its decimal text.
QString auxCode(const std::array<i16, HILFS_SPUREN> &werte);
/// The number a 5-character field of the auxiliary values reads back as
/// (a value of -10000 and below loses its sign there).
int32_t auxValue(i16 value);

/// `FormatTEXT(teiler)`: the number format of a divider: 1000 "#0.000",
/// 100 "#0.00", 10 "#0.0", any other "#0".
QString FormatTEXT(int teiler);

} // namespace kal
