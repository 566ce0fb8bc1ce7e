#pragma once
// One record of the configuration file "Kalmeron.DAT" and the random access to
// it by record number.
//
// A record is 34 bytes:
//   0..3   B0..B3  four single bytes
//   4..13  W0..W4  five 16-bit words, low byte first
//   14..33 TEXT    20 characters of the 8-bit code page (Latin-1), blank-filled
// Records are numbered from 1. The record is packed and unpacked field by
// field, so the layout does not depend on how the compiler lays out a struct.

#include "core/plant_state.h"

#include <QByteArray>
#include <QFile>
#include <QString>

namespace kal {

constexpr int CONFIG_SATZ_LAENGE = 34;
constexpr int CONFIG_TEXT_LAENGE = 20;

struct ConfigRecord {
    u8 B[4]{};
    i16 W[5]{};
    QByteArray TEXT = QByteArray(CONFIG_TEXT_LAENGE, '\0'); ///< always 20 bytes

    /// The 34 bytes of the record.
    QByteArray bytes() const;
    /// Takes a record from its bytes; missing bytes of a short record read as 0.
    static ConfigRecord from(const QByteArray &bytes);

    /// Puts `text` at character `pos` (1..20), cut or blank-padded to `width`.
    void putText(int pos, int width, const QString &text);
    /// Puts raw bytes (a packed number) at character `pos` (1..20).
    void putBytes(int pos, const QByteArray &bytes);
    /// The raw bytes of characters pos .. pos+width-1.
    QByteArray rawText(int pos, int width) const;
    /// Characters pos .. pos+width-1 as text, through Text_Sauber.
    QString text(int pos, int width) const;
};

/// The configuration file opened for reading and writing by record number.
/// Reading a record past the end gives a record of zeros; writing past the end
/// fills the gap with zero records. I/O failures raise RunError(ERR_FILE).
class ConfigRecordFile {
public:
    /// Opens (and with `create` creates) the file.
    ConfigRecordFile(const QString &path, bool create);
    /// Number of whole records in the file.
    int records() const;
    ConfigRecord read(int nr);
    void write(int nr, const ConfigRecord &satz);

private:
    QFile file_;
};

} // namespace kal
