#pragma once
// The PLC's own clock: the plant's time plus an offset of its own, shown in
// words 80/81 in the packed two-word form, and set by the station's clock step
// command in word 58. The command is a sum of steps, each one unit:
// 1 year back, 2 year on, 4 month back, 8 month on, 16 day back, 32 day on,
// 64 hour back, 128 hour on, 256 minute back, 512 minute on. The PLC applies
// them and clears word 58, so that the station can send the next step.

#include <QDateTime>
#include <cstdint>

namespace kal::sim {

class WordImage;

class PlcClock {
public:
    void setOffsetSeconds(int64_t s) { offsetMs_ = s * 1000; }
    int64_t offsetMs() const { return offsetMs_; }
    /// The PLC's reading at the plant time `plant`.
    QDateTime now(const QDateTime &plant) const { return plant.addMSecs(offsetMs_); }
    /// Applies a clock step command (word 58) at the plant time `plant`.
    void step(int command, const QDateTime &plant);
    /// Words 80 and 81.
    void writeWords(WordImage &image, const QDateTime &plant) const;

private:
    int64_t offsetMs_ = 0;
};

} // namespace kal::sim
