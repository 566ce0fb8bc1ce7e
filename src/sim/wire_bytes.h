#pragma once
// Two-byte fields of the memory link and Modbus/TCP frames: both carry them
// big endian (high byte first).

#include <QByteArray>

namespace kal::sim {

/// The unsigned big-endian field at byte `at`.
int be16(const QByteArray &b, int at);

/// Appends the low 16 bits of `v`, high byte first.
void appendBe16(QByteArray &b, int v);

} // namespace kal::sim
