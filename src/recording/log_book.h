#pragma once
// The log data view `KM_Logdaten`: a batch file record by record, numbers as
// stored, for seeing what a PLC really logged.

#include "recording/batch_record.h"

#include <QString>
#include <QStringList>
#include <vector>

namespace kal {

/// `LogSatz_Zeile`: one record as a line: day, month and four-digit year
/// joined by `Datum_Trenner`, a blank, HH:MM:SS; the kind right-aligned in 5;
/// then Wert[0] and Wert[1] in 5 and Wert[2]..Wert[6] in 4, each after two
/// blanks. A wider number loses its first digits; header and text records
/// show their bytes as numbers.
QString LogSatz_Zeile(const BatchRecord &satz);

/// The page of one file.
struct LogBookPage {
    QString titel;              ///< caption
    QStringList zeilen;         ///< one line per record, in file order
    std::vector<int> werte;     ///< item data of each line: Wert[1]
};

/// Reads the whole file at `pfad` into lines; a missing file gives the caption
/// "Logdatei: <path> , nicht vorhanden!" and no lines.
LogBookPage readLogBook(const QString &pfad);

} // namespace kal
