#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace platform {

/// A file held open for appending. Closing is by destruction and loses nothing, since every append
/// is complete before it returns.
class AppendFile {
public:
    virtual ~AppendFile() = default;

    /// Adds the bytes with one write and, when `durable`, returns after they are on the disk.
    /// Throws RunTimeError naming the file and the reason; the file then ends where it ended
    /// before.
    virtual void Append(std::string_view bytes, bool durable) = 0;

    virtual std::uint64_t Size() const = 0;
};

/// A lock that this process holds on a file until it is destroyed or the process ends.
class FileLock {
public:
    virtual ~FileLock() = default;
};

/// A new file that is to take the place of another: the old one stays until the new one is whole.
/// What has not been committed is gone with the object, and the old file is as it was.
class Replacement {
public:
    virtual ~Replacement() = default;

    /// Adds the bytes. Throws RunTimeError naming the file and the reason that the system gives.
    virtual void Write(std::string_view bytes) = 0;

    /// Where the new file stands until it is committed, for who can write it only by its name.
    virtual const std::filesystem::path& HalfFile() const = 0;

    /// Puts the new file onto the disk and, in one step, in place of the old one, which is whole
    /// until then, whatever happens. Throws RunTimeError as Write does.
    virtual void Commit() = 0;
};

/// Who can read a new file. One that takes another's place keeps the access of that.
enum class Readers {
    user,    ///< nobody but its user
    asUsual, ///< as any document that the user makes
};

/// What is left on a disk.
struct DiskRoom {
    std::uint64_t free_bytes = 0; ///< that this user may write
    std::uint64_t disk = 0;       ///< equal for two files on one disk
};

/// What measurement files need of the system beyond standard file streams: flushes to disk,
/// exclusive temporary files and locks. All throw RunTimeError with a plain description.
class FileStore {
public:
    virtual ~FileStore() = default;

    /// Makes a new empty file with a unique name in `folder`, readable by its user only.
    virtual std::filesystem::path CreateUnique(const std::filesystem::path& folder,
                                               const std::string& prefix) = 0;

    virtual std::unique_ptr<AppendFile> OpenForAppend(const std::filesystem::path& file) = 0;

    /// Begins a file beside `file` that can take its place. A symbolic link stays, and what it
    /// leads to is replaced.
    virtual std::unique_ptr<Replacement> BeginReplacement(const std::filesystem::path& file,
                                                          Readers readers) = 0;

    /// Puts a file with these bytes in place of `file`.
    void Replace(const std::filesystem::path& file, std::string_view bytes,
                 Readers readers = Readers::user) {
        const auto replacement = BeginReplacement(file, readers);
        replacement->Write(bytes);
        replacement->Commit();
    }

    /// Cuts the file to `size` bytes and flushes it to disk.
    virtual void Truncate(const std::filesystem::path& file, std::uint64_t size) = 0;

    /// Whether this is a file of this user that nobody else can have put there. True on systems
    /// whose temporary folder is each user's own.
    virtual bool IsPrivate(const std::filesystem::path&) const { return true; }

    /// The lock, or nothing when another process holds it.
    virtual std::unique_ptr<FileLock> TryLock(const std::filesystem::path& file) = 0;

    /// The room on the disk that holds the file's folder; the file need not be there.
    virtual DiskRoom RoomOfDisk(const std::filesystem::path& file) const = 0;
};

} // namespace platform
