#pragma once
// Calls that run up the layers: the word decoder (link) hands a log block to
// the recorder, reports messages to the message log and starts the text load
// (operation); the recorder tells the curve view that the batch it shows grew.
// The station sets every hook in one place (src/station/wiring.cpp) before the
// first tick. An unset hook does nothing, except the recorder's: without it the
// decoder leaves the log block unacknowledged in the PLC, and the start-up
// refuses to run.

#include <functional>

namespace kal {

struct Hooks {
    /// The recorder: store the log block of furnace number 1..8.
    std::function<void(int ofenNr)> Charge_Schreiben;
    /// The message log: message n of the furnace index came (+n) or went (-n).
    std::function<void(int ofen, int n)> MeldEintrag;
    /// The PLC's message configuration of a furnace index was read; `anders`
    /// when it changed.
    std::function<void(int ofen, bool anders)> Alarme_Refresh;
    /// The PLC text load of furnace number 1..8 (runs when its block 3 arrived).
    std::function<void(int ofenNr)> Load_Text;
    /// A sample was written to the batch file that the curve view may show live.
    std::function<void(int ofen)> Charge_Online;
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
