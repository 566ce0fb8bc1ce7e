#pragma once
// The time axis of the curve window and its button bar.
//
// The page starts at Zeit_Marke[0]; marks 1..4 follow at 90, 180, 270 and
// 360 points. Paging moves the start by 150 minutes whatever the zoom (a
// page at raster 20 lasts two hours, at raster 60 six); zooming changes the
// raster by 60 seconds, between 20 and the raster that shows the whole file.

#include <QString>

namespace kal {

/// Indices of the button bar `Taste`.
enum CurveKey : int {
    TASTE_ZURUECK = 0,   ///< "Zeit <<<"
    TASTE_VOR = 1,       ///< "Zeit >>>"
    TASTE_LADEN = 2,     ///< "Daten laden"
    TASTE_CSV = 3,       ///< "CSV-Export"
    TASTE_LISTE = 4,     ///< "Liste"
    TASTE_ZOOM_EIN = 5,  ///< "Zoom +"
    TASTE_ZOOM_AUS = 6,  ///< "Zoom -"
    TASTE_ENDE = 7,      ///< "zurück"
};

/// Seconds a page moves per press of 0 or 1.
constexpr int BLAETTERN_SEKUNDEN = 150 * 60;
/// Seconds the raster changes per press of 5 or 6.
constexpr int ZOOM_SCHRITT = 60;

/// The time axis routine: marks 1..4 from mark 0 and the raster, the enabling
/// of buttons 0, 1, 5 and 6 (which keeps the raster in 20..Raster_Start),
/// and the mark labels.
void timeAxis();

/// Buttons 0, 1, 5 and 6: moves the page or changes the raster, then the time
/// axis and the page reduction. False for the other buttons, which the window
/// handles itself.
bool curvePageKey(int index);

/// Caption of button `index` in the current language.
QString curveKeyCaption(int index);

} // namespace kal
