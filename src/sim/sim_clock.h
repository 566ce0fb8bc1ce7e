#pragma once
// Simulated time of the plant. Everything the simulated PLCs do happens on this
// clock: the thermal model, the sample interval, scheduled scenario events and
// answers held back by a delay fault. Tests move it with SimPlant::advance;
// the demo moves it from a timer in real time.

#include <QDateTime>
#include <cstdint>
#include <functional>
#include <map>

namespace kal::sim {

class SimClock {
public:
    explicit SimClock(QDateTime start) : start_(std::move(start)) {}

    /// Milliseconds since the plant started.
    int64_t ms() const { return ms_; }
    /// Wall-clock reading of the plant (the reading every PLC clock starts from).
    QDateTime now() const { return start_.addMSecs(ms_); }
    QDateTime start() const { return start_; }

    /// Runs `action` once the clock has reached now + delayMs (at the next
    /// advance that gets there; a delay of 0 or less runs it at once).
    void defer(int64_t delayMs, std::function<void()> action);
    /// Moves the clock to `ms` (never backwards) and runs what has come due,
    /// in the order of due time and, for equal times, of deferral.
    void moveTo(int64_t ms);
    /// Due time of the earliest deferred action, or -1.
    int64_t nextDue() const { return deferred_.empty() ? -1 : deferred_.begin()->first; }

private:
    QDateTime start_;
    int64_t ms_ = 0;
    std::multimap<int64_t, std::function<void()>> deferred_;
};

} // namespace kal::sim
