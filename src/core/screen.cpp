#include "core/screen.h"

#include "core/plant_state.h"

namespace kal {

namespace {
Screen headless;
Screen *current = &headless;
} // namespace

Screen &screen()
{
    return *current;
}

void setScreen(Screen *s)
{
    current = s ? s : &headless;
}

void LogList_Add(const QString &line)
{
    plant.LogList.append(line);
    screen().showLogLine(line);
}

} // namespace kal
