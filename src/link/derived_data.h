#pragma once
// What the main cycle derives from the word image of each online furnace after
// its traffic: program start, the PLC clock's correction, remaining time and
// forecast end of the running program, and the identity check that tells
// whether the furnace is still the one the configuration knows.

#include <QString>

namespace kal {

/// `Prog_Dauer_Text` of a number of hours: hours right-aligned in three
/// columns, ":", minutes in two digits, "h" (" 12:05h"). `minuten` is set to
/// the whole time in minutes (hours * 60 + rounded minutes).
QString durationText(double stunden, int &minuten);

/// Program times, clock correction, remaining time and forecast end of one
/// furnace, from the stamp of its last block 0; runs when block 0 brought a
/// valid stamp (`Prog_Neu`). `schritt` is set to the step under way.
void programTimes(int ofen, int &schritt);

/// The identity check of one furnace, once blocks 0, 1 and 2 were all seen:
/// element data, the text images `PLC_Name` .. `PLC_Bezeichnung`,
/// `Kennung_Fehler` 1..8 and `Kennung_Zaehler`. A failure seen twice in a row
/// starts the text load (furnace with a layout block) or asks for the
/// configuration to be written with the PLC's identity (`Config_Save`).
void checkIdentity(int ofen, int &schritt);

/// The whole second half of the tick for one furnace index: an offline furnace
/// only has its `Prog_Start_Text` cleared.
void deriveFurnace(int ofen, int &schritt);

} // namespace kal
