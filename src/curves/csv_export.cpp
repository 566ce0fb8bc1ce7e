#include "curves/csv_export.h"

#include "config/paths.h"
#include "core/conversions.h"
#include "curves/csv_writer.h"
#include "curves/curve_store.h"

#include <QDir>
#include <QFileInfo>
#include <vector>

namespace kal {

Listen_Fenster Listen;

namespace {

StateReset reset{[] { Listen = Listen_Fenster{}; }};

constexpr int SOLL = 0, IST = 1, OUT = 2;
constexpr int ZEILEN_SCHALTER = 11; ///< element of the row switches

/// One chosen column: a channel and its kind (Soll, Ist, Out).
struct Spalte {
    int kanal = 0;
    int art = SOLL;
    bool erste = false; ///< the first chosen column of its channel
};

i16 &wahl(int art, int k)
{
    return plant.CSV_Spalten(art, k);
}

/// Without a choice of the operator: Soll and Ist of every channel, no
/// output, both row switches on.
void auswahlSetzen()
{
    if (Listen.Liste_Gewaehlt)
        return;
    for (int k = 1; k < LISTE_SPALTEN; ++k) {
        wahl(SOLL, k) = TRUE16;
        wahl(IST, k) = TRUE16;
        wahl(OUT, k) = FALSE16;
    }
}

int kanaele()
{
    return std::clamp<int>(plant.Kanal_Zahl[0], 0, LISTEN_KANAELE);
}

std::vector<Spalte> spaltenWaehlen()
{
    std::vector<Spalte> s;
    for (int j = 0; j < kanaele(); ++j) {
        bool erste = true;
        for (int art : {SOLL, IST, OUT}) {
            if (wahl(art, j + 1) == 0)
                continue;
            s.push_back({j, art, erste});
            erste = false;
        }
    }
    return s;
}

/// The rows of one export, in either mode.
class Export {
public:
    explicit Export(bool liste) : liste_(liste), trenner_(liste ? QStringLiteral(" ") : QStringLiteral(";"))
    {
        spalten_ = spaltenWaehlen();
        gas_ = gasUnit(gasZehntel_);
    }

    QStringList kopf() const
    {
        if (!liste_) {
            QString z = QStringLiteral("Datum") + trenner_ + QStringLiteral("Zeit");
            for (const Spalte &s : spalten_)
                z += trenner_ + (s.erste ? plant.Kanal_Name(0, s.kanal) : QString());
            return {z};
        }
        QString z1 = fixedWidth(QStringLiteral("Datum"), 9) + fixedWidth(QStringLiteral(" Zeit"), 8);
        QString z2(z1.size(), QLatin1Char(' '));
        for (const Spalte &s : spalten_) {
            z1 += trenner_ + (s.erste ? fixedWidth(rtrim(plant.Kanal_Name(0, s.kanal)), LISTE_ZELLE)
                                      : QString(LISTE_ZELLE, QLatin1Char(' ')));
            const QString einheit = s.art == OUT ? QStringLiteral("[  %  ]")
                                                 : QStringLiteral("[") + plant.Kanal_Einheit(0, s.kanal) + QStringLiteral("]");
            z2 += trenner_ + fixedWidth(einheit, LISTE_ZELLE);
        }
        return {z1, z2};
    }

    /// All rows, in the order of channel 0's entries.
    QStringList zeilen()
    {
        QStringList z;
        const EntryLists &e = Kurve.listen;
        const int n = e.Wertliste[0].size();
        int segment = 0;
        for (int k = 0; k < n; ++k) {
            const QString key = timeKey(e.zeiten, e.Wertliste[0].timeIndex(k));
            const QString &t = plant.Datum_Trenner;
            datum_ = fixedWidth(key.mid(4, 2) + t + key.mid(2, 2) + t + key.mid(0, 2), 9);
            zeit_ = key.mid(7, 8);
            if (wahl(IST, ZEILEN_SCHALTER) != 0)
                meldZeilen(k, z);
            if (wahl(SOLL, ZEILEN_SCHALTER) != 0)
                segmentZeile(k, segment, z);
            z << datenZeile(k);
        }
        return z;
    }

private:
    static QString rtrim(const QString &s)
    {
        qsizetype n = s.size();
        while (n > 0 && s.at(n - 1) == QLatin1Char(' '))
            --n;
        return s.left(n);
    }

    QString vorn() const { return datum_ + trenner_ + zeit_; }

    void meldZeilen(int k, QStringList &z) const
    {
        const auto &M = Kurve.listen.Meldliste;
        for (int w = 0; w < 2; ++w) {
            const EntryList &l = M[size_t(w)];
            if (k >= l.size())
                continue;
            const uint16_t jetzt = uint16_t(l.wert[size_t(k)]);
            // Before the first row every message counts as gone.
            const uint16_t vorher = k > 0 ? uint16_t(l.wert[size_t(k - 1)]) : 0;
            const uint16_t anders = jetzt ^ vorher;
            for (int bit = 0; bit < 16 && anders != 0; ++bit) {
                if (!(anders & (1u << bit)))
                    continue;
                const int nr = w * 16 + bit + 1;
                QString zustand = QStringLiteral("geht  ");
                if (jetzt & (1u << bit))
                    zustand = k == 0 ? QString(6, QLatin1Char(' ')) : QStringLiteral("kommt ");
                z << vorn() + trenner_ + zustand + trenner_ + QString::asprintf("%02d", nr) + QLatin1Char(' ') +
                         Kurve.Meld_Text[size_t(nr - 1)].trimmed();
            }
        }
    }

