#include "recording/log_book.h"

#include "config/text_ids.h"
#include "core/plant_state.h"
#include "recording/batch_file.h"

#include <QFileInfo>
#include <exception>

namespace kal {

namespace {

QString twoDigitText(int v)
{
    return QString::number(v).rightJustified(2, QLatin1Char('0'));
}

QString rightAligned(int v, int n)
{
    return QString::number(v).rightJustified(n, QLatin1Char(' ')).right(n);
}

} // namespace

QString LogSatz_Zeile(const BatchRecord &s)
{
    const QString &t = plant.Datum_Trenner;
    QString z = twoDigitText(s.Tag) + t + twoDigitText(s.Monat) + t + QString::number(s.Jahr + 2000).rightJustified(4, QLatin1Char('0')) +
                QLatin1Char(' ') + twoDigitText(s.Stunde) + QLatin1Char(':') + twoDigitText(s.Minute) + QLatin1Char(':') +
                twoDigitText(s.Sekunde);
    z += rightAligned(s.Satz_Art, 5);
    for (int i = 0; i < 7; ++i)
        z += QStringLiteral("  ") + rightAligned(s.Wert[size_t(i)], i < 2 ? 5 : 4);
    return z;
}

LogBookPage readLogBook(const QString &pfad)
{
    LogBookPage L;
    BatchFile datei;
    if (pfad.isEmpty() || !QFileInfo(pfad).isFile() || !datei.openRead(pfad)) {
        L.titel = QStringLiteral("Logdatei: ") + pfad + QStringLiteral(" , nicht vorhanden!");
        return L;
    }
    L.titel = Text_Id(text::LOG_DATA).trimmed() + QStringLiteral(": ") + pfad;
    const int n = datei.count();
    L.zeilen.reserve(n);
    L.werte.reserve(size_t(n));
    try {
        forEachRecord(datei, 1, n, [&](int, const BatchRecord &s) {
            L.zeilen.append(LogSatz_Zeile(s));
            L.werte.push_back(s.Wert[1]);
            return true;
        });
    } catch (const std::exception &) {
        // A read that fails ends the list with the lines read so far.
    }
    return L;
}

} // namespace kal
