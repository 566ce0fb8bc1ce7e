#include "recording/batch_names.h"

#include "config/paths.h"
#include "core/conversions.h"
#include "core/plant_state.h"
#include "recording/batch_record.h"

namespace kal {

namespace {

/// Right `n` digits of a non-negative number.
QString rechts(int64_t value, int n)
{
    return QString::number(value).right(n);
}

/// DD + MM + YY, each two digits; the year may come as four digits or as the
/// years since 2000.
QString datumTeil(int tag, int monat, int jahr)
{
    return QString::asprintf("%02d%02d%02d", tag % 100, monat % 100, jahr % 100);
}

} // namespace

QString Serie_Ohne_Striche(const QString &serie)
{
    const QString s = Fest(serie, 12);
    return s.mid(0, 4) + s.mid(5, 3) + s.mid(9, 3);
}

QString Charge_Dateiname(const QString &serie, int32_t nummer, int tag, int monat, int jahr)
{
    return QStringLiteral("D") + Serie_Ohne_Striche(serie) + rechts(int64_t(nummer) + 1000000, 6) +
           datumTeil(tag, monat, jahr) + QStringLiteral(".OVD");
}

QString USB_Dateiname(const QString &serie10, int32_t nummer, int tag, int monat, int jahr)
{
    return QStringLiteral("US") + Fest(serie10, 10) + rechts(int64_t(nummer) + 100000, 5) +
           datumTeil(tag, monat, jahr) + QStringLiteral(".OVD");
}

void Charge_Namen_Bauen(int ofen)
{
    const SatzZeit start = zeitVonText(plant.Charge_Start[ofen]);
    const QString name = Charge_Dateiname(plant.Ofen_Serie[ofen], plant.Charge_Nr[ofen], start.Tag,
                                          start.Monat, start.Jahr);
    plant.Charge_Datei[ofen] = Pfad_Plus(plant.Charge_Ordner[0], name);
    plant.Charge_Kopie[ofen] = Pfad_Plus(plant.Charge_Ordner[1], name);
}

QString USB_Ziel_Pfad(const QString &serie10, int32_t nummer, int tag, int monat, int jahr)
{
    return Pfad_Plus(plant.Charge_Ordner[0], USB_Dateiname(serie10, nummer, tag, monat, jahr));
}

} // namespace kal
