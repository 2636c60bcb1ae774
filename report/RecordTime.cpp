#include "report/RecordTime.h"

#include "base/DateText.h"

#include <algorithm>

namespace Mreport {

namespace {

constexpr std::size_t clockLength = 8;
constexpr int notDigits = -1;

/// The number that all the text's characters write; notDigits where one is no digit.
int Digits(std::string_view text) {
    int number = 0;
    for (const char digit : text) {
        if (digit < '0' || digit > '9')
            return notDigits;
        number = number * 10 + (digit - '0');
    }
    return number;
}

std::optional<std::chrono::local_days> DateOf(std::string_view text) {
    const int day = Digits(text.substr(0, 2));
    const int month = DateText::MonthOf(text.substr(3, 3));
    const int year = Digits(text.substr(7, 4));
    if (day < 0 || year < 0 || text[2] != '.' || text[6] != '.')
        return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::year(year),
                                           std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day))};
    return date.ok() ? std::optional(std::chrono::local_days(date)) : std::nullopt;
}

} // namespace

std::optional<RecordTime> RecordTimeReader::Read(std::string_view timeStamp) {
    if (timeStamp.size() < clockLength + 1 + dateLength || timeStamp[2] != ':' ||
        timeStamp[5] != ':' || timeStamp[clockLength] != ' ')
        return std::nullopt;
    const int hour = Digits(timeStamp.substr(0, 2));
    const int minute = Digits(timeStamp.substr(3, 2));
    const int second = Digits(timeStamp.substr(6, 2));
    if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59)
        return std::nullopt;
    const std::string_view date = timeStamp.substr(clockLength + 1, dateLength);
    const std::string_view rest = timeStamp.substr(clockLength + 1 + dateLength);
    if (rest.find_first_not_of(' ') != std::string_view::npos)
        return std::nullopt;
    if (date != std::string_view(dateText_.data(), dateLength)) {
        const auto read = DateOf(date);
        if (!read)
            return std::nullopt;
        std::ranges::copy(date, dateText_.begin());
        date_ = *read;
    }
    return date_ + std::chrono::hours(hour) + std::chrono::minutes(minute) +
           std::chrono::seconds(second);
}

} // namespace Mreport
