#pragma once
// Frames of the panel memory link, PLC side: requests are read strictly, so
// that a frame the station builds wrongly is noticed; answers are built in the
// form the station expects (10-byte header, then the words high byte first).
//
// Read request:  "B" 00 | 00 00 | 00 00 | 00 06 | ESC "R" | address | count
// Write request: "B" 00 | 00 00 | 00 00 | 2n+6  | ESC "W" | address | n | n words
// Every field of two bytes is big endian.

#include <QByteArray>
#include <QString>
#include <QVector>
#include <cstdint>

namespace kal::sim {

constexpr char kEsc = 0x1B;

struct MemoryLinkRequest {
    bool ok = false;
    QString error;      ///< why the frame was refused
    char command = 0;   ///< 'R' or 'W'
    int address = 0;
    int count = 0;
    QVector<int16_t> words; ///< data of a write
};

MemoryLinkRequest parseMemoryLinkRequest(const QByteArray &frame);

/// The answer to a request: the header "B" 00 00 00 00 00, the count of the
/// bytes behind the count field (2 + 2n) big endian, ESC and the command
/// letter, then the n words high byte first. A write is answered with the
/// header alone (n = 0).
QByteArray memoryLinkAnswer(char command, const QVector<int16_t> &words);

} // namespace kal::sim
