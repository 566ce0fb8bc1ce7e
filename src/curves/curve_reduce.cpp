#include "curves/curve_reduce.h"

#include "curves/curve_store.h"

#include <QDate>
#include <algorithm>
#include <cmath>

namespace kal {

namespace {

const int64_t TAG_2000 = QDate(2000, 1, 1).toJulianDay();

int64_t floorDiv(int64_t a, int64_t b)
{
    return a >= 0 ? a / b : -((-a + b - 1) / b);
}

/// Rounds half to even, as a value assigned to a whole-number field is.
int32_t roundEven(double v)
{
    return int32_t(std::nearbyint(v));
}

i16 half(i16 v)
{
    return i16(roundEven(v / 2.0));
}

/// One channel's walk over its entries.
class ChannelWalk {
public:
    ChannelWalk(const EntryLists &e, const PageFrame &r, PlotPage &s, int j, bool status)
        : e_(e), r_(r), s_(s), j_(j), status_(status), W_(e.Wertliste[size_t(j)]), S_(e.Sollliste[size_t(j)])
    {
    }

    /// Walks from entry k0 on with the pending state mark `marke`; returns
    /// true when the cursor passed the end of the page.
    bool walk(int k0, bool marke)
    {
        const int64_t marke4 = r_.start + int64_t(r_.raster) * SEGMENTE;
        const int64_t startMinute = floorDiv(r_.start, 60);
        int punkt = -1;
        int64_t cursor = r_.start;
        bool fertig = false;
        const int n = W_.size();
        for (int k = k0; k < n; ++k) {
            const i16 wert = W_.wert[size_t(k)];
            if (status_ && wert == 3)
                marke = true;
            const int64_t minute = e_.zeiten.minute[size_t(W_.timeIndex(k))];
            if (minute < startMinute)
                continue;
            const int64_t zeit = minute * 60;
            if (punkt == -1) {
                take(0, k);
                punkt = 0;
                cursor += r_.raster;
                if (floorDiv(cursor, 86400) - floorDiv(marke4, 86400) >= 1)
                    fertig = true;
            }
            int64_t rest = zeit - cursor;
            while (rest >= 0) {
                ++punkt;
                if (punkt > SEGMENTE)
                    return fertig;
                if (rest <= r_.raster) {
                    if (!status_) {
                        take(punkt, k);
                    } else {
                        s_.Punkt_Ist[size_t(j_)][size_t(punkt)] = marke ? i16(3) : wert;
                        marke = false;
                        if (j_ == 0)
                            segment(punkt, k);
                    }
                    fillTo(punkt);
                } else {
                    hold(punkt, k);
                }
                cursor += r_.raster;
                if (cursor > marke4)
                    fertig = true;
                rest -= r_.raster;
            }
        }
        return fertig;
    }

private:
    void segment(int p, int k)
    {
        const EntryList &m3 = e_.Meldliste[3];
        if (k < m3.size())
            s_.Punkt_Segment[size_t(p)] = m3.wert[size_t(k)];
    }

    i16 output(int k) const
    {
        if (r_.typ == 0 || status_ || k >= int(S_.out.size()))
            return 0;
        return S_.out[size_t(k)];
    }

    /// Takes entry k for point p.
    void take(int p, int k)
    {
        s_.Punkt_Ist[size_t(j_)][size_t(p)] = W_.wert[size_t(k)];
        if (j_ == 0) {
            const EntryList &m4 = e_.Meldliste[4];
            if (k < m4.size()) {
                s_.Punkt_Eintrag[size_t(p)] = k;
                for (int f = 0; f < SEITEN_SPUREN; ++f)
                    s_.Punkt_Spur[size_t(f)][size_t(p)] = auxValue(m4.spur[size_t(k)][size_t(f)]);
            }
            segment(p, k);
        }
        if (r_.typ != 0 && !status_) {
            s_.Punkt_Soll[size_t(j_)][size_t(p)] = k < S_.size() ? S_.wert[size_t(k)] : i16(0);
            s_.Punkt_Out[size_t(j_)][size_t(p)] = output(k);
        } else {
            s_.Punkt_Soll[size_t(j_)][size_t(p)] = 0;
            s_.Punkt_Out[size_t(j_)][size_t(p)] = 0;
        }
    }

