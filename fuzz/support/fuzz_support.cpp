#include "support/fuzz_support.h"

#include "core/dates.h"
#include "core/plant_state.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace kal::fuzz {

void StillDialogs::message(const QString &text, const QString &title)
{
    ++shown;
    if (text.startsWith(QLatin1String("CVI:")) || text.startsWith(QLatin1String("CVL:"))) {
        std::fprintf(stderr, "fuzz: deliberate program end reached: %s\n", qPrintable(text));
        std::abort();
    }
}

StillDialogs &stillDialogs()
{
    static StillDialogs d;
    return d;
}

namespace {

QTemporaryDir &scratch()
{
    // /dev/shm keeps the many small writes of a long run off the disk.
    static QTemporaryDir dir(QDir(QStringLiteral("/dev/shm")).exists()
                                 ? QStringLiteral("/dev/shm/kalmeron-fuzz-XXXXXX")
                                 : QDir::tempPath() + QStringLiteral("/kalmeron-fuzz-XXXXXX"));
    if (!dir.isValid()) {
        std::fprintf(stderr, "fuzz: no scratch folder: %s\n", qPrintable(dir.errorString()));
        std::abort();
    }
    return dir;
}

QString runRoot()
{
    return scratch().filePath(QStringLiteral("run"));
}

} // namespace

QString dataFolder()
{
    return runRoot() + QStringLiteral("/up/data");
}

void pinWorld()
{
    stillDialogs().shown = 0;
    setDialogs(&stillDialogs());
    setNow(QDateTime(QDate(2026, 3, 15), QTime(10, 0, 0), Qt::UTC));
}

QString freshRun()
{
    resetPlant();
    pinWorld();
    // The working folder may be inside what is removed; the start-up sets it
    // to the data folder again.
    QDir::setCurrent(scratch().path());
    QDir(runRoot()).removeRecursively();
    const QString ordner = dataFolder();
    QDir().mkpath(ordner);
    plant.Daten_Ordner_Option = ordner;
    return ordner;
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    return f.write(bytes) == bytes.size();
}

QByteArray noSeparators(QByteArray bytes)
{
    bytes.replace('/', '_');
    return bytes;
}

uint8_t Input::byte()
{
    if (n_ == 0)
        return 0;
    --n_;
    return *p_++;
}

uint16_t Input::word()
{
    const uint16_t hi = byte();
    return static_cast<uint16_t>((hi << 8) | byte());
}

QByteArray Input::take(size_t n)
{
    if (n > n_)
        n = n_;
    QByteArray b(reinterpret_cast<const char *>(p_), static_cast<qsizetype>(n));
    p_ += n;
    n_ -= n;
    return b;
}

} // namespace kal::fuzz
