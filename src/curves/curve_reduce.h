#pragma once
// `Kurven_Zeichnen`, the page reduction: the entry lists become 361 points a
// curve for the page that starts at `Zeit_Marke[0]` with `Zeit_Raster`
// seconds a point.
//
// Per channel the entries are walked in file order with a time cursor that
// steps one raster a point. The first entry not older than the page start
// (at minute resolution) is point 0; an entry within one raster of the cursor
// is the real sample of the next point, and the points between two real
// samples are interpolated (status channels repeat the last state); an entry
// further on makes the points before it hold the previous value. Status
// channels show a 3 once on the point after an entry of value 3. At the end,
// the actual curves fall off in two steps at the rims of a gap: a point
// before a zero and a point after a zero are halved.
//
// The walk begins at the page start found by binary search in the time keys,
// not at the first entry: a page costs the same at any place of a batch of
// any length. What the skipped entries would have left behind (the pending
// state mark of a status channel) is carried in from the lists.

#include "curves/curve_page.h"
#include "curves/entry_lists.h"

#include <QDateTime>

namespace kal {

/// Seconds since 01.01.2000 00:00 of a date (a plain wall-clock reading).
int64_t secondsOf(const QDateTime &d);
/// The date of such seconds.
QDateTime dateFromSeconds(int64_t s);

/// The frame of one page: its start, its raster, the channels in use and
/// the kind of the file (set values only when the kind is not 0).
struct PageFrame {
    int64_t start = 0;       ///< Zeit_Marke[0], seconds since 2000
    int32_t raster = 20;     ///< seconds per point
    int kanaele = 0;         ///< Kanal_Zahl of the slot
    i16 typ = 0;             ///< Ofen_Typ of the slot
    int slot = 0;            ///< slot of the channel tables (Kanal_Status)
};

/// Fills `seite` from the lists; sets Spur_Fertig[j] of a channel whose
/// entries reached past the end of the page.
void reducePage(const EntryLists &e, const PageFrame &r, PlotPage &seite,
                      std::array<i16, LISTEN_KANAELE> &spurFertig);

/// `Kurven_Zeichnen()`: the page of the curve window from its lists.
void Kurven_Zeichnen();

/// The edge rule at the rims of gaps, on points 1..359 of every actual curve.
void edgeRule(PlotPage &seite);

} // namespace kal
