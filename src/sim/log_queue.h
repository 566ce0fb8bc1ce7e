#pragma once
// The furnace's log blocks on their way to the station. The PLC keeps them in
// order; it places the first at the trigger word when the trigger word is 0,
// and the next only after the station has written 0 to the trigger word,
// which tells the PLC that the block was taken. While the link is down the
// blocks wait, and they come out in order afterwards.

#include <QVector>
#include <cstdint>
#include <deque>

namespace kal::sim {

class WordImage;

class LogQueue {
public:
    /// Where the blocks are offered: the trigger word and the block length
    /// (a shorter block is filled with 0 to that length).
    void setTrigger(int address, int length);
    int triggerAddress() const { return trigger_; }

    /// Appends a block (w0 = kind, not 0). When `capacity` blocks are waiting,
    /// the oldest waiting one is lost, as in a PLC's ring of log blocks.
    void push(QVector<int16_t> block);
    /// Places the next block when none is offered.
    void offerNext(WordImage &image);
    /// A station write of `value` at `address`: 0 at the trigger word while a
    /// block is offered takes that block. True when it did.
    bool stationWrote(int address, int16_t value);

    bool offering() const { return offering_; }
    /// Blocks waiting behind the one offered.
    int waiting() const { return int(queue_.size()) - (offering_ ? 1 : 0); }
    /// The block now offered (empty when none).
    QVector<int16_t> offered() const;
    /// Blocks the station has taken, in order.
    const QVector<QVector<int16_t>> &taken() const { return taken_; }
    int lost() const { return lost_; }
    int capacity = 5000;

private:
    int trigger_ = 90;
    int length_ = 10;
    bool offering_ = false;
    std::deque<QVector<int16_t>> queue_; ///< front = offered block when offering_
    QVector<QVector<int16_t>> taken_;
    int lost_ = 0;
};

} // namespace kal::sim
