#pragma once

#include "platform/FileStore.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace FileOpr {

/// A recording whose program ended before its records reached their target. While the object
/// lives, no other copy of the program finds the same recording.
struct UnfinishedRecording {
    std::filesystem::path temporaryFile;
    /// Where the records go; may be changed before Recover. Empty when it is not known.
    std::filesystem::path target;
    std::int32_t records = 0;
    std::string lastTimeStamp; ///< of the last record, "hh:mm:ss dd.mmm.yyyy"
    std::shared_ptr<platform::FileLock> lock;
};

/// The recordings in the temporary folder that no running program holds. Temporary files that hold
/// no record, or whose records have all reached their target, are removed silently. A recording
/// that begins a file never goes into a file that exists already: its target is then a free name
/// beside that.
std::vector<UnfinishedRecording> FindUnfinishedRecordings();

/// Brings the records into the target, exactly what is missing however often this is interrupted,
/// then removes the temporary file. Throws RunTimeError; the records are then kept.
void Recover(UnfinishedRecording& recording);

/// Whether another running program records into this file; `own` is the temporary file of this one.
bool IsTargetOfAnotherProgram(const std::filesystem::path& target,
                              const std::filesystem::path& own);

} // namespace FileOpr
