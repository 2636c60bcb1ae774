#pragma once

#include "base/Electrode.h"
#include "base/LocalTime.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace mWinInit {

/// After how many hours a calibration is to be looked at, for each kind of electrode; 0 is never.
/// In a section of its own of the settings file.
struct CalibrationAges {
    static constexpr int longest_hours = 9999;

    int pH_hours = 0;
    int ion_hours = 0;
    int redox_hours = 0;

    bool operator==(const CalibrationAges&) const = default;
};

/// What the file does not hold, or holds wrongly, is 0.
CalibrationAges LoadCalibrationAges();

/// Returns messages as SaveSettings does.
std::vector<std::string> SaveCalibrationAges(const CalibrationAges& ages);

/// The limit that the calibration of a channel (0-based) has passed; nothing where it has not, or
/// where there is none.
std::optional<int> AgePassed_hours(std::size_t channel, const CalibrationAges& ages,
                                   const LocalTime& now);

} // namespace mWinInit
