// The USB import through its real tick slices: a form-20 source of 20 000
// records and a form-80 source of 5 000 sample groups, each into a fresh
// target. Reported: the total, the longest slice (one page tick, 50
// records), and for comparison the time to write the same target records
// one file open per record, which is the import's own output pattern.

#include "core/plant_state.h"
#include "recording/batch_file.h"
#include "recording/batch_names.h"
#include "recording/usb_import.h"
#include "support/usb_quelle.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace kal;
using namespace kal::test;

namespace {

UsbSourceBuilder sourceOfForm(int form)
{
    UsbSourceBuilder q(form);
    if (form == 20) {
        q.addRecord(207, 12, 3, 2024, 0, 0, 0);
        for (int i = 0; i < 20000; ++i)
            q.addRecord(1, 12, 3, 2024, i / 3600 % 24, i / 60 % 60, i % 60, {int16_t(i), 5, int16_t(i)});
    } else {
        for (int i = 0; i < 5000; ++i)
            q.addRecord(154, 12, 3, 2024, i / 3600 % 24, i / 60 % 60, i % 60, {int16_t(i), 5, 7, 3, 0});
    }
    return q;
}

/// A fresh data folder with the source in its USB folder.
void prepare(QTemporaryDir &dir, const UsbSourceBuilder &q)
{
    resetPlant();
    plant.Pfad[2] = dir.filePath("USB");
    plant.Charge_Ordner[0] = dir.filePath("LogBuch");
    QDir(plant.Charge_Ordner[0]).removeRecursively();
    QDir().mkpath(plant.Pfad[2]);
    QDir().mkpath(plant.Charge_Ordner[0]);
    q.writeTo(QDir(plant.Pfad[2]).filePath("Q1"));
}

void BM_UsbImport(benchmark::State &state)
{
    const UsbSourceBuilder q = sourceOfForm(int(state.range(0)));
    double laengste = 0, summe = 0;
    for (auto _ : state) {
        state.PauseTiming();
        QTemporaryDir dir;
        prepare(dir, q);
        plant.USB_Menue = -1;
        usbImportTick();
        USB_Button();
        state.ResumeTiming();
        QElapsedTimer gesamt;
        gesamt.start();
        for (;;) {
            QElapsedTimer t;
            t.start();
            const bool lief = usbImportTick();
            laengste = std::max(laengste, t.nsecsElapsed() / 1e6);
            if (!lief)
                break;
        }
        summe += gesamt.nsecsElapsed() / 1e6;
    }
    state.counters["longest_slice_ms"] = laengste;
    state.counters["total_ms"] = summe / double(state.iterations());
}

/// The target records written directly, one open per record (form 20) or
/// per group of four (form 80).
void BM_WriteOutput(benchmark::State &state)
{
    const int form = int(state.range(0));
    double summe = 0;
    for (auto _ : state) {
        state.PauseTiming();
        QTemporaryDir dir;
        const QString p = dir.filePath("US.OVD");
        BatchRecord r{};
        r.Satz_Art = 1;
        state.ResumeTiming();
        QElapsedTimer t;
        t.start();
        const int n = form == 20 ? 20001 : 5000;
        for (int i = 0; i < n; ++i) {
            BatchFile f;
            f.open(p);
            r.Wert[2] = i16(i);
            if (form == 20) {
                f.write(f.count() + 1, r);
            } else {
                const BatchRecord g[4] = {r, r, r, r};
                f.write(std::max(f.count() + 1, 40), g, 4);
            }
        }
        summe += t.nsecsElapsed() / 1e6;
    }
    state.counters["total_ms"] = summe / double(state.iterations());
}

} // namespace

BENCHMARK(BM_UsbImport)->Arg(20)->Arg(80)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_WriteOutput)->Arg(20)->Arg(80)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK_MAIN();
