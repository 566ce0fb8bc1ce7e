#include "curves/view16.h"

#include "config/paths.h"
#include "core/conversions.h"
#include "core/dates.h"
#include "curves/csv_writer.h"
#include "curves/curve_store.h"
#include "curves/time_axis.h"

#include <QFileInfo>
#include <algorithm>

namespace kal {

View_Fenster View16;
View_Liste_Inhalt View_Liste;

namespace {

StateReset reset{[] {
    View16 = View_Fenster{};
    View_Liste = View_Liste_Inhalt{};
}};

constexpr int LISTE_ZELLE = 6; ///< width of a value in the list

/// The page of the curve window as the view shows it.
void seiteUebernehmen()
{
    View16.Punkt_Spur = Kurve.seite.Punkt_Spur;
    View16.View_Start = Kurve.Zeit_Marke[0];
    View16.View_Raster = Kurve.Zeit_Raster;
    View16.marken = Kurve.Label_Marke;
    View16.daten = Kurve.listen.Meldliste[4].size() > 0;
    View_KurveAct();
}

/// The batch on view is still being written by a furnace.
bool laeuftNoch()
{
    for (int f = 0; f < OFEN_MAX; ++f)
        if (!plant.Kurve_Datei.isEmpty() && plant.Charge_Datei[f] == plant.Kurve_Datei)
            return true;
    return false;
}

QString format()
{
    return QStringLiteral("#0");
}

QDateTime punktZeit(int p)
{
    return View16.View_Start.addSecs(int64_t(View16.View_Raster) * p);
}

} // namespace

void Tast_Strom()
{
    View_Fenster &v = View16;
    v.View_Art = 1;
    v.View_Einheit = QStringLiteral(" A");
    v.View_Ofen = Kurve.Kurve_Ofen;
    v.View_Text[0] = Kurve.Label_Name.trimmed();
    v.View_Text[1] = Kurve.Label_Charge;
    v.View_Text[2] = QStringLiteral("Start   ") + Kurve.Label_Marke[0];
    v.View_Text[3] = QStringLiteral("Ende    ") + (laeuftNoch() ? QString() : Kurve.Label_Marke[4]);
    v.View_Text[4] = QStringLiteral("Dauer            ") + Kurve.Label_Dauer;
    v.View_Titel = QStringLiteral("Stromwerte Heizelemente");
    v.Intervall = QStringLiteral("s");
    v.View_Spuren = std::clamp<int>(Kurve.Spur_Zahl > 0 ? Kurve.Spur_Zahl : SEITEN_SPUREN, 0, SEITEN_SPUREN);
    seiteUebernehmen();
}

void View_KurveAct()
{
    View_Fenster &v = View16;
    int32_t hoechster = 10;
    if (v.View_Spuren > 0) {
        hoechster = v.Punkt_Spur[0][0];
        for (int c = 0; c < v.View_Spuren; ++c)
            for (int p = 0; p < PUNKTE; ++p)
                hoechster = std::max(hoechster, v.Punkt_Spur[size_t(c)][size_t(p)]);
    }
    v.View_Max = std::max(1, (hoechster + 10) / 10 * 10);
}

double view16Y(double wert, double hoehe)
{
    return hoehe - wert * hoehe / std::max(1, View16.View_Max);
}

bool view16Button(int index)
{
    if (!curvePageKey(index))
        return false;
    seiteUebernehmen();
    return true;
}

View16Reading View_Mouse_Werte(double x, double breite)
{
    View16Reading l;
    const double pb = breite / SEGMENTE;
    for (int i = 1; i <= 358 && pb > 0; ++i)
        if (i * pb >= x) {
            l.punkt = i;
            break;
        }
    if (l.punkt < 0)
        return l;
    if (x >= 0 && View16.View_Start.isValid()) {
        const QDateTime t = View16.View_Start.addSecs(int64_t(x * View16.View_Raster / pb));
        l.datum = Datum_Text(t, QStringLiteral("TTMMJJ"));
        l.zeit = Datum_Text(t, QStringLiteral("HHMM"));
    }
    for (int c = 0; c < View16.View_Spuren; ++c)
        l.werte[size_t(c)] = formatNumber(View16.Punkt_Spur[size_t(c)][size_t(l.punkt)], format()) + View16.View_Einheit;
    return l;
}

QString view16ChannelName(int c)
{
    return QString::number(c + 1);
}

bool View_CSV_EXPORT(bool ZuListe)
{
    const View_Fenster &v = View16;
    if (!ZuListe) {
        clearCsvTable();
        CsvStore &t = CSV_Tabelle;
        t.Titel = v.View_Titel;
        t.Datei = joinPath(plant.Pfad[3], QFileInfo(plant.Kurve_Datei).completeBaseName() + QStringLiteral("_A.CSV"));
        t.Intervall = v.Intervall;
        t.Raster = v.View_Raster;
        t.Format = format();
        t.Spalten = v.View_Spuren;
        for (int c = 0; c < v.View_Spuren; ++c)
            t.Namen << view16ChannelName(c);
        t.Zeilen = PUNKTE;
        for (int p = 0; p < PUNKTE; ++p) {
            t.Zeit[size_t(p)] = punktZeit(p);
            for (int c = 0; c < v.View_Spuren; ++c)
                t.Wert[size_t(p)][size_t(c)] = v.Punkt_Spur[size_t(c)][size_t(p)];
        }
        return writeCsvTable();
    }
    if (!ensureCsvFolder())
        return false;
    View_Liste = View_Liste_Inhalt{};
    View_Liste.kopf = QStringLiteral("Datum    ") + QStringLiteral("  Zeit    ");
    for (int c = 0; c < v.View_Spuren; ++c)
        View_Liste.kopf += QLatin1Char(' ') + view16ChannelName(c).rightJustified(LISTE_ZELLE);
    const QString &tr = plant.Datum_Trenner;
    for (int p = 0; p < PUNKTE; ++p) {
        const QDateTime t = punktZeit(p);
        QString z = t.toString(QStringLiteral("dd'%1'MM'%1'yy").arg(tr)) + QStringLiteral("  ") +
                    t.toString(QStringLiteral("HH:mm:ss"));
        for (int c = 0; c < v.View_Spuren; ++c)
            z += QLatin1Char(' ') + formatNumber(v.Punkt_Spur[size_t(c)][size_t(p)], format()).rightJustified(LISTE_ZELLE);
        View_Liste.zeilen << z;
    }
    return true;
}

} // namespace kal
