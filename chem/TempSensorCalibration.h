#pragma once

#include <array>
#include <cstdint>

inline constexpr int maxTempSensorRows = 16;

/// The table of one temperature sensor, ascending by reading.
struct TempSensorCalibration {
    std::int16_t PointCount = 0;
    std::array<float, maxTempSensorRows> Temperature{}; ///< °C
    std::array<float, maxTempSensorRows> Reading{};     ///< the instrument's units

    bool operator==(const TempSensorCalibration&) const = default;
};
