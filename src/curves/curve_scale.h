#pragma once
// `KurveAct` without the painting: the value scales of a page, the zero line,
// the value <-> pixel maths, which segment of which curve is drawn, the unit
// labels and the programme band under the plot. Everything the painter needs
// is in one `CurveScale` built from the page and the plot's size in pixels.
//
// Every channel's scale runs from its minimum to its maximum rounded out to
// tens (with room above the maximum); channels of one unit share the widest
// scale of their group. The zero line sits where the largest ratio of
// negative to positive range puts it; output curves have a scale of their
// own on which 100 % reaches a third of the height above zero.

#include "curves/curve_page.h"

#include <QString>
#include <array>
#include <vector>

namespace kal {

/// Half height of the band around the zero line in which set value dashes
/// are left out, in pixels.
constexpr int NULL_ZONE = 6;
/// Narrowest programme band field, in pixels.
constexpr int BAND_MIN_BREITE = 3;
/// Vertical offset of the unit labels above the mouse on a right click.
constexpr int EINHEIT_ABSTAND = 14;

struct CurveScale {
    int kanaele = 0;                       ///< channels in use
    int slot = 0;                          ///< slot of the channel tables
    std::array<int32_t, SEITEN_KANAELE> Skala_Max{}, Skala_Min{};
    int Einheit_Zahl = 0;
    std::array<QString, SEITEN_KANAELE> Einheit_Text;
    std::array<i16, SEITEN_KANAELE> Einheit_Teiler{};
    std::array<int32_t, SEITEN_KANAELE> Einheit_Max{}, Einheit_Min{};
    std::array<int, 5> Einheit_Kanal{};    ///< channel of units 1..4
    std::array<int, SEITEN_KANAELE> Kanal_Gruppe{}; ///< unit group of each channel in use
    double Bild_Hoehe = 0;                 ///< plot height, pixels
    double Bild_Breite = 0;                ///< plot width, pixels
    double Null_Y = 0;                     ///< y of value 0 from the top
    std::array<double, SEITEN_KANAELE> Skala_Faktor{};
    double Out_Faktor = 0;                 ///< pixels per percent of output
    double Punkt_Breite = 0;               ///< plot width / 360
    int Null_Zone_Oben = 0, Null_Zone_Unten = 0;
    /// `Einheit_Label`: text of each unit label, "" hidden.
    std::array<QString, SEITEN_KANAELE> Einheit_Label;
};

/// How the live page scales otherwise than a batch page: its minimum always
/// leaves a step of ten below the lowest value, down to a lower limit, and
/// channel 0 of a furnace of type 2 gives its scale to channels 1..5.
struct ScaleOptions {
    bool live = false;
    int32_t Skala_Untergrenze = 0;
    bool kanal0Zwingt = false;
};

/// Scales a page for a plot of `hoehe` x `breite` pixels; the channels in
/// use are 0..kanaele-1 of `slot` (units, dividers, status channels).
CurveScale scalePage(const PlotPage &seite, int kanaele, int slot, double hoehe, double breite,
                           const ScaleOptions &o = {});

/// y of a value of channel c (actual and set curves); no clipping.
inline double yOfValue(const CurveScale &s, int c, double v)
{
    return s.Null_Y - v * s.Skala_Faktor[size_t(c)];
}
/// y of an output in percent.
inline double Y_Out(const CurveScale &s, double v)
{
    return s.Null_Y - v * s.Out_Faktor;
}
/// x of point p.
inline double xOfPoint(const CurveScale &s, int p)
{
    return p * s.Punkt_Breite;
}

/// Which curves and segments are drawn. Segment i joins point i and i + 1.
struct CurveRules {
    i16 typ = 0;               ///< Ofen_Typ of the slot: 0 shows no set or output curves
    bool outAnzeigen = false;  ///< the setting that shows output curves
};
/// Actual curve: hidden where the next point is 0 (a gap, or a real 0).
bool actualVisible(const PlotPage &seite, int c, int i);
/// Output curve: only on even segments, when shown at all, never below 0.
bool outputVisible(const PlotPage &seite, const CurveRules &r, int c, int i);
/// Set curve: a dash every 11 segments, the channels taking turns, never in
/// the zone around the zero line.
bool setpointVisible(const CurveScale &s, const PlotPage &seite, const CurveRules &r, int c, int i);
/// The spare curve: only for the kind 2, on segments with bit 1 set.
bool spareVisible(const CurveRules &r, int i);

/// One field of the programme band under the plot.
struct BandField {
    int nr = 0;                ///< segment number 1..20
    double x = 0;              ///< left edge, pixels from the plot's left
    double breite = 0;
    uint32_t farbe = 0xFFFFFF; ///< 0x00BBGGRR
    QString text;              ///< Segment_Text, caption and tool tip
};
/// The fields of the segments that start on the page, left to right.
std::vector<BandField> programBand(const PlotPage &seite, const std::array<QString, 21> &segmentText,
                                     const CurveScale &s);

/// `Seite_Act`: the top of unit label k when the labels start at `einheitY`,
/// kept between the top of the plot and the place where four labels still fit
/// above its bottom.
double unitLabelTop(double einheitY, double bildOben, double bildUnten, double labelHoehe, int k);

} // namespace kal
