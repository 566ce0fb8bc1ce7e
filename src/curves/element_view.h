#pragma once
// The element current view `KM_SNTStrom`: the live current of each heating
// element of a furnace as a vertical bar over a drawing of the furnace,
// refreshed by the window's timer from the word image. Element i (1..18)
// reads word 459 + i in whole amperes; the scale ends at `Element_Max`,
// which the PLC gives in word 478. A PLC that gives no scale (0) gets one
// from the values: the largest rounded up to the next ten, at least 10, so
// that no bar is divided by zero. A furnace offline shows its last words.

#include "core/plant_state.h"

#include <QString>
#include <array>

namespace kal {

constexpr int STROM_ELEMENTE = 18;

/// One bar (`Strom_Bar`).
struct Strom_Bar {
    i16 Bar_Min = 0;
    i16 Bar_Max = 0;
    i16 Bar_Wert = -1;        ///< last value drawn; -1 none yet
    double hoehe = 0;         ///< bar height on the scale
    QString Stromwert;        ///< value label: the true value, "###0" and " A"
};

struct Strom_Fenster {
    int Strom_Ofen = 0;                      ///< furnace number 1..8
    std::array<i16, OFEN_MAX> Element_Zahl{}; ///< elements of each furnace (12 or 16)
    std::array<i16, OFEN_MAX> Element_Max{};  ///< scale end in amperes, 0 none
    std::array<Strom_Bar, STROM_ELEMENTE> bars;
    int bilder = 1;          ///< 1: Image1 alone; 2: Image1 and Image2, one above the other; 3: side by side
    bool eigeneSkala = false; ///< the scale follows the values (no Element_Max)
    QString caption;
    double skalaHoehe = 100; ///< height of the scale, in the units of the bars
};
extern Strom_Fenster Strom;

/// Opening for furnace number `ofenNr`: element count and scale, pictures,
/// the bars' limits, the caption "Strom Heizelemente, " and the name.
void openElementView(int ofenNr, double skalaHoehe);
/// `Seite_Act` of the view: every bar from its word. True when a bar moved.
bool elementViewRefresh();

} // namespace kal
