#pragma once
// Log of every frame the simulated plant received, with its bytes and what the
// plant made of it. Tests read it to see exactly what the station sent; the
// kalmeron-sim program can print it as it grows.

#include <QByteArray>
#include <QString>
#include <QVector>
#include <cstdint>
#include <functional>

namespace kal::sim {

/// Which server took the frame.
enum class Server { MemoryLink, Modbus, Panel };

QString serverName(Server s);

struct FrameRecord {
    int64_t ms = 0;        ///< simulated time of arrival
    Server server = Server::MemoryLink;
    int furnace = -1;      ///< furnace index of the server, -1 for the panel server
    QString peer;          ///< sender address:port
    QByteArray bytes;      ///< the frame as received (one datagram, or one Modbus frame)
    QString verdict;       ///< "read 100 @ 100", "write 1 @ 58", or why it was refused or not answered
    bool wellFormed = false; ///< a valid request inside the image (answered, unless a fault held the answer back)
};

class FrameLog {
public:
    void add(FrameRecord r);
    const QVector<FrameRecord> &records() const { return records_; }
    /// Frames of one server (and furnace index, -1 = any).
    QVector<FrameRecord> of(Server s, int furnace = -1) const;
    /// Requests the PLC refused (malformed, or outside the image): the station's mistakes.
    QVector<FrameRecord> refused() const;
    void clear() { records_.clear(); }
    /// Called for each new record (the kalmeron-sim program prints them).
    std::function<void(const FrameRecord &)> listener;

private:
    QVector<FrameRecord> records_;
};

/// Bytes as "42 00 1B ..." for logs and test messages.
QString hexBytes(const QByteArray &bytes);

} // namespace kal::sim
