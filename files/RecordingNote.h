#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace FileOpr {

/// A flush that has begun: the target's length before it, and the first byte of the temporary file
/// that it copies. With it an interrupted flush is completed without doubling or missing a byte.
struct FlushMark {
    std::uint64_t targetLength = 0;
    std::uint64_t from = 0;

    bool operator==(const FlushMark&) const = default;
};

/// What a recording leaves beside its temporary file for the case that it is interrupted.
struct RecordingNote {
    std::filesystem::path target;
    std::optional<FlushMark> flush;

    bool operator==(const RecordingNote&) const = default;
};

/// Nothing when the file is missing or is no note.
std::optional<RecordingNote> ReadNote(const std::filesystem::path& noteFile);

/// Puts the note on the disk in one step. Throws RunTimeError.
void WriteNote(const std::filesystem::path& noteFile, const RecordingNote& note);

/// The files of one recording, named after its temporary file. The lock is a file of its own, since
/// the temporary file comes and goes while the program runs.
struct RecordingFiles {
    explicit RecordingFiles(std::filesystem::path temporaryFile);

    std::filesystem::path temporary;
    std::filesystem::path note;
    std::filesystem::path lock;

    static constexpr const char* noteSuffix = ".note";
    static constexpr const char* lockSuffix = ".lock";
};

} // namespace FileOpr
