#include "station/shutdown.h"

#include "core/plant_state.h"
#include "core/screen.h"
#include "operation/message_store.h"
#include "station/single_station.h"

#include <cstdio>
#include <cstdlib>

namespace kal {

namespace {

void defaultEnd(int code)
{
    std::fflush(nullptr);
    std::_Exit(code);
}

EndProcessFn g_ende = defaultEnd;
StateReset reset{[] { g_ende = defaultEnd; }};

} // namespace

void setEndProcess(EndProcessFn fn)
{
    g_ende = fn ? fn : defaultEnd;
}

void endProcess(int code)
{
    g_ende(code);
}

void Programm_Ende()
{
    closeMessageStore();
    screen().unloadForms();
    // The next start finds the folder free instead of a lock to take over.
    releaseDataFolder();
    endProcess(0);
}

} // namespace kal
