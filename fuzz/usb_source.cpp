// Source files of the USB import, imported as the live page's timer does it:
// the source list, each header checked, the records of the three forms turned
// into batch files (questions answered No), each source deleted when done.
//
// Input: one control byte (the number of sources, 1..3, by its low two bits;
// 0 counts as 1), then per source a length (two bytes, high first) and its
// bytes. The sources are named "A1", "A2", "A3" (two characters always
// qualify), so they are read in that order.

#include "core/plant_state.h"
#include "recording/usb_import.h"
#include "support/fuzz_support.h"

#include <QDir>

void kal::fuzz::fuzzOne(Input &in)
{
    const int quellen = std::max(1, in.byte() & 3);
    const QString daten = freshRun();
    plant.Pfad[0] = daten;
    plant.Pfad[2] = daten + QStringLiteral("/USB");
    plant.Charge_Ordner[0] = daten + QStringLiteral("/LogBuch");
    QDir().mkpath(plant.Pfad[2]);
    QDir().mkpath(plant.Charge_Ordner[0]);
    plant.USB_Menue = -1;
    for (int i = 1; i <= quellen; ++i)
        writeFile(plant.Pfad[2] + QStringLiteral("/A%1").arg(i), in.take(in.word()));

    usbImportTick(); // the list, as the page reads it while idle
    USB_Button();
    // A wrong header stops the import until the operator acts: a bounded
    // number of ticks ends the run then.
    for (int takt = 0; takt < 500 && usbImportTick(); ++takt) {
    }
}
