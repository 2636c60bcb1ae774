#pragma once

#include "base/LocalTime.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace FileOpr {

/// How a recording stands, for the line that tells it.
struct RecordingProgress {
    struct Failure {
        LocalTime at;
        std::string reason;
    };

    bool automatic = false;
    float period_s = 0;      ///< of an automatic run
    std::int32_t record = 0; ///< number of the last record; 0 before the first
    LocalTime recordedAt;
    std::chrono::seconds untilNext{0};
    std::chrono::seconds running{0};
    std::optional<Failure> failure;           ///< since the last record
    std::optional<LocalTime> noReadingsSince; ///< the run waits for the instrument
    std::optional<double> hoursOfRoom;        ///< on the disk, where that is short
};

/// One line: "Recording to spring-1.4ch every 8 s: record 32 at 15:07:24, next in 5 s, running
/// 0:04:10"; by hand "Record 3 saved 14:46:56"; after a failure when, why and the last record.
/// Empty before the first record.
std::string RecordingText(const RecordingProgress& progress, std::string_view targetName);

/// Whole hours, minutes and seconds, "0:04:10".
std::string HoursMinutesSeconds(std::chrono::seconds time);

} // namespace FileOpr
