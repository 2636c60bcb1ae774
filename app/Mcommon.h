#pragma once

#include "base/Letters.h"
#include "platform/Platform.h"

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

/// MessageBoxEx with "OK" alone: a remark of the program's flow.
void Inform(std::string_view text);

/// MessageBoxEx with "OK" alone and the exclamation icon: something is wrong or lost.
void Warn(std::string_view text);

/// What a question shows beside its text, and what Enter answers.
enum class Tone { question, exclamation };
enum class EnterMeans { yes, no };

/// MessageBoxEx with "Yes" and "No"; true for "Yes".
bool Ask(std::string_view question, EnterMeans enterMeans, Tone tone = Tone::question);

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

using platform::LetEventsRun;

/// True when the file can be opened for reading.
bool FileExists(const std::filesystem::path& file);

using Letters::TrimControl;

/// Back to the state at program start.
void Reset();

} // namespace Mcommon
