#pragma once

#include "files/RecordingNote.h"
#include "platform/FileStore.h"

#include <memory>
#include <string>

namespace FileOpr {

/// The temporary file of this program, with its lock and its note of the target. Destroyed, it
/// frees the lock; files without records are then removed, others stay for recovery.
class TemporaryRecording {
public:
    /// A new one in `folder`. Throws RunTimeError.
    TemporaryRecording(const std::filesystem::path& folder, const std::string& prefix);
    ~TemporaryRecording();
    TemporaryRecording(const TemporaryRecording&) = delete;
    TemporaryRecording& operator=(const TemporaryRecording&) = delete;

    const std::filesystem::path& File() const { return files_.temporary; }
    bool IsEmpty() const;

    /// Must precede every write: puts the note of the target on the disk, where it does not stand
    /// there yet, and makes the file anew where a flush has deleted it. Throws RunTimeError.
    void Prepare(const std::filesystem::path& target);

    /// Appends the content to the target and deletes the file. Throws RunTimeError that says where
    /// the records are kept; they stay.
    void Flush(const std::filesystem::path& target);

private:
    bool TryCreate(const std::filesystem::path& folder, const std::string& prefix);
    void NoteTarget(const std::filesystem::path& target);

    RecordingFiles files_{{}};
    std::unique_ptr<platform::FileLock> lock_;
    std::filesystem::path notedTarget_; ///< empty when the note is not known to be right
};

} // namespace FileOpr
