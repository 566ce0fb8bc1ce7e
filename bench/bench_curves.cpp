// The curve store on long batches: loading a headed batch (both passes, the
// entry lists, the first page), one page at the start, middle and end of it
// (reduction and scaling, without painting), and its CSV export. Counters: bytes of the entry
// lists per record, and the peak resident memory of the process.

#include "config/languages.h"
#include "core/plant_state.h"
#include "curves/csv_export.h"
#include "curves/curve_reduce.h"
#include "curves/curve_scale.h"
#include "curves/curve_store.h"
#include "curves/time_axis.h"
#include "recording/batch_file.h"

#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <map>
#include <sys/resource.h>

using namespace kal;

namespace {

/// A headed batch of `n` records: eleven channels in the identity head, one
/// sample group a minute.
QString batchFile(int n)
{
    static QTemporaryDir dir;
    static std::map<int, QString> made;
    if (auto it = made.find(n); it != made.end())
        return it->second;
    const QString p = dir.filePath(QStringLiteral("D2401100TST") + QString::number(n % 1000000).rightJustified(6, QLatin1Char('0')) +
                                   QStringLiteral("050324.OVD"));
    std::array<i16, 12> a{}, b{};
    a[0] = i16(0x8000 | 0x0100 | 10);
    b[0] = 43;
    for (int k = 1; k < 11; ++k) {
        a[size_t(k)] = i16(0xC000 | 0x0100 | 11);
        b[size_t(k)] = i16(0x1000 | (599 + k));
    }
    BatchFile f;
    f.open(p);
    for (const auto &[nr, s] : headerRecords(QStringLiteral("Ofen 1"), RecordTime{1, 1, 24, 0, 0, 0}, a, b, {}, true))
        f.write(nr, s);
    std::vector<BatchRecord> run;
    QDateTime t(QDate(2024, 1, 1), QTime(0, 0), Qt::UTC);
    int nr = SATZ_DATEN_START;
    LogBlock w{};
    w[0] = Satz_Charge;
    int i = 0;
    while (nr + int(run.size()) + 3 <= n) {
        w[3] = i16(800 + i % 50);
        w[4] = i16(790 + i % 40);
        for (int k = 10; k < 30; ++k)
            w[size_t(k)] = i16(700 + (i + k) % 90);
        w[36] = i16(((1 + (i / 5000) % 20) << 8) | 1);
        for (const BatchRecord &s : groupRecords(w, timeOfDate(t)))
            run.push_back(s);
        t = t.addSecs(60);
        ++i;
        if (run.size() >= size_t(SATZ_BLOCK)) {
            f.write(nr, run.data(), int(run.size()));
            nr += int(run.size());
            run.clear();
        }
    }
    if (!run.empty())
        f.write(nr, run.data(), int(run.size()));
    made[n] = p;
    return p;
}

void prepare()
{
    resetPlant();
    buildLanguageTable();
    Sprachumschalt();
}

size_t listBytes()
{
    size_t b = Kurve.listen.zeiten.stempel.capacity() * sizeof(Stamp) +
               Kurve.listen.zeiten.minute.capacity() * sizeof(int32_t);
    auto liste = [&](const EntryList &l) {
        b += l.zeit.capacity() * 4 + l.wert.capacity() * 2 + l.out.capacity() * 2 +
             l.seg.capacity() * sizeof(SegmentFields) + l.spur.capacity() * sizeof(l.spur[0]);
    };
    for (const auto &l : Kurve.listen.Wertliste)
        liste(l);
    for (const auto &l : Kurve.listen.Sollliste)
        liste(l);
    for (const auto &l : Kurve.listen.Meldliste)
        liste(l);
    return b;
}

double peakMB()
{
    rusage u{};
    getrusage(RUSAGE_SELF, &u);
    return u.ru_maxrss / 1024.0;
}

void CurveLoad(benchmark::State &state)
{
    const int n = int(state.range(0));
    const QString p = batchFile(n);
    prepare();
    plant.Kurve_Datei = p;
    for (auto _ : state) {
        Charge_geladen();
        benchmark::DoNotOptimize(Kurve.seite.Punkt_Ist[0][0]);
    }
    state.counters["records"] = n;
    state.counters["bytes_per_record"] = double(listBytes()) / n;
    state.counters["peak_rss_MB"] = peakMB();
}

void CurvePage(benchmark::State &state)
{
    const int n = int(state.range(0));
    const int wo = int(state.range(1));
    prepare();
    plant.Kurve_Datei = batchFile(n);
    Charge_geladen();
    while (Kurve.Taste_An[TASTE_ZOOM_EIN])
        curvePageKey(TASTE_ZOOM_EIN);
    const int64_t dauer = Kurve.Kurve_Erster.secsTo(Kurve.Kurve_Letzter);
    const int64_t seite = int64_t(Kurve.Zeit_Raster) * SEGMENTE;
    const int64_t versatz = wo == 0 ? 0 : (wo == 1 ? dauer / 2 : std::max<int64_t>(0, dauer - seite));
    Kurve.Zeit_Marke[0] = Kurve.Kurve_Erster.addSecs(versatz);
    timeAxis();
    Kurve.Spur_Fertig.fill(0);
    for (auto _ : state) {
        Kurven_Zeichnen();
        const CurveScale s = scalePage(Kurve.seite, plant.Kanal_Zahl[0], 0, 600, 1080);
        benchmark::DoNotOptimize(s.Null_Y);
    }
    state.counters["entries"] = Kurve.listen.Wertliste[0].size();
}

/// The CSV file of a loaded batch (the export button with no column choice):
/// every row of the batch formatted and written.
void CsvExport(benchmark::State &state)
{
    const int n = int(state.range(0));
    prepare();
    plant.Kurve_Datei = batchFile(n);
    Charge_geladen();
    static QTemporaryDir ziel;
    const QString datei = ziel.filePath(QStringLiteral("export.CSV"));
    for (auto _ : state)
        benchmark::DoNotOptimize(exportCsvFile(datei));
    state.counters["rows"] = Kurve.listen.Wertliste[0].size();
    state.counters["rows_per_s"] =
        benchmark::Counter(double(Kurve.listen.Wertliste[0].size()) * double(state.iterations()), benchmark::Counter::kIsRate);
}

} // namespace

BENCHMARK(CsvExport)->Arg(160000)->Unit(benchmark::kMillisecond);
BENCHMARK(CurveLoad)->Arg(160000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(CurvePage)->ArgsProduct({{10000, 1000000}, {0, 1, 2}})->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
