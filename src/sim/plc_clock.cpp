#include "sim/plc_clock.h"

#include "sim/word_image.h"

namespace kal::sim {

void PlcClock::step(int command, const QDateTime &plant)
{
    auto sign = [command](int back, int on) { return ((command & on) ? 1 : 0) - ((command & back) ? 1 : 0); };
    QDateTime t = now(plant);
    t = t.addYears(sign(1, 2));
    t = t.addMonths(sign(4, 8));
    t = t.addDays(sign(16, 32));
    t = t.addSecs(3600 * sign(64, 128) + 60 * sign(256, 512));
    offsetMs_ = plant.msecsTo(t);
}

void PlcClock::writeWords(WordImage &image, const QDateTime &plant) const
{
    const auto w = stampWords(now(plant));
    image.set(80, w[0]);
    image.set(81, w[1]);
}

} // namespace kal::sim
