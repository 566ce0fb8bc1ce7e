#include "sim/sim_clock.h"

namespace kal::sim {

void SimClock::defer(int64_t delayMs, std::function<void()> action)
{
    if (delayMs <= 0) {
        action();
        return;
    }
    deferred_.emplace(ms_ + delayMs, std::move(action));
}

void SimClock::moveTo(int64_t ms)
{
    if (ms > ms_)
        ms_ = ms;
    // An action may defer further actions; take them one by one.
    while (!deferred_.empty() && deferred_.begin()->first <= ms_) {
        auto action = std::move(deferred_.begin()->second);
        deferred_.erase(deferred_.begin());
        action();
    }
}

} // namespace kal::sim
