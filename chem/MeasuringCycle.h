#pragma once

#include "chem/ChannelDisplay.h"
#include "chem/Measure.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>

/// One cycle of the measuring page, from the averaged readings to the texts that it shows.
namespace MeasuringCycle {

/// What a measurement reads and how; fixed while it lasts. The names and tables that `tables`
/// refers to must outlive it.
struct Source {
    Measure::InputTables tables;
    std::array<std::int16_t, maxChannels> selected{}; ///< not 0: the channel is in use
    std::array<int, maxChannels> tempSensor{};        ///< 1 to 4, others mean none
    std::array<float, maxChannels> molarMass_g_per_mol{};
};

struct Outcome {
    /// Blank throughout for a channel that is not in use.
    std::array<ChannelDisplay::Cells, maxChannels> cells;
    /// The numbers of those cells, for trend, limits and standards.
    std::array<ChannelDisplay::Values, maxChannels> values;
    /// Why the first position that could not be converted was not; empty where all were.
    std::string problem;
};

/// Converts a cycle's averages and composes what each channel shows.
Outcome Run(const Source& source, std::span<const float, cyclePositions> averages);

} // namespace MeasuringCycle
