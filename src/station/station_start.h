#pragma once
// The start-up of the station: the load handler of the main window runs
// Station_Start once; from then on the window's timer drives the main cycle
// (main_cycle.h) and the menu and the window's close end the station
// (shutdown.h).

#include <QString>

namespace kal {

/// The date separator of the system: "." unless the present date's text in
/// the system's short form holds "/".
QString systemDateSeparator();

/// The start-up, in its fixed order: the subsystems wired together (the run
/// ends when a hook whose absence would lose data is missing), start values,
/// the language and colour tables, the paths, the message store, the
/// configuration, the channels, the message texts, the language files, the live
/// page, the channel states and the dates of the batch browser.
void Station_Start();

} // namespace kal
