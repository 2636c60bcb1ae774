#pragma once

#include "files/MeasurementFormat.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace FileOpr {

/// An automatic run as far as the disks are concerned.
struct RunOnDisk {
    std::filesystem::path temporaryFile; ///< receives the records, and is copied into the target
    std::filesystem::path target;
    bool direct = false;            ///< records go straight to the target
    std::uint64_t waitingBytes = 0; ///< what the temporary file holds and the target lacks
    std::size_t recordBytes = 0;
    float period_s = 1;
};

struct DiskForecast {
    std::uint64_t free_bytes = 0; ///< on the target's disk
    double hours = 0;             ///< how long the run can go on
};

/// How long the disks have room for the run. Records that wait in the temporary file need their
/// room once more while they are copied. Throws RunTimeError where a disk cannot be asked.
DiskForecast ForecastRoom(const RunOnDisk& run);

/// The length of a record without a comment.
std::size_t RecordBytes(const MeasurementFormat::RunRows& rows, std::size_t channelCount);

/// A night and the day after it.
inline constexpr double enoughHours = 24;

/// "room on the disk for 18 hours"; whole hours, rounded down.
std::string RoomText(double hours);

/// The target's path and its disk's free space, for example "18.3 GB free"; with a forecast the
/// hours too.
std::string TargetToolTip(const std::filesystem::path& target,
                          const std::optional<DiskForecast>& forecast);

/// Tells once when the room falls below what is enough, and again after there was enough meanwhile.
class RoomWatch {
public:
    /// What to say now: "The room on the disk for 18 hours ..."; empty for nothing new.
    std::string Add(const DiskForecast& forecast);

private:
    bool said_ = false;
};

} // namespace FileOpr
