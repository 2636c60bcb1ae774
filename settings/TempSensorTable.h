#pragma once

#include "chem/CalibrationRecord.h"

#include <array>
#include <string_view>

/// Where the settings file keeps the tables of the temperature sensors.
namespace mWinInit {

inline constexpr std::string_view tempSensorSection = "Temperature Sensor Calibration Matrix";
inline constexpr std::array<std::string_view, tempSensorCount> tempSensorKeys = {
    "Temp Sensor One", "Temp Sensor Two", "Temp Sensor Three", "Temp Sensor Four"};

} // namespace mWinInit
