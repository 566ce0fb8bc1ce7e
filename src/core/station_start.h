#pragma once
// Start-up, the slow timer and shutdown of the station: the load handler of the
// main window runs Station_Start, the window's timers call Timer1_Tick (link)
// and Timer2_Tick, and the menu and the window's close call Programm_Ende.

namespace kal {

/// The start-up, in its fixed order: start values, the language and colour
/// tables, the paths, the message store, the configuration, the channels, the
/// message texts, the language files, the live page, the channel states and
/// the dates of the batch browser.
void Station_Start();

/// `Timer1`, every 100 ms: the main cycle, then what the live page takes from
/// it (the time of each online furnace's last block 0, the page's wait count).
void Station_Timer1();

/// `Timer2`, once a second: the temperature text log of each furnace in turn.
void Timer2_Tick();

/// Carries a change of `Sprache` to the tables that depend on it
/// (`Sprachumschalt`); the main window re-captions its menus after it.
void Sprache_Wechseln();

/// Ends the station: closes the message store, unloads the dialogs and ends the
/// process at once. No frame is sent and nothing is saved.
void Programm_Ende();

/// What Programm_Ende does last; tests replace it to stay alive.
using Prozess_Ende_Fn = void (*)(int code);
void setProzessEnde(Prozess_Ende_Fn fn);

} // namespace kal
