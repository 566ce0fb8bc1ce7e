#pragma once
// Calls between subsystems that would otherwise depend on each other in a
// circle: the word decoder (link) reaches the recorder, the message log and the
// text load; the main cycle reaches the main window's status bar and menu.
// Start-up fills them; an empty hook does nothing. Tests fill them with their
// own recorders.

#include <QString>
#include <functional>

namespace kal {

struct Hooks {
    /// The recorder: store the log block of furnace number 1..8.
    std::function<void(int ofenNr)> Charge_Schreiben;
    /// The message log: message n of the furnace index came (+n) or went (-n).
    std::function<void(int ofen, int n)> MeldEintrag;
    /// The PLC text load of furnace number 1..8 (runs when its block 3 arrived).
    std::function<void(int ofenNr)> Load_Text;
    /// The message form shows furnace index `ofen`: refresh it, and rebuild its
    /// list when `rebuild` (the message configuration changed).
    std::function<void(int ofen, bool rebuild)> Alarme_Refresh;
    /// A sample was written to the batch file that the curve view shows live.
    std::function<void(int ofen)> Charge_Online;
    /// Text of status-bar panel `panel` (furnace index + 1).
    std::function<void(int panel, const QString &text)> Status_Panel;
    /// Switches the controller menu entry on or off.
    std::function<void(bool on)> mnuRegler;
    /// A line for the main cycle's error list (LogList of the live page).
    std::function<void(const QString &line)> LogList_Add;
    /// The configuration must be written (take over the PLC identity when true).
    std::function<void(bool take_plc)> Config_Schreiben;
    /// Channel set-up of a furnace index (after an address change).
    std::function<void(int ofen)> Kanal_Setup;
    /// `Sprache` changed and the language tables are switched: the main window
    /// re-captions its menus and asks the open forms to redraw.
    std::function<void()> Sprache_Geaendert;
    /// Switches entry i of the main window's form menu (`mnuform`) on or off.
    std::function<void(int i, bool on)> mnuform_Schalten;
    /// Shows the live page `KM_Menue` (last step of the start-up).
    std::function<void()> Menue_Zeigen;
    /// Unloads the dialogs in the order of the shutdown (before the process ends).
    std::function<void()> Formen_Entladen;
    /// The live curve's sample of the main cycle (its last step).
    std::function<void()> Graph_Online;
};

extern Hooks hooks;

/// Calls a hook when it is set.
template <typename F, typename... A>
void callHook(const F &f, A &&...a)
{
    if (f)
        f(std::forward<A>(a)...);
}

} // namespace kal
