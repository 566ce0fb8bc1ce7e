#pragma once
// The 16-channel view `KM_View16`: up to 18 values of one kind on one page
// with a single scale, here the heating element currents that a batch
// recorded as its auxiliary tracks. The view reads no file: `Tast_Strom`
// hands it the page of the curve window, and paging or zooming calls back on
// the curve window's page and takes the new page over.

#include "curves/curve_page.h"

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <array>

namespace kal {

struct View_Fenster {
    i16 View_Art = 0;              ///< 1: a batch page
    QString View_Einheit;          ///< " A"
    i16 View_Ofen = 0;             ///< furnace number 1..8, 0 none
    QString View_Titel;            ///< "Stromwerte Heizelemente"
    std::array<QString, 5> View_Text; ///< names, start, end, duration
    int32_t View_Raster = 20;      ///< seconds per point
    QDateTime View_Start;          ///< time of point 0
    QString Intervall = QStringLiteral("s");
    int View_Spuren = 0;           ///< curves, Spur_Zahl of the batch
    int32_t View_Max = 10;         ///< top of the scale
    std::array<PointRow<int32_t>, SEITEN_SPUREN> Punkt_Spur{};
    std::array<QString, 5> marken; ///< time labels of points 0, 90, 180, 270, 360
    bool daten = false;            ///< the page has samples
};
extern View_Fenster View16;

/// `Tast_Strom`: the fields of the view from the curve window and its page.
void Tast_Strom();

/// `KurveAct` of the view: `View_Max` from the largest value of the page,
/// rounded up to the next ten above it (at least 10 on an empty page).
void View_KurveAct();
/// y of a value on a plot of height `hoehe`.
double view16Y(double wert, double hoehe);

/// The buttons 0, 1, 5, 6 of the curve window for the view: the page moves
/// or zooms there and the view takes it over. False for other buttons.
bool view16Button(int index);

/// `Mouse_Werte` of the view, left button: date "TTMMJJ" and time "HHMM" at
/// `x` (pixels of a plot `breite` wide) and each curve's value there; empty
/// when no segment is found.
struct View16Reading {
    int punkt = -1;
    QString datum, zeit;
    std::array<QString, SEITEN_SPUREN> werte;
};
View16Reading View_Mouse_Werte(double x, double breite);

/// Name of curve c (0-based).
QString view16ChannelName(int c);

/// `CSV_EXPORT` of the view. File mode writes the page (one row a point)
/// into the CSV folder as the batch's name with "_A"; list mode fills
/// `View_Liste`. Same questions as the batch export. False: nothing done.
bool View_CSV_EXPORT(bool ZuListe);
/// The rows of the list mode: head line, then one row a point.
struct View_Liste_Inhalt {
    QString kopf;
    QStringList zeilen;
};
extern View_Liste_Inhalt View_Liste;

} // namespace kal
