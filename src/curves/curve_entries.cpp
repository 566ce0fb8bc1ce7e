// Decoding of the records into entries: single-record samples of the plain
// layout, and the groups of four records of the coded layout.

#include "curves/curve_store.h"

#include <cmath>

namespace kal {

namespace {

/// State value of the status channels from the two low bits of a message
/// word: on 10, held 6, off 2.
i16 statusValue(i16 wort)
{
    if (wort & 1)
        return 10;
    if (wort & 2)
        return 6;
    return 2;
}

i16 imageWord(int adr)
{
    return (adr >= 0 && adr < CHARGE_BILD_WORTE) ? Kurve.Charge_Bild[size_t(adr)] : i16(0);
}

void setImageWord(int adr, i16 wert)
{
    Kurve.Charge_Bild[size_t(adr)] = wert;
}

/// Two bytes as one 16-bit word, the first the low byte.
i16 wordFromBytes(u8 lo, u8 hi)
{
    return i16(uint16_t(lo | (hi << 8)));
}

/// Words `ab`.. and `ab2`.. take the time bytes of a following group record
/// with each pair swapped: the same order as the outputs of the channels.
void swapTimeBytes(const BatchRecord &s, int n, int ab, int ab2)
{
    const u8 b[6] = {s.Tag, s.Monat, s.Jahr, s.Stunde, s.Minute, s.Sekunde};
    for (int i = 0; i < n; ++i) {
        const i16 w = b[i ^ 1];
        setImageWord(ab + i, w);
        setImageWord(ab2 + i, w);
    }
}

bool isPercent(int j)
{
    return plant.Kanal_Einheit(0, j) == QLatin1String(" %   ");
}

/// The entries of a complete group, one per channel in use and one per
/// message list.
void enterGroup(uint32_t zeit)
{
    const int n = std::min<int>(plant.Kanal_Zahl[0], LISTEN_KANAELE);
    for (int j = 0; j < n; ++j) {
        i16 soll = Kurve.K_Soll[size_t(j)], ist = Kurve.K_Ist[size_t(j)], out = Kurve.K_Out[size_t(j)];
        if (j > 0) {
            soll = imageWord(plant.Kanal_Adr_Soll(0, j));
            ist = imageWord(plant.Kanal_Adr_Ist(0, j));
            out = imageWord(plant.Kanal_Adr_Out(0, j));
        }
        if (Kurve.Alles_Prozent && isPercent(j)) {
            soll = std::clamp<i16>(soll, 0, 100);
            ist = std::clamp<i16>(ist, 0, 100);
            out = std::clamp<i16>(out, 0, 100);
        }
        EntryList &sl = Kurve.listen.Sollliste[size_t(j)];
        sl.push(zeit, soll);
        sl.out.push_back(out);
        EntryList &wl = Kurve.listen.Wertliste[size_t(j)];
        wl.push(zeit, plant.Kanal_Status(0, j) != 0 ? statusValue(imageWord(87)) : ist);
    }
    Kurve.codiertGesehen = true;
    Kurve.listen.Meldliste[0].push(zeit, imageWord(87));
    Kurve.listen.Meldliste[1].push(zeit, imageWord(88));
    // The records hold no third message word: the list shows blanks.
    Kurve.listen.Meldliste[2].push(zeit | EINTRAG_EINZEL, 0);
    EntryList &m3 = Kurve.listen.Meldliste[3];
    m3.push(zeit, Kurve.Segment.nr);
    SegmentFields f = Kurve.Segment;
    f.wort35 = imageWord(35);
    m3.seg.push_back(f);
}

/// A following record of a group must come right after the one before it.
void checkSequence(i16 art)
{
    if (Kurve.Gruppe_Stand != art - 1)
        Kurve.Gruppe_Gut = false;
    Kurve.Gruppe_Stand = art;
}

} // namespace

void Eintrag_Messpunkt(const BatchRecord &s, uint32_t zeit)
{
    const uint32_t z = zeit | EINTRAG_EINZEL | (Kurve.codiertGesehen ? EINTRAG_FORMAT : 0u);
    auto &W = Kurve.listen.Wertliste;
    W[0].push(z, s.Wert[0]);
    W[1].push(z, s.Wert[1]);
    W[2].push(z, s.Wert[2]);
    W[3].push(z, statusValue(s.Wert[5]));
    W[4].push(z, s.Wert[3]);
    W[5].push(z, s.Wert[4]);
    // Resistance in milliohm from volts and amperes; only a value the entry
    // can hold is kept as its value, the text shows it always.
    int32_t r = 0;
    if (s.Wert[3] > 0)
        r = int32_t(std::lround(s.Wert[4] * 1000.0 / s.Wert[3]));
    const bool passt = r >= 1 && r < 32000;
    if (!passt && r != 0)
        W[6].ohm[W[6].size()] = r;
    W[6].push(z, passt ? i16(r) : i16(0));
    auto &M = Kurve.listen.Meldliste;
    M[0].push(zeit, s.Wert[5]);
    M[1].push(zeit, s.Wert[6]);
    M[2].push(zeit | EINTRAG_EINZEL, 0);
}

void prepareLoad()
{
    // Files of older furnaces name some words by their former addresses.
    if (plant.Kanal_Adr_Ist(0, 2) == 670)
        plant.Kanal_Adr_Ist(0, 2) = 611;
    if (plant.Kanal_Adr_Ist(0, 4) == 64)
        plant.Kanal_Adr_Ist(0, 4) = 613;
    static const i16 alt[7] = {43, 44, 610, 37, 670, 64, 614};
    bool gleich = true;
    for (int j = 0; j < 7; ++j)
        gleich = gleich && plant.Kanal_Adr_Ist(0, j) == alt[j];
    if (gleich) {
        plant.Kanal_Adr_Ist(0, 0) = 600;
        plant.Kanal_Adr_Ist(0, 5) = 613;
    }
    Kurve.Spur_Zahl = 18;
    Kurve.Alles_Prozent = false;
    // A furnace whose channels are all outputs in percent.
    bool prozent = plant.Kanal_Adr_Ist(0, 0) == 44;
    for (int j = 1; j < LISTEN_KANAELE; ++j)
        prozent = prozent && plant.Kanal_Adr_Ist(0, j) == 609 + j;
    for (int j = 0; j < LISTEN_KANAELE; ++j)
        prozent = prozent && isPercent(j);
    if (prozent) {
        Kurve.Alles_Prozent = true;
        Kurve.Spur_Zahl = 16;
    }
}

void Eintrag_Codiert(const BatchRecord &s, uint32_t zeit)
{
    auto &K = Kurve;
    const auto &W = s.Wert;
    switch (s.Satz_Art) {
    case 154:
        K.Gruppe_Gut = true;
        K.Gruppe_Stand = 154;
        K.Hilf.fill(0);
        K.K_Soll[0] = W[0];
        K.K_Ist[0] = W[1];
        setImageWord(43, W[0]);
        setImageWord(44, W[1]);
        setImageWord(7, W[3]);
        setImageWord(8, W[4]);
        setImageWord(35, W[2]);
        setImageWord(87, W[5]);
        setImageWord(88, W[6]);
        break;
    case 155: {
        checkSequence(155);
        const u8 b[6] = {s.Tag, s.Monat, s.Jahr, s.Stunde, s.Minute, s.Sekunde};
        static const int kanal[6] = {2, 1, 4, 3, 6, 5};
        for (int i = 0; i < 6; ++i)
            K.K_Out[size_t(kanal[i])] = b[i];
        for (int i = 0; i < 7; ++i) {
            K.K_Soll[size_t(1 + i)] = W[size_t(i)];
            setImageWord(600 + i, W[size_t(i)]);
        }
        swapTimeBytes(s, 6, 620, 670);
        break;
    }
    case 156: {
        checkSequence(156);
        K.K_Out[8] = s.Tag;
        K.K_Out[7] = s.Monat;
        K.K_Out[10] = s.Jahr;
        K.K_Out[9] = s.Stunde;
        K.Segment.art = s.Minute;
        const i16 vorher = K.Segment.nr;
        K.Segment.nr = s.Sekunde;
        // Segments run up one by one; a jump or a fall back means a group
        // that was not logged whole.
        if ((K.Segment.nr != vorher && K.Segment.nr != 0 && K.Segment.nr != vorher + 1) || K.Segment.nr < vorher)
            K.Gruppe_Gut = false;
        if (K.Segment.art > 6) {
            K.Gruppe_Gut = false;
            K.Segment.art = 0;
            K.Segment.nr = 0;
        }
        for (int i = 0; i < 3; ++i)
            K.K_Soll[size_t(8 + i)] = W[size_t(i)];
        for (int i = 0; i < 4; ++i)
            K.K_Ist[size_t(1 + i)] = W[size_t(3 + i)];
        swapTimeBytes(s, 4, 626, 676);
        for (int i = 0; i < 7; ++i)
            setImageWord(607 + i, W[size_t(i)]);
        break;
    }
    case 157:
        checkSequence(157);
        K.Segment.ziel = wordFromBytes(s.Tag, s.Monat);
        K.Segment.wert2 = s.Stunde;
        K.Segment.wert3 = s.Jahr;
        K.Segment.wert4 = wordFromBytes(s.Minute, s.Sekunde);
        for (int i = 0; i < 6; ++i) {
            K.K_Ist[size_t(5 + i)] = W[size_t(i)];
            setImageWord(614 + i, W[size_t(i)]);
        }
        K.Segment.rest = W[6];
        if (K.Gruppe_Gut) {
            enterGroup(zeit);
            K.Gruppe_Gut = false; // a group is written once
        }
        break;
    case 160:
        for (int i = 0; i < 7; ++i)
            K.Hilf[size_t(i)] = W[size_t(i)];
        break;
    case 161:
        for (int i = 0; i < 7; ++i)
            K.Hilf[size_t(7 + i)] = W[size_t(i)];
        break;
    case 162: {
        for (int i = 0; i < 4; ++i)
            K.Hilf[size_t(14 + i)] = W[size_t(i)];
        EntryList &m4 = K.listen.Meldliste[4];
        m4.push(zeit, 0);
        m4.spur.push_back(K.Hilf);
        break;
    }
    default: break;
    }
}

} // namespace kal
