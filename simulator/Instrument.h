#pragma once

#include "simulator/ElectrodeModel.h"
#include "simulator/FrameEncoder.h"
#include "simulator/TemperatureSensor.h"

#include <array>
#include <random>
#include <string_view>
#include <vector>

namespace simulator {

/// The measuring side of the instrument: four electrodes and four temperature sensors, electrode
/// and sensor of a channel in one vessel. Channels count from 0 here.
class Instrument {
public:
    enum class Nature { believable, ideal };

    /// Ca, pH, NO3 and Redox electrodes in tap water of 25 °C. The same seed gives the same noise.
    Instrument(Nature nature, std::uint64_t seed, Seconds now);

    void SetSolution(int channel, Solution solution, Seconds now);
    void SetTemperature(int channel, double temperature_C, Seconds now);
    void SetElectrode(int channel, ElectrodeTraits traits, Seconds now);

    /// What an electrode of that name is like where nothing else is said.
    ElectrodeTraits DefaultTraits(std::string_view name) const;

    /// One reading of everything, noise included.
    Values Sample(Seconds now);

    const ElectrodeModel& ElectrodeOf(int channel) const { return At(channel).electrode; }
    const TemperatureSensor& SensorOf(int channel) const { return At(channel).sensor; }
    const Solution& SolutionOf(int channel) const { return At(channel).solution; }

private:
    struct Channel {
        Solution solution;
        TemperatureSensor sensor;
        ElectrodeModel electrode;
    };

    const Channel& At(int channel) const { return channels_.at(static_cast<std::size_t>(channel)); }
    Channel& At(int channel) { return channels_.at(static_cast<std::size_t>(channel)); }

    Nature nature_;
    std::mt19937_64 random_;
    std::normal_distribution<double> noise_;
    std::vector<Channel> channels_;
};

} // namespace simulator
