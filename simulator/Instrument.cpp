#include "simulator/Instrument.h"

#include "base/Electrode.h"

#include <utility>

namespace simulator {

namespace {

constexpr std::array<std::string_view, channelCount> electrodesAtStart = {
    "Ca", Electrode::pHName, "NO3", Electrode::redoxName};
constexpr double temperatureAtStart_C = 25;
constexpr Seconds sensorResponseTime{4};
constexpr double sensorNoise = 0.1; ///< standard deviation of a reading, in the sensor's units

Solution TapWater() {
    return Solution{{{"Ca", 40, Unit::ppm},
                     {"NO3", 10, Unit::ppm},
                     {"pH", 7.4, Unit::pH},
                     {"Redox", 220, Unit::mV}}};
}

} // namespace

Instrument::Instrument(Nature nature, std::uint64_t seed, Seconds now)
    : nature_(nature), random_(seed) {
    const Seconds response = nature == Nature::ideal ? Seconds(0) : sensorResponseTime;
    for (std::string_view name : electrodesAtStart) {
        channels_.push_back(
            {TapWater(), TemperatureSensor(temperatureAtStart_C, response, now),
             ElectrodeModel(DefaultTraits(name), TapWater(), temperatureAtStart_C, now)});
    }
}

void Instrument::SetSolution(int channel, Solution solution, Seconds now) {
    Channel& at = At(channel);
    at.solution = std::move(solution);
    at.electrode.Dip(at.solution, at.sensor.Temperature(), now);
}

void Instrument::SetTemperature(int channel, double temperature_C, Seconds now) {
    Channel& at = At(channel);
    at.sensor.SetTemperature(temperature_C, now);
    at.electrode.Dip(at.solution, temperature_C, now);
}

void Instrument::SetElectrode(int channel, ElectrodeTraits traits, Seconds now) {
    Channel& at = At(channel);
    at.electrode = ElectrodeModel(std::move(traits), at.solution, at.sensor.Temperature(), now);
}

ElectrodeTraits Instrument::DefaultTraits(std::string_view name) const {
    return nature_ == Nature::ideal ? IdealTraits(name) : BelievableTraits(name);
}

Values Instrument::Sample(Seconds now) {
    Values values{};
    std::size_t slot = 0;
    for (const Channel& each : channels_) {
        const ElectrodeModel& electrode = each.electrode;
        values[slot++] = electrode.Potential(now) + electrode.Traits().noise_mV * noise_(random_);
        const double noise = nature_ == Nature::ideal ? 0 : sensorNoise;
        values[slot++] = each.sensor.Reading(now) + noise * noise_(random_);
    }
    return values;
}

} // namespace simulator
