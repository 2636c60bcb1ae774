#pragma once

#include <array>
#include <chrono>
#include <optional>
#include <string_view>

namespace Mreport {

/// A record's moment, in whole seconds of the wall clock that the measuring computer showed.
using RecordTime = std::chrono::local_seconds;

/// Reads the time stamps of records, "hh:mm:ss dd.mmm.yyyy". A run's records share few dates, so
/// the date read last is kept.
class RecordTimeReader {
public:
    /// Nothing for a text that is no time stamp; blanks may follow it.
    std::optional<RecordTime> Read(std::string_view timeStamp);

private:
    static constexpr std::size_t dateLength = 11;

    std::array<char, dateLength> dateText_{};
    std::chrono::local_days date_{};
};

} // namespace Mreport
