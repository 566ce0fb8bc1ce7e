#pragma once
// The message text files of the panels and the copy of the memory card.
//
// "MLD_XXX.TXT" (and its source "MLD_IMPORT.TXT", the same form): records of
// 40 characters, blank-padded, numbered from 1:
//   1         header record, kept as read
//   2 .. n+1  text of message 1 .. n (22 characters used)
//   49 .. 52  the names of tracks 1..4 in the form of 32 messages
// n is 32 or 48. The list of the system dialog shows each text as a line
// "NN:text" (list lines 33..36 are the track names of the 32 form).

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace kal {

constexpr int MLD_SATZ = 40;
constexpr int MLD_TEXT = 22;
inline const QString MLD_XXX_DATEI = QStringLiteral("MLD_XXX.TXT");
inline const QString MLD_IMPORT_DATEI = QStringLiteral("MLD_IMPORT.TXT");

/// A text file as the list shows it.
struct MldList {
    QByteArray Kopf;     ///< record 1 as read (40 bytes); blanks for a new file
    int Anzahl = 32;     ///< messages: 32 or 48
    QStringList Zeilen;  ///< "NN:text"; 36 lines in the 32 form (tracks at 33..36), 48 in the 48 form
};

/// The number of messages a file of `saetze` records holds: 48 for 49..51
/// records, else 32.
int mldCount(int saetze);
/// The list line of text number `nr`: two digits, ":" and the text.
QString mldLine(int nr, const QString &text);

/// Reads a text file into list lines. False when it cannot be opened.
bool readMld(const QString &pfad, MldList &liste);
/// The bytes of a text file of `liste.Anzahl` messages: each line's text from
/// character 4 on, cut to 22 characters and trimmed.
QByteArray mldBytes(const MldList &liste);

/// `MLD_Import_laden` / `MLD_XXX_laden`: reads `name` in `ordner`. Returns
/// the line the form shows: empty when read; "Quellfile:   <path>>>> Bitte
/// anlegen!" when the file is missing; "Ordner <path> nicht gefunden!" when
/// the folder is missing (then "Auswahl des Quellverzeichnisses!" is asked
/// first).
QString loadMld(const QString &ordner, const QString &name, MldList &liste);

/// `MLD_XXX_Sichern`: writes the list as "MLD_XXX.TXT" into `ordner`; the
/// same messages as `loadMld` when the folder is missing. True when written.
bool MLD_XXX_Sichern(const QString &ordner, const MldList &liste, QString &meldung);

/// The station's texts of furnace index `ofen` as list lines: its messages
/// and, in the 32 form, its track names.
MldList mldFromStation(int ofen, int anzahl);

/// `DateiCopy`: copies the memory card files from the card folder `quelle`
/// (its "DATEN" folder) into "DATEN" of the card `ziel`: the folders of the
/// card tree are made when missing, then the program files PROG1..PROG100
/// that exist, "Prog.txt", "PID.txt", "COD_M02.txt", "MLD_M02.txt",
/// "COD_P01.txt", "MLD_P01.txt". Any copy that fails shows "CF-Karte nicht
/// vollständig kopiert!" and gives false.
bool DateiCopy(const QString &quelle, const QString &ziel);

} // namespace kal
