#pragma once
// The live curve of the furnace page: the last hour of every online furnace,
// without any file. `Graph_Online` runs once per main cycle tick and, every
// `Live_Raster` * 10 ticks, samples the word image of each online furnace
// into a ring of 361 points; one write position `Live_Punkt` serves all
// furnaces, so a furnace that was offline for a while does not shift the
// others (its ring simply stands still). `Kurve_Online` turns the ring of the
// furnace on view into a page with the oldest point at the left and the
// newest at the right, scaled as a batch page with a lower limit of its own.

#include "curves/curve_scale.h"

#include <QDateTime>
#include <QString>
#include <array>

namespace kal {

/// Lowest raw value the live scale reaches below zero: a broken sensor that
/// reads far below zero does not squash the curves of the page.
constexpr int32_t SKALA_UNTERGRENZE = -100;

/// The ring of one furnace, shaped like a page.
struct Live_Kanaele {
    std::array<PointRow<i16>, SEITEN_KANAELE + 1> Live_Ist{}; ///< 12 channels
    std::array<PointRow<i16>, SEITEN_KANAELE> Live_Soll{};
    std::array<PointRow<i16>, SEITEN_KANAELE> Live_Out{};
};

struct Live_Speicher {
    std::array<Live_Kanaele, OFEN_MAX> ofen;
    i16 Live_Punkt = 0;  ///< next point to write, 0..360; shared by all furnaces
    i16 Live_Takt = 0;   ///< ticks since the last sample
    /// The values of the last sample, per furnace and channel.
    std::array<std::array<i16, SEITEN_KANAELE + 1>, OFEN_MAX> Live_Aktuell_Ist{};
    std::array<std::array<i16, SEITEN_KANAELE>, OFEN_MAX> Live_Aktuell_Soll{}, Live_Aktuell_Out{};
};

/// The ring (reset with the plant: it starts empty and is never saved).
extern Live_Speicher Live;

/// `Graph_Online()`: one main cycle tick. Errors of a word out of range are
/// skipped; the screen repaints the page's curve after each sample while a
/// furnace is on view.
void Graph_Online();

/// Samples furnace index `ofen` into point `punkt` of its ring, by its type:
/// the fixed map of type 1, the plain words of the other plain types, the
/// channel tables of the headed types and type 2.
void liveSample(int ofen, int punkt);

/// The page of furnace index `ofen` in painting order: page point i is ring
/// point Live_Punkt + 1 + i, counting on from 0 after 359; the last point
/// repeats the newest, so the right end is now.
PlotPage livePage(int ofen);

/// The scale rules of the live page for furnace index `ofen`.
ScaleOptions liveScaleOptions(int ofen);

/// What `Kurve_Online` shows besides the curves: label 2 (the last log time,
/// "TTMMJJHHMM") and the five time labels, "HHMM" from one hour ago (at the
/// raster of 10) to now. The span is kept in 16 bits as the page always did.
struct LiveLabels {
    QString Label2;
    std::array<QString, 5> marken;
    QDateTime start;   ///< time of page point 0, for the cursor
};
LiveLabels liveMarks(int ofen, const QDateTime &jetzt);

} // namespace kal
