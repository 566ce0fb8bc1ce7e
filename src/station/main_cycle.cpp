#include "station/main_cycle.h"

#include "config/config_file.h"
#include "core/dates.h"
#include "core/plant_state.h"
#include "core/screen.h"
#include "curves/live_curve.h"
#include "link/channels.h"
#include "link/derived_data.h"
#include "link/polling.h"
#include "operation/live_page.h"
#include "recording/temp_log.h"
#include "station/viewer.h"

#include <exception>

namespace kal {

namespace {

/// Repeats of the first logged error the handler counts down before it logs
/// that error again.
constexpr int FEHLER_PAUSE = 100;

/// Marks the tick as running for as long as it runs, also when it ends early.
struct TickGuard {
    TickGuard() { plant.Takt_Laeuft = TRUE16; }
    ~TickGuard() { plant.Takt_Laeuft = FALSE16; }
};

/// Address of the furnace on turn, four octets joined by "."; empty when
/// `Akt_Ofen` names no furnace (the round has just ended).
QString currentAddress()
{
    if (plant.Akt_Ofen < 0 || plant.Akt_Ofen >= OFEN_MAX)
        return QString();
    return furnaceAddress(plant.Akt_Ofen);
}

/// Runs the steps of one tick under the cycle's error mode.
class Tick {
public:
    int schritt = 0;

    /// Runs one step; false when an error ended the tick.
    template <typename F>
    bool run(F &&f)
    {
        try {
            f();
            return true;
        } catch (const RunError &e) {
            return handleError(e.number);
        } catch (const std::exception &) {
            return handleError(ERR_UNBEKANNT);
        }
    }

private:
    bool handleError(int nummer)
    {
        if (plant.Fehler_Pause >= 1)
            return true; // errors are ignored: the tick goes on with its next step
        Timer1_Error(nummer, schritt);
        return false;
    }
};

/// Steps 20..150: the turn of `Akt_Ofen`. False when an error ended the tick.
bool firstHalf(Tick &t)
{
    if (!t.run([&] {
            t.schritt = 20;
            startRound();
        }))
        return false;
    const int ofen = plant.Akt_Ofen;
    QString tag;
    if (!t.run([&] {
            t.schritt = 30;
            tag = furnaceTag(ofen);
        }))
        return false;
    bool ruht = false;
    if (!t.run([&] {
            t.schritt = 40;
            ruht = furnaceResting(ofen);
        }))
        return false;
    if (ruht)
        return true; // straight on with the second half
    bool abgebaut = false;
    if (!t.run([&] {
            t.schritt = 50;
            abgebaut = takeDown(ofen, tag);
        }))
        return false;
    if (!abgebaut) {
        bool online = false;
        if (!t.run([&] { online = checkConnection(ofen, tag, t.schritt); }))
            return false;
        if (online) {
            if (!t.run([&] { exchange(ofen, t.schritt); }))
                return false;
            if (!t.run([&] {
                    t.schritt = 130;
                    Status_Online(ofen, tag);
                }))
                return false;
        }
    }
    return t.run([&] {
        t.schritt = 150;
        nextFurnace();
    });
}

/// Steps 170..310: derived data of every online furnace, the configuration
/// save the identity check asked for, and the sample of the live curve.
void secondHalf(Tick &t)
{
    for (int ofen = 0; ofen < OFEN_MAX; ++ofen) {
        if (!t.run([&] {
                t.schritt = 170;
                deriveFurnace(ofen, t.schritt);
            }))
            return;
    }
    if (!t.run([&] {
            t.schritt = 300;
            if (plant.Config_Save != 0) {
                plant.Config_Save = 0;
                Config_Schreiben(true);
            }
        }))
        return;
    t.run([&] {
        t.schritt = 310;
        Graph_Online();
    });
}

/// What the live page takes from every tick: the time of each online
/// furnace's last block 0, and one count of its refresh wait.
void feedLivePage()
{
    for (int f = 0; f < OFEN_MAX; ++f)
        if (plant.Ofen_Online[f])
            updateBlock0Time(f);
    countPageWait();
}

} // namespace

void Timer1_Tick()
{
    // A tick that comes while another waits for a connect is dropped, as a
    // timer never re-enters its running handler.
    if (plant.Takt_Laeuft != 0)
        return;
    TickGuard sperre;
    Tick t;
    // A viewer talks to no PLC: its cycle only feeds the live page.
    if (!plant.viewer && firstHalf(t))
        secondHalf(t);
    feedLivePage();
}

void Timer2_Tick()
{
    // A viewer keeps no temperature log; it follows the batch on view instead.
    if (plant.viewer) {
        viewerTick();
        return;
    }
    for (int ofen = 0; ofen < OFEN_MAX; ++ofen) {
        try {
            tempLogTick(ofen);
        } catch (const RunError &) {
        } catch (const std::exception &) {
        }
    }
}

void Timer1_Error(int nummer, int schritt)
{
    if (nummer == ERR_ADDRESS_IN_USE && plant.Akt_Ofen >= 0 && plant.Akt_Ofen < OFEN_MAX)
        plant.Ofen_Aktiv[plant.Akt_Ofen] = 0;
    if (nummer == plant.Fehler_Letzter) {
        if (plant.Fehler_Pause > 0) {
            --plant.Fehler_Pause;
            if (plant.Fehler_Pause == 0)
                plant.Fehler_Letzter = -1;
        }
        return;
    }
    plant.Fehler_Pause = FEHLER_PAUSE;
    plant.Fehler_Letzter = nummer;
    const QString zeile = systemDateText(now()) + QStringLiteral("   Line") + signedText(schritt) +
                          QStringLiteral("   Err:") + signedText(nummer) + QStringLiteral("   ") + currentAddress();
    LogList_Add(zeile);
}

} // namespace kal
