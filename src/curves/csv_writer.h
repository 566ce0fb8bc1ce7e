#pragma once
// The CSV writer: text files with ";" between columns and CR LF at the end of
// every row, numbers in the system's number format (on a German system the
// decimal mark is a comma), text in Latin-1. The file is never re-formatted
// for another reader.
//
// Exports that walk their data into rows first fill the shared table
// `CSV_Tabelle` (up to 361 rows of up to 18 columns, one time per row), then
// `writeCsvTable` writes it with its head lines. Before a file is
// written the CSV folder must exist (the operator is asked to create it) and
// an existing file is replaced only when the operator says so.

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <array>

namespace kal {

constexpr int CSV_ZEILEN = 361;
constexpr int CSV_SPALTEN = 18;
inline const QByteArray CSV_TRENNER(";");

/// The shared table of the exports.
struct CsvStore {
    QString Titel;                 ///< caption of the export, not written into the file
    QString Datei;                 ///< full path of the file
    QStringList Kopf;              ///< head lines, written first, one a row
    QString Intervall = QStringLiteral("h"); ///< unit of the row raster ("s", "n", "h", "d")
    int Raster = 0;                ///< units a row
    QStringList Namen;             ///< column names
    int Spalten = 0;               ///< columns in use, up to 18
    QString Format = QStringLiteral("#0"); ///< number format of the values
    int Zeilen = 0;                ///< rows in use, up to 361
    std::array<QDateTime, CSV_ZEILEN> Zeit{};
    std::array<std::array<double, CSV_SPALTEN>, CSV_ZEILEN> Wert{};
};
extern CsvStore CSV_Tabelle;

/// Empties the table: no rows, no columns, no head.
void clearCsvTable();

/// One row: the fields joined by `trenner`, then CR LF, as Latin-1.
QByteArray csvLine(const QStringList &felder, const QByteArray &trenner = CSV_TRENNER);

/// The CSV folder `Pfad`[3] exists, or the operator had it created ("Folder
/// Not found!", "Create? "). False: no export.
bool ensureCsvFolder();
/// `pfad` does not exist, or the operator agreed to replace it. False: no export.
bool confirmCsvReplace(const QString &pfad);

/// Writes `text` into the file `pfad`, replacing it. False when it could not
/// be written; the operator is told then, under `titel`.
bool writeCsvFile(const QString &pfad, const QByteArray &text, const QString &titel);

/// Writes `CSV_Tabelle` into its file after both checks: the head lines, the
/// column line "Datum", "Zeit" and the names, then per row the date
/// (TT.MM.JJ), the time (HH:MM:SS) and the values. False when nothing was
/// written (refused, or the file could not be written: then the operator
/// is told).
bool writeCsvTable();

} // namespace kal
