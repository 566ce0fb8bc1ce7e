#include "curves/cursor.h"

#include "core/conversions.h"
#include "core/dates.h"
#include "curves/entry_lists.h"

#include <cmath>

namespace kal {

namespace {

/// The height read of a segment from y1 to y2: the one nearer the zero line.
double readHeight(const CurveScale &s, double y1, double y2)
{
    return y1 < s.Null_Y ? std::max(y1, y2) : std::min(y1, y2);
}

QString readoutText(double roh, int teiler)
{
    teiler = std::max(1, teiler);
    return formatNumber(roh / teiler, FormatTEXT(teiler));
}

/// The status word a height stands for: 10 on, 6 held, 2 off.
QString statusOfHeight(double v)
{
    if (v >= 8 && v < 12)
        return plant.Run_State_Text[2];
    if (v >= 4 && v < 8)
        return plant.Run_State_Text[1];
    return plant.Run_State_Text[0];
}

} // namespace

int segmentAt(const CurveScale &s, double X)
{
    for (int i = 1; i <= 358; ++i)
        if (xOfPoint(s, i) >= X)
            return i;
    return -1;
}

CursorReading MAUS_AUS()
{
    return CursorReading{};
}

CursorReading Mouse_Werte(int button, double X, double Y, const CurveScale &s0, const PlotPage &seite,
                         const CursorFrame &r)
{
    CurveScale s = s0;
    for (double &f : s.Skala_Faktor)
        if (f <= 0)
            f = 1;
    if (s.Out_Faktor <= 0)
        s.Out_Faktor = 1;
    CursorReading a;

    if (button == 2) {
        a.einheiten = true;
        for (int g = 0; g < s.Einheit_Zahl; ++g) {
            // Groups of status channels only have no scale to read.
            bool analog = false;
            for (int c = 0; c < s.kanaele; ++c)
                analog = analog || (s.Kanal_Gruppe[size_t(c)] == g && plant.Kanal_Status(s.slot, c) == 0);
            if (!analog || s.Einheit_Label[size_t(g)].isEmpty())
                continue;
            const double faktor = s.Null_Y / std::max(1, s.Einheit_Max[size_t(g)]);
            a.einheitText[size_t(g)] =
                readoutText((s.Null_Y - Y) / faktor, s.Einheit_Teiler[size_t(g)]) + s.Einheit_Text[size_t(g)];
        }
        a.Einheit_Y = Y - EINHEIT_ABSTAND;
        return a;
    }
    if (button != 1)
        return a;

    const int i = segmentAt(s, X);
    if (i < 0)
        return a;
    a.linie = true;
    a.x = xOfPoint(s, i);
    if (X >= 0 && r.start.isValid()) {
        const QDateTime t = r.start.addSecs(int64_t(std::trunc(X * r.raster / s.Punkt_Breite)));
        a.text[0] = Datum_Text(t, QStringLiteral("TTMMJJ"));
        a.text[1] = Datum_Text(t, QStringLiteral("HHMM"));
        a.y[0] = 0;
        a.y[1] = 0;
    }
    const auto &ist = seite.Punkt_Ist;
    for (int c = 0; c < s.kanaele; ++c) {
        const int z = c + 2;
        if (c == 0 && r.typ == 2)
            continue;
        const bool status = plant.Kanal_Status(s.slot, c) != 0;
        const double y1 = yOfValue(s, c, ist[size_t(c)][size_t(i)]);
        const double y2 = yOfValue(s, c, ist[size_t(c)][size_t(i + 1)]);
        const double y = status ? y1 : readHeight(s, y1, y2);
        const double wert = (s.Null_Y - y) / s.Skala_Faktor[size_t(c)];
        a.y[size_t(z)] = y;
        if (status) {
            a.text[size_t(z)] = statusOfHeight(wert);
            continue;
        }
        const int teiler = plant.Kanal_Teiler(s.slot, c);
        const QString einheit = plant.Kanal_Einheit(s.slot, c);
        QString t = readoutText(wert, teiler);
        if (plant.Kanal_Soll_Kurve(s.slot, c) != 0 && r.typ != 0) {
            const auto &soll = seite.Punkt_Soll[size_t(c)];
            const double ys = readHeight(s, yOfValue(s, c, soll[size_t(i)]), yOfValue(s, c, soll[size_t(i + 1)]));
            t = readoutText((s.Null_Y - ys) / s.Skala_Faktor[size_t(c)], teiler) + QLatin1Char('/') + t;
        }
        t += einheit;
        if (plant.Kanal_Soll_Kurve(s.slot, c) != 0 && plant.Kanal_Adr_Out(s.slot, c) != 0 && r.typ != 0) {
            const auto &out = seite.Punkt_Out[size_t(c)];
            const double yo = readHeight(s, Y_Out(s, out[size_t(i)]), Y_Out(s, out[size_t(i + 1)]));
            const double o = std::max(0.0, (s.Null_Y - yo) / s.Out_Faktor);
            t += QStringLiteral("  ") + formatNumber(o, QStringLiteral("#0")) + QLatin1Char('%');
        }
        a.text[size_t(z)] = t;
    }
    return a;
}

} // namespace kal
