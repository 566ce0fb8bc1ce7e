#pragma once
// The two language files of the data folder.
//
// Site text file "OVDSMELD.TXT", read at start if it exists; one line sets one
// entry, in this form (characters counted from 1):
//   1..2  language prefix "DE", "EN", "FR", "SP", "IT", "NL"; 3 is "_"
//   4..6  row number NNN counted from 1 (row r is NNN = r + 1)
//   7     ";"
//   8     furnace digit 0..8
//   9     ";"
//   10 on the text, cut to the row's width
// A line of any other form is skipped without a message. NNN 101..132 are
// the messages 1..32: furnace digit 0 sets the text for all eight furnaces of
// that language in `Meldtext`, 1..8 for that furnace alone. Every other row
// goes to `Sprachtext`, whatever the furnace digit.
//
// Table file "KM_SP.LNG", written on request from the settings: one record of
// 312 bytes a row, six parts of 52 characters, one for each column:
//   prefix "_" NNN ";" WW ";" text(40) CR LF
// with WW the width as two digits and the text padded with blanks or cut to
// 40. Its lines can be edited as text into lines of a site file: the width
// stands where the site file wants the furnace digit, so it must be replaced
// by a digit (a line with two digits there is skipped).
//
// The prefixes of columns 3 and 4 are crossed against their text: "SP" is
// column 3, which holds Italian, and "IT" column 4, which holds Spanish. Both
// files keep that pairing.

#include <QByteArray>
#include <QString>

namespace kal {

/// Bytes of one row in the table file.
constexpr int SPRACH_SATZ = 312;

/// Applies one line of the site text file; true when the line counted.
bool applySiteLine(const QString &line);

/// Applies every line of a site text file (8-bit characters); returns the
/// number of lines that counted, 0 when there is no such file.
int readSiteTexts(const QString &path);

/// The loader, run at start after the configuration was read: applies the
/// site text file of the data folder on top of the built-in table, then gives
/// every furnace without a version word (`Ofen_Typ` not negative) 32
/// messages, the track names "Spur 1" to "Spur 4" and empty 16-character names.
void loadSiteTexts();

/// The 312-byte record of a row (0..171) in the table file.
QByteArray languageTableRecord(int row);

/// Writes the whole table to `path` (the settings pass the data folder's
/// "KM_SP.LNG"); false when the file cannot be written.
bool writeLanguageTable(const QString &path);

} // namespace kal
