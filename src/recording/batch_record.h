#pragma once
// One record of a batch file and the builders of every record kind.
//
// A batch file is a plain array of 22-byte records, numbered from 1:
//
//   offset 0   i16  Satz_Art   record kind (in header and text records: text or a value)
//   offset 2   u8   Tag        day 1..31
//   offset 3   u8   Monat      month 1..12
//   offset 4   u8   Jahr       year minus 2000
//   offset 5   u8   Stunde     hour 0..23
//   offset 6   u8   Minute
//   offset 7   u8   Sekunde
//   offset 8   7 x i16 Wert[0..6]
//
// Integers are little-endian; text is one Latin-1 byte a character. Records
// are packed and unpacked field by field, never by casting a struct over the
// bytes. Only the first record of a sample group (154, 160), the program text
// (159) and the single samples carry a real time in bytes 2..7; the other
// records keep words or characters there.
//
// The builders take the 40 words w0..w39 of a PLC log block and the time of
// the block (Datum_Log) and return the records exactly as they are stored.

#include "core/plant_state.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <array>
#include <utility>
#include <vector>

namespace kal {

constexpr int SATZ_LAENGE = 22;       ///< bytes per record
constexpr int SATZ_DATEN_START = 40;  ///< first data record of every live file
constexpr int KOPF_MELDTEXTE = 32;    ///< message texts in records 8..39

// Record kinds.
constexpr i16 Satz_Charge = 154;      ///< first record of a sample group
constexpr i16 Satz_Programm = 159;    ///< 16-character program text
constexpr i16 Satz_Strom = 160;       ///< first record of an element current group
constexpr i16 Satz_Text = 9001;       ///< first batch data text record (9001..9016 written)
constexpr i16 Satz_Text_Ende = 9020;  ///< readers take 9001..9020 as text
constexpr i16 Satz_Alt = 110;         ///< single sample of the older PLC log format
constexpr i16 Satz_Version_Marke = 9021; ///< Wert[6] of record 5 when the version text is there
constexpr int TEXT_SAETZE = 16;       ///< records of Chargendaten (160 characters)
constexpr int CHARGENDATEN_LAENGE = 160;

/// Markers in `Tag` of records 2, 3, 4 of a headed file (CR, LF, ":").
constexpr u8 Marke_Kennung[3] = {13, 10, 58};

/// Version text of the writing program, stored in record 5.
inline const char *const Version_Text = "V5.5 -  2.12.2015   ";

struct BatchRecord {
    i16 Satz_Art = 0;
    u8 Tag = 0;
    u8 Monat = 0;
    u8 Jahr = 0;
    u8 Stunde = 0;
    u8 Minute = 0;
    u8 Sekunde = 0;
    std::array<i16, 7> Wert{};

    bool operator==(const BatchRecord &) const = default;
};

/// Writes the 22 bytes of a record to `out`.
void packRecord(const BatchRecord &satz, char *out);
QByteArray packRecord(const BatchRecord &satz);
/// Reads a record from 22 bytes at `in`.
BatchRecord unpackRecord(const char *in);
/// Reads a record from up to 22 bytes; missing bytes count as 0 (a truncated
/// last record of a file).
BatchRecord unpackRecord(const QByteArray &bytes);

/// The six time bytes of a record.
struct RecordTime {
    u8 Tag = 0;
    u8 Monat = 0;
    u8 Jahr = 0;     ///< year minus 2000
    u8 Stunde = 0;
    u8 Minute = 0;
    u8 Sekunde = 0;

    bool operator==(const RecordTime &) const = default;
};

/// Time bytes of a date (year minus 2000; a date outside 2000..2255 is cut to
/// its low byte, which the readers' year test then refuses).
RecordTime timeOfDate(const QDateTime &d);
/// Time bytes of the station's date text (the form of Datum_Log); an unreadable
/// text gives all zeros.
RecordTime timeOfText(const QString &datumText);
void setRecordTime(BatchRecord &satz, const RecordTime &zeit);
RecordTime timeOf(const BatchRecord &satz);

/// The key by which the curve store orders records: "JJMMTT HH:MM:SS", each
/// field at least two digits (a byte above 99 shows all its digits).
QString Satz_Zeit(const RecordTime &zeit);

// ---- text in records ------------------------------------------------------
// Text sits in a record as characters in bytes 2..7 and as two-character
// words (first character in the low byte, as CVI reads it) in Satz_Art and
// Wert. Word index -1 stands for Satz_Art, 0..6 for Wert[0..6].

/// Characters of bytes 2..7 (six characters).
QString timeText(const BatchRecord &satz);
/// Characters of the words first..last, two a word.
QString wordText(const BatchRecord &satz, int first, int last);

// ---- builders from a log block -------------------------------------------------

using LogBlock = std::array<i16, 40>;

/// The w5 of a sample group as it is stored: the low byte when the high byte
/// is 0, else (high byte AND 15) * 16 OR the low byte.
i16 storedW5(i16 w5);

/// The four records of a sample group, kind k = w0 (154 or 160) and k+1..k+3.
/// With `w5Roh` the w5 is stored as it stands (the USB import does so).
std::array<BatchRecord, 4> groupRecords(const LogBlock &w, const RecordTime &zeit, bool w5Roh = false);
/// The program text record 159: characters 1 and 2 from w31 in Minute and
/// Sekunde, w32..w38 in Wert.
BatchRecord programTextRecord(const LogBlock &w, const RecordTime &zeit);
/// A single-record sample of kind w0: Wert[0] = w3 / 10, Wert[1] = w4 / 10,
/// rounded half to even; Wert[2..6] = w5..w9.
BatchRecord Satz_Einzel(const LogBlock &w, const RecordTime &zeit);
/// The PLC's short text records 9001 (w10..w14) and 9002 (w15..w19). Wert[2..6]
/// and nothing else come from `puffer`, the record the writer's buffer holds.
std::array<BatchRecord, 2> plcTextRecords(const LogBlock &w, const BatchRecord &puffer);
/// The 16 records 9001..9016 of the batch data text (160 characters, blank
/// padded or cut). Wert[2..6] are 0.
std::array<BatchRecord, TEXT_SAETZE> batchDataRecords(const QString &chargendaten);

/// Half-to-even rounding of value / 10.
i16 tenthsRounded(i16 value);

// ---- header of a headed file ------------------------------------------------------

/// Record 1: the furnace name, 16 characters, and the time of the block that
/// created the header.
BatchRecord nameRecord(const QString &name, const RecordTime &zeit);
/// Records 2, 3, 4: identity pairs 0..3, 4..7, 8..11 behind the markers 13, 10, 58;
/// bytes 3..7 keep the time of record 1.
std::array<BatchRecord, 3> identityRecords(const std::array<i16, 12> &kennungA,
                                          const std::array<i16, 12> &kennungB, const RecordTime &zeit);
/// Record 5: the version text with the mark 9021.
BatchRecord versionRecord();
/// Record 8 + i: message text i, cleaned and padded to 22 characters.
BatchRecord messageTextRecord(const QString &text);

/// The header as (record number, record): records 1..4, 5 when `mitVersion`
/// (the USB import leaves it out), and 8..39 from `meldTexte` (missing texts
/// count as empty). Records 6 and 7 are never written.
std::vector<std::pair<int, BatchRecord>> headerRecords(const QString &name, const RecordTime &zeit,
                                                     const std::array<i16, 12> &kennungA,
                                                     const std::array<i16, 12> &kennungB,
                                                     const std::vector<QString> &meldTexte,
                                                     bool mitVersion);

} // namespace kal
