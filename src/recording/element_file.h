#pragma once
// The element files of a furnace beside the configuration, both with records
// of 93 bytes, addressed by record number from 1:
//
//   offset 0   i16        Anzahl   count (see below)
//   offset 2   19 chars   Zeit     "TT.MM.JJJJ HH:MM:SS" of the sample that closed the round
//   offset 21  18 x f32   RX       figure per element; 16 and 17 kept but unused
//
// Integers and floats are little-endian, the time Latin-1.
//
//   KM_EL<n>.DAT   one record: the round in progress; Anzahl = rounds it holds
//   KM_RX<n>.DAT   history: record 1 is the head, whose Anzahl is the record
//                  written last; records 2..2200 are a ring

#include "core/plant_state.h"

#include <QByteArray>
#include <QString>
#include <array>

namespace kal {

constexpr int ELEMENT_SATZ = 93;     ///< bytes per record
constexpr int ELEMENTE = 18;         ///< figures per record
constexpr int RX_RING_ERSTER = 2;    ///< first ring record of KM_RX
constexpr int RX_RING_LETZTER = 2200;

struct ElementRecord {
    i16 Anzahl = 0;
    QString Zeit;                        ///< 19 characters
    std::array<float, ELEMENTE> RX{};

    bool operator==(const ElementRecord &) const = default;
};

QByteArray packElementRecord(const ElementRecord &s);
/// Reads up to 93 bytes; missing bytes count as 0.
ElementRecord unpackElementRecord(const QByteArray &bytes);

/// "KM_EL<n>.DAT" and "KM_RX<n>.DAT" of furnace number n (1..8) in the data folder.
QString elFilePath(int ofenNr);
QString rxFilePath(int ofenNr);

/// Record count of a file: its length / 93, rounded to the nearest whole
/// number (ties to even); 0 for a missing file.
int elementRecordCount(const QString &pfad);
/// Record `nr` of the file; a record beyond the end reads as zeros.
ElementRecord readElement(const QString &pfad, int nr);
/// Writes record `nr`, creating the file; a gap is filled with zero records.
/// A failing write raises RunError(ERR_FILE).
void writeElement(const QString &pfad, int nr, const ElementRecord &s);

} // namespace kal
