// A batch file loaded into the curve window: both passes, the group decoder,
// messages and segment lines, the first page; then a few presses of the
// paging and zoom buttons, and a live refresh after more records arrived.
//
// Input: one control byte (bit 0: the file lies in the folder of the furnace
// whose files are all read from record 40; bits 1..3: number of button
// presses), that many button bytes (0, 1, 5 or 6 by their low two bits), a
// length (two bytes, high first), the file's first bytes of that length, and
// the bytes appended before the live refresh.

#include "core/plant_state.h"
#include "curves/curve_store.h"
#include "curves/time_axis.h"
#include "support/fuzz_support.h"

#include <QDir>
#include <QFile>

void kal::fuzz::fuzzOne(Input &in)
{
    const uint8_t steuer = in.byte();
    const int druecke = (steuer >> 1) & 7;
    QByteArray tasten;
    for (int i = 0; i < druecke; ++i)
        tasten.append(static_cast<char>(in.byte()));
    const QByteArray anfang = in.take(in.word());
    const QByteArray dazu = in.rest();

    const QString ordner = freshRun() + ((steuer & 1) ? QStringLiteral("/0708001QRV") : QString());
    QDir().mkpath(ordner);
    const QString pfad = ordner + QStringLiteral("/D1203017KHP000001150326.OVD");
    writeFile(pfad, anfang);
    plant.Kurve_Datei = pfad;
    Charge_geladen();
    static constexpr int seitenTasten[] = {TASTE_ZURUECK, TASTE_VOR, TASTE_ZOOM_EIN, TASTE_ZOOM_AUS};
    for (char t : tasten)
        curvePageKey(seitenTasten[static_cast<uint8_t>(t) & 3]);
    QFile f(pfad);
    if (f.open(QIODevice::Append)) {
        f.write(dazu);
        f.close();
    }
    Charge_Online();
}
