#pragma once
// The logic of the system dialog `KM_System`: the make-up of one furnace (its
// type text, serial number and the three limits its PLC compares), the text
// lists of the panels, the drives and the copy of the memory card.
//
// The dialog edits a working copy; `System_OK` (`OKButton`) takes it over and
// writes the configuration.

#include "config/message_files.h"
#include "core/plant_state.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <array>

namespace kal {

/// Fields of `Text1`.
enum SystemField : int {
    SYS_TYP = 0,       ///< furnace type text, 16 characters (`Ofen_Name`)
    SYS_SERIE = 1,     ///< serial number "JJMM-NNN-TTT"
    SYS_MAX_TEMP = 3,  ///< maximum temperature, whole °C, stored times 10 in 3000..30000
    SYS_TUER = 4,      ///< door release temperature, whole °C, stored times 10 in 500..5000
    SYS_GRADIENT = 5,  ///< maximum gradient, whole K/h, stored times 10 in 1000..32000
};

/// Kinds of the text list shown on load.
enum TextListKind : int { LISTE_MELD = 0, LISTE_SPUR = 1, LISTE_ANALOG = 2 };

struct SystemDialogState {
    int Ofen = 1;                 ///< furnace number shown (`P_Name`)
    QString Typ;
    QString Serie;
    std::array<i16, 3> Werte{};   ///< stored values of fields 3..5 (`Ofen_Wert216`..`218`)
    int Liste_Art = LISTE_MELD;
    MldList Texte;              ///< `List_MLDTXT`
    QString Ordner;               ///< `Dir1`: folder of the text files
    QString Laufwerk;             ///< `Drive1`: the card drive chosen
};
extern SystemDialogState System;

/// Opens the dialog on furnace number `ofenNr`: its values into the working
/// copy, the station's texts into the list in the form of its messages.
void openSystem(int ofenNr);

/// The text a field of `Text1` shows for the working copy.
QString System_Text1(int feld);
/// A field of `Text1` is left: the value goes into the working copy within
/// its limits; returns the text the field shows now. A serial number without
/// "-" at positions 5 and 9 shows "Die Serien-Nr. hat nicht das" /
/// "Format: >>>JJMM-NNN-TTT<<<" and the field keeps its value.
QString System_Text1_LostFocus(int feld, const QString &text);

/// `M_Nr`: "32 Meldungen" or "48 Meldungen"; the choice sets the number of
/// messages of the text file.
QStringList messageCountTexts();
void chooseMessageCount(int anzahl);

/// The lines of a list kind: "Meld NN", "Spur N" or "Analog NN" and the text
/// the station holds now.
QStringList listLines(int art);

/// The selected list line takes a new text (cut to 22 characters).
void setLine(int zeile, const QString &text);

/// `OKButton`: takes the working copy into the plant and writes the
/// configuration. False when the file cannot be written (with a message).
bool System_OK();

// ---- drives ------------------------------------------------------------------

/// A drive of `Drive1`: its root and its type (0 unknown, 1 removable,
/// 2 fixed, 3 network, 4 CD-ROM, 5 RAM disk).
struct Drive {
    QString Wurzel;
    int Typ = 0;
};
QList<Drive> drives();
/// The line of a drive: root, " : " and the type word ("Unknown", "Removable",
/// "Fixed", "Network", "CD-ROM", "RAM Disk").
QString driveLine(const Drive &l);
/// Type 2 or 3 counts as usable for data.
bool driveUsable(int typ);
/// The ready check of `Timer1`: the drive answers a query of its properties.
bool driveReady(const QString &wurzel);
/// The folder the folder list starts from: the chosen drive when it is
/// ready, else the system's first drive ("C:" on Windows, "/" elsewhere).
QString startFolder(const QString &wurzel);

} // namespace kal
