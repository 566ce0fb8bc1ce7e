#include "sim/memory_link_codec.h"

#include "sim/wire_bytes.h"

namespace kal::sim {

namespace {

MemoryLinkRequest refuse(const QString &why)
{
    MemoryLinkRequest r;
    r.error = why;
    return r;
}

} // namespace

MemoryLinkRequest parseMemoryLinkRequest(const QByteArray &f)
{
    if (f.size() < 14)
        return refuse(QStringLiteral("frame of %1 bytes, a request has at least 14").arg(f.size()));
    if (f[0] != 'B')
        return refuse(QStringLiteral("first byte is not \"B\""));
    for (int i = 1; i < 6; ++i)
        if (f[i] != 0)
            return refuse(QStringLiteral("header byte %1 is not 0").arg(i));
    if (f[8] != kEsc)
        return refuse(QStringLiteral("byte 8 is not ESC"));
    const int behind = be16(f, 6);
    if (behind != f.size() - 8)
        return refuse(QStringLiteral("length field %1, but %2 bytes follow it").arg(behind).arg(f.size() - 8));

    MemoryLinkRequest r;
    r.command = f[9];
    r.address = be16(f, 10);
    r.count = be16(f, 12);
    if (r.command == 'R') {
        if (f.size() != 14)
            return refuse(QStringLiteral("read request of %1 bytes, not 14").arg(f.size()));
    } else if (r.command == 'W') {
        if (f.size() != 14 + 2 * r.count)
            return refuse(QStringLiteral("write of %1 words in %2 bytes").arg(r.count).arg(f.size()));
        for (int i = 0; i < r.count; ++i)
            r.words.append(static_cast<int16_t>(be16(f, 14 + 2 * i)));
    } else {
        return refuse(QStringLiteral("command byte 0x%1 is neither \"R\" nor \"W\"")
                          .arg(uint8_t(f[9]), 2, 16, QLatin1Char('0')));
    }
    r.ok = true;
    return r;
}

QByteArray memoryLinkAnswer(char command, const QVector<int16_t> &words)
{
    QByteArray a("B", 1);
    a.append(QByteArray(5, '\0'));
    appendBe16(a, 2 + 2 * int(words.size()));
    a.append(kEsc);
    a.append(command);
    for (int16_t w : words)
        appendBe16(a, uint16_t(w));
    return a;
}

} // namespace kal::sim
