#include "base/DateText.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace DateText {

namespace {

constexpr std::array<std::string_view, 12> months = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                     "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

std::string Padded(int value, std::size_t width) {
    std::string digits = std::to_string(value);
    if (digits.size() < width)
        digits.insert(0, width - digits.size(), '0');
    return digits;
}

std::string_view MonthName(int month) {
    return months[static_cast<std::size_t>(std::clamp(month, 1, 12) - 1)];
}

std::string DatePart(const LocalTime& time, char separator) {
    std::string text = Padded(time.day, 2);
    text += separator;
    text += MonthName(time.month);
    text += separator;
    text += Padded(time.year, 4);
    return text;
}

std::string MinutesAndSeconds(const LocalTime& time) {
    return ":" + Padded(time.minute, 2) + ":" + Padded(time.second, 2);
}

} // namespace

int MonthOf(std::string_view name) {
    const auto found = std::find(months.begin(), months.end(), name);
    return found == months.end() ? 0 : static_cast<int>(found - months.begin()) + 1;
}

std::string Record(const LocalTime& time) {
    return Padded(time.hour, 2) + MinutesAndSeconds(time) + " " + DatePart(time, '.');
}

std::string Header(const LocalTime& time) {
    return Padded(time.hour, 2) + MinutesAndSeconds(time) + "  " + DatePart(time, '.');
}

std::string Clock(const LocalTime& time) {
    return std::to_string(time.hour) + MinutesAndSeconds(time) + " " + DatePart(time, '.');
}

std::string Date(const LocalTime& time) {
    return DatePart(time, '.');
}

std::string SingleCalibration(const LocalTime& time) {
    return Padded(time.hour, 2) + ":" + Padded(time.minute, 2) + " " + DatePart(time, '.');
}

std::string PrintedPage(const LocalTime& time) {
    return DatePart(time, '-');
}

std::string TimeOfDay(const LocalTime& time) {
    return Padded(time.hour, 2) + MinutesAndSeconds(time);
}

std::string General(const LocalTime& time) {
    return DatePart(time, '.') + " " + std::to_string(time.hour) + MinutesAndSeconds(time);
}

} // namespace DateText
