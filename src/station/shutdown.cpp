#include "station/shutdown.h"

#include "core/plant_state.h"
#include "core/screen.h"
#include "operation/message_store.h"
#include "station/single_station.h"

#include <cstdio>
#include <cstdlib>

namespace kal {

namespace {

void standardEnde(int code)
{
    std::fflush(nullptr);
    std::_Exit(code);
}

Prozess_Ende_Fn g_ende = standardEnde;
StateReset reset{[] { g_ende = standardEnde; }};

} // namespace

void setProzessEnde(Prozess_Ende_Fn fn)
{
    g_ende = fn ? fn : standardEnde;
}

void Prozess_Ende(int code)
{
    g_ende(code);
}

void Programm_Ende()
{
    Meld_Datei_Schliessen();
    screen().Formen_Entladen();
    // The next start finds the folder free instead of a lock to take over.
    releaseDataFolder();
    Prozess_Ende(0);
}

} // namespace kal
