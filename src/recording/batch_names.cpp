#include "recording/batch_names.h"

#include "config/paths.h"
#include "core/conversions.h"
#include "core/plant_state.h"
#include "recording/batch_record.h"

namespace kal {

namespace {

/// Right `n` digits of a non-negative number.
QString rightDigits(int64_t value, int n)
{
    return QString::number(value).right(n);
}

/// DD + MM + YY, each two digits; the year may come as four digits or as the
/// years since 2000.
QString datePart(int tag, int monat, int jahr)
{
    return QString::asprintf("%02d%02d%02d", tag % 100, monat % 100, jahr % 100);
}

} // namespace

QString serialWithoutDashes(const QString &serie)
{
    const QString s = fixedWidth(serie, 12);
    return s.mid(0, 4) + s.mid(5, 3) + s.mid(9, 3);
}

QString batchFileName(const QString &serie, int32_t nummer, int tag, int monat, int jahr)
{
    return QStringLiteral("D") + serialWithoutDashes(serie) + rightDigits(int64_t(nummer) + 1000000, 6) +
           datePart(tag, monat, jahr) + QStringLiteral(".OVD");
}

QString usbFileName(const QString &serie10, int32_t nummer, int tag, int monat, int jahr)
{
    return QStringLiteral("US") + fixedWidth(serie10, 10) + rightDigits(int64_t(nummer) + 100000, 5) +
           datePart(tag, monat, jahr) + QStringLiteral(".OVD");
}

void buildBatchNames(int ofen)
{
    const RecordTime start = timeOfText(plant.Charge_Start[ofen]);
    const QString name = batchFileName(plant.Ofen_Serie[ofen], plant.Charge_Nr[ofen], start.Tag,
                                          start.Monat, start.Jahr);
    plant.Charge_Datei[ofen] = joinPath(plant.Charge_Ordner[0], name);
    plant.Charge_Kopie[ofen] = joinPath(plant.Charge_Ordner[1], name);
}

QString usbTargetPath(const QString &serie10, int32_t nummer, int tag, int monat, int jahr)
{
    return joinPath(plant.Charge_Ordner[0], usbFileName(serie10, nummer, tag, monat, jahr));
}

} // namespace kal
