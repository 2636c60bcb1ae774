#include "platform/System.h"

#include "base/RunTimeError.h"
#include "platform/posix/PosixFile.h"
#include "platform/posix/PosixReplacement.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace platform {

namespace {

using posix::Descriptor;
using posix::ThrowError;

constexpr unsigned int readableByAll = 0666; ///< less what the user's umask takes away

/// A new file's name is put on the disk at once: bytes that are durable in a file without a name
/// would be lost all the same.
Descriptor OpenOrMake(const std::filesystem::path& file) {
    constexpr int flags = O_WRONLY | O_CREAT | O_APPEND;
    const bool exists = ::access(file.c_str(), F_OK) == 0;
    auto descriptor = posix::Open(file, flags, readableByAll, "Opening");
    if (!exists)
        posix::FlushFolder(file);
    return descriptor;
}

class PosixAppendFile : public AppendFile {
public:
    explicit PosixAppendFile(const std::filesystem::path& file)
        : file_(file), descriptor_(OpenOrMake(file)) {}

    void Append(std::string_view bytes, bool durable) override {
        const std::uint64_t before = Size();
        const bool written = posix::WriteAll(descriptor_.Number(), bytes) &&
                             (!durable || ::fdatasync(descriptor_.Number()) == 0);
        if (written)
            return;
        const int reason = errno;
        // A half line must not stay; where even cutting fails, the reason of the write says why.
        [[maybe_unused]] const int cut =
            ::ftruncate(descriptor_.Number(), static_cast<off_t>(before));
        errno = reason;
        ThrowError("Writing", file_);
    }

    std::uint64_t Size() const override {
        struct stat status {};
        if (::fstat(descriptor_.Number(), &status) != 0)
            ThrowError("Reading", file_);
        return static_cast<std::uint64_t>(status.st_size);
    }

private:
    std::filesystem::path file_;
    Descriptor descriptor_;
};

class PosixFileLock : public FileLock {
public:
    explicit PosixFileLock(Descriptor descriptor) : descriptor_(std::move(descriptor)) {}

private:
    Descriptor descriptor_; // closing it ends the lock
};

class PosixFileStore : public FileStore {
public:
    std::filesystem::path CreateUnique(const std::filesystem::path& folder,
                                       const std::string& prefix) override {
        std::string name = (folder / (prefix + "XXXXXX")).string();
        const Descriptor created(::mkstemp(name.data())); // exclusive, mode 0600
        if (!created.IsOpen())
            ThrowError("Making a file in", folder);
        return name;
    }

    std::unique_ptr<AppendFile> OpenForAppend(const std::filesystem::path& file) override {
        return std::make_unique<PosixAppendFile>(file);
    }

    std::unique_ptr<Replacement> BeginReplacement(const std::filesystem::path& file,
                                                  Readers readers) override {
        return std::make_unique<posix::PosixReplacement>(file, readers);
    }

    void Truncate(const std::filesystem::path& file, std::uint64_t size) override {
        Descriptor descriptor = posix::Open(file, O_WRONLY, 0, "Cutting");
        if (::ftruncate(descriptor.Number(), static_cast<off_t>(size)) != 0 ||
            ::fsync(descriptor.Number()) != 0 || !descriptor.Close())
            ThrowError("Cutting", file);
    }

    bool IsPrivate(const std::filesystem::path& file) const override {
        struct stat status {};
        return ::lstat(file.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
               status.st_uid == ::geteuid() && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
    }

    std::unique_ptr<FileLock> TryLock(const std::filesystem::path& file) override {
        Descriptor descriptor = posix::Open(file, O_RDWR, 0, "Locking");
        // A lock of the open file, not of the process: closing another descriptor of the same file
        // does not end it.
        if (::flock(descriptor.Number(), LOCK_EX | LOCK_NB) == 0)
            return std::make_unique<PosixFileLock>(std::move(descriptor));
        if (errno == EWOULDBLOCK)
            return nullptr;
        ThrowError("Locking", file);
    }

    DiskRoom RoomOfDisk(const std::filesystem::path& file) const override {
        const std::filesystem::path folder =
            file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
        struct stat status {};
        struct statvfs room {};
        if (::stat(folder.c_str(), &status) != 0 || ::statvfs(folder.c_str(), &room) != 0)
            ThrowError("Finding the free space of", folder);
        return {std::uint64_t{room.f_bavail} * room.f_frsize, std::uint64_t{status.st_dev}};
    }
};

} // namespace

std::unique_ptr<FileStore> MakeFileStore() {
    return std::make_unique<PosixFileStore>();
}

} // namespace platform
