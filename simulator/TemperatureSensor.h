#pragma once

#include "simulator/Quantities.h"

namespace simulator {

/// Raw reading of a sensor at a temperature: the sensor's table, straight lines between its rows,
/// the outer ones extended; never below 0 or above 999.9.
double SensorReading(double temperature_C);

/// A sensor in a vessel; its reading follows the temperature exponentially.
class TemperatureSensor {
public:
    /// A sensor that has had the temperature for long.
    TemperatureSensor(double temperature_C, Seconds responseTime, Seconds now);

    void SetTemperature(double temperature_C, Seconds now);

    double Temperature() const { return temperature_C_; } ///< of the vessel
    double Reading(Seconds now) const;                    ///< in the sensor's units

private:
    double Felt(Seconds now) const;

    double temperature_C_;
    double start_C_;
    Seconds responseTime_;
    Seconds changed_;
};

} // namespace simulator
