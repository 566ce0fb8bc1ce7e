#include "station/viewer.h"

#include "core/plant_state.h"
#include "curves/curve_store.h"

#include <QFileInfo>
#include <cstdint>

namespace kal {

namespace {

struct Watch {
    QString file;      ///< batch file the size belongs to
    int64_t size = -1; ///< its size when last read
};
Watch watch;
StateReset reset{[] { watch = Watch{}; }};

} // namespace

void viewerTick()
{
    if (plant.Kurve_Online == 0 || plant.Kurve_Datei.isEmpty())
        return;
    const QFileInfo fi(plant.Kurve_Datei);
    const int64_t size = fi.exists() ? fi.size() : -1;
    if (plant.Kurve_Datei != watch.file) {
        // A batch just opened in the window was read by the opening itself.
        watch = {plant.Kurve_Datei, size};
        return;
    }
    if (size <= watch.size)
        return;
    watch.size = size;
    Charge_Online(); // re-reads the batch and tells the window
}

} // namespace kal
