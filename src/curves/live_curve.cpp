#include "curves/live_curve.h"

#include "core/dates.h"
#include "core/screen.h"
#include "core/word_map.h"

#include <cmath>

namespace kal {

Live_Speicher Live;

namespace {

StateReset reset{[] { Live = Live_Speicher{}; }};

/// A word of the image into `v`; false (and `v` untouched) out of range.
bool wort(int ofen, int adr, i16 &v)
{
    if (adr < 0 || adr >= SPS_WORTE)
        return false;
    v = plant.SPS_Wort(ofen, adr);
    return true;
}

i16 geteilt(int ofen, int adr, int teiler)
{
    i16 v = 0;
    if (!wort(ofen, adr, v))
        return 0;
    return i16(std::nearbyint(double(v) / teiler));
}

/// The state value of a status channel from word 74: on 10, held 6, off 2.
i16 zustand(int ofen)
{
    const i16 w = plant.SPS_Wort(ofen, word::PROGRAM_STATE);
    if (w & 1)
        return 10;
    if (w & 2)
        return 6;
    return 2;
}

/// One row of the fixed map of type 1: set, actual and output word with their
/// dividers; word 0 stands for the value 0.
struct Abbild {
    int soll, sollTeiler, ist, istTeiler, out;
};
constexpr std::array<Abbild, SEITEN_KANAELE> TYP1 = {{
    {43, 10, 44, 10, 45},
    {0, 1, 68, 10, 0},
    {293, 100, 294, 100, 0},
    {0, 1, 0, 1, 0},
    {0, 1, 85, 1, 0},
    {243, 10, 244, 10, 250},
    {253, 1, 254, 1, 260},
    {0, 1, 77, 10, 0},
    {0, 1, 78, 100, 0},
    {0, 1, 0, 1, 0},
    {0, 1, 0, 1, 0},
}};

void setzen(int ofen, int c, int p, i16 soll, i16 ist, i16 out)
{
    Live_Kanaele &k = Live.ofen[size_t(ofen)];
    k.Live_Soll[size_t(c)][size_t(p)] = soll;
    k.Live_Ist[size_t(c)][size_t(p)] = ist;
    k.Live_Out[size_t(c)][size_t(p)] = out;
    Live.Live_Aktuell_Soll[size_t(ofen)][size_t(c)] = soll;
    Live.Live_Aktuell_Ist[size_t(ofen)][size_t(c)] = ist;
    Live.Live_Aktuell_Out[size_t(ofen)][size_t(c)] = out;
}

void istSetzen(int ofen, int c, int p, i16 ist)
{
    Live.ofen[size_t(ofen)].Live_Ist[size_t(c)][size_t(p)] = ist;
    Live.Live_Aktuell_Ist[size_t(ofen)][size_t(c)] = ist;
}

void typ1(int ofen, int p)
{
    for (int c = 0; c < SEITEN_KANAELE; ++c) {
        const Abbild &a = TYP1[size_t(c)];
        setzen(ofen, c, p, a.soll ? geteilt(ofen, a.soll, a.sollTeiler) : i16(0),
               a.ist ? geteilt(ofen, a.ist, a.istTeiler) : i16(0), a.out ? geteilt(ofen, a.out, 1) : i16(0));
    }
    istSetzen(ofen, RESERVE_KURVE, p, geteilt(ofen, 68, 10));
}

void schlicht(int ofen, int p)
{
    istSetzen(ofen, 0, p, geteilt(ofen, word::SET_VALUE, 10));
    istSetzen(ofen, 1, p, geteilt(ofen, word::ACTUAL_VALUE, 10));
    istSetzen(ofen, 2, p, geteilt(ofen, word::OUTPUT, 1));
    const i16 strom = plant.SPS_Wort(ofen, 85);
    const i16 spannung = plant.SPS_Wort(ofen, 86);
    istSetzen(ofen, 4, p, strom);
    istSetzen(ofen, 5, p, spannung);
    // Resistance in milliohm; without a current there is none.
    int32_t r = 0;
    if (strom > 0)
        r = int32_t(std::nearbyint(double(spannung) * 1000.0 / strom));
    istSetzen(ofen, 6, p, (r >= 1 && r <= 32000) ? i16(r) : i16(0));
}

void kanaele(int ofen, int p)
{
    const int slot = ofen + 1;
    // The output of a Modbus furnace comes in hundredths of a percent.
    const int outTeiler = plant.Ofen_UDP[ofen] == -1 ? 1 : 100;
    for (int c = 0; c < SEITEN_KANAELE; ++c) {
        if (plant.Kanal_Status(slot, c) != 0) {
            setzen(ofen, c, p, 0, zustand(ofen), 0);
            continue;
        }
        Live_Kanaele &k = Live.ofen[size_t(ofen)];
        i16 v = 0;
        if (wort(ofen, plant.Kanal_Adr_Soll(slot, c), v)) {
            k.Live_Soll[size_t(c)][size_t(p)] = v;
            Live.Live_Aktuell_Soll[size_t(ofen)][size_t(c)] = v;
        }
        if (wort(ofen, plant.Kanal_Adr_Ist(slot, c), v))
            istSetzen(ofen, c, p, v);
        if (wort(ofen, plant.Kanal_Adr_Out(slot, c), v)) {
            v = i16(std::nearbyint(double(v) / outTeiler));
            k.Live_Out[size_t(c)][size_t(p)] = v;
            Live.Live_Aktuell_Out[size_t(ofen)][size_t(c)] = v;
        }
    }
}

} // namespace

void liveSample(int ofen, int punkt)
{
    if (ofen < 0 || ofen >= OFEN_MAX || punkt < 0 || punkt >= PUNKTE)
        return;
    const i16 typ = plant.Ofen_Typ[ofen + 1];
    if (typ == 1)
        typ1(ofen, punkt);
    else if (typ < 0 || typ == 2)
        kanaele(ofen, punkt);
    else
        schlicht(ofen, punkt);
}

void Graph_Online()
{
    ++Live.Live_Takt;
    if (Live.Live_Takt < plant.Live_Raster * 10)
        return;
    Live.Live_Takt = 0;
    if (Live.Live_Punkt > SEGMENTE)
        Live.Live_Punkt = 0;
    for (int f = 0; f < OFEN_MAX; ++f)
        if (plant.Ofen_Online[f] != 0)
            liveSample(f, Live.Live_Punkt);
    if (plant.Seite_Ofen >= 1 && plant.Seite_Ofen <= OFEN_MAX)
        screen().Kurve_Online();
    ++Live.Live_Punkt;
}

PlotPage livePage(int ofen)
{
    PlotPage s;
    s.clear();
    if (ofen < 0 || ofen >= OFEN_MAX)
        return s;
    const Live_Kanaele &k = Live.ofen[size_t(ofen)];
    for (int i = 0; i < PUNKTE; ++i) {
        // The ring is read on from the point after the newest, round after 359.
        int q = (Live.Live_Punkt + 1 + std::min(i, SEGMENTE - 1)) % SEGMENTE;
        if (q < 0)
            q += SEGMENTE;
        for (int c = 0; c <= SEITEN_KANAELE; ++c)
            s.Punkt_Ist[size_t(c)][size_t(i)] = k.Live_Ist[size_t(c)][size_t(q)];
        for (int c = 0; c < SEITEN_KANAELE; ++c) {
            s.Punkt_Soll[size_t(c)][size_t(i)] = k.Live_Soll[size_t(c)][size_t(q)];
            s.Punkt_Out[size_t(c)][size_t(i)] = k.Live_Out[size_t(c)][size_t(q)];
        }
    }
    return s;
}

ScaleOptions liveScaleOptions(int ofen)
{
    ScaleOptions o;
    o.live = true;
    o.Skala_Untergrenze = SKALA_UNTERGRENZE;
    o.kanal0Zwingt = ofen >= 0 && ofen < OFEN_MAX && plant.Ofen_Typ[ofen + 1] == 2;
    return o;
}

LiveLabels liveMarks(int ofen, const QDateTime &jetzt)
{
    LiveLabels b;
    if (ofen >= 0 && ofen < OFEN_MAX) {
        const QDateTime log = dateValue(plant.Datum_Log[ofen]);
        if (log.isValid())
            b.Label2 = Datum_Text(log, QStringLiteral("TTMMJJHHMM"));
    }
    for (int k = 0; k < 5; ++k) {
        // Seconds back from now; the product wraps in 16 bits.
        const int16_t backToLivePage = int16_t(plant.Live_Raster * 90 * (4 - k));
        b.marken[size_t(k)] = Datum_Text(jetzt.addSecs(-backToLivePage), QStringLiteral("HHMM"));
    }
    b.start = jetzt.addSecs(-int16_t(plant.Live_Raster * 360));
    return b;
}

} // namespace kal
