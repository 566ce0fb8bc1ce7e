#include "sim/log_queue.h"

#include "sim/word_image.h"

namespace kal::sim {

void LogQueue::setTrigger(int address, int length)
{
    trigger_ = address;
    length_ = length;
}

void LogQueue::push(QVector<int16_t> block)
{
    if (block.isEmpty() || block[0] == 0)
        return;
    if (waiting() >= capacity) {
        // Lose the oldest block that isn't on offer.
        queue_.erase(queue_.begin() + (offering_ ? 1 : 0));
        ++lost_;
    }
    queue_.push_back(std::move(block));
}

void LogQueue::offerNext(WordImage &image)
{
    if (offering_ || queue_.empty())
        return;
    QVector<int16_t> words = queue_.front();
    if (words.size() < length_)
        words.resize(length_, 0);
    // The kind word goes in last: the block is complete when the station sees it.
    image.set(trigger_ + 1, words.mid(1));
    image.set(trigger_, words[0]);
    offering_ = true;
}

bool LogQueue::stationWrote(int address, int16_t value)
{
    if (address != trigger_ || value != 0 || !offering_)
        return false;
    taken_.append(queue_.front());
    queue_.pop_front();
    offering_ = false;
    return true;
}

QVector<int16_t> LogQueue::offered() const
{
    return offering_ ? queue_.front() : QVector<int16_t>{};
}

} // namespace kal::sim
