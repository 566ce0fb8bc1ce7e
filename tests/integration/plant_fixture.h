#pragma once
// The simulated plant on loopback and the station's channels to it, as the
// plant tests share them: every test has a loopback subnet of its own, the
// station talks through its Qt sockets, and the connect wait runs on a clock
// that moves a tenth of a second per yield, so a refused connect costs a few
// short yields instead of two real seconds.

#include "core/plant_state.h"
#include "sim/plant.h"
#include "support/fresh.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace kal::test {

/// The loopback subnet of the running test, "127.a.b.": tests run side by
/// side in separate processes and every memory link server listens on the
/// panel port, so each test needs addresses of its own.
QString subnet();

/// A TCP port no server listens on now, for the Modbus servers of the plant.
int freePort();

/// A furnace at subnet() + (11 + f), named "Ofen f+1", serial "2401-(100+f)-TST",
/// without a message configuration; the test adds what it needs.
sim::FurnaceDescription furnaceDescription(int f, sim::Protocol p, bool headed, int base);

class PlantFixture : public FreshProcess {
protected:
    sim::PlantDescription beschreibung; ///< ports set; the test adds the furnaces
    std::unique_ptr<sim::SimPlant> sim;
    double uhrSekunden = 0;             ///< seconds since midnight of the connect wait
    QTemporaryDir daten;                ///< the station's data folder
    QString cwd = QDir::currentPath();  ///< restored at the end: the station moves into its data folder

    /// The application object, the plant's ports, an empty error log.
    void SetUp() override;
    void TearDown() override;

    /// The data folder with its four subfolders (log book, USB, CSV, backup).
    void dataFolders();
    /// The site's configuration file: the folders, configureFurnaces(), every
    /// furnace of the plant recording batches.
    void writeConfig();
    /// A start of the station from its configuration file: a fresh process
    /// opens the message store, reads the configuration, sets up channels and
    /// channel tables, loads the stored texts and wires the subsystems.
    void startStation();

    /// Builds and starts the plant of `beschreibung`.
    void startSimPlant();
    /// The station's configuration of every furnace of the plant: address,
    /// enabled, link kind, type word, identity words and texts.
    void configureFurnaces();
    /// The channels as the station sets them up at start: the start values
    /// of the channel state, Qt sockets with the receive handler, the plant's
    /// Modbus port, the connect-wait clock (a failed connect rests one round),
    /// the panel words, and Kanal_Setup of every furnace.
    void setUpChannels();
    /// Ticks of the main cycle with the events between them; the plant moves
    /// 100 ms a tick. Stops when `fertig` holds; false when it doesn't within
    /// `grenze` ticks (a guard, not a timing test).
    bool runCycles(const std::function<bool()> &fertig, int grenze = 6000);

    sim::SimFurnace &plc(int f) { return *sim->furnace(f); }
};

} // namespace kal::test
