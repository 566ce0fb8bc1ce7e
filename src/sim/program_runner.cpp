#include "sim/program_runner.h"

#include "sim/word_image.h"

#include <algorithm>
#include <cmath>

namespace kal::sim {

namespace {

constexpr int kSegments = 20;
constexpr double kManualRate = 100.0; // K/h, as the station reckons a manual segment
constexpr double kJumpBand = 2.0;     // K

/// Moves x towards target by at most step; true when it got there.
bool approach(double &x, double target, double step)
{
    if (std::fabs(target - x) <= step) {
        x = target;
        return true;
    }
    x += target > x ? step : -step;
    return false;
}

} // namespace

int Segment::maxOut() const
{
    const int pct = grenze & 0xFF;
    return pct == 0 ? 100 : std::min(pct, 100);
}

Segment readSegment(const WordImage &image, int k)
{
    Segment s;
    s.befehl = image.get(100 + k) & 0x0F;
    s.sollwert = image.get(120 + k);
    s.wert = image.get(140 + k);
    s.grenze = image.get(160 + k);
    return s;
}

void ProgramRunner::start(double actual)
{
    state_ = State::Running;
    sp_ = actual;
    loops_.fill(-1);
    seg_ = 0;
    segTime_ = 0.0;
    kind_ = 0; // taken from the words at the first step
}

void ProgramRunner::stop()
{
    end();
}

void ProgramRunner::end()
{
    state_ = State::Idle;
    seg_ = 0;
    kind_ = 0;
    sp_ = 0.0;
    slope_ = 0.0;
    forced_ = -1.0;
    maxOut_ = 1.0;
    remaining_ = 0.0;
}

void ProgramRunner::setHeld(bool held)
{
    if (state_ == State::Running && held)
        state_ = State::Held;
    else if (state_ == State::Held && !held)
        state_ = State::Running;
}

void ProgramRunner::enter(int k, const WordImage &image)
{
    seg_ = k;
    segTime_ = 0.0;
    if (k < kSegments) {
        const Segment s = readSegment(image, k);
        if (s.befehl == 4)
            sp_ = s.sollwert; // a jump sets the target at once
    }
}

bool ProgramRunner::runSegment(const Segment &s, double dt, const ThermalModel &model)
{
    segTime_ += dt;
    switch (s.befehl) {
    case 1: {
        const double rate = s.wert / 10.0 / 3600.0; // K/s
        if (rate <= 0.0) {
            sp_ = s.sollwert;
            return true;
        }
        const double before = sp_;
        const bool done = approach(sp_, s.sollwert, rate * dt);
        slope_ = dt > 0 ? (sp_ - before) / dt : 0.0;
        remaining_ = std::fabs(s.sollwert - sp_) / (s.wert / 10.0);
        return done;
    }
    case 2: {
        const double hold = s.wert * 0.1 * 3600.0;
        remaining_ = std::max(0.0, hold - segTime_) / 3600.0;
        return segTime_ >= hold;
    }
    case 3: {
        forced_ = s.maxOut() / 100.0;
        const bool done = approach(sp_, s.sollwert, kManualRate / 3600.0 * dt);
        remaining_ = std::fabs(s.sollwert - sp_) / kManualRate;
        return done;
    }
    case 4:
        sp_ = s.sollwert;
        remaining_ = std::fabs(s.sollwert - model.temperature) / 500.0;
        return std::fabs(model.temperature - s.sollwert) <= kJumpBand;
    default:
        return true;
    }
}

bool ProgramRunner::step(double dt, const WordImage &image, ThermalModel &model)
{
    bool ended = false;
    slope_ = 0.0;
    forced_ = -1.0;
    double segDt = dt;
    if (state_ == State::Running) {
        // Segments that take no time (cycles, ends, finished ramps) are passed
        // in one step; the guard stops a cycle that would loop for ever.
        for (int guard = 0; guard < 4 * kSegments; ++guard) {
            if (seg_ >= kSegments) {
                end();
                ended = true;
                break;
            }
            const Segment s = readSegment(image, seg_);
            kind_ = s.befehl;
            if (s.befehl == 5) {
                const int target = s.grenze - 1;
                if (loops_[size_t(seg_)] < 0)
                    loops_[size_t(seg_)] = s.wert;
                if (loops_[size_t(seg_)] > 0 && target >= 0 && target < kSegments) {
                    --loops_[size_t(seg_)];
                    enter(target, image);
                } else {
                    loops_[size_t(seg_)] = -1;
                    enter(seg_ + 1, image);
                }
                continue;
            }
            if (s.befehl < 1 || s.befehl > 5) {
                end();
                ended = true;
                break;
            }
            maxOut_ = s.maxOut() / 100.0;
            if (!runSegment(s, segDt, model))
                break;
            enter(seg_ + 1, image);
            segDt = 0.0; // the next segment starts with the next step
        }
    }
    if (state_ == State::Idle)
        model.step(dt, 0.0, 0.0, 1.0);
    else // a held program keeps its set value: the slope is 0
        model.step(dt, sp_, slope_, maxOut_, forced_);
    return ended;
}

void ProgramRunner::writeWords(WordImage &image, const ThermalModel &model, int outputScale) const
{
    const int bits = (state_ == State::Running ? 1 : 0) | (state_ == State::Held ? 2 : 0);
    image.set(37, static_cast<int16_t>((image.get(37) & ~3) | bits));
    image.set(74, static_cast<int16_t>((image.get(74) & ~3) | bits));
    image.set(41, static_cast<int16_t>(active() ? seg_ + 1 : 0));
    image.set(42, static_cast<int16_t>(active() ? kind_ : 0));
    image.set(43, static_cast<int16_t>(std::lround(std::clamp(sp_, 0.0, 3000.0) * 10.0)));
    image.set(44, static_cast<int16_t>(std::lround(std::clamp(model.temperature, -300.0, 3000.0) * 10.0)));
    image.set(45, static_cast<int16_t>(std::lround(model.output * 100.0 * outputScale)));
    image.set(57, static_cast<int16_t>(std::lround(std::min(remaining_, 300.0) * 100.0)));
}

} // namespace kal::sim
