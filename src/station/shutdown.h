#pragma once
// The end of the station, from the menu entry `mnuBeenden`, the main window's
// close and the signals SIGTERM and SIGINT.

namespace kal {

/// `Programm_Ende`: closes the message store, unloads the dialogs and ends the
/// process at once. No frame is sent and nothing is saved.
void Programm_Ende();

/// Ends the process with `code` at once (the last step of Programm_Ende and
/// of a refused start-up); tests replace it to stay alive.
using EndProcessFn = void (*)(int code);
void setEndProcess(EndProcessFn fn);
void endProcess(int code);

} // namespace kal
