#include "app/Mcommon.h"

#include "base/NumberText.h"
#include "base/RunTimeError.h"
#include "platform/Platform.h"

#include <cmath>
#include <fstream>
#include <system_error>

namespace Mcommon {

std::string errorLocation;

namespace {

constexpr float zeroLimitOfDisplays = 0;
constexpr float lowerLimitOfReadings = 0.01F;
constexpr float lowerLimitOfStandards = 0.1F;
constexpr float upperLimitOfDisplays = 10000;

} // namespace

std::int16_t MessageBoxEx(const std::string& prompt, std::int16_t buttons, std::int16_t icon,
                          std::int16_t defaultButton) {
    platform::Dialogs& dialogs = platform::Current().dialogs;
    dialogs.Beep();
    return static_cast<std::int16_t>(
        dialogs.ShowMessage(prompt, buttons + icon + defaultButton, std::string(applicationTitle)));
}

void Inform(std::string_view text) {
    MessageBoxEx(std::string(text), platform::style::okOnly, platform::style::information);
}

void Warn(std::string_view text) {
    MessageBoxEx(std::string(text), platform::style::okOnly, platform::style::exclamation);
}

bool Ask(std::string_view question, EnterMeans enterMeans, Tone tone) {
    using namespace platform;
    const std::int16_t icon = tone == Tone::question ? style::question : style::exclamation;
    const std::int16_t defaultButton =
        enterMeans == EnterMeans::yes ? style::defaultButton1 : style::defaultButton2;
    return MessageBoxEx(std::string(question), style::yesNo, icon, defaultButton) == button::yes;
}

std::string FormatNumber(float value, float zeroLimit, float lowerLimit, float upperLimit) {
    const float magnitude = std::fabs(value);
    const bool fixed =
        magnitude < upperLimit && (magnitude >= lowerLimit || magnitude <= zeroLimit);
    return NumberText::Format(value, fixed ? NumberText::Pattern::oneDecimal
                                           : NumberText::Pattern::scientific);
}

std::string FormatReading(float value) {
    return FormatNumber(value, zeroLimitOfDisplays, lowerLimitOfReadings, upperLimitOfDisplays);
}

std::string FormatStandard(float value) {
    return FormatNumber(value, zeroLimitOfDisplays, lowerLimitOfStandards, upperLimitOfDisplays);
}

double Log10(double x) {
    if (!(x > 0))
        throw RunTimeError("Logarithm of a number that is not above 0");
    return std::log(x) / std::log(10.0);
}

void Wait(std::chrono::milliseconds time) {
    const platform::Services& services = platform::Current();
    const auto entry = services.clock.Monotonic();
    while (services.clock.Monotonic() - entry < time)
        services.desktop.ProcessPendingEvents();
}

bool FileExists(const std::filesystem::path& file) {
    std::error_code unreadable;
    if (std::filesystem::is_directory(file, unreadable))
        return false;
    return std::ifstream(file, std::ios::binary).is_open();
}

void Reset() {
    errorLocation.clear();
}

} // namespace Mcommon
