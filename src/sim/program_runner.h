#pragma once
// Runs the furnace's active temperature program, segment by segment, straight
// from the program words of the image (the station may rewrite them at any
// time and the furnace follows), and keeps the program words of the live
// state up to date: state bits (37, 74), segment (41), segment kind (42), set
// value (43), actual value (44), output (45), remaining time (57).
//
// Segment k (0..19): command word 100+k (low 4 bits), target 120+k in whole
// °C, value word 140+k, limit word 160+k. Commands:
//   1 ramp: the set value moves to the target at the value word's rate (0.1 K/h);
//   2 hold: the set value stays for the value word's time (0.1 h);
//   3 manual: the output is the limit word's percentage while the set value
//     moves to the target at 100 K/h;
//   4 jump: the set value is the target at once; the segment ends when the
//     actual value is within 2 K of it;
//   5 cycle: back to segment "limit word" (1-based), "value word" times;
//   0 or above 5: the program ends.
// A limit of 0 % counts as no limit (100 %).

#include "sim/thermal_model.h"

#include <array>

namespace kal::sim {

class WordImage;

struct Segment {
    int befehl = 0;
    int sollwert = 0; ///< °C
    int wert = 0;     ///< rate 0.1 K/h, time 0.1 h, or repeat count
    int grenze = 0;   ///< limit word
    int maxOut() const;
};

/// Segment k (0..19) of the active program.
Segment readSegment(const WordImage &image, int k);

class ProgramRunner {
public:
    enum class State { Idle, Running, Held };

    /// Starts at segment 1; the set value starts from the actual value.
    void start(double actual);
    /// Ends the program at once; the heating goes off.
    void stop();
    /// A held program keeps its set value and its segment clock stands still.
    void setHeld(bool held);

    /// Moves the program and the model by dt seconds (at most about a second).
    /// Returns true when the program ended during this step.
    bool step(double dt, const WordImage &image, ThermalModel &model);

    /// Writes the live words; the output word is the output times `outputScale`
    /// per cent (1 on the memory link, 100 on Modbus).
    void writeWords(WordImage &image, const ThermalModel &model, int outputScale) const;

    State state() const { return state_; }
    bool active() const { return state_ != State::Idle; }
    int segment() const { return seg_; } ///< 0-based
    int kind() const { return kind_; }
    double setpoint() const { return sp_; }
    /// Remaining time of the running segment in hours.
    double remainingHours() const { return remaining_; }

private:
    /// Lets the running segment use dt seconds; true when it is done.
    bool runSegment(const Segment &s, double dt, const ThermalModel &model);
    void enter(int k, const WordImage &image);
    void end();

    State state_ = State::Idle;
    int seg_ = 0;
    int kind_ = 0;
    double sp_ = 0.0;
    double slope_ = 0.0;  ///< K/s of the set value in this step
    double forced_ = -1.0;
    double maxOut_ = 1.0;
    double segTime_ = 0.0; ///< s spent in the segment
    double remaining_ = 0.0;
    std::array<int, 20> loops_{}; ///< repeats left per cycle segment, -1 = not entered
};

} // namespace kal::sim
