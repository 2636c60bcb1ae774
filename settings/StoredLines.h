#pragma once

#include "chem/CalibrationRecord.h"
#include "settings/mWinInit.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The records as lines of the settings file, and the lines' way into the file and back.
namespace mWinInit {

/// Longest value that can be read back.
inline constexpr std::size_t longestValue = 129;

/// A value as it can be read back, cut at 129 characters; `fallback` where the key is missing.
std::string ReadValue(const std::string& section, const std::string& key,
                      const std::string& fallback = {});

/// A channel's line as it can be read back. A number that the cut fell into is left out with what
/// follows it: half a molar mass would convert readings, and nobody would see it.
std::string ReadChannelLine(const std::string& section, const std::string& key);

/// A line as it can be read back: cut at 129 characters. Where the cut fell into a table of
/// points, the count in front is that of the points that are whole, so that no half number is
/// ever taken for a standard. `countField` is the field of the count, `firstPoint` that of the
/// first point.
std::string ReadTableLine(const std::string& section, const std::string& key, int countField,
                          int firstPoint);

/// The field of the count and of the first point in a calibration and in a sensor line.
inline constexpr int calibrationCountField = 2;
inline constexpr int firstCalibrationPoint = 4;
inline constexpr int sensorCountField = 1;
inline constexpr int firstSensorRow = 2;

/// The field of two numbers, and the two numbers of field `field` (from 1) of a line.
std::string Pair(float first, float second);
void DecodePair(std::string_view line, int field, float& first, float& second);

std::string ChannelLine(const ChannelSetupRecord& channel);
void DecodeChannel(ChannelSetupRecord& channel, std::string_view line);

std::string CalibrationLine(const CalibrationRecord& record);

/// Fills the record from its line; `isPH` tells on which scale its slopes are computed anew.
void DecodeCalibration(CalibrationRecord& record, std::string_view line, bool isPH);

/// Writes lines and gathers what the analyst must be told about them.
class LineWriter {
public:
    /// A text of the user, for example "project name".
    void WriteText(const std::string& section, const std::string& key, const std::string& text,
                   const std::string& name);
    void WriteNumber(const std::string& section, const std::string& key, int number);
    /// Lines of channel 0..7.
    void WriteCalibration(const std::string& section, const std::string& key,
                          const CalibrationRecord& record, std::size_t channel);
    void WriteChannel(const std::string& section, const std::string& key,
                      const ChannelSetupRecord& setup, std::size_t channel);
    /// A line that is written as it is.
    void WriteLine(const std::string& section, const std::string& key, const std::string& line);

    std::vector<std::string> TakeMessages() { return std::exchange(messages_, {}); }

private:
    std::vector<std::string> messages_;
    bool unwritable_ = false;
};

} // namespace mWinInit
