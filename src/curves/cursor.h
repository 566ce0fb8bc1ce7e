#pragma once
// `Mouse_Werte`, the reading of values under the mouse over the plot, and
// `MAUS_AUS`, which takes it away.
//
// The left button places the cursor line on the start of the first segment
// at or right of the mouse (segments 1..358) and reads date, time and one
// line per channel from the heights of the drawn segments there. The right
// button reads what the mouse height means on each unit's scale and moves
// the unit labels there.

#include "curves/curve_scale.h"

#include <QDateTime>
#include <QString>
#include <array>

namespace kal {

constexpr int MAUS_ZEILEN = 13; ///< MousePOS 0 date, 1 time, 2.. one per channel

/// What the plot shows of a reading.
struct CursorReading {
    bool linie = false;                     ///< MouseLine is shown
    double x = 0;                           ///< its x, pixels from the plot's left
    std::array<QString, MAUS_ZEILEN> text;  ///< MousePOS; "" hidden
    std::array<double, MAUS_ZEILEN> y{};    ///< height of each line, pixels from the top
    bool einheiten = false;                 ///< the unit labels show the mouse height
    std::array<QString, SEITEN_KANAELE> einheitText; ///< their texts then
    double Einheit_Y = 0;                   ///< where they start then
};

/// The page a reading refers to.
struct CursorFrame {
    QDateTime start;     ///< Zeit_Marke[0]; invalid: no batch loaded
    int32_t raster = 20; ///< seconds per point
    i16 typ = 0;         ///< Ofen_Typ of the slot
};

/// `Mouse_Werte(Button, Shift, X, Y)`: X and Y in pixels of the plot.
/// Button 1 left, 2 right; other buttons read nothing.
CursorReading Mouse_Werte(int button, double X, double Y, const CurveScale &s, const PlotPage &seite,
                         const CursorFrame &r);

/// `MAUS_AUS()`: no line, no readout, the unit labels back to their texts.
CursorReading MAUS_AUS();

/// The segment the left button finds at X: the first of 1..358 whose start
/// lies at or right of X; -1 none.
int segmentAt(const CurveScale &s, double X);

} // namespace kal
