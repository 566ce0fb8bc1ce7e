#include "curves/curve_scale.h"

#include "core/conversions.h"
#include "curves/entry_lists.h"

#include <algorithm>
#include <cmath>

namespace kal {

namespace {

/// Whole tens toward zero, as the scale limits are cut.
int32_t tens(double v)
{
    return int32_t(std::trunc(v / 10.0)) * 10;
}

} // namespace

CurveScale scalePage(const PlotPage &seite, int kanaele, int slot, double hoehe, double breite,
                           const ScaleOptions &o)
{
    CurveScale s;
    s.kanaele = std::clamp(kanaele, 0, SEITEN_KANAELE);
    s.slot = slot;
    s.Bild_Hoehe = hoehe;
    s.Bild_Breite = breite;
    s.Punkt_Breite = breite / SEGMENTE;
    s.Skala_Max.fill(20);
    s.Skala_Min.fill(0);

    for (int c = 0; c < s.kanaele; ++c) {
        int32_t hi = s.Skala_Max[size_t(c)], lo = s.Skala_Min[size_t(c)];
        for (int p = 0; p < PUNKTE; ++p) {
            const int32_t a = seite.Punkt_Ist[size_t(c)][size_t(p)], b = seite.Punkt_Soll[size_t(c)][size_t(p)];
            hi = std::max({hi, a, b});
            lo = std::min({lo, a, b});
        }
        hi = tens(hi + 100.0);
        if (o.live)
            lo = std::max(tens(lo - 10.0), o.Skala_Untergrenze);
        else if (lo < 0)
            lo = tens(lo - 10.0);
        s.Skala_Max[size_t(c)] = std::max(hi, 1);
        s.Skala_Min[size_t(c)] = std::min(lo, 0);
    }

    // Unit groups: channels of one unit share one scale by raw numbers.
    s.Einheit_Kanal = {0, 1, 2, 3, 4};
    for (int c = 0; c < s.kanaele; ++c) {
        const QString einheit = plant.Kanal_Einheit(slot, c);
        int g = 0;
        while (g < s.Einheit_Zahl && s.Einheit_Text[size_t(g)] != einheit)
            ++g;
        if (g == s.Einheit_Zahl) {
            s.Einheit_Text[size_t(g)] = einheit;
            s.Einheit_Teiler[size_t(g)] = plant.Kanal_Teiler(slot, c);
            s.Einheit_Max[size_t(g)] = s.Skala_Max[size_t(c)];
            s.Einheit_Min[size_t(g)] = s.Skala_Min[size_t(c)];
            ++s.Einheit_Zahl;
            if (s.Einheit_Zahl <= 4)
                s.Einheit_Kanal[size_t(s.Einheit_Zahl)] = c;
        } else {
            s.Einheit_Max[size_t(g)] = std::max(s.Einheit_Max[size_t(g)], s.Skala_Max[size_t(c)]);
            s.Einheit_Min[size_t(g)] = std::min(s.Einheit_Min[size_t(g)], s.Skala_Min[size_t(c)]);
        }
        s.Kanal_Gruppe[size_t(c)] = g;
    }
    for (int c = 0; c < s.kanaele; ++c) {
        if (plant.Kanal_Status(slot, c) != 0)
            continue;
        const int g = s.Kanal_Gruppe[size_t(c)];
        s.Skala_Max[size_t(c)] = s.Einheit_Max[size_t(g)];
        s.Skala_Min[size_t(c)] = s.Einheit_Min[size_t(g)];
    }
    if (o.kanal0Zwingt)
        for (int c = 1; c <= 5 && c < s.kanaele; ++c) {
            s.Skala_Max[size_t(c)] = s.Skala_Max[0];
            s.Skala_Min[size_t(c)] = s.Skala_Min[0];
        }

    // The zero line: the part below zero as large as the widest negative range.
    double r = 0;
    for (int c = 0; c < SEITEN_KANAELE; ++c)
        if (s.Skala_Max[size_t(c)] >= 1)
            r = std::max(r, std::abs(double(s.Skala_Min[size_t(c)])) / s.Skala_Max[size_t(c)]);
    s.Null_Y = hoehe / (r + 1);
    s.Null_Zone_Oben = int(s.Null_Y) - NULL_ZONE;
    s.Null_Zone_Unten = int(s.Null_Y) + NULL_ZONE;
    for (int c = 0; c < SEITEN_KANAELE; ++c)
        s.Skala_Faktor[size_t(c)] = s.Null_Y / s.Skala_Max[size_t(c)];
    s.Out_Faktor = s.Null_Y / 300.0;

    for (int g = 0; g < s.Einheit_Zahl; ++g) {
        const QString &einheit = s.Einheit_Text[size_t(g)];
        if (einheit.trimmed().isEmpty())
            continue;
        const int teiler = std::max<int>(1, s.Einheit_Teiler[size_t(g)]);
        s.Einheit_Label[size_t(g)] =
            formatNumber(double(s.Einheit_Max[size_t(g)]) / teiler, FormatTEXT(teiler)) + einheit;
    }
    return s;
}

bool actualVisible(const PlotPage &seite, int c, int i)
{
    return seite.Punkt_Ist[size_t(c)][size_t(i + 1)] != 0;
}

bool outputVisible(const PlotPage &seite, const CurveRules &r, int c, int i)
{
    if (seite.Punkt_Out[size_t(c)][size_t(i + 1)] < 0 || r.typ == 0)
        return false;
    return i % 2 == 0 && r.outAnzeigen;
}

bool setpointVisible(const CurveScale &s, const PlotPage &seite, const CurveRules &r, int c, int i)
{
    if (i < 1 || i >= SEGMENTE || r.typ == 0 || c >= s.kanaele)
        return false;
    if ((i - 1) % SEITEN_KANAELE != c || plant.Kanal_Soll_Kurve(s.slot, c) == 0)
        return false;
    const double y = yOfValue(s, c, seite.Punkt_Soll[size_t(c)][size_t(i)]);
    return y < s.Null_Zone_Oben || y > s.Null_Zone_Unten;
}

bool spareVisible(const CurveRules &r, int i)
{
    return r.typ == 2 && (i & 2) != 0;
}

std::vector<BandField> programBand(const PlotPage &seite, const std::array<QString, 21> &segmentText,
                                     const CurveScale &s)
{
    std::vector<BandField> felder;
    int hoechste = 0, letzterMitProgramm = -1, vorher = 0;
    for (int p = 0; p < PUNKTE; ++p) {
        const int seg = seite.Punkt_Segment[size_t(p)];
        if (seg > 0)
            letzterMitProgramm = p;
        if (seg != vorher && seg > hoechste && seg <= 20) {
            hoechste = seg;
            BandField f;
            f.nr = seg;
            f.x = xOfPoint(s, p);
            f.text = segmentText[size_t(seg)];
            // The kind digit stands at position 6 of the segment text.
            const QChar art = f.text.size() > 5 ? f.text.at(5) : QChar();
            if (art == QLatin1Char('1') || art == QLatin1Char('3') || art == QLatin1Char('4'))
                f.farbe = 0x8080FF;
            else if (art == QLatin1Char('2'))
                f.farbe = 0x80FFFF;
            felder.push_back(f);
        }
        vorher = seg;
    }
    for (size_t k = 0; k < felder.size(); ++k) {
        double ende;
        if (k + 1 < felder.size())
            ende = felder[k + 1].x;
        else if (letzterMitProgramm >= 1 && letzterMitProgramm <= SEGMENTE - 1)
            ende = xOfPoint(s, letzterMitProgramm);
        else
            ende = s.Bild_Breite;
        felder[k].breite = std::max<double>(ende - felder[k].x, BAND_MIN_BREITE);
    }
    return felder;
}

double unitLabelTop(double einheitY, double bildOben, double bildUnten, double labelHoehe, int k)
{
    const double y = std::max(bildOben, std::min(einheitY, bildUnten - 4 * labelHoehe));
    return y + k * labelHoehe;
}

} // namespace kal
