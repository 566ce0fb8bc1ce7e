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
struct Takt_Sperre {
    Takt_Sperre() { plant.Takt_Laeuft = TRUE16; }
    ~Takt_Sperre() { plant.Takt_Laeuft = FALSE16; }
};

/// Address of the furnace on turn, four octets joined by "."; empty when
/// `Akt_Ofen` names no furnace (the round has just ended).
QString Akt_Adresse()
{
    if (plant.Akt_Ofen < 0 || plant.Akt_Ofen >= OFEN_MAX)
        return QString();
    return Ofen_Adresse(plant.Akt_Ofen);
}

/// Runs the steps of one tick under the cycle's error mode.
class Takt {
public:
    int schritt = 0;

    /// Runs one step; false when an error ended the tick.
    template <typename F>
    bool lauf(F &&f)
    {
        try {
            f();
            return true;
        } catch (const RunError &e) {
            return fehler(e.number);
        } catch (const std::exception &) {
            return fehler(ERR_UNBEKANNT);
        }
    }

private:
    bool fehler(int nummer)
    {
        if (plant.Fehler_Pause >= 1)
            return true; // errors are ignored: the tick goes on with its next step
        Timer1_Fehler(nummer, schritt);
        return false;
    }
};

/// Steps 20..150: the turn of `Akt_Ofen`. False when an error ended the tick.
bool Erste_Haelfte(Takt &t)
{
    if (!t.lauf([&] {
            t.schritt = 20;
            Runde_Start();
        }))
        return false;
    const int ofen = plant.Akt_Ofen;
    QString tag;
    if (!t.lauf([&] {
            t.schritt = 30;
            tag = Ofen_Tag(ofen);
        }))
        return false;
    bool ruht = false;
    if (!t.lauf([&] {
            t.schritt = 40;
            ruht = Ofen_Ruht(ofen);
        }))
        return false;
    if (ruht)
        return true; // straight on with the second half
    bool abgebaut = false;
    if (!t.lauf([&] {
            t.schritt = 50;
            abgebaut = Ofen_Abbauen(ofen, tag);
        }))
        return false;
    if (!abgebaut) {
        bool online = false;
        if (!t.lauf([&] { online = Verbindung_Pruefen(ofen, tag, t.schritt); }))
            return false;
        if (online) {
            if (!t.lauf([&] { Verkehr(ofen, t.schritt); }))
                return false;
            if (!t.lauf([&] {
                    t.schritt = 130;
                    Status_Online(ofen, tag);
                }))
                return false;
        }
    }
    return t.lauf([&] {
        t.schritt = 150;
        Naechster_Ofen();
    });
}

/// Steps 170..310: derived data of every online furnace, the configuration
/// save the identity check asked for, and the sample of the live curve.
void Zweite_Haelfte(Takt &t)
{
    for (int ofen = 0; ofen < OFEN_MAX; ++ofen) {
        if (!t.lauf([&] {
                t.schritt = 170;
                Ofen_Ableiten(ofen, t.schritt);
            }))
            return;
    }
    if (!t.lauf([&] {
            t.schritt = 300;
            if (plant.Config_Save != 0) {
                plant.Config_Save = 0;
                Config_Schreiben(true);
            }
        }))
        return;
    t.lauf([&] {
        t.schritt = 310;
        Graph_Online();
    });
}

/// What the live page takes from every tick: the time of each online
/// furnace's last block 0, and one count of its refresh wait.
void Seite_Fuettern()
{
    for (int f = 0; f < OFEN_MAX; ++f)
        if (plant.Ofen_Online[f])
            Block0_Zeit_Setzen(f);
    Seite_Warten_Zaehlen();
}

} // namespace

void Timer1_Tick()
{
    // A tick that comes while another waits for a connect is dropped, as a
    // timer never re-enters its running handler.
    if (plant.Takt_Laeuft != 0)
        return;
    Takt_Sperre sperre;
    Takt t;
    // A viewer talks to no PLC: its cycle only feeds the live page.
    if (!plant.viewer && Erste_Haelfte(t))
        Zweite_Haelfte(t);
    Seite_Fuettern();
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
            TempLog_Takt_Ofen(ofen);
        } catch (const RunError &) {
        } catch (const std::exception &) {
        }
    }
}

void Timer1_Fehler(int nummer, int schritt)
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
    const QString zeile = Datum_System(Jetzt()) + QStringLiteral("   Line") + Zahl_Text(schritt) +
                          QStringLiteral("   Err:") + Zahl_Text(nummer) + QStringLiteral("   ") + Akt_Adresse();
    LogList_Add(zeile);
}

} // namespace kal
