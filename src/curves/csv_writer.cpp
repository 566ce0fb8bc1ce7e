#include "curves/csv_writer.h"

#include "config/config_file.h"
#include "config/paths.h"
#include "config/text_ids.h"
#include "core/conversions.h"
#include "core/dates.h"
#include "core/dialogs.h"
#include "core/plant_state.h"

#include <QDir>
#include <QFile>

namespace kal {

CsvStore CSV_Tabelle;

namespace {
StateReset reset{[] { clearCsvTable(); }};
} // namespace

void clearCsvTable()
{
    CSV_Tabelle = CsvStore{};
}

QByteArray csvLine(const QStringList &felder, const QByteArray &trenner)
{
    QByteArray z;
    for (int i = 0; i < felder.size(); ++i) {
        if (i > 0)
            z += trenner;
        z += Latin1Bytes(felder[i]);
    }
    return z + QByteArray("\r\n");
}

bool ensureCsvFolder()
{
    const QString ordner = plant.Pfad[3];
    if (folderExists(ordner))
        return true;
    const QString frage = QStringLiteral("CSV-Files\n") + ordner + QStringLiteral("\n\nCreate? ");
    if (!dialogs().question(frage, QStringLiteral("Folder Not found!")))
        return false;
    if (!QDir().mkpath(ordner))
        return false;
    Config_Schreiben(false);
    return true;
}

bool confirmCsvReplace(const QString &pfad)
{
    if (!QFile::exists(pfad))
        return true;
    const QString titel = Text_Id(text::FILE).trimmed() + QStringLiteral(" ") + Text_Id(text::EXISTS).trimmed() +
                          QStringLiteral("!");
    return dialogs().question(titel + QStringLiteral("\n") + pfad + QStringLiteral("\n") +
                                  Text_Id(text::REPLACE).trimmed() + QStringLiteral("?"),
                              titel);
}

bool writeCsvTable()
{
    const CsvStore &t = CSV_Tabelle;
    if (!ensureCsvFolder() || !confirmCsvReplace(t.Datei))
        return false;
    QByteArray text;
    for (const QString &k : t.Kopf)
        text += csvLine({k});
    text += csvLine(QStringList{QStringLiteral("Datum"), QStringLiteral("Zeit")} + t.Namen.mid(0, t.Spalten));
    const QString trenner = plant.Datum_Trenner.isEmpty() ? QStringLiteral(".") : plant.Datum_Trenner;
    for (int z = 0; z < std::min(t.Zeilen, CSV_ZEILEN); ++z) {
        const QDateTime &d = t.Zeit[z];
        QStringList felder{d.toString(QStringLiteral("dd'%1'MM'%1'yy").arg(trenner)),
                           d.toString(QStringLiteral("HH:mm:ss"))};
        for (int s = 0; s < std::min(t.Spalten, CSV_SPALTEN); ++s)
            felder << formatNumber(t.Wert[z][s], t.Format);
        text += csvLine(felder);
    }
    return writeCsvFile(t.Datei, text, t.Titel);
}

bool writeCsvFile(const QString &pfad, const QByteArray &text, const QString &titel)
{
    QFile f(pfad);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate) || f.write(text) != text.size()) {
        dialogs().message(pfad + QStringLiteral("\n") + f.errorString(), titel);
        return false;
    }
    return true;
}

} // namespace kal
