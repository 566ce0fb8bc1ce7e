#include "sim/wire_bytes.h"

#include <cstdint>

namespace kal::sim {

int be16(const QByteArray &b, int at)
{
    return (uint8_t(b[at]) << 8) | uint8_t(b[at + 1]);
}

void appendBe16(QByteArray &b, int v)
{
    b.append(char((v >> 8) & 0xFF));
    b.append(char(v & 0xFF));
}

} // namespace kal::sim
