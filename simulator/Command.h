#pragma once

#include "simulator/Faults.h"
#include "simulator/Quantities.h"
#include "simulator/Solution.h"

#include <optional>
#include <string>
#include <variant>

namespace simulator {

/// The channels that a command means.
struct ChannelChoice {
    int first = 0; ///< from 0
    int last = 0;  ///< included
};

struct SetSolution {
    ChannelChoice channels;
    Solution solution;
};

struct SetTemperature {
    ChannelChoice channels;
    double temperature_C = 0;
};

/// What is not given stays as an electrode of that name has it.
struct SetElectrode {
    ChannelChoice channels;
    std::string name;
    std::optional<double> slope_percent;
    std::optional<double> offset_mV;
    std::optional<double> response_s;
    std::optional<double> drift_mV_per_h;
    std::optional<double> noise_mV;
    std::optional<double> limit_mol_per_l;
};

struct SetFault {
    Fault fault;
};

struct Unplug {
    std::optional<Seconds> backAfter;
};

struct Replug {};

struct SetAutomatic {
    std::optional<Seconds> interval; ///< none: only on request
};

struct SetBitRate {
    std::optional<std::uint32_t> bitRate; ///< none: as the program sets it
};

struct ShowStatus {};

struct ShowHelp {};

struct Quit {};

using Command = std::variant<SetSolution, SetTemperature, SetElectrode, SetFault, Unplug, Replug,
                             SetAutomatic, SetBitRate, ShowStatus, ShowHelp, Quit>;

} // namespace simulator
