#pragma once
// Faults of a simulated link, switched on by a test or a scenario: the link is
// down (TCP refused and closed, UDP not answered), answers come late, or an
// answer comes back wrong (too short, a Modbus exception, or more than 1000
// bytes). `resume` ends them all.

#include <QByteArray>
#include <QObject>
#include <cstdint>
#include <functional>

namespace kal::sim {

enum class AnswerFault {
    None,
    Short,     ///< the answer is cut to `shortLength` bytes
    Exception, ///< Modbus: an exception answer with `exceptionCode` (the memory link answers normally)
    Oversize,  ///< the answer is padded with zero bytes to `oversizeLength` bytes
};

struct LinkFaults {
    bool down = false;
    int64_t delayMs = 0;
    AnswerFault answer = AnswerFault::None;
    int answerCount = -1; ///< answers still to be spoilt; -1 = until resumed
    int shortLength = 5;
    int oversizeLength = 1100;
    uint8_t exceptionCode = 4; ///< server device failure

    /// The fault for the next answer, counting it down.
    AnswerFault take();
    /// Cuts or pads an answer for the Short and Oversize faults.
    QByteArray spoil(AnswerFault f, QByteArray answer) const;
};

/// The faults of one furnace's (or the panel server's) link, and the servers
/// that must hear of a drop: a TCP server stops listening and closes its
/// connections while the link is down.
class LinkControl : public QObject {
    Q_OBJECT
public:
    LinkFaults faults;

    /// Drops the link: Modbus connections are closed and refused, UDP frames
    /// are received (and logged) but not answered.
    void dropLink();
    /// Answers come back `ms` of simulated time late.
    void setDelay(int64_t ms) { faults.delayMs = ms; }
    /// The next `count` answers (-1: all, until resumed) carry the fault.
    void setAnswerFault(AnswerFault f, int count = -1);
    /// Ends every fault; a dropped link listens again.
    void resume();
    bool down() const { return faults.down; }

Q_SIGNALS:
    void downChanged(bool down);
};

} // namespace kal::sim
