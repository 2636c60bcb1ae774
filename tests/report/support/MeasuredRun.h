#pragma once

#include "chem/MeasuringCycle.h"
#include "files/MeasurementRecord.h"

#include <array>
#include <concepts>
#include <cstddef>
#include <random>
#include <string>
#include <vector>

/// A run as the program measures and writes it, with calibrations and potentials of chance: channel
/// 1 pH, 2 an ion calibrated in ppm, 3 one calibrated in mol/l, 4 Redox. What was written can be
/// changed afterwards.
class MeasuredRun {
public:
    MeasuredRun(std::uint32_t seed, int records);

    static constexpr std::size_t channels = 4;

    std::array<std::string, maxChannels> electrode = {"H (pH)", "Ca", "Cl", "Redox"};
    std::array<CalibrationRecord, maxChannels> calibration;
    std::array<float, maxChannels> molarMass_g_per_mol{};
    std::vector<std::array<float, channels>> potentials_mV;
    std::vector<FileOpr::DisplayedChannels> records;

    /// Computes the records from the potentials.
    void Measure();

    /// The cells that a potential gives by the calibrations as they are now.
    ChannelDisplay::Cells CellsOf(std::size_t channel, float potential_mV) const;

    /// The file.
    std::string Text() const;

    template <std::integral Number>
    Number Below(Number bound) {
        return std::uniform_int_distribution<Number>(0, bound - 1)(chance_);
    }
    float Between(float low, float high) {
        return std::uniform_real_distribution<float>(low, high)(chance_);
    }

private:
    void Calibrate(std::size_t channel, bool isPH);

    std::mt19937 chance_;
};
