#include "sim/frame_log.h"

namespace kal::sim {

QString serverName(Server s)
{
    switch (s) {
    case Server::MemoryLink: return QStringLiteral("udp");
    case Server::Modbus: return QStringLiteral("modbus");
    case Server::Panel: return QStringLiteral("panel");
    }
    return {};
}

void FrameLog::add(FrameRecord r)
{
    records_.append(std::move(r));
    if (listener)
        listener(records_.last());
}

QVector<FrameRecord> FrameLog::of(Server s, int furnace) const
{
    QVector<FrameRecord> out;
    for (const auto &r : records_)
        if (r.server == s && (furnace < 0 || r.furnace == furnace))
            out.append(r);
    return out;
}

QVector<FrameRecord> FrameLog::refused() const
{
    QVector<FrameRecord> out;
    for (const auto &r : records_)
        if (!r.wellFormed)
            out.append(r);
    return out;
}

QString hexBytes(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toHex(' ').toUpper());
}

} // namespace kal::sim
