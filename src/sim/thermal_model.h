#pragma once
// A simple furnace: one heated mass that loses heat to the room in proportion
// to its excess temperature, and a controller that drives the heating output
// so that the actual value follows the set value. Good enough for curves that
// look like a furnace's; not a physical model.

namespace kal::sim {

struct ThermalModel {
    double ambient = 20.0;     ///< °C
    double tau = 3600.0;       ///< s, cooling time constant
    double heatRate = 0.4;     ///< K/s the full output adds at room temperature
    double settle = 60.0;      ///< s, time in which the controller closes an error
    double temperature = 20.0; ///< actual value, °C
    double output = 0.0;       ///< heating output 0..1

    /// A furnace whose full output would hold about 1.3 times its maximum
    /// temperature, so that it can still ramp near the top.
    void sizeFor(double maxTemp);

    /// Moves the model by dt seconds (the caller keeps dt at a second or less).
    /// setpointRate is the set value's slope in K/s (feed-forward of a ramp);
    /// maxOut limits the output (0..1); a forced output (>= 0) replaces the
    /// controller, as in a manual segment; a set value of 0 or less switches
    /// the heating off.
    void step(double dt, double setpoint, double setpointRate, double maxOut, double forced = -1.0);
};

} // namespace kal::sim
