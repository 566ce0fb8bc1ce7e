// Reading a headed batch file through the reader: layout, span pass and
// curve pass, all records collected. Reported as records per second.

#include "recording/batch_reader.h"

#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <map>
#include <memory>

using namespace kal;

namespace {

/// A headed file of about `n` records: the header, then sample groups one
/// minute apart, written in large runs.
QString batchFile(int n)
{
    static QTemporaryDir dir;
    static std::map<int, QString> made;
    if (auto it = made.find(n); it != made.end())
        return it->second;
    const QString p = dir.filePath(QStringLiteral("D1203017GKD%1050312.OVD").arg(n, 6, 10, QLatin1Char('0')));
    BatchFile f;
    f.open(p);
    const std::array<i16, 12> a{}, b{};
    for (const auto &[nr, s] : headerRecords(QStringLiteral("Ofen 1"), RecordTime{1, 1, 12, 0, 0, 0}, a, b, {}, true))
        f.write(nr, s);
    std::vector<BatchRecord> run;
    run.reserve(SATZ_BLOCK);
    QDateTime t(QDate(2012, 1, 1), QTime(0, 0), Qt::UTC);
    int nr = SATZ_DATEN_START;
    LogBlock w{};
    w[0] = Satz_Charge;
    for (int i = 10; i < 40; ++i)
        w[i] = static_cast<i16>(i * 37);
    while (nr + int(run.size()) <= n) {
        w[3] = static_cast<i16>(nr % 1200);
        for (const BatchRecord &s : groupRecords(w, timeOfDate(t)))
            run.push_back(s);
        t = t.addSecs(60);
        if (int(run.size()) >= SATZ_BLOCK - 4) {
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

void BM_ReadBatch(benchmark::State &state)
{
    const QString p = batchFile(int(state.range(0)));
    int64_t saetze = 0;
    for (auto _ : state) {
        BatchRead r = readBatch(p);
        benchmark::DoNotOptimize(r.saetze.data());
        saetze += r.layout.satzZahl;
    }
    state.counters["records/s"] = benchmark::Counter(double(saetze), benchmark::Counter::kIsRate);
}

} // namespace

BENCHMARK(BM_ReadBatch)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