    void segmentZeile(int k, int &letztes, QStringList &z) const
    {
        const EntryList &l = Kurve.listen.Meldliste[3];
        if (k >= l.size())
            return;
        const int s = l.wert[size_t(k)];
        if (s != letztes && s > 0) {
            const SegmentFields f = readSegmentCode(Segment_Code(l.seg[size_t(k)]));
            z << vorn() + trenner_ + QStringLiteral("  Segment ") + rightNumber(s, 2) + QStringLiteral("  ") +
                     Segment_Zeile(f, gas_, gasZehntel_);
        }
        letztes = s;
    }

    /// The text of one cell; empty where the channel has no entry k.
    QString zelle(const Spalte &s, int k) const
    {
        const EntryLists &e = Kurve.listen;
        const int teiler = std::max<int>(1, plant.Kanal_Teiler(0, s.kanal));
        const EntryList &soll = e.Sollliste[size_t(s.kanal)];
        const EntryList &ist = e.Wertliste[size_t(s.kanal)];
        switch (s.art) {
        case SOLL:
            return k < soll.size() ? formatNumber(double(soll.wert[size_t(k)]) / teiler, FormatTEXT(teiler)) : QString();
        case IST:
            return k < ist.size() ? formatNumber(double(ist.wert[size_t(k)]) / teiler, FormatTEXT(teiler)) : QString();
        default:
            // The output is the number in the last six characters of the entry.
            return k < soll.size()
                       ? formatNumber(leadingNumber(entryContent(e, EntryListKind::Soll, s.kanal, k).right(6)), QStringLiteral("##0"))
                       : QString();
        }
    }

    QString datenZeile(int k) const
    {
        QString z = vorn();
        for (const Spalte &s : spalten_) {
            QString c = zelle(s, k);
            if (liste_) {
                // The first row names the unit of each column.
                if (k == 0 && !c.isEmpty())
                    c += s.art == OUT ? QStringLiteral(" %") : rtrim(plant.Kanal_Einheit(0, s.kanal));
                c = c.rightJustified(LISTE_ZELLE, QLatin1Char(' '));
            }
            z += trenner_ + c;
        }
        return z;
    }

    const bool liste_;
    const QString trenner_;
    std::vector<Spalte> spalten_;
    QString gas_;
    bool gasZehntel_ = false;
    QString datum_, zeit_;
};

QByteArray dateiText()
{
    Export x(false);
    QByteArray text;
    for (const QString &z : x.kopf() + x.zeilen())
        text += Latin1Bytes(z) + QByteArray("\r\n");
    return text;
}

} // namespace

i16 &Liste_Soll(int k)
{
    return wahl(SOLL, k);
}
i16 &Liste_Ist(int k)
{
    return wahl(IST, k);
}
i16 &Liste_Out(int k)
{
    return wahl(OUT, k);
}

QString csvTarget()
{
    return joinPath(plant.Pfad[3], QFileInfo(plant.Kurve_Datei).completeBaseName() + QStringLiteral(".CSV"));
}

bool CSV_EXPORT(bool ZuListe)
{
    auswahlSetzen();
    if (!ensureCsvFolder())
        return false;
    if (!ZuListe) {
        if (!confirmCsvReplace(plant.CSV_Datei))
            return false;
        return writeCsvFile(plant.CSV_Datei, dateiText(), QStringLiteral("CSV-Export"));
    }
    Listen.CSV_Text.clear();
    Listen.CSV_LIST.clear();
    Export x(true);
    Listen.CSV_Text = x.kopf();
    Listen.CSV_LIST = x.zeilen();
    return true;
}

bool exportCsvFile(const QString &ziel)
{
    Listen.Liste_Gewaehlt = false;
    auswahlSetzen();
    QDir().mkpath(QFileInfo(ziel).absolutePath());
    return writeCsvFile(ziel, dateiText(), QStringLiteral("CSV-Export"));
}

void List_akt()
{
    Listen.Liste_Gewaehlt = true;
    CSV_EXPORT(true);
}

bool listTick()
{
    if (Listen.Zaehler >= LISTE_TAKTE)
        return false;
    ++Listen.Zaehler;
    if (Listen.Zaehler != LISTE_PAUSE)
        return false;
    List_akt();
    return true;
}

void listChecked()
{
    Listen.Zaehler = 0;
}

void listClosed()
{
    Listen.Offen = false;
    plant.List16_Offen = 0;
}

} // namespace kal
