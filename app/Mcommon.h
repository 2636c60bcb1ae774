#pragma once

#include "base/Letters.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

/// Helpers that every module and screen uses.
namespace Mcommon {

/// Caption of every message box and input box.
inline constexpr std::string_view applicationTitle = "Vantrel Data Acquisition";

/// Name of the routine at work, shown by the error message box.
extern std::string errorLocation;

/// Beeps, then shows a modal box with the sum of three style parts (platform::style) and returns
/// the code of the button pressed (platform::button).
std::int16_t MessageBoxEx(const std::string& prompt, std::int16_t buttons, std::int16_t icon = 0,
                          std::int16_t defaultButton = 0);

/// "0.0" where |value| is below `upperLimit` and either at least `lowerLimit` or not above
/// `zeroLimit`; "0.00E+00" otherwise.
std::string FormatNumber(float value, float zeroLimit, float lowerLimit, float upperLimit);

/// The number display of readings and slopes: limits 0, 0.01, 10000.
std::string FormatReading(float value);

/// The number display of typed standards: limits 0, 0.1, 10000.
std::string FormatStandard(float value);

/// ln(x) / ln(10). Throws RunTimeError for x not above 0.
double Log10(double x);

/// Lets pending events run until the time has passed; Wait(0) returns at once.
void Wait(std::chrono::milliseconds time);

/// Lets pending events run, at most once a millisecond; otherwise costs a clock read.
void LetEventsRun();

/// True when the file can be opened for reading.
bool FileExists(const std::filesystem::path& file);

using Letters::TrimControl;

/// Back to the state at program start.
void Reset();

} // namespace Mcommon
