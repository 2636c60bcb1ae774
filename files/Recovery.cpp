#include "files/Recovery.h"

#include "base/RunTimeError.h"
#include "files/FileOpr.h"
#include "files/TargetSeal.h"
#include "files/TargetTransfer.h"
#include "history/Notes.h"
#include "platform/Platform.h"

#include <algorithm>
#include <chrono>
#include <set>

namespace FileOpr {

namespace {

namespace fs = std::filesystem;

/// A lone empty file may belong to a program that is just about to lock it.
constexpr auto aboutToLock = std::chrono::minutes(1);

void RemoveQuietly(const fs::path& file) {
    std::error_code ignored; // tried again at the next start
    fs::remove(file, ignored);
}

bool HasPrefix(const fs::path& file) {
    return BeginsWithExtension(file.filename().string());
}

/// The temporary file that a note, a lock, or a half-written one of these belongs to; the file
/// itself where it is none.
fs::path RecordingOf(const fs::path& file) {
    const auto name = file.filename().string();
    for (const auto* suffix : {RecordingFiles::noteSuffix, RecordingFiles::lockSuffix})
        if (const auto end = name.find(suffix); end != std::string::npos)
            return file.parent_path() / name.substr(0, end);
    return file;
}

std::vector<fs::path> FilesIn(const fs::path& folder) {
    std::vector<fs::path> files;
    std::error_code unreadable;
    for (const auto& entry : fs::directory_iterator(folder, unreadable))
        if (HasPrefix(entry.path()) && platform::Current().files.IsPrivate(entry.path()))
            files.push_back(entry.path());
    return files;
}

/// The recordings in the folder, whichever of their files are left.
std::set<fs::path> ListRecordings(const fs::path& folder) {
    std::set<fs::path> found;
    for (const auto& file : FilesIn(folder))
        found.insert(RecordingOf(file));
    return found;
}

/// The lock of a recording; nothing when a running program holds it or it has just gone.
std::shared_ptr<platform::FileLock> LockOf(const RecordingFiles& files) {
    try {
        return platform::Current().files.TryLock(files.lock);
    } catch (const RunTimeError&) {
        return nullptr;
    }
}

bool IsHeld(const RecordingFiles& files) {
    try {
        return platform::Current().files.TryLock(files.lock) == nullptr;
    } catch (const RunTimeError&) {
        return false; // it has just gone, and with it the program that held it
    }
}

fs::path Canonical(const fs::path& file) {
    std::error_code unreadable;
    const auto canonical = fs::weakly_canonical(fs::absolute(file, unreadable), unreadable);
    return unreadable ? file.lexically_normal() : canonical;
}

/// What a replacement of one of the files left when its program ended.
void RemoveHalfWritten(const RecordingFiles& files) {
    const auto prefix = files.temporary.filename().string() + ".";
    for (const auto& file : FilesIn(files.temporary.parent_path()))
        if (file != files.note && file != files.lock &&
            file.filename().string().starts_with(prefix))
            RemoveQuietly(file);
}

void RemoveFiles(const RecordingFiles& files, std::shared_ptr<platform::FileLock>& lock) {
    RemoveHalfWritten(files); // first: nothing else leads to them
    RemoveQuietly(files.temporary);
    RemoveQuietly(files.note);
    lock.reset(); // some systems refuse to remove a locked file
    RemoveQuietly(files.lock);
}

/// The recording's lock file, made anew where somebody has cleared it away.
bool HasLock(const RecordingFiles& files) {
    std::error_code unreadable;
    if (fs::exists(files.lock, unreadable))
        return true;
    if (!fs::exists(files.note, unreadable))
        return false;
    try {
        platform::Current().files.Replace(files.lock, {});
        return true;
    } catch (const RunTimeError&) {
        return false; // no place for a lock now; the recording waits for a later start
    }
}

/// A program that ended between making its file and locking it leaves an empty one without note.
void RemoveLoneFile(const RecordingFiles& files) {
    std::error_code missing;
    const auto written = fs::last_write_time(files.temporary, missing);
    if (missing || !fs::is_empty(files.temporary, missing))
        return;
    if (fs::file_time_type::clock::now() - written > aboutToLock) {
        RemoveHalfWritten(files);
        RemoveQuietly(files.temporary);
    }
}

fs::path FreeNameBeside(const fs::path& file) {
    for (int number = 2;; ++number) {
        fs::path candidate = file;
        candidate.replace_filename(file.stem());
        candidate += " (" + std::to_string(number) + ")";
        candidate += file.extension();
        std::error_code unreadable;
        if (!fs::exists(candidate, unreadable))
            return candidate;
    }
}

bool HoldsSomething(const fs::path& file) {
    std::error_code missing;
    const auto size = fs::file_size(file, missing);
    return !missing && size > 0;
}

fs::path TargetOf(const RecordingFiles& files, const std::optional<RecordingNote>& note,
                  const RecordingContent& content) {
    if (!note)
        return {};
    const bool ofAnotherRun =
        content.hasHeader && HoldsSomething(note->target) && HoldsForeignBytes(files, *note);
    return ofAnotherRun ? FreeNameBeside(note->target) : note->target;
}

} // namespace

std::vector<UnfinishedRecording> FindUnfinishedRecordings() {
    std::vector<UnfinishedRecording> unfinished;
    for (const auto& temporary : ListRecordings(platform::Current().places.TemporaryFolder())) {
        const RecordingFiles files(temporary);
        if (!HasLock(files)) {
            RemoveLoneFile(files);
            continue;
        }
        auto lock = LockOf(files);
        if (!lock)
            continue;
        try {
            const auto note = ReadNote(files.note);
            const auto content = ExamineRecording(files.temporary);
            if (content.records == 0 || (note && IsTransferred(files, *note)))
                RemoveFiles(files, lock);
            else
                unfinished.push_back({temporary, TargetOf(files, note, content), content.records,
                                      content.lastTimeStamp, std::move(lock)});
        } catch (const RunTimeError&) {
            continue; // what cannot be read now is kept, and looked for at the next start
        }
    }
    return unfinished;
}

void Recover(UnfinishedRecording& recording) {
    if (recording.target.empty())
        throw RunTimeError("No measurement file has been chosen");
    const RecordingFiles files(recording.temporaryFile);
    try {
        TransferToTarget(files, recording.target);
    } catch (const RunTimeError& error) {
        History::Note(History::Kind::writeFailed, error.what(), recording.target);
        throw;
    }
    NoteRecovered(recording.target, std::to_string(recording.records) + " records, the last at " +
                                        recording.lastTimeStamp);
    RemoveFiles(files, recording.lock);
}

bool IsTargetOfAnotherProgram(const fs::path& target, const fs::path& own) {
    const auto wanted = Canonical(target);
    const auto recordings = ListRecordings(platform::Current().places.TemporaryFolder());
    return std::ranges::any_of(recordings, [&](const fs::path& temporary) {
        const RecordingFiles files(temporary);
        const auto note = temporary == own ? std::nullopt : ReadNote(files.note);
        return note && Canonical(note->target) == wanted && IsHeld(files);
    });
}

} // namespace FileOpr
