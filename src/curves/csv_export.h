#pragma once
// `CSV_EXPORT`: the batch on view in the curve window, row by row, either as
// a CSV file (";" between columns, CR LF) for the customer's quality system,
// or as fixed columns of 10 characters in the value list `KM_Liste`. Both
// modes walk the same entry lists, so file and list hold the same rows:
//   - message rows (when the Ist row switch is on): one per message bit that
//     came or went against the previous row; a message already on in row 1
//     shows six blanks instead of "kommt ";
//   - a segment row (when the Soll row switch is on) where the programme
//     enters a new segment;
//   - one data row per sample of channel 0: date, time, and the chosen
//     columns Soll, Ist, Out of every channel in use.
// Numbers follow the system's number format (a decimal comma on a German
// system).
//
// The column choice is the three plant-wide flag tables `CSV_Spalten`
// (0 Soll, 1 Ist, 2 Out), index 1..11 for channels 0..10; element 11 of Soll
// and Ist doubles as the row switches of segments and messages.

#include "core/plant_state.h"

#include <QString>
#include <QStringList>

namespace kal {

constexpr int LISTE_SPALTEN = 12;  ///< flags 0..11 of a column set
constexpr int LISTE_ZELLE = 10;    ///< width of a cell in the value list
constexpr int LISTE_TAKTE = 100;   ///< the list window's tick count stops here
constexpr int LISTE_PAUSE = 10;    ///< ticks after the last click before the rebuild

/// The value list window's memory (reset with the plant).
struct Listen_Fenster {
    bool Liste_Gewaehlt = false; ///< the operator made a column choice
    QStringList CSV_Text;        ///< the two head lines
    QStringList CSV_LIST;        ///< the rows
    int Zaehler = LISTE_TAKTE;   ///< ticks since the last click on a check
    bool Offen = false;          ///< the window is open
};
extern Listen_Fenster Listen;

/// `Liste_Soll`, `Liste_Ist`, `Liste_Out`: flag k of a column set.
i16 &Liste_Soll(int k);
i16 &Liste_Ist(int k);
i16 &Liste_Out(int k);

/// The CSV file of the batch on view, as the batch browser names it: the
/// name stem of `Kurve_Datei` with ".CSV" in the CSV folder.
QString csvTarget();

/// `CSV_EXPORT(ZuListe)`: false writes `CSV_Datei`, true fills the value
/// list. Asks for the CSV folder when it is missing and, in file mode, before
/// an existing file is replaced. False when nothing was exported.
bool CSV_EXPORT(bool ZuListe);

/// The file of `CSV_EXPORT(false)` written to `ziel` without any question
/// (the headless export): the default column choice, the target replaced.
/// False when it could not be written.
bool exportCsvFile(const QString &ziel);

/// `List_akt()`: the checks are in the arrays; marks the choice as made and
/// rebuilds the list.
void List_akt();

/// The value list window's timer: counts ticks up to 100 and rebuilds the
/// list once at exactly 10 ticks after the last click on a check. True when
/// it rebuilt the list.
bool listTick();
/// A click on a check: the count starts again.
void listChecked();

/// The value list window closed: mouse moves read values again.
void listClosed();

} // namespace kal
