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

CSV_Speicher CSV_Tabelle;

namespace {
StateReset reset{[] { CSV_Tabelle_Leeren(); }};
} // namespace

void CSV_Tabelle_Leeren()
{
    CSV_Tabelle = CSV_Speicher{};
}

QByteArray CSV_Zeile(const QStringList &felder, const QByteArray &trenner)
{
    QByteArray z;
    for (int i = 0; i < felder.size(); ++i) {
        if (i > 0)
            z += trenner;
        z += Latin1Bytes(felder[i]);
    }
    return z + QByteArray("\r\n");
}

bool CSV_Ordner_Pruefen()
{
    const QString ordner = plant.Pfad[3];
    if (Ordner_Da(ordner))
        return true;
    const QString frage = QStringLiteral("CSV-Files\n") + ordner + QStringLiteral("\n\nCreate? ");
    if (!dialogs().question(frage, QStringLiteral("Folder Not found!")))
        return false;
    if (!QDir().mkpath(ordner))
        return false;
    Config_Schreiben(false);
    return true;
}

bool CSV_Ersetzen_Pruefen(const QString &pfad)
{
    if (!QFile::exists(pfad))
        return true;
    const QString titel = Text_Id(text::FILE).trimmed() + QStringLiteral(" ") + Text_Id(text::EXISTS).trimmed() +
                          QStringLiteral("!");
    return dialogs().question(titel + QStringLiteral("\n") + pfad + QStringLiteral("\n") +
                                  Text_Id(text::REPLACE).trimmed() + QStringLiteral("?"),
                              titel);
}

bool CSV_Tabelle_Schreiben()
{
    const CSV_Speicher &t = CSV_Tabelle;
    if (!CSV_Ordner_Pruefen() || !CSV_Ersetzen_Pruefen(t.Datei))
        return false;
    QByteArray text;
    for (const QString &k : t.Kopf)
        text += CSV_Zeile({k});
    text += CSV_Zeile(QStringList{QStringLiteral("Datum"), QStringLiteral("Zeit")} + t.Namen.mid(0, t.Spalten));
    const QString trenner = plant.Datum_Trenner.isEmpty() ? QStringLiteral(".") : plant.Datum_Trenner;
    for (int z = 0; z < std::min(t.Zeilen, CSV_ZEILEN); ++z) {
        const QDateTime &d = t.Zeit[z];
        QStringList felder{d.toString(QStringLiteral("dd'%1'MM'%1'yy").arg(trenner)),
                           d.toString(QStringLiteral("HH:mm:ss"))};
        for (int s = 0; s < std::min(t.Spalten, CSV_SPALTEN); ++s)
            felder << Format_Zahl(t.Wert[z][s], t.Format);
        text += CSV_Zeile(felder);
    }
    return CSV_Datei_Schreiben(t.Datei, text, t.Titel);
}

bool CSV_Datei_Schreiben(const QString &pfad, const QByteArray &text, const QString &titel)
{
    QFile f(pfad);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate) || f.write(text) != text.size()) {
        dialogs().message(pfad + QStringLiteral("\n") + f.errorString(), titel);
        return false;
    }
    return true;
}

} // namespace kal
