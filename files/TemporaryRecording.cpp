#include "files/TemporaryRecording.h"

#include "base/CodePage.h"
#include "base/RunTimeError.h"
#include "files/TargetTransfer.h"
#include "platform/Platform.h"

namespace FileOpr {

namespace {

void RemoveQuietly(const std::filesystem::path& file) {
    std::error_code ignored; // an empty file that stays is removed at a later start
    std::filesystem::remove(file, ignored);
}

} // namespace

TemporaryRecording::TemporaryRecording(const std::filesystem::path& folder,
                                       const std::string& prefix) {
    // Another program that starts at this very moment may take the new file for a stale one before
    // it is locked; then a new name is tried.
    constexpr int tries = 100;
    for (int i = 0; i < tries; ++i)
        if (TryCreate(folder, prefix))
            return;
    throw RunTimeError("Locking a temporary file in " + CodePage::NameOf(folder) +
                       ": Permission denied");
}

bool TemporaryRecording::TryCreate(const std::filesystem::path& folder, const std::string& prefix) {
    auto& store = platform::Current().files;
    files_ = RecordingFiles(store.CreateUnique(folder, prefix));
    store.Replace(files_.lock, {});
    lock_ = store.TryLock(files_.lock);
    std::error_code gone;
    return lock_ != nullptr && std::filesystem::exists(files_.temporary, gone) &&
           std::filesystem::exists(files_.lock, gone);
}

TemporaryRecording::~TemporaryRecording() {
    const bool empty = IsEmpty();
    if (empty) {
        RemoveQuietly(files_.temporary);
        RemoveQuietly(files_.note);
    }
    lock_.reset(); // first: some systems refuse to remove a locked file
    if (empty)
        RemoveQuietly(files_.lock);
}

bool TemporaryRecording::IsEmpty() const {
    std::error_code missing;
    const auto size = std::filesystem::file_size(files_.temporary, missing);
    return missing || size == 0;
}

void TemporaryRecording::Prepare(const std::filesystem::path& target) {
    if (notedTarget_ != target || notedTarget_.empty()) {
        notedTarget_.clear();
        NoteTarget(target);
        notedTarget_ = target;
    }
    std::error_code unreadable;
    if (!std::filesystem::exists(files_.temporary, unreadable))
        platform::Current().files.Replace(files_.temporary, {}); // readable by its user only
}

void TemporaryRecording::NoteTarget(const std::filesystem::path& target) {
    if (target.empty()) {
        RemoveQuietly(files_.note);
        return;
    }
    // The mark of a flush into this target that failed halfway must stay.
    const auto note = ReadNote(files_.note);
    if (!note || note->target != target)
        WriteNote(files_.note, {target, std::nullopt});
}

void TemporaryRecording::Flush(const std::filesystem::path& target) {
    try {
        if (!IsEmpty()) {
            if (target.empty())
                throw RunTimeError("No measurement file has been chosen");
            notedTarget_.clear();
            TransferToTarget(files_, target);
        }
        std::filesystem::remove(files_.temporary);
    } catch (const std::filesystem::filesystem_error& error) {
        throw RunTimeError("Deleting " + CodePage::NameOf(files_.temporary) + ": " +
                           error.code().message());
    } catch (const RunTimeError& error) {
        throw RunTimeError(std::string(error.what()) + ". The records are kept in " +
                           CodePage::NameOf(files_.temporary));
    }
}

} // namespace FileOpr
