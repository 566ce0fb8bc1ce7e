#include "recording/batch_file.h"

#include "core/tables.h"

#include <cstring>

namespace kal {

namespace {

[[noreturn]] void raiseRecord(int nr)
{
    throw RunError(ERR_BAD_RECORD, "bad record number " + std::to_string(nr));
}

[[noreturn]] void raiseFile(const QFile &f, const char *what)
{
    throw RunError(ERR_FILE, std::string(what) + ": " + f.fileName().toStdString() + ": " +
                                 f.errorString().toStdString());
}

} // namespace

int recordCountOfLength(qint64 laenge, int satzLaenge)
{
    const qint64 q = laenge / satzLaenge;
    const qint64 r = laenge % satzLaenge;
    const bool auf = 2 * r > satzLaenge || (2 * r == satzLaenge && (q & 1));
    return static_cast<int>(q + (auf ? 1 : 0));
}

void BatchFile::open(const QString &pfad)
{
    close();
    file_.setFileName(pfad);
    if (!file_.open(QIODevice::ReadWrite))
        raiseFile(file_, "cannot open");
}

bool BatchFile::openRead(const QString &pfad)
{
    close();
    file_.setFileName(pfad);
    return file_.open(QIODevice::ReadOnly);
}

void BatchFile::close()
{
    if (file_.isOpen())
        file_.close();
}

int BatchFile::count() const
{
    return isOpen() ? recordCountOfLength(file_.size()) : 0;
}

BatchRecord BatchFile::read(int nr)
{
    std::vector<BatchRecord> one;
    readRun(nr, 1, one);
    return one[0];
}

void BatchFile::readRun(int first, int n, std::vector<BatchRecord> &out)
{
    if (first < 1)
        raiseRecord(first);
    out.assign(std::max(n, 0), BatchRecord{});
    if (n <= 0 || !isOpen())
        return;
    const qint64 offset = qint64(first - 1) * SATZ_LAENGE;
    const qint64 size = file_.size();
    if (offset >= size)
        return;
    const qint64 want = std::min<qint64>(qint64(n) * SATZ_LAENGE, size - offset);
    buffer_.resize(want);
    qint64 got = 0;
    if (file_.seek(offset))
        got = file_.read(buffer_.data(), want);
    if (got < 0)
        got = 0;
    // Bytes that did not come (a truncated last record) stay 0.
    if (got < qint64(n) * SATZ_LAENGE)
        buffer_.resize(qint64(n) * SATZ_LAENGE);
    std::memset(buffer_.data() + got, 0, buffer_.size() - got);
    for (int i = 0; i < n; ++i)
        out[i] = unpackRecord(buffer_.constData() + qint64(i) * SATZ_LAENGE);
}

void BatchFile::write(int nr, const BatchRecord &satz)
{
    write(nr, &satz, 1);
}

void BatchFile::write(int nr, const BatchRecord *saetze, int n)
{
    if (nr < 1)
        raiseRecord(nr);
    if (!isOpen())
        raiseFile(file_, "not open");
    const qint64 offset = qint64(nr - 1) * SATZ_LAENGE;
    const qint64 size = file_.size();
    QByteArray bytes;
    qint64 at = offset;
    if (offset > size) {
        // The records between the end and the new one are written as zeros,
        // whatever the file system would leave there.
        bytes = QByteArray(offset - size, '\0');
        at = size;
    }
    const qsizetype head = bytes.size();
    bytes.resize(head + qsizetype(n) * SATZ_LAENGE);
    for (int i = 0; i < n; ++i)
        packRecord(saetze[i], bytes.data() + head + qsizetype(i) * SATZ_LAENGE);
    if (!file_.seek(at) || file_.write(bytes) != bytes.size())
        raiseFile(file_, "cannot write");
}

TextSearch firstTextRecord(BatchFile &datei, int from)
{
    TextSearch t;
    forEachRecord(datei, from, datei.count(), [&](int nr, const BatchRecord &s) {
        t.gelesen = true;
        t.zuletzt = s;
        if (s.Satz_Art != Satz_Text)
            return true;
        t.nr = nr;
        return false;
    });
    return t;
}

bool Chargendaten_Speichern(const QString &pfad, const QString &chargendaten)
{
    if (!QFile::exists(pfad))
        return false;
    BatchFile datei;
    datei.open(pfad);
    const TextSearch t = firstTextRecord(datei, 5);
    const int start = t.nr > 0 ? t.nr : datei.count() + 1;
    const auto saetze = batchDataRecords(chargendaten);
    datei.write(start, saetze.data(), TEXT_SAETZE);
    return true;
}

i16 CheckCharge(BatchFile &datei, int nummer, const BatchRecord &satz)
{
    i16 result = -1;
    if (nummer < 3)
        return result;
    forEachRecordDown(datei, nummer - 1, 2, [&](int, const BatchRecord &s) {
        if (s == satz) {
            result = 0;
            return false;
        }
        return true;
    });
    return result;
}

i16 Check_LogSatz80(BatchFile &datei, int nummer, const BatchRecord &satz)
{
    i16 result = 0;
    if (nummer < SATZ_DATEN_START)
        return result;
    // The import asks with the next free record, which differs at once: that
    // one record is read alone rather than a whole run behind it.
    const BatchRecord erster = datei.read(nummer);
    if (erster.Satz_Art != Satz_Charge || !(erster == satz))
        return -1;
    forEachRecordDown(datei, nummer, SATZ_DATEN_START, [&](int, const BatchRecord &s) {
        if (s.Satz_Art != Satz_Charge || !(s == satz)) {
            result = -1;
            return false;
        }
        return true;
    });
    return result;
}

} // namespace kal
