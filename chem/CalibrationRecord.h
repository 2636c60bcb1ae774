#pragma once

#include "base/Channels.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

inline constexpr int maxCalibrationPoints = 6;

/// The last calibration of one electrode channel. Points stand in the order of their recording.
struct CalibrationRecord {
    std::string CalibrationDate;
    std::int16_t PointCount = 0;                        ///< 0, or 2 to 6
    float StdUnit = 0;                                  ///< 0 ppm, otherwise mol/l; unused for pH
    std::array<float, maxCalibrationPoints> Standard{}; ///< pH, ppm or mol/l
    std::array<float, maxCalibrationPoints> CaliData{}; ///< mV
    /// Between points s and s+1, as displayed: mV per pH or mV per decade.
    std::array<float, maxCalibrationPoints - 1> Slope{};

    /// The points that it holds, whatever number it claims: 0 to 6.
    std::size_t Points() const {
        return static_cast<std::size_t>(std::clamp<int>(PointCount, 0, maxCalibrationPoints));
    }

    bool operator==(const CalibrationRecord&) const = default;
};
