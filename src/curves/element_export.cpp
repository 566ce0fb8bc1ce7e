#include "curves/element_export.h"

#include "config/paths.h"
#include "core/conversions.h"
#include "core/dates.h"
#include "core/plant_state.h"
#include "curves/csv_writer.h"
#include "recording/element_stats.h"

#include <QFile>
#include <cmath>

namespace kal {

namespace {

constexpr int MIN_SPALTEN = 12;
constexpr int TAG_ZEICHEN = 10;   ///< "TT.MM.JJJJ" of Zeit

/// The day's sums of one column set.
struct Tag {
    std::array<double, ELEMENTE> summe{};
    int zahl = 0;
};

} // namespace

bool ElementStatistik(int ofenNr)
{
    const int ofen = ofenNr - 1;
    if (ofen < 0 || ofen >= OFEN_MAX || !QFile::exists(rxFilePath(ofenNr)))
        return false;
    const std::vector<RxEntry> liste = rxHistory(ofenNr);
    if (liste.empty())
        return false;

    clearCsvTable();
    CsvStore &t = CSV_Tabelle;
    t.Intervall = QStringLiteral("h");
    t.Raster = 24;
    t.Titel = QStringLiteral("Statistik Heizelemente");
    t.Datei = joinPath(plant.Pfad[3], QStringLiteral("RX_") + plant.Ofen_Serie[ofen] + QStringLiteral(".CSV"));
    const QString anfang = liste.front().satz.Zeit;
    const QString ende = liste.back().satz.Zeit;
    t.Kopf = {plant.Ofen_Bezeichnung[ofen], plant.Ofen_Serie[ofen], QString(), QStringLiteral("Anfang   ") + anfang,
              QStringLiteral("Ende     ") + ende};
    t.Spalten = std::clamp<int>(plant.Element_Spuren[ofen], MIN_SPALTEN, CSV_SPALTEN);
    for (int s = 0; s < t.Spalten; ++s)
        t.Namen << QString::number(s + 1);

    // From the newest record back: the records of one day are summed, and at
    // a change of day the row is written; each row is one day before the row
    // above it.
    QDateTime tagDatum = dateValue(ende.left(TAG_ZEICHEN));
    Tag tag;
    QString tagText = ende.left(TAG_ZEICHEN);
    auto zeileSchreiben = [&] {
        if (tag.zahl == 0 || t.Zeilen >= CSV_ZEILEN - 1)
            return;
        t.Zeit[t.Zeilen] = tagDatum;
        for (int s = 0; s < t.Spalten; ++s)
            t.Wert[t.Zeilen][s] = std::nearbyint(tag.summe[s] / tag.zahl * 100.0);
        ++t.Zeilen;
        tagDatum = tagDatum.addDays(-1);
        tag = Tag{};
    };
    for (auto it = liste.rbegin(); it != liste.rend(); ++it) {
        const QString diesTag = it->satz.Zeit.left(TAG_ZEICHEN);
        if (diesTag != tagText) {
            zeileSchreiben();
            tagText = diesTag;
        }
        for (int e = 0; e < ELEMENTE; ++e)
            tag.summe[e] += it->satz.RX[e];
        ++tag.zahl;
    }
    zeileSchreiben();
    return writeCsvTable();
}

} // namespace kal
