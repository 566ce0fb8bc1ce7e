#pragma once
// What every fuzz target shares: silent dialogs, a scratch data folder, and a
// reader that takes the fuzzer's bytes apart into the pieces a target needs.
//
// A target is one file fuzz/<name>.cpp that defines fuzzOne (and fuzzSetUp
// when it needs a set-up once per process), plus its seed corpus in
// fuzz/corpus/<name>/. A target starts its run with freshRun, so that a
// finding replays from its input alone (only the date parsers, which keep
// nothing in the plant, skip it: it is most of a short run's time). The entry
// points of libFuzzer (entry.cpp) end every run in the working folder it
// started in, which the station's start-up moves to its data folder.

#include "core/dialogs.h"

#include <QByteArray>
#include <QString>
#include <cstddef>
#include <cstdint>

namespace kal::fuzz {

/// Dialogs that answer like an operator who always says No and takes the first
/// button, without printing. The deliberate program end of a corrupt packed
/// number (CVI, CVL) aborts instead of ending quietly, so that the fuzzer
/// reports it with the stack that led there.
class StillDialogs : public Dialogs {
public:
    void message(const QString &text, const QString &title) override;
    bool question(const QString &text, const QString &title) override { return false; }
    int choice(const QString &text, const QString &title, const QStringList &buttons) override { return 0; }
    /// Messages shown since the last reset (a target may check its count).
    int shown = 0;
};

/// The process's silent dialogs; installs them on first use.
StillDialogs &stillDialogs();

class Input;

/// The target: one run on the fuzzer's bytes.
void fuzzOne(Input &in);
/// The target's set-up, once per process before the first run; the default
/// does nothing.
void fuzzSetUp();

/// The silent dialogs and the station's clock pinned to 15.03.2026 10:00:00
/// (dates of files and records are judged against it).
void pinWorld();

/// A fresh plant for one run: resetPlant(), pinWorld(), and an empty data
/// folder named in `Daten_Ordner_Option`. Returns that folder.
QString freshRun();

/// The data folder of the process: <scratch>/run/data, inside a scratch folder
/// on a memory file system when there is one. Paths from a fuzzed file can
/// climb one level with ".." (they hold no separators, see noSeparators), so
/// the data folder lies two levels below the scratch root, which freshRun
/// empties as a whole.
QString dataFolder();

/// Writes the bytes to the file (created or truncated); false when it can't.
bool writeFile(const QString &path, const QByteArray &bytes);

/// The bytes with every '/' replaced by '_': a fuzzed file that names folders
/// (the configuration's log book, USB, CSV and backup folders, which the
/// start-up creates) then names folders inside the scratch folder only.
QByteArray noSeparators(QByteArray bytes);

/// Takes the fuzzer's bytes apart front to back; past the end every read gives
/// zeros and empty pieces.
class Input {
public:
    Input(const uint8_t *data, size_t size) : p_(data), n_(size) {}
    bool empty() const { return n_ == 0; }
    size_t left() const { return n_; }
    uint8_t byte();
    /// Two bytes, high byte first.
    uint16_t word();
    /// Up to n bytes.
    QByteArray take(size_t n);
    /// Everything left.
    QByteArray rest() { return take(n_); }

private:
    const uint8_t *p_;
    size_t n_;
};

} // namespace kal::fuzz
