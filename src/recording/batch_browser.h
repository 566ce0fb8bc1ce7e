#pragma once
// The logic of the batch browser `KM_TempDatei`: which files of a folder are
// batches, which of them the filter shows, in which order, the batch data
// text of the chosen one, and the user's saved folder.
//
// Everything but the info box works on file names: a batch file's name tells
// its furnace, number and date by position (27 characters):
//   live    "D"  serial(10) number(6) DDMMYY ".OVD"
//   import  "US" serial(10) number(5) DDMMYY ".OVD"   ("DS" is read the same way)
// A name that begins "U" but not "US" is no batch (the browser never matched
// a plain "U"; that stays so).
//
// The state that survives closing the form (folder, drive, date, filter, sort
// order) is in the plant state; the form keeps widget state only.

#include <QString>
#include <cstdint>
#include <vector>

namespace kal {

/// What a batch file name tells.
struct FileNameParts {
    bool ok = false;        ///< a batch name: 27 characters, ".OVD", "D"/"DS"/"US"
    bool import = false;    ///< "DS" or "US"
    int32_t nummer = 0;     ///< batch number
    QString nummerText;     ///< its digits as they stand in the name
    QString serie;          ///< "JJMM-NNN-TTT"
    QString datum;          ///< "YY/MM/DD", sortable
    int tag = 0, monat = 0, jahr = 0; ///< jahr with 2000 added
};

/// Reads a file name (without folder) by the batch name rules.
FileNameParts parseBatchName(const QString &name);
/// Furnace number 1..8 whose `Ofen_Serie` matches the serial (the dashes of
/// two 12-character serials don't count), 0 none.
int matchingFurnace(const QString &serie);

/// A file of the folder with its size in kB (0 when it can't be opened).
struct BrowserFile {
    QString name;
    int kB = 0;
};
/// The files of a folder in name order, as the file list shows them.
std::vector<BrowserFile> folderFiles(const QString &ordner);

/// A line of the list and its size in kB.
struct BrowserLine {
    QString text;
    int kB = 0;
};
/// `Liste_Aufbauen` without the form: the lines of the files that pass the
/// furnace filter `Ofen_Filter` and the date `Datum_Von`, ordered by
/// `Sort_Art` (0 date, 1 batch number), newest or highest first. An empty
/// `Datum_Von` is set first from the folder's year.
std::vector<BrowserLine> Liste_Aufbauen(const std::vector<BrowserFile> &dateien);

/// Caption of the furnace box i (0..7): "n:" and the furnace's second name,
/// or "" when the box is hidden.
QString OfenCheck_Text(int i);

/// `Datum_Von` in the form the date box shows ("TT.MM.JJ").
QString Datum_IN_Text();
/// The date box was left with `text`: the new earliest date. A bad text
/// changes nothing and gives false.
bool Datum_IN_LostFocus(const QString &text);
/// The folder changed to `pfad`: a folder named by its year shows that year
/// from its first day.
void changeFolder(const QString &pfad);

/// A click on a line: the batch file, its CSV names, its number and serial.
/// False when the line names no batch.
bool chooseLine(const QString &zeile);

/// `INFO_anzeigen`: the batch data text of `Kurve_Datei` as the info box
/// shows it, four lines of 40 characters.
QString INFO_anzeigen();

/// State of the user folder button `USER_LogButton`.
enum UserButtonState : int { USER_AUS = 0, USER_OEFFNEN = 1, USER_STANDARD = 2, USER_SICHERN = 3 };
struct UserButton {
    int zustand = USER_AUS;
    QString text;
    bool an = false;
};
/// Reads `OV_USERLOG.DAT` into `User_Ordner` and `User_Laufwerk`.
void readUserFile();
/// `User_Taste_Setzen`: the state and caption of the button for the folder
/// now shown.
UserButton User_Taste_Setzen();
/// The button was pressed in `zustand`: opens the saved folder, goes back to
/// the batch year folder, or saves the folder now shown. Never throws.
void USER_LogButton_Click(int zustand);

/// The load of the form: the user's saved folder, the folder to show. False
/// (after the message box) when the folder does not exist.
bool loadBrowser();

/// The drive (root of the file system) a folder lies on.
QString driveOf(const QString &ordner);

} // namespace kal
