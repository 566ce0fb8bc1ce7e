#include "curves/time_axis.h"

#include "config/text_ids.h"
#include "core/dates.h"
#include "curves/curve_reduce.h"
#include "curves/curve_store.h"

namespace kal {

namespace {

void computeMarks()
{
    for (int k = 1; k <= 4; ++k)
        Kurve.Zeit_Marke[size_t(k)] =
            Kurve.Zeit_Marke[0].isValid() ? Kurve.Zeit_Marke[0].addSecs(int64_t(Kurve.Zeit_Raster) * 90 * k)
                                          : QDateTime();
}

} // namespace

void timeAxis()
{
    computeMarks();
    auto &T = Kurve.Taste_An;
    if (!Kurve.zeitDa) {
        T[TASTE_ZURUECK] = T[TASTE_VOR] = T[TASTE_ZOOM_EIN] = T[TASTE_ZOOM_AUS] = false;
    } else {
        T[TASTE_ZURUECK] = DateDiff(QStringLiteral("n"), Kurve.Kurve_Erster, Kurve.Zeit_Marke[0]) > 0;
        T[TASTE_VOR] = DateDiff(QStringLiteral("n"), Kurve.Zeit_Marke[4], Kurve.Kurve_Letzter) > 0;
        if (Kurve.Zeit_Raster < Kurve.Raster_Start) {
            T[TASTE_ZOOM_AUS] = true;
        } else {
            Kurve.Zeit_Raster = Kurve.Raster_Start;
            T[TASTE_ZOOM_AUS] = false;
        }
        if (Kurve.Zeit_Raster > RASTER_MIN) {
            T[TASTE_ZOOM_EIN] = true;
        } else {
            Kurve.Zeit_Raster = RASTER_MIN;
            T[TASTE_ZOOM_EIN] = false;
        }
        computeMarks();
    }
    for (int k = 0; k < 5; ++k)
        Kurve.Label_Marke[size_t(k)] = Datum_Text(Kurve.Zeit_Marke[size_t(k)], QStringLiteral("TTMMJJHHMM"));
}

bool curvePageKey(int index)
{
    if (!Kurve.zeitDa)
        return false;
    switch (index) {
    case TASTE_ZURUECK: {
        QDateTime neu = Kurve.Zeit_Marke[0].addSecs(-BLAETTERN_SEKUNDEN);
        if (neu < Kurve.Kurve_Erster)
            neu = Kurve.Kurve_Erster;
        Kurve.Zeit_Marke[0] = neu;
        break;
    }
    case TASTE_VOR: Kurve.Zeit_Marke[0] = Kurve.Zeit_Marke[0].addSecs(BLAETTERN_SEKUNDEN); break;
    case TASTE_ZOOM_EIN: Kurve.Zeit_Raster -= ZOOM_SCHRITT; break;
    case TASTE_ZOOM_AUS: Kurve.Zeit_Raster += ZOOM_SCHRITT; break;
    default: return false;
    }
    timeAxis();
    Kurven_Zeichnen();
    return true;
}

QString curveKeyCaption(int index)
{
    switch (index) {
    case TASTE_ZURUECK: return Text_Id(text::TIME).trimmed() + QStringLiteral(" <<<");
    case TASTE_VOR: return Text_Id(text::TIME).trimmed() + QStringLiteral(" >>>");
    case TASTE_LADEN: return Text_Id(text::LOAD_DATA).trimmed();
    case TASTE_CSV: return QStringLiteral("CSV-Export");
    case TASTE_LISTE: return QStringLiteral("Liste");
    case TASTE_ZOOM_EIN: return Text_Id(text::ZOOM).trimmed() + QStringLiteral(" +");
    case TASTE_ZOOM_AUS: return Text_Id(text::ZOOM).trimmed() + QStringLiteral(" -");
    case TASTE_ENDE: return Text_Id(text::BACK).trimmed();
    default: return QString();
    }
}

} // namespace kal
