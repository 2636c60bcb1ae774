#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

inline constexpr int maxTempSensorRows = 16;

/// The table of one temperature sensor, ascending by reading.
struct TempSensorCalibration {
    std::int16_t PointCount = 0;
    std::array<float, maxTempSensorRows> Temperature{}; ///< °C
    std::array<float, maxTempSensorRows> Reading{};     ///< the instrument's units

    /// The rows that it holds, whatever number it claims: 0 to 16.
    std::size_t Rows() const {
        return static_cast<std::size_t>(std::clamp<int>(PointCount, 0, maxTempSensorRows));
    }

    bool operator==(const TempSensorCalibration&) const = default;
};
