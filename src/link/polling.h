#pragma once
// The first half of the main cycle: each tick serves one furnace, `Akt_Ofen`.
// A furnace resting after a failed connect is skipped; a disabled or
// re-addressed one is taken down; otherwise its link is checked (a connect try
// waits up to two seconds, yielding to the event loop) and a connected furnace
// sends at most one frame: its queued write, else the next 100-word block of
// its poll sequence. Then its status panel is brought up to date and the next
// furnace is chosen.
//
// The routines are the steps of `Timer1_Tick` (main_cycle.h), which runs them
// one after the other under its error handling.

#include <QString>
#include <functional>

namespace kal {

/// The clock, the yield and the random numbers of the main cycle. The station
/// uses the real ones; scheduler tests install their own so that a connect
/// wait runs tick by tick without real waiting.
struct CycleClock {
    /// Seconds since midnight (falls back to 0 at midnight).
    std::function<double()> Sekunden;
    /// One yield to the event loop: socket events and other timers run.
    std::function<void()> Nachgeben;
    /// A random number 0 <= x < 1.
    std::function<double()> Zufall;
};

/// The clock in use; `resetCycleClock()` puts the real one back.
CycleClock &cycleClock();
void resetCycleClock();

/// Seconds the connect try of a furnace may take before the cycle goes on.
constexpr int CONNECT_SEKUNDEN = 2;

/// Step 20: a round over all furnaces ended (`Akt_Ofen` outside 0..7): start
/// again at furnace 0, count `Import_Pause` down, switch the controller menu
/// on when a furnace was online in that round, else off.
void startRound();

/// Step 40: a furnace resting after a failed connect (`Reconnect_Wait` above
/// 0) counts one round down and is skipped: `Akt_Ofen` moves on. True then.
bool furnaceResting(int ofen);

/// Step 50: a furnace disabled or marked for re-initialisation is taken down
/// (its socket closed, set up anew when re-addressed; panel "Offline").
/// True when that was the case.
bool takeDown(int ofen, const QString &tag);

/// Steps 60..80: the link check. True when the furnace's channel is up; else a
/// connect is tried, and when it fails the furnace rests 1 to 20 rounds and
/// its panel shows "Connect".
bool checkConnection(int ofen, const QString &tag, int &schritt);

/// Steps 90..120: the one frame of a connected furnace: nothing while the
/// settings dialog talks to it, else its queued write, else the wait for an
/// open Modbus read (given up at the seventh turn), else the next block.
void exchange(int ofen, int &schritt);

/// The poll sequence: the next phase of the furnace (or the trigger block
/// when the decoder asked for it) and the read of its 100-word block.
void pollRead(int ofen);

/// Step 130: the panel of a connected furnace: "Online", the tag, the server
/// octet and the moving activity strip, or " Fehler" and the step at which its
/// last answer failed.
void Status_Online(int ofen, const QString &tag);

/// Step 150: the next furnace: `Next_Ofen` when a command asked for it (with
/// its `Next_Phase`), else `Akt_Ofen` + 1.
void nextFurnace();

} // namespace kal
