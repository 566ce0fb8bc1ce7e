#include "curves/element_view.h"

#include "core/conversions.h"
#include "core/word_map.h"

#include <algorithm>

namespace kal {

Strom_Fenster Strom;

namespace {

StateReset reset{[] { Strom = Strom_Fenster{}; }};

int ofenIndex()
{
    return Strom.Strom_Ofen - 1;
}

bool wort(int e, i16 &v)
{
    const int f = ofenIndex();
    const int adr = word::ELEMENT_CURRENTS + e;
    if (f < 0 || f >= OFEN_MAX || adr < 0 || adr >= SPS_WORTE)
        return false;
    v = plant.SPS_Wort(f, adr);
    return true;
}

int elemente()
{
    const int f = ofenIndex();
    return (f >= 0 && f < OFEN_MAX) ? std::clamp<int>(Strom.Element_Zahl[size_t(f)], 0, STROM_ELEMENTE) : 0;
}

/// Without a scale from the PLC: the largest value rounded up to the next
/// ten, at least 10.
i16 eigeneGrenze()
{
    int hoechster = 0;
    for (int e = 0; e < elemente(); ++e) {
        i16 v = 0;
        if (wort(e, v))
            hoechster = std::max<int>(hoechster, v);
    }
    return i16(std::min(30000, std::max(10, (hoechster + 9) / 10 * 10)));
}

} // namespace

void openElementView(int ofenNr, double skalaHoehe)
{
    const int f = ofenNr - 1;
    Strom.Strom_Ofen = ofenNr;
    Strom.skalaHoehe = skalaHoehe;
    Strom.bars = {};
    if (f < 0 || f >= OFEN_MAX)
        return;
    Strom.Element_Zahl[size_t(f)] = plant.Element_Spuren[f];
    Strom.Element_Max[size_t(f)] = std::max<i16>(0, plant.SPS_Wort(f, word::ELEMENT_SCALE));
    const int n = elemente();
    if (plant.SPS_Wort(f, word::TYPE) <= 0 && plant.Ofen_Gross[f] == 0)
        Strom.bilder = 1;
    else if (n == 16)
        Strom.bilder = 2;
    else if (n == 12)
        Strom.bilder = 3;
    else
        Strom.bilder = 1;
    Strom.eigeneSkala = Strom.Element_Max[size_t(f)] <= 0;
    const i16 grenze = Strom.eigeneSkala ? eigeneGrenze() : Strom.Element_Max[size_t(f)];
    for (int e = 0; e < n; ++e) {
        Strom.bars[size_t(e)].Bar_Max = grenze;
        Strom.bars[size_t(e)].Bar_Min = 0;
    }
    Strom.caption = QStringLiteral("Strom Heizelemente, ") + plant.Ofen_Name[f].trimmed();
}

bool elementViewRefresh()
{
    const int n = elemente();
    if (Strom.eigeneSkala) {
        // A scale of its own moves with the values; every bar is laid anew.
        const i16 grenze = eigeneGrenze();
        for (int e = 0; e < n; ++e)
            if (Strom.bars[size_t(e)].Bar_Max != grenze) {
                Strom.bars[size_t(e)].Bar_Max = grenze;
                Strom.bars[size_t(e)].Bar_Wert = -1;
            }
    }
    bool bewegt = false;
    for (int e = 0; e < n; ++e) {
        Strom_Bar &b = Strom.bars[size_t(e)];
        i16 v = 0;
        if (!wort(e, v))
            continue;
        b.Stromwert = formatNumber(v, QStringLiteral("###0")) + QStringLiteral(" A");
        if (v > b.Bar_Max)
            v = b.Bar_Max;
        if (v <= b.Bar_Min)
            v = b.Bar_Min;
        if (v == b.Bar_Wert)
            continue;
        b.hoehe = b.Bar_Max > 0 ? double(v) / b.Bar_Max * Strom.skalaHoehe : 0.0;
        b.Bar_Wert = v;
        bewegt = true;
    }
    return bewegt;
}

} // namespace kal
