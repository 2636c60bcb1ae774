#pragma once

#include "chem/CalibrationRecord.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace FileOpr {

enum class Quantity : std::int16_t { mV = 0, pH = 1, ppm = 2, mol_l = 3, celsius = 4 };
inline constexpr int quantityCount = 5;

/// The label column of a quantity's row: "mV", "pH", "ppm", "mol/l", "°C".
inline constexpr std::array<std::string_view, quantityCount> quantityLabels = {"mV", "pH", "ppm",
                                                                               "mol/l",
                                                                               "\xB0"
                                                                               "C"};

inline constexpr std::size_t labelWidth = 15;
inline constexpr std::size_t cellWidth = 12;
inline constexpr std::size_t separatorWidth = 150;
inline constexpr std::size_t listSeparatorWidth = 200; ///< the report list's wider separator line

/// The texts that the measuring page shows for one channel, in the order of Quantity.
using DisplayedCells = std::array<std::string, quantityCount>;
using DisplayedChannels = std::array<DisplayedCells, maxChannels>;

/// One recorded reading.
struct MeasurementRecord {
    std::int32_t number = 0;
    std::string timeStamp; ///< "hh:mm:ss dd.mmm.yyyy"
    std::string comment;
    /// Fixed texts of 12 characters; blank where the file has no such row or column.
    std::array<DisplayedCells, maxChannels> cells;

    bool operator==(const MeasurementRecord&) const = default;
};

} // namespace FileOpr
