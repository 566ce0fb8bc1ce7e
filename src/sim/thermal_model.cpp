#include "sim/thermal_model.h"

#include <algorithm>

namespace kal::sim {

void ThermalModel::sizeFor(double maxTemp)
{
    heatRate = (1.3 * maxTemp - ambient) / tau;
}

void ThermalModel::step(double dt, double setpoint, double setpointRate, double maxOut, double forced)
{
    double u = 0.0;
    if (forced >= 0.0) {
        u = forced;
    } else if (setpoint > 0.0) {
        // Feed-forward of what holds the set value and follows its slope, plus
        // a proportional part that closes the remaining error.
        const double hold = ((setpoint - ambient) / tau + setpointRate) / heatRate;
        u = hold + (setpoint - temperature) / (heatRate * settle);
    }
    output = std::clamp(u, 0.0, std::clamp(maxOut, 0.0, 1.0));
    temperature += (heatRate * output - (temperature - ambient) / tau) * dt;
}

} // namespace kal::sim
