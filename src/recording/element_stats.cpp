#include "recording/element_stats.h"

#include "core/dates.h"

#include <QFile>
#include <algorithm>
#include <cmath>

namespace kal {

std::array<ElementStore, OFEN_MAX> Elemente;

namespace {
StateReset reset{[] { Elemente = {}; }};

/// The round is complete: its means go into KM_EL, or every third round into
/// the ring of KM_RX.
void writeRound(int ofen, ElementStore &m, const QString &zeit)
{
    const QString el = elFilePath(ofen + 1);
    ElementRecord satz = QFile::exists(el) ? readElement(el, 1) : ElementRecord{};
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
        writeElement(el, 1, satz);
        return;
    }

    const QString rx = rxFilePath(ofen + 1);
    ElementRecord kopf = elementRecordCount(rx) >= 2 ? readElement(rx, 1) : ElementRecord{};
    int pos = elementRecordCount(rx) >= 2 ? kopf.Anzahl : 1;
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
    writeElement(rx, pos, satz);
    kopf.Anzahl = static_cast<i16>(pos);
    writeElement(rx, 1, kopf);
    satz.Anzahl = 0;
    writeElement(el, 1, satz);
}

} // namespace

void noteElementGroup(int ofen, const std::array<BatchRecord, 4> &gruppe, const QString &zeit)
{
    if (ofen < 0 || ofen >= OFEN_MAX)
        return;
    ElementStore &m = Elemente[ofen];
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
    ElementStore &m = Elemente.at(ofen);
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
    writeRound(ofen, m, zeit);
}

std::vector<RxEntry> rxHistory(int ofenNr)
{
    std::vector<RxEntry> liste;
    const QString rx = rxFilePath(ofenNr);
    QFile f(rx);
    if (!f.open(QIODevice::ReadOnly))
        return liste;
    const QByteArray alles = f.readAll();
    const int saetze = elementRecordCount(rx);
    for (int nr = RX_RING_ERSTER; nr <= saetze; ++nr) {
        const ElementRecord s = unpackElementRecord(alles.mid(qsizetype(nr - 1) * ELEMENT_SATZ, ELEMENT_SATZ));
        const QString key = Datum_Sort(s.Zeit);
        if (plant.Datum_Sort_OK == 0)
            continue;
        liste.push_back({key, s});
    }
    std::stable_sort(liste.begin(), liste.end(),
                     [](const RxEntry &a, const RxEntry &b) { return a.schluessel < b.schluessel; });
    return liste;
}

} // namespace kal
