#pragma once
// `kalmeron --demo`: the built-in furnace simulator on loopback, a demo data
// folder with a configuration of the simulated plant, and the station running
// against it in the same process.

#include <QObject>
#include <memory>

namespace kal {

namespace sim {
class SimPlant;
struct PlantDescription;
}

/// The station's configuration of a simulated plant: address, kind, type
/// word, names, serial and identity of each furnace, recording on, the
/// standard folders, the label file of furnace 4; written into the data
/// folder of the plant state (`Pfade_Setzen` must have run). The plant state
/// keeps those values.
void writeDemoConfiguration(const sim::PlantDescription &d);

class Demo : public QObject {
public:
    Demo();
    ~Demo() override;

    /// Prepares the data folder (the --data folder, else ~/Kalmeron-Demo),
    /// writes its configuration when there is none, and starts the simulator.
    /// Without the right to listen on 502 (and no --modbus-port given) both
    /// sides use the Modbus port 1502. False with the reason in `error`.
    bool start(bool modbusPortGiven, QString *error);

    /// The demo's data folder ~/Kalmeron-Demo when no --data folder is given,
    /// so that the folder is known before the station claims it.
    static void presetFolder();

    sim::SimPlant *plant() const { return m_sim.get(); }

private:
    std::unique_ptr<sim::SimPlant> m_sim;
};

} // namespace kal
