#pragma once
// The logic of the controller parameter form `KM_RegPar`: one control loop of
// one online furnace, its four PID values (which the user may change in the
// controller) and its live values.
//
// `Reg_Adr[1..8]` are the image words of the loop: 1..4 the parameters
// (proportional band, integral, derivative and sample time), 5..7 set value,
// actual value and output, 8 a further value. A furnace without a version
// word has one set of default words (47, 48, 49, 52, 43, 44, 45, 10), moved by
// `Mess_Basis` for the further loops of its list; a furnace with a version
// word takes the words of each controlled channel from its channel tables.

#include "core/plant_state.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <array>

namespace kal {

/// What the form remembers between refreshes.
struct RegParState {
    u8 Reg_Ofen = 0;               ///< furnace number 1..8 in use, 0 none
    std::array<i16, 9> Reg_Adr{};  ///< [1..8] image words of the loop; [0] unused
    i16 Mess_Basis = 0;            ///< 0, or 200..250 for loop 2..7 of a furnace without version word
    bool Reg_Neu = false;          ///< the loop changed: the input fields are written at the next redraw
    int Wahl = 0;                  ///< selected line of `MesswertWahl`
    QStringList MesswertWahl;      ///< the control loops of the furnace
    std::array<bool, 4> Per_Taste{}; ///< the field was just sent by Enter; leaving it sends nothing
    std::array<QString, 4> Gezeigt;  ///< what the input fields got at the last write
    QList<std::array<i16, 3>> Verlauf; ///< set, actual, output of the last refreshes, oldest first
};
extern RegParState RegPar;

/// Points of the live value plot kept in `Verlauf`.
constexpr int REGPAR_VERLAUF = 240;

/// Numbers (1..8) of the furnaces that are online now: the ones the form offers.
QList<int> regParFurnaces();

/// `Ofen_Wahl`: keeps the furnace in use while it is online, else takes the
/// next online furnace after it (none: 0); fills `MesswertWahl` with the names
/// of its control loops and, when the furnace changed, selects the first loop.
void Ofen_Wahl();

/// The user picked furnace number `ofenNr` (an online one): its loops are
/// listed and the first is selected.
void setRegParFurnace(int ofenNr);

/// `Regler_Umwahl`: loop `wahl` of `MesswertWahl`: loads `Reg_Adr` and
/// `Mess_Basis`, sets `Reg_Neu` and starts a new plot.
void Regler_Umwahl(int wahl);

/// Title of the form: "Regelparameter", the furnace and the loop.
QString regParTitle();

/// One redraw of the form.
struct ControllerValues {
    bool eingabe_neu = false;        ///< write `Eingabe` into the input fields (after a change of loop)
    std::array<QString, 4> Eingabe;  ///< the parameters in their input form
    std::array<QString, 4> Ausgabe;  ///< the parameters as the controller holds them now
    std::array<QString, 4> Live;     ///< set value, actual value, output, further value
    QString Einheit;                 ///< unit of set and actual value
};

/// `Reglerwerte_akt`: reads the words of `Reg_Adr` from the image: the four
/// parameters ("####0.00" of value/100, "#####0.0" of value/10, "#####0.0",
/// "####0.00") and the live values ("#####0", with one decimal where the
/// channel has a divider), and appends the live values to `Verlauf`. Clears
/// `Reg_Neu`. Without a furnace every text is empty.
ControllerValues Reglerwerte_akt();

/// The word an input text of field `i` (0..3) stands for: "," read as ".",
/// the number times 100 (fields 0 and 3) or 10 (1 and 2), to the nearest
/// whole number, negative as 0, above 32767 as 32767; no number reads as 0.
i16 inputWord(int i, const QString &text);

/// A key in input field `i`: Enter (13) sends the value to the controller
/// by `SEND_BEF` and marks the field as done; any other key does nothing.
/// True when sent.
bool inputKey(int i, int taste, const QString &text);

/// The input field `i` is left: a text the user changed and did not send by
/// Enter is sent now; the mark of Enter is cleared.
void inputLeft(int i, const QString &text);

} // namespace kal
