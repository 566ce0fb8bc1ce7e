#pragma once
// Record-number access to a batch file, and the routines that search a file
// for one record: the place of the batch data text, and the duplicate tests
// of the USB import.
//
// A file is opened for one operation (one sample, one load, one import
// record) and closed again, so a reader can open it between two samples of
// the writer. Records are numbered from 1. The record count is the length
// divided by 22, rounded to the nearest whole number (a tie goes to the even
// count, as the integer conversion of the record count always did); a
// truncated last record reads with its missing bytes as 0, and so does a
// record beyond the end. Writing beyond the end fills the gap with zero
// records.
//
// Long walks over a file read it in runs of several thousand records, never
// record by record.

#include "recording/batch_record.h"

#include <QByteArray>
#include <QFile>
#include <QString>
#include <algorithm>
#include <vector>

namespace kal {

/// Run-time error of a record number below 1.
constexpr int ERR_BAD_RECORD = 63;
/// Records read in one go by the walks over a file.
constexpr int SATZ_BLOCK = 4096;

class BatchFile {
public:
    BatchFile() = default;
    ~BatchFile() { close(); }
    BatchFile(const BatchFile &) = delete;
    BatchFile &operator=(const BatchFile &) = delete;

    /// Opens for reading and writing; a missing file is created. A file that
    /// can't be opened raises RunError(ERR_FILE).
    void open(const QString &pfad);
    /// Opens for reading only; false when the file is missing or unreadable.
    bool openRead(const QString &pfad);
    void close();
    bool isOpen() const { return file_.isOpen(); }
    QString path() const { return file_.fileName(); }

    /// Length / 22, rounded to the nearest whole number, ties to even.
    int count() const;
    /// Record `nr` (1..); missing bytes read as 0.
    BatchRecord read(int nr);
    /// Records first .. first+n-1 in one read; records beyond the end are 0.
    void readRun(int first, int n, std::vector<BatchRecord> &out);
    /// Writes record `nr`; a gap behind the present end is filled with zeros.
    /// A failed write raises RunError(ERR_FILE).
    void write(int nr, const BatchRecord &satz);
    /// Writes n consecutive records from `nr` on in one go.
    void write(int nr, const BatchRecord *saetze, int n);

private:
    QFile file_;
    QByteArray buffer_;
};

/// Record count of a byte length: length / record length rounded to the
/// nearest whole number, ties to even (every record file of the station is
/// counted so).
int recordCountOfLength(qint64 laenge, int satzLaenge = SATZ_LAENGE);

/// Next free data record behind `satzZahl` records: count + 1, but never
/// below 40, so the first sample of a file lands at record 40 behind the
/// header slots 1..39 (written or left zero).
inline int nextDataRecord(int satzZahl)
{
    return std::max(satzZahl + 1, SATZ_DATEN_START);
}

/// Calls fn(nr, satz) for records first..last, ascending, read in runs;
/// stops early when fn returns false.
template <typename F>
void forEachRecord(BatchFile &datei, int first, int last, F fn)
{
    std::vector<BatchRecord> run;
    for (int nr = first; nr <= last; nr += SATZ_BLOCK) {
        const int n = std::min(SATZ_BLOCK, last - nr + 1);
        datei.readRun(nr, n, run);
        for (int i = 0; i < n; ++i)
            if (!fn(nr + i, run[i]))
                return;
    }
}

/// Calls fn(nr, satz) for records from..to, descending (from >= to), read in
/// runs; stops early when fn returns false.
template <typename F>
void forEachRecordDown(BatchFile &datei, int from, int to, F fn)
{
    std::vector<BatchRecord> run;
    for (int hi = from; hi >= to; hi -= SATZ_BLOCK) {
        const int lo = std::max(to, hi - SATZ_BLOCK + 1);
        datei.readRun(lo, hi - lo + 1, run);
        for (int nr = hi; nr >= lo; --nr)
            if (!fn(nr, run[nr - lo]))
                return;
    }
}

/// Result of a search for the first batch data text record (kind 9001).
struct TextSearch {
    int nr = 0;                 ///< the record found; 0 none
    bool gelesen = false;       ///< the search read at least one record
    BatchRecord zuletzt;        ///< the record read last: the one found, else the file's last
};

/// Looks through the file from record `from` to the end for the first record
/// of kind 9001.
TextSearch firstTextRecord(BatchFile &datei, int from);

/// Writes the 160 characters of the batch data text into the file as the 16
/// records 9001..9016: over the first 9001 found from record 5 on, else behind
/// the last record (between the samples of a running batch; the writer goes on
/// behind it). A missing file is left alone and gives false.
bool Chargendaten_Speichern(const QString &pfad, const QString &chargendaten);

/// Duplicate test of the single samples of the USB import: 0 when one of the
/// records nummer-1 down to 2 equals `satz` in all fields, else -1 (also when
/// nummer is below 3). Only a -1 is written.
i16 CheckCharge(BatchFile &datei, int nummer, const BatchRecord &satz);

/// Duplicate test of the USB import's sample groups: walks from record
/// `nummer` down to 40 and gives -1 at the first record that is not of kind
/// 154 or differs from `satz`; 0 only when every one of them equals it, or when
/// nummer is below 40. The import asks with the next free record, which reads
/// as zeros, so the answer is -1 in all ordinary cases and the group is written.
i16 Check_LogSatz80(BatchFile &datei, int nummer, const BatchRecord &satz);

} // namespace kal
