#pragma once
// Reading a batch file back: which layout it has, its time span, its program
// and batch data texts, and the records that go on to the curves.
//
// Layouts. A headed file carries the markers 13, 10, 58 in `Tag` of records
// 2, 3, 4 (with the identity pairs behind them) and the 32 message texts in
// records 8..39; its type is -10, or 0 for the one furnace whose files have
// "0708001QRV" in their path. A file without those markers is plain (type 0);
// when it holds a record of kind 110 from record 5 on it is an older plain
// file with 4 tracks. Data start at record 40 in a headed file and in every
// "0708001QRV" file, else at record 5 (records 5..39 of a plain live file are
// zero and fall out by their date).
//
// Two passes walk the data. The first finds the time span (at minute
// resolution), the program text (159) and the batch data text (9001..9020);
// text records never reach its date test, and an hour of 24 counts as hour 0
// of the same day. The second drops exact repeats of the previous record and
// records with an impossible date (a hair looser on the year than the first
// pass, and strict on the hour: 24 falls out here), and gives each kept record
// the time key "JJMMTT HH:MM:SS" of the last record that carried a time; the
// following records of a group (155..157, 160..163) skip the date test and
// take the key of their group's first record.
//
// A file of fewer than two records is empty: its layout is told, no pass runs.

#include "recording/batch_file.h"

#include <QDateTime>
#include <QString>
#include <array>
#include <functional>
#include <vector>

namespace kal {

/// What the head of a file tells.
struct BatchLayout {
    int satzZahl = 0;              ///< records in the file
    QString titel;                 ///< 16 characters of record 1, as stored
    bool versionDa = false;        ///< record 5 carries the mark 9021
    QString version;               ///< its 20 characters, when versionDa
    int kennungSaetze = 0;         ///< identity records found in order 2, 3, 4 (0..3)
    bool kopf = false;             ///< headed: all three markers
    i16 dateiTyp = 0;              ///< -10 headed; 0 plain or "0708001QRV"
    bool alt110 = false;           ///< not headed, a record of kind 110 from record 5 on
    std::array<i16, 12> kennungA{}; ///< identity pairs of the records found
    std::array<i16, 12> kennungB{};
    std::vector<QString> meldTexte; ///< headed: the 32 texts of records 8..39, 22 characters as stored
    int startSatz = 5;             ///< first data record
};

/// What the first pass finds.
struct BatchSpan {
    int zeitSaetze = 0;            ///< records that counted as a time
    QDateTime erster;              ///< earliest time (invalid when none)
    QDateTime letzter;             ///< latest time
    RecordTime ersterZeit;           ///< time bytes of the earliest and the latest time
    RecordTime letzterZeit;
    bool programmDa = false;
    QString programmText;          ///< 16 characters of the last 159
    int textSaetze = 0;            ///< text records met
    QString chargendaten;          ///< 160 characters; blanks where no text record wrote
};

/// One record kept by the second pass.
struct AcceptedRecord {
    int nr = 0;                    ///< record number in the file
    BatchRecord satz;
    RecordTime zeit;                 ///< time of the key
    bool zeitDa = false;           ///< false before the first record with a time
    /// The key "JJMMTT HH:MM:SS", or "" before the first record with a time.
    QString key() const { return zeitDa ? Satz_Zeit(zeit) : QString(); }
};

/// A whole file read through.
struct BatchRead {
    bool gefunden = false;         ///< the file could be opened
    BatchLayout layout;
    BatchSpan span;
    std::vector<AcceptedRecord> saetze;
    int satzLetzter = 0;           ///< highest record number handed on
};

/// The layout of an open file (its path decides the "0708001QRV" case).
BatchLayout detectLayout(BatchFile &datei);

/// Writes the ten characters of a text record (9001..9020) into the 160
/// characters of the batch data text; characters beyond 160 are lost.
void addBatchDataText(QString &chargendaten, const BatchRecord &satz);

/// First pass: time span, program text and batch data text.
BatchSpan scanTimeRange(BatchFile &datei, const BatchLayout &layout);
/// The first pass continued from record `von` (never before the first data
/// record) into what an earlier pass found: a batch that is still written is
/// scanned once, then only its new records.
void scanTimeRange(BatchFile &datei, const BatchLayout &layout, int von, BatchSpan &S);

/// Minutes of six time bytes (hour and minute in range) on one scale with
/// every other time: a real calendar date counts directly; any other goes
/// through the date builder, which moves it onto a real date.
int64_t minutesValue(const RecordTime &z);

/// Second pass: hands every kept record above `satzLetzter` to `fn`, in file
/// order; fn returns false to end the pass early. Returns the highest record
/// number handed on (satzLetzter when none).
int walkRecords(BatchFile &datei, const BatchLayout &layout, int satzLetzter,
                const std::function<bool(const AcceptedRecord &)> &fn);

/// Opens the file, tells its layout and runs both passes, collecting the
/// kept records above `satzLetzter`. A missing file gives gefunden false.
BatchRead readBatch(const QString &pfad, int satzLetzter = 0);

} // namespace kal
