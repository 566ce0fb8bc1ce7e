#include "recording/element_stats.h"

#include "core/dates.h"

#include <QFile>
#include <algorithm>
#include <cmath>

namespace kal {

std::array<Element_Speicher, OFEN_MAX> Elemente;

namespace {
StateReset reset{[] { Elemente = {}; }};

/// The round is complete: its means go into KM_EL, or every third round into
/// the ring of KM_RX.
void Runde_Schreiben(int ofen, Element_Speicher &m, const QString &zeit)
{
    const QString el = KM_EL_Pfad(ofen + 1);
    ElementSatz satz = QFile::exists(el) ? Element_Lesen(el, 1) : ElementSatz{};
    if (satz.Anzahl < 2) {
        for (int e = 0; e < ELEMENTE; ++e) {
            int gruppe = 0, strom = 0;
            for (int s = 0; s < STROM_SLOTS; ++s) {
                gruppe += m.Gruppe_Wert[e][s];
                strom += m.Strom_Wert[e][s];
            }
            // Whole-number means, halves to even.
            m.Gruppe_Wert[e][0] = static_cast<i16>(std::nearbyint(gruppe / 10.0));
            m.Strom_Wert[e][0] = static_cast<i16>(std::nearbyint(strom / 10.0));
            satz.RX[e] = float(m.Gruppe_Wert[e][0]) / float(m.Strom_Wert[e][0] + 1);
        }
        satz.Zeit = zeit;
        ++satz.Anzahl;
        Element_Schreiben(el, 1, satz);
        return;
    }

    const QString rx = KM_RX_Pfad(ofen + 1);
    ElementSatz kopf = Element_Saetze(rx) >= 2 ? Element_Lesen(rx, 1) : ElementSatz{};
    int pos = Element_Saetze(rx) >= 2 ? kopf.Anzahl : 1;
    pos = std::max(pos + 1, RX_RING_ERSTER);
    if (pos > RX_RING_LETZTER)
        pos = RX_RING_ERSTER;
    // The figure averaged over the rounds it stands for, as single floats.
    for (int e = 0; e < 16; ++e) {
        float summe = 0;
        for (int k = 0; k < satz.Anzahl; ++k)
            summe += satz.RX[e];
        satz.RX[e] = summe / float(satz.Anzahl);
    }
    satz.Zeit = zeit;
    Element_Schreiben(rx, pos, satz);
    kopf.Anzahl = static_cast<i16>(pos);
    Element_Schreiben(rx, 1, kopf);
    satz.Anzahl = 0;
    Element_Schreiben(el, 1, satz);
}

} // namespace

void Element_Gruppe(int ofen, const std::array<BatchRecord, 4> &gruppe, const QString &zeit)
{
    if (ofen < 0 || ofen >= OFEN_MAX)
        return;
    Element_Speicher &m = Elemente[ofen];
    if (gruppe[0].Satz_Art == Satz_Charge) {
        // Record 155 holds w31 in Tag (low byte) and Monat (high byte), w32 in
        // Jahr and Stunde.
        const BatchRecord &r = gruppe[1];
        m.Gruppe_Stufe = {r.Monat, r.Tag, r.Stunde, r.Jahr};
        return;
    }
    if (gruppe[0].Satz_Art != Satz_Strom)
        return;
    for (int i = 0; i < 7; ++i) {
        m.Strom_Neu[i] = gruppe[0].Wert[i];
        m.Strom_Neu[7 + i] = gruppe[1].Wert[i];
    }
    for (int i = 0; i < 4; ++i)
        m.Strom_Neu[14 + i] = gruppe[2].Wert[i];
    Element_Statistik(ofen, zeit);
}

void Element_Statistik(int ofen, const QString &zeit)
{
    Element_Speicher &m = Elemente.at(ofen);
    if (plant.Element_Anz[ofen] != GRUPPEN)
        m.Gruppe_Stufe[1] = m.Gruppe_Stufe[2] = m.Gruppe_Stufe[3] = m.Gruppe_Stufe[0];
    for (u8 stufe : m.Gruppe_Stufe)
        if (stufe < GRUPPE_MIN)
            return;
    const int slot = std::clamp<int>(m.Strom_Slot, 0, STROM_SLOTS - 1);
    for (int g = 0; g < GRUPPEN; ++g)
        for (int j = 0; j < 4; ++j) {
            const int e = 4 * g + j;
            m.Gruppe_Wert[e][slot] = m.Gruppe_Stufe[g];
            m.Strom_Wert[e][slot] = m.Strom_Neu[e];
        }
    m.Strom_Slot = static_cast<i16>(slot + 1);
    if (m.Strom_Slot < STROM_SLOTS)
        return;
    m.Strom_Slot = 0;
    Runde_Schreiben(ofen, m, zeit);
}

std::vector<RX_Eintrag> RX_Liste(int ofenNr)
{
    std::vector<RX_Eintrag> liste;
    const QString rx = KM_RX_Pfad(ofenNr);
    QFile f(rx);
    if (!f.open(QIODevice::ReadOnly))
        return liste;
    const QByteArray alles = f.readAll();
    const int saetze = Element_Saetze(rx);
    for (int nr = RX_RING_ERSTER; nr <= saetze; ++nr) {
        const ElementSatz s = unpackElementSatz(alles.mid(qsizetype(nr - 1) * ELEMENT_SATZ, ELEMENT_SATZ));
        const QString key = Datum_Sort(s.Zeit);
        if (plant.Datum_Sort_OK == 0)
            continue;
        liste.push_back({key, s});
    }
    std::stable_sort(liste.begin(), liste.end(),
                     [](const RX_Eintrag &a, const RX_Eintrag &b) { return a.schluessel < b.schluessel; });
    return liste;
}

} // namespace kal
