#pragma once
// A simulated plant: the furnaces of a description, each on its own address,
// the panel server, the plant clock and the scenario of timed events. Tests
// build one, start it and move its clock with advance(); the demo moves the
// clock from a timer in real time.

#include "sim/frame_log.h"
#include "sim/furnace.h"
#include "sim/panel_server.h"
#include "sim/plant_description.h"
#include "sim/sim_clock.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <memory>
#include <vector>

namespace kal::sim {

class SimPlant : public QObject {
    Q_OBJECT
public:
    /// Builds the plant; `start` is the wall-clock reading of plant time 0
    /// (invalid: the station's present time).
    explicit SimPlant(PlantDescription d, QDateTime start = {}, QObject *parent = nullptr);
    ~SimPlant() override;

    /// Starts every server; false with the first failure in `error` (a plant
    /// that fails to start serves nothing).
    bool start(QString *error);

    /// Moves the plant by `ms` of simulated time: furnaces, scenario events and
    /// delayed answers, in steps of at most a second.
    void advance(int64_t ms);
    /// Lets the plant follow the wall clock from now on: a timer advances it
    /// every `tickMs` by the time that has really passed (the demo; tests
    /// use advance).
    void runInRealTime(int tickMs = 100);

    /// Furnace by index 0..7, nullptr when the plant has none there.
    SimFurnace *furnace(int index) const;
    const std::vector<std::unique_ptr<SimFurnace>> &furnaces() const { return furnaces_; }
    PanelServer *panel() const { return panel_.get(); }
    FrameLog &frames() { return frames_; }
    SimClock &clock() { return clock_; }
    const PlantDescription &description() const { return d_; }

    /// What the plant serves, one line per furnace and one for the panel server.
    QStringList summary() const;

private:
    void runEvent(const ScenarioEvent &e);
    int64_t nextEventMs() const;

    PlantDescription d_;
    SimClock clock_;
    FrameLog frames_;
    std::vector<std::unique_ptr<SimFurnace>> furnaces_;
    std::unique_ptr<PanelServer> panel_;
    std::vector<int64_t> eventDue_; ///< next due time per event, -1 = done
    QTimer realTime_;
    QElapsedTimer wall_;
    int64_t wallDone_ = 0; ///< wall-clock ms already given to advance
};

} // namespace kal::sim