    /// Point p lies before the entry: the curves hold the previous point.
    void hold(int p, int k)
    {
        const size_t q = size_t(p), v = size_t(p - 1);
        s_.Punkt_Ist[size_t(j_)][q] = s_.Punkt_Ist[size_t(j_)][v];
        s_.Punkt_Soll[size_t(j_)][q] = s_.Punkt_Soll[size_t(j_)][v];
        s_.Punkt_Ist[RESERVE_KURVE][q] = s_.Punkt_Ist[RESERVE_KURVE][v];
        s_.Punkt_Out[size_t(j_)][q] = output(k);
        if (j_ == 0) {
            s_.Punkt_Segment[q] = s_.Punkt_Segment[v];
            for (auto &spur : s_.Punkt_Spur)
                spur[q] = spur[v] > 1000 ? 500 : spur[v];
        }
    }

    /// A real sample at point p: the points since the last one are filled in.
    void fillTo(int p)
    {
        const int l = s_.Spur_Letzter[size_t(j_)];
        auto &ist = s_.Punkt_Ist[size_t(j_)];
        if (l >= 0 && p - l > 1) {
            if (status_) {
                for (int q = l + 1; q < p; ++q)
                    ist[size_t(q)] = ist[size_t(l)];
            } else {
                const double steigung = double(ist[size_t(p)] - ist[size_t(l)]) / (p - l);
                double v = ist[size_t(l)];
                for (int q = l + 1; q < p; ++q) {
                    v += steigung;
                    ist[size_t(q)] = i16(roundEven(v));
                }
            }
            if (j_ == 0)
                for (int q = l + 1; q < p; ++q)
                    s_.Punkt_Segment[size_t(q)] = s_.Punkt_Segment[size_t(l)];
        }
        s_.Spur_Letzter[size_t(j_)] = i16(p);
    }

    const EntryLists &e_;
    const PageFrame &r_;
    PlotPage &s_;
    const int j_;
    const bool status_;
    const EntryList &W_;
    const EntryList &S_;
};

} // namespace

int64_t secondsOf(const QDateTime &d)
{
    return (d.date().toJulianDay() - TAG_2000) * 86400 + d.time().msecsSinceStartOfDay() / 1000;
}

QDateTime dateFromSeconds(int64_t s)
{
    const int64_t tag = floorDiv(s, 86400);
    return QDateTime(QDate::fromJulianDay(TAG_2000 + tag), QTime(0, 0).addSecs(int(s - tag * 86400)), Qt::UTC);
}

void edgeRule(PlotPage &seite)
{
    for (auto &ist : seite.Punkt_Ist) {
        for (int p = 1; p < SEGMENTE; ++p) {
            const size_t i = size_t(p);
            if (ist[i] != 0 && ist[i + 1] == 0)
                ist[i] = half(ist[i]);
            else if (ist[i] > 0 && ist[i - 1] == 0)
                ist[i] = half(ist[i]);
        }
    }
}

void reducePage(const EntryLists &e, const PageFrame &r, PlotPage &seite,
                      std::array<i16, LISTEN_KANAELE> &spurFertig)
{
    seite.clear();
    // A file whose clock was set back is walked from its first entry.
    const bool sortiert = e.zeiten.forwardOnly();
    const int64_t startMinute = floorDiv(r.start, 60);
    for (int j = 0; j < r.kanaele && j < LISTEN_KANAELE; ++j) {
        const EntryList &W = e.Wertliste[size_t(j)];
        const bool status = plant.Kanal_Status(r.slot, j) != 0;
        // The first entry of the page: every entry before it is older than
        // the page start and would have been passed over.
        int k0 = 0;
        if (sortiert) {
            int lo = 0, hi = W.size();
            while (lo < hi) {
                const int mitte = lo + (hi - lo) / 2;
                if (e.zeiten.minute[size_t(W.timeIndex(mitte))] < startMinute)
                    lo = mitte + 1;
                else
                    hi = mitte;
            }
            k0 = lo;
        }
        // A status entry of value 3 among the passed-over ones is still pending.
        const bool marke = status && W.valueBefore(k0, 3);
        ChannelWalk lauf(e, r, seite, j, status);
        if (lauf.walk(k0, marke))
            spurFertig[size_t(j)] = TRUE16;
    }
    edgeRule(seite);
}

void Kurven_Zeichnen()
{
    if (!Kurve.zeitDa) {
        Kurve.seite.clear();
        return;
    }
    PageFrame r;
    r.start = secondsOf(Kurve.Zeit_Marke[0]);
    r.raster = std::max(1, Kurve.Zeit_Raster);
    r.kanaele = plant.Kanal_Zahl[0];
    r.typ = plant.Ofen_Typ[0];
    reducePage(Kurve.listen, r, Kurve.seite, Kurve.Spur_Fertig);
}

} // namespace kal
