#pragma once
// The words a link server reaches: one furnace's image, or the windows of the
// furnaces behind a panel server.

#include <QString>
#include <QVector>
#include <cstdint>

namespace kal::sim {

class WordSpace {
public:
    virtual ~WordSpace() = default;
    /// n words from `address` on; false (and nothing read) when any of them
    /// lies outside the space.
    virtual bool read(int address, int n, QVector<int16_t> &out) const = 0;
    /// Words written by the station; false (and nothing written) when any of
    /// them lies outside the space. `via` names the link for the write log.
    virtual bool write(int address, const QVector<int16_t> &words, const QString &via) = 0;
};

} // namespace kal::sim
