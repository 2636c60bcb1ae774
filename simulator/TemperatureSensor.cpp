#include "simulator/TemperatureSensor.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace simulator {

namespace {

struct Row {
    double temperature_C;
    double reading;
};

/// The sensor that the instrument is sold with; ascending by temperature.
constexpr std::array<Row, 10> sensorTable = {{{0, 966.8},
                                              {10, 894.0},
                                              {20, 799.6},
                                              {25, 745.8},
                                              {30, 688.7},
                                              {40, 570.8},
                                              {50, 456.9},
                                              {60, 355.9},
                                              {70, 271.9},
                                              {80, 205.5}}};
constexpr double highestReading = 999.9;

} // namespace

double SensorReading(double temperature_C) {
    std::size_t upper = 1;
    while (upper + 1 < sensorTable.size() && temperature_C > sensorTable[upper].temperature_C)
        ++upper;
    const Row& low = sensorTable[upper - 1];
    const Row& high = sensorTable[upper];
    const double share =
        (temperature_C - low.temperature_C) / (high.temperature_C - low.temperature_C);
    return std::clamp(low.reading + share * (high.reading - low.reading), 0.0, highestReading);
}

TemperatureSensor::TemperatureSensor(double temperature_C, Seconds responseTime, Seconds now)
    : temperature_C_(temperature_C), start_C_(temperature_C), responseTime_(responseTime),
      changed_(now) {}

void TemperatureSensor::SetTemperature(double temperature_C, Seconds now) {
    start_C_ = Felt(now);
    temperature_C_ = temperature_C;
    changed_ = now;
}

double TemperatureSensor::Reading(Seconds now) const {
    return SensorReading(Felt(now));
}

double TemperatureSensor::Felt(Seconds now) const {
    if (responseTime_ <= Seconds(0))
        return temperature_C_;
    const double rest = std::exp(-(now - changed_) / responseTime_);
    return temperature_C_ + (start_C_ - temperature_C_) * rest;
}

} // namespace simulator
