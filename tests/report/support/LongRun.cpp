#include "report/support/LongRun.h"

#include "report/support/MeasurementText.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>

namespace {

constexpr std::int64_t secondsPerDay = 86'400;
constexpr std::size_t numberless =
    LongRun::beforeNumber.size() + LongRun::behindNumber; // a first line without its number
constexpr std::string_view behind = "\tAt\t";

/// The digits of all numbers from 1 to before this one.
std::uint64_t DigitsBefore(std::int64_t number) {
    std::uint64_t digits = 0;
    std::uint64_t width = 1;
    for (std::int64_t first = 1; first < number; first *= 10, ++width)
        digits += static_cast<std::uint64_t>(std::min(number, first * 10) - first) * width;
    return digits;
}

void WriteTwo(char* place, std::int64_t value) {
    place[0] = static_cast<char>('0' + value / 10);
    place[1] = static_cast<char>('0' + value % 10);
}

} // namespace

LongRun::LongRun(std::int64_t records) : records_(records), header_(MeasurementText().Header()) {
    rest_ = MeasurementText().Record(1);
    rest_.erase(0, rest_.find('\n') + 1);
    value_ = rest_.find("\nmV") + std::string_view("\nmV             \t").size();
}

std::uint64_t LongRun::OffsetOf(std::int64_t number) const {
    return header_.size() + static_cast<std::uint64_t>(number - 1) * (numberless + rest_.size()) +
           DigitsBefore(number);
}

std::string LongRun::TimeOf(std::int64_t number) const {
    using namespace std::chrono;
    constexpr std::array months{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    if (day_ != number / secondsPerDay) {
        day_ = number / secondsPerDay;
        const year_month_day date = sys_days(2003y / March / 1) + days(day_);
        date_ = "00." + std::string(months[static_cast<unsigned>(date.month()) - 1]) + "." +
                std::to_string(static_cast<int>(date.year()));
        WriteTwo(date_.data(), static_cast<unsigned>(date.day()));
    }
    const std::int64_t second = number % secondsPerDay;
    std::string time = "00:00:00 " + date_;
    WriteTwo(&time[0], second / 3600);
    WriteTwo(&time[3], second / 60 % 60);
    WriteTwo(&time[6], second % 60);
    return time;
}

const std::string& LongRun::Record(std::int64_t number) {
    record_.assign(beforeNumber);
    record_ += std::to_string(number);
    record_ += behind;
    record_ += TimeOf(number);
    record_ += "\r\n";
    WriteTwo(&rest_[value_], number / 1000 % 10 * 10 + number / 100 % 10);
    rest_[value_ + 2] = static_cast<char>('0' + number / 10 % 10);
    rest_[value_ + 3] = '.';
    rest_[value_ + 4] = static_cast<char>('0' + number % 10);
    return record_ += rest_;
}

std::int64_t LongRun::RecordAt(std::uint64_t offset) const {
    std::int64_t first = 1;
    std::int64_t behindLast = records_ + 1;
    while (behindLast - first > 1) {
        const std::int64_t middle = first + (behindLast - first) / 2;
        (OffsetOf(middle) <= offset ? first : behindLast) = middle;
    }
    return first;
}

std::size_t LongRun::Read(std::uint64_t offset, std::span<char> buffer) {
    std::size_t filled = 0;
    if (offset >= Size())
        return 0;
    const auto take = [&](std::string_view text, std::uint64_t begin) {
        const std::string_view part = text.substr(
            std::min<std::uint64_t>(offset + filled - begin, text.size()), buffer.size() - filled);
        std::memcpy(buffer.data() + filled, part.data(), part.size());
        filled += part.size();
    };
    if (offset < header_.size())
        take(header_, 0);
    std::int64_t number = RecordAt(offset + filled);
    for (std::uint64_t begin = OffsetOf(number); number <= records_ && filled < buffer.size();
         ++number) {
        take(Record(number), begin);
        begin += record_.size();
    }
    return filled;
}
