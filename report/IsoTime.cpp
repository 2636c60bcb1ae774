#include "report/IsoTime.h"

#include "base/DateText.h"

#include <algorithm>
#include <cstddef>

namespace Mreport {

namespace {

constexpr std::string_view timePattern = "00:00:00";
constexpr std::string_view datePattern = " 00.aaa.0000";

bool Fits(std::string_view text, std::string_view pattern) {
    const auto fits = [](char c, char kind) {
        const bool digit = c >= '0' && c <= '9';
        return kind == '0' ? digit : kind == 'a' || c == kind;
    };
    return text.size() == pattern.size() &&
           std::equal(text.begin(), text.end(), pattern.begin(), fits);
}

std::string_view DateOf(std::string_view timeStamp) {
    return timeStamp.substr(std::min(timePattern.size(), timeStamp.size()));
}

} // namespace

std::string IsoTime(std::string_view timeStamp) {
    if (!Fits(timeStamp.substr(0, timePattern.size()), timePattern) ||
        !Fits(DateOf(timeStamp), datePattern))
        return std::string(timeStamp);
    const int month = DateText::MonthOf(timeStamp.substr(12, 3));
    if (month == 0)
        return std::string(timeStamp);
    const auto number = std::to_string(100 + month).substr(1);
    return std::string(timeStamp.substr(16, 4)) + "-" + number + "-" +
           std::string(timeStamp.substr(9, 2)) + "T" + std::string(timeStamp.substr(0, 8));
}

std::string_view IsoTimes::Of(std::string_view timeStamp) {
    const std::string_view time = timeStamp.substr(0, timePattern.size());
    if (!date_.empty() && DateOf(timeStamp) == date_ && Fits(time, timePattern)) {
        std::ranges::copy(time, iso_.end() - static_cast<std::ptrdiff_t>(time.size()));
        return iso_;
    }
    iso_ = IsoTime(timeStamp);
    date_ = iso_ == timeStamp ? std::string_view() : DateOf(timeStamp);
    return iso_;
}

} // namespace Mreport
