#pragma once
// The rules of the step editor: which commands a row offers, how a row is
// arranged for its command, how a typed value is taken into the working copy
// and shown again, the captions of the buttons, what a button does, the
// question on closing a changed program, and the total time at the foot.
// The form KM_Schritte only shows what these routines say.

#include "programs/program_file.h"
#include "programs/program_transfer.h"

#include <QList>
#include <QString>
#include <array>

namespace kal {

constexpr int EDITOR_ZEILEN = 8;     ///< rows shown at once
constexpr double GRAD_MAX = 999.9;   ///< K/h and h of a ramp or hold field

/// An entry of a row's command list: its caption and its command value.
struct CommandEntry {
    QString text;
    int befehl = 0;
};

/// Command list of row `zeile` (0..7): "Ende", then the commands whose bit in
/// `Befehl_Maske` is set; "Zyklus" not in the first row of the table, where
/// a cycle has nothing before it.
QList<CommandEntry> commandList(int zeile);

enum class FieldState { Offen, Gesperrt, Verborgen };

/// `Segment(row)`: how a row is arranged for the command of segment k.
struct RowLayout {
    QString Soll_Einh;
    FieldState Sollwert = FieldState::Verborgen;
    QString Grad_Einheit;
    bool Grad_Einheit_Bleibt = false; ///< "Sprung": the unit stays as it was
    bool Gradient = false;
    bool MaxOUT = false;
    QString Gradient_Leer;            ///< text an empty Gradient field gets
    QString Soll_Hinweis, Grad_Hinweis, Max_Hinweis;
};
RowLayout segmentLayout(int k);

/// The fields of segment k as the row shows them.
struct RowTexts {
    QString Sollwert, Gradient, MaxOUT, Zuluft, Analog2;
};
RowTexts segmentTexts(int k);

/// A typed number: a decimal comma counts as a point; text after the number
/// is ignored, no number is 0.
double parseNumber(const QString &text);

/// The field routines: each takes the text of one field of segment k into the
/// working copy, puts a number beyond a limit at the limit without a message,
/// and sets `Prog_Geaendert`.
void SollwertFormat(int k, const QString &text);
void GradientFormat(int k, const QString &text);
void MaxOutFormat(int k, const QString &text);
void ZuluftFormat(int k, const QString &text);
void AnalogFormat(int k, const QString &text);
/// A command chosen in the list of segment k; a ramp or hold without a value
/// gets 0.1, a cycle a target and count within their limits.
void chooseCommand(int k, int befehl);
/// A click on output `bit` (0..3) of segment k flips it.
void toggleOutput(int k, int bit);
/// Caption of an output button: "-1-" / "-0-", or "-Ar-" / "-N2-" for the
/// fourth output of a furnace that chooses argon or nitrogen there.
QString outputCaption(bool gesetzt, bool argonWahl);

/// The first pass of `Ausgabe_AKT` over all 20 segments: a hold takes the set
/// value of the segment before it (the first starts from 0), any other
/// segment has a negative set value put to 0.
void fillSetpoints();

/// `Loadtaste`: captions of `Taste(0)` .. `Taste(6)`. After a paste
/// `Prog_Geaendert` is cleared and `Taste(6)` loads into the furnace; a
/// changed program is saved by `Taste(6)`; an unchanged one is loaded when
/// the furnace is online and runs no program. An online furnace offers its
/// six memory places on `Taste(0)` .. `Taste(5)`.
std::array<QString, 7> Loadtaste();

/// What a button did.
enum class KeyEffect {
    Nichts,     ///< empty or other caption, or a send while one is pending
    Gesendet,   ///< the block is queued: show the progress form
    Abgelehnt,  ///< refused with its message
    Gesichert,  ///< saved; the date shows anew
    Fehler,     ///< the file could not be written; the message was shown
};

/// `Taste(i)` with its caption, `name` the text of the name field.
KeyEffect editorKey(int i, const QString &caption, const QString &name);

/// Saves the working copy with the name of the name field (cut or padded to
/// Prog_Name_Len) as `Prog_Nr`; clears `Prog_Geaendert`. False when the file
/// could not be written (a message says so).
bool saveEditor(const QString &name);

/// The three lines of the question on closing a changed program.
QString closeQuestion();

/// Opens the editor's working copy: furnace number and program number
/// (0 or above 100 becomes 1), name cleaned and cut, an empty date today; an
/// unreadable file gives an empty program. False with no furnace.
bool openEditor(int ofenNr, int p);

/// Characters below 32 turn to blanks, trailing blanks go, cut to `laenge`.
QString cleanName(const QString &name, int laenge);

/// Window title: "[" the last digit of the furnace number "]  " type text.
QString editorTitle();

/// Running time of a program in minutes: a ramp counts the distance from the
/// temperature before it (either way) at its rate, a hold its time; the sum
/// stops at the first end. A ramp of rate 0 counts nothing.
long programMinutes(const Program &t);
/// Hours and minutes: hours in `stundenFormat`, ":", two-digit minutes, " h".
QString durationText(long minuten, const QString &stundenFormat);

/// Hint of a set value field: " 0 -" and `Soll_Max`.
QString setpointHint();

/// Tenths as "###0.0", with a point whatever the system's decimal mark.
QString tenthsText(int zehntel);

} // namespace kal
