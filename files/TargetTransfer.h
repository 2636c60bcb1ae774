#pragma once

#include "files/RecordingNote.h"

#include <limits>
#include <string>

namespace FileOpr {

/// Bytes that are read at once.
inline constexpr std::size_t chunkSize = std::size_t{256} * 1024;

/// What a temporary file holds.
struct RecordingContent {
    std::uint64_t soundLength = 0; ///< up to and with the last complete header or record
    std::int32_t records = 0;      ///< complete ones
    std::string lastTimeStamp;     ///< of the last complete record
    bool hasHeader = false;        ///< the file begins with a header, not with a record
};

/// Reads at most `limit` bytes. A file that is missing has no content; one that cannot be read
/// throws RunTimeError.
RecordingContent ExamineRecording(const std::filesystem::path& temporaryFile,
                                  std::uint64_t limit = std::numeric_limits<std::uint64_t>::max());

/// Whether a flush that had begun lacks nothing any more.
bool IsTransferred(const RecordingFiles& files, const RecordingNote& note);

/// Whether the target has, behind the flush's beginning, bytes that the flush did not write.
bool HoldsForeignBytes(const RecordingFiles& files, const RecordingNote& note);

/// Appends what the temporary file holds to the target and empties it; then the note has no flush
/// mark. May be interrupted at any moment: the next call with the same files completes exactly what
/// is missing. Throws RunTimeError when the target cannot be written; it is then as it was before
/// this call and the temporary file is kept.
void TransferToTarget(const RecordingFiles& files, const std::filesystem::path& target);

} // namespace FileOpr
