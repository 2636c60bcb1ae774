#pragma once

#include "settings/mWinInit.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// What must hold before a measurement may begin, checked on the texts as they stand in the setup
/// page's boxes.
namespace SetupChecks {

inline constexpr int minAveraging = 1;
inline constexpr int maxAveraging = 1000;
/// Shown where an averaging number asked for is none.
inline constexpr std::string_view averagingRange =
    "The averaging number must be a whole number from 1 to 1000.";

/// One channel's row of the setup page.
struct ChannelEntry {
    bool selected = false;
    int electrode = -1; ///< position in Electrode::types, -1 where nothing is chosen
    std::string serialNo;
    std::string molarMass; ///< g/mol; empty or "N/A" where it does not apply
    int pointCount = 0;    ///< points of the stored calibration
};

/// The setup page as it stands.
struct Entries {
    std::string averagingForCalibration;
    std::string averagingForMeasurement;
    std::string projectName;
    std::string analyst;
    std::size_t channelCount = 4;
    std::array<ChannelEntry, maxChannels> channels;
};

/// The box that a finding is about.
enum class Box {
    averagingForCalibration,
    averagingForMeasurement,
    projectName,
    analyst,
    electrode,
    serialNo,
    molarMass,
    calibrate,
    select,
};

/// Why the measurement may not begin.
struct Finding {
    std::string message;
    Box box;
    std::size_t channel = 0; ///< of the boxes that each channel has
};

/// The first thing that is missing; nothing when the measurement may begin.
std::optional<Finding> FirstFinding(const Entries& entries);

/// The averaging number that a text holds: a whole number in range, nothing otherwise.
std::optional<std::int16_t> Averaging(std::string_view text);

/// The molar mass that a text holds in g/mol: 0 for an empty text and "N/A", nothing for a text
/// that is no number of at least 0.
std::optional<float> MolarMass(std::string_view text);

/// Filled: neither empty nor still the prompt.
bool IsFilled(std::string_view text);

/// Two channels bear the same electrode, so that they can be calibrated together.
bool HasSimultaneousPair();

} // namespace SetupChecks
