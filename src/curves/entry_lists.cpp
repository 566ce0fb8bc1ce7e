#include "curves/entry_lists.h"

#include "core/conversions.h"

#include <algorithm>

namespace kal {

namespace {

/// "####0": the number format of the window before a coded group set another.
const QString FORMAT_FENSTER = QStringLiteral("####0");

QString twoDigitText(int v)
{
    return v < 100 ? QString::asprintf("%02d", v) : QString::number(v);
}

QString hex4(i16 v)
{
    return QString::asprintf("%04X", unsigned(uint16_t(v)));
}

/// Status word of a state value 10, 6, 2 (on, held, off), between its dashes.
QString statusText(i16 wert)
{
    const int i = wert == 10 ? 2 : (wert == 6 ? 1 : 0);
    return plant.Run_State_Text[i];
}

/// The shown part of a single-record sample in Wertliste `j`.
QString singleText(const EntryList &l, int j, int k)
{
    const uint32_t z = l.zeit[size_t(k)];
    const i16 w = l.wert[size_t(k)];
    // A coded group before this entry left the format of its last channel set.
    const QString format = (z & EINTRAG_FORMAT)
                               ? FormatTEXT(plant.Kanal_Teiler(0, std::max(0, plant.Kanal_Zahl[0] - 1)))
                               : FORMAT_FENSTER;
    switch (j) {
    case 0:
    case 1: return formatNumber(w, format) + QStringLiteral("°C");
    case 2: return formatNumber(w, format) + QStringLiteral("%");
    case 3: return statusText(w);
    case 4: return formatNumber(w / 10.0, QStringLiteral("####0.0")) + QStringLiteral("A");
    case 5: return formatNumber(w / 10.0, QStringLiteral("####0.0")) + QStringLiteral("V");
    default: {
        const auto it = l.ohm.find(k);
        const int32_t r = it != l.ohm.end() ? it->second : w;
        return formatNumber(r / 1000.0, QStringLiteral("#0.000")) + QStringLiteral(" Ohm");
    }
    }
}

} // namespace

void TimeKeys::clear()
{
    stempel.clear();
    minute.clear();
    geprueft_ = 0;
    zurueck_ = false;
}

bool TimeKeys::forwardOnly() const
{
    for (size_t i = std::max<size_t>(geprueft_, 1); i < minute.size() && !zurueck_; ++i)
        zurueck_ = minute[i] < minute[i - 1];
    geprueft_ = minute.size();
    return !zurueck_;
}

bool EntryList::valueBefore(int k, i16 v) const
{
    if (v != gesucht_ || gesehen_ > wert.size()) {
        treffer_.clear();
        gesehen_ = 0;
        gesucht_ = v;
    }
    for (; gesehen_ < wert.size(); ++gesehen_)
        if (wert[gesehen_] == v)
            treffer_.push_back(int32_t(gesehen_));
    return !treffer_.empty() && treffer_.front() < k;
}

void EntryList::clear()
{
    zeit.clear();
    wert.clear();
    out.clear();
    seg.clear();
    spur.clear();
    ohm.clear();
    treffer_.clear();
    gesehen_ = 0;
}

void EntryList::reserve(int n)
{
    zeit.reserve(zeit.size() + size_t(n));
    wert.reserve(wert.size() + size_t(n));
}

void EntryLists::clear()
{
    zeiten.clear();
    for (auto &l : Wertliste)
        l.clear();
    for (auto &l : Sollliste)
        l.clear();
    for (auto &l : Meldliste)
        l.clear();
}

QString timeKey(const TimeKeys &z, int index)
{
    if (index < 0 || index >= int(z.stempel.size()))
        return QString(15, QLatin1Char(' '));
    const Stamp &s = z.stempel[size_t(index)];
    return twoDigitText(s.Jahr) + twoDigitText(s.Monat) + twoDigitText(s.Tag) + QLatin1Char(' ') + twoDigitText(s.Stunde) + QLatin1Char(':') +
           twoDigitText(s.Minute) + QLatin1Char(':') + twoDigitText(s.Sekunde);
}

QString rightNumber(int64_t value, int n)
{
    return QString::number(value).rightJustified(n, QLatin1Char(' ')).right(n);
}

QString FormatTEXT(int teiler)
{
    switch (teiler) {
    case 1000: return QStringLiteral("#0.000");
    case 100: return QStringLiteral("#0.00");
    case 10: return QStringLiteral("#0.0");
    default: return QStringLiteral("#0");
    }
}

QString Segment_Code(const SegmentFields &s)
{
    return rightNumber(s.nr, 2) + rightNumber(s.art, 1) + rightNumber(s.ziel, 5) + rightNumber(s.rest, 5) +
           rightNumber(s.wert3, 3) + rightNumber(s.wert2, 3) + rightNumber(s.wort35, 4) + rightNumber(s.wert4, 5);
}

QString auxCode(const std::array<i16, HILFS_SPUREN> &werte)
{
    QString t;
    t.reserve(5 * HILFS_SPUREN);
    for (i16 w : werte)
        t += rightNumber(w, 5);
    return t;
}

int32_t auxValue(i16 value)
{
    // Five places hold "-9999" at the lowest; below that the sign is cut off.
    return value >= -9999 ? value : -int32_t(value);
}

QString entryContent(const EntryLists &e, EntryListKind liste, int index, int k)
{
    switch (liste) {
    case EntryListKind::Wert: {
        const EntryList &l = e.Wertliste[size_t(index)];
        if (l.zeit[size_t(k)] & EINTRAG_EINZEL)
            return singleText(l, index, k);
        const i16 w = l.wert[size_t(k)];
        if (plant.Kanal_Status(0, index) != 0)
            return statusText(w);
        const int teiler = plant.Kanal_Teiler(0, index);
        return formatNumber(double(w) / std::max(1, teiler), FormatTEXT(teiler)) + plant.Kanal_Einheit(0, index);
    }
    case EntryListKind::Soll: {
        const EntryList &l = e.Sollliste[size_t(index)];
        const i16 out = size_t(k) < l.out.size() ? l.out[size_t(k)] : 0;
        return QString::number(1000000 + int32_t(out)).right(6);
    }
    case EntryListKind::Meld: {
        const EntryList &l = e.Meldliste[size_t(index)];
        if (index == 3)
            return Segment_Code(l.seg[size_t(k)]);
        if (index == 4)
            return auxCode(l.spur[size_t(k)]);
        if (l.zeit[size_t(k)] & EINTRAG_EINZEL)
            return QString(45, QLatin1Char(' '));
        return hex4(l.wert[size_t(k)]);
    }
    }
    return QString();
}

QString entryText(const EntryLists &e, EntryListKind liste, int index, int k)
{
    const EntryList &l = liste == EntryListKind::Wert   ? e.Wertliste[size_t(index)]
                             : liste == EntryListKind::Soll ? e.Sollliste[size_t(index)]
                                                    : e.Meldliste[size_t(index)];
    return timeKey(e.zeiten, l.timeIndex(k)) + QStringLiteral("   ") + entryContent(e, liste, index, k);
}

} // namespace kal
