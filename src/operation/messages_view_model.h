#pragma once
// The logic of the message form `KM_Alarme`: the list of active messages of
// the ticked furnaces (normal mode), the list of every message with its PLC
// configuration (configuration mode), the four configuration lamps per
// furnace, the button captions and presses (acknowledge, SMS on/off, back).
// The form only shows what these routines give and passes its events on.

#include "core/plant_state.h"
#include "operation/status_colours.h"

#include <QList>
#include <QString>
#include <array>
#include <functional>

namespace kal {

// ---- state of the message form --------------------------------------------------

/// Opens the form in normal mode (the live page's message button) or in
/// configuration mode (menu `mnuMeldConfig`). Ticks nothing.
void openMessages(bool konfig);
/// The form closed: its menu entry is free again and the live page refreshes
/// at its next tick.
void messagesClosed();

/// Called after a message came or went: redraws the lamps, and in normal mode
/// the list, when the form is shown.
void messagesChanged();
/// Called when the PLC's message configuration of a furnace was read: redraws
/// the lamps, and the list when the configuration changed.
void messageConfigChanged(int ofen, bool geaendert);


// ---- what the form shows --------------------------------------------------------------

/// One line of `List1`; `daten` is the item data (furnace * 128 + message
/// index in configuration mode, 0 in normal mode).
struct MessageLine {
    QString text;
    int daten = 0;
};

/// The four lamps `MLD_AKT`, `MLD_STOP`, `MLD_N2`, `MLD_SMS` of a furnace.
struct MessageLamps {
    bool sichtbar = false;
    std::array<ColourValue, 4> farbe{Farbe_Normal, Farbe_Normal, Farbe_Normal, Farbe_Normal};
};

/// `CODE_Akt`: lamps of every furnace from word 699 of the configuration
/// shadow. Shown only while the PLC has a message configuration; a lamp is
/// light red while its bit (0 any message, 1 Stop, 2 N2, 3 SMS) is set.
std::array<MessageLamps, OFEN_MAX> CODE_Akt();

/// `Meld_Akt`: the lines of `List1` in the form's mode. Normal mode: every
/// active message of every online, ticked furnace, from the store. Configuration
/// mode: every message of every ticked furnace with its AKTIV, Stop, N2 and SMS
/// bits from the word image.
QList<MessageLine> Meld_Akt();

/// Window title: `Sprachtext` 48, with "Config" in front in configuration mode.
QString messagesTitle();
/// Caption of a furnace's box: last digit of its number, ":", its 16-character name.
QString boxCaption(int ofen);
/// The boxes of furnaces that are not enabled stay hidden in normal mode.
bool boxVisible(int ofen);
/// A box changed: stores the tick (the form then redraws the list).
void tickBox(int ofen, int wert);
/// A line was clicked: in configuration mode it selects that message for the
/// SMS button.
void messageLineClicked(int daten);

/// Captions of `Taste(0..7)`; an empty caption is a button that does nothing.
std::array<QString, 8> messageKeyCaptions();

/// What the form does after a button.
enum class KeyEffect {
    Nichts,         ///< nothing more
    Neu_Zeichnen,   ///< redraw list, lamps and captions
    Schliessen,     ///< close the form
};
/// The button handler: `flag` 0 is a press, -1 only refreshes the captions.
/// A press of button 6 acknowledges the messages of the furnace selected on
/// the live page (command 4 to word 30); button 2 switches the SMS bit of the
/// selected line; button 7 closes the form.
KeyEffect messageKey(int index, int flag);

} // namespace kal
