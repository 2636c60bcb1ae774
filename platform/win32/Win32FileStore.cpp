#include "platform/System.h"

#include "base/RunTimeError.h"
#include "platform/win32/Win32File.h"

#include <utility>

namespace platform {

namespace {

using win32::FileHandle;
using win32::ThrowError;

std::uint64_t SizeOf(HANDLE handle, const std::filesystem::path& file) {
    LARGE_INTEGER size{};
    if (!::GetFileSizeEx(handle, &size))
        ThrowError("Reading", file);
    return static_cast<std::uint64_t>(size.QuadPart);
}

/// Cuts an open file; false, with the system's error set, when that fails.
bool Cut(HANDLE handle, std::uint64_t size) {
    LARGE_INTEGER end{};
    end.QuadPart = static_cast<LONGLONG>(size);
    return ::SetFilePointerEx(handle, end, nullptr, FILE_BEGIN) && ::SetEndOfFile(handle);
}

class Win32AppendFile : public AppendFile {
public:
    explicit Win32AppendFile(const std::filesystem::path& file)
        : file_(file), handle_(win32::Open(file, FILE_APPEND_DATA | FILE_READ_ATTRIBUTES,
                                           OPEN_ALWAYS, "Opening")) {}

    void Append(std::string_view bytes, bool durable) override {
        const std::uint64_t before = Size();
        if (win32::WriteAll(handle_.Get(), bytes) &&
            (!durable || ::FlushFileBuffers(handle_.Get())))
            return;
        const DWORD reason = ::GetLastError();
        CutBack(before);
        ::SetLastError(reason);
        ThrowError("Writing", file_);
    }

    std::uint64_t Size() const override { return SizeOf(handle_.Get(), file_); }

private:
    /// A half line must not stay; where even cutting fails, the reason of the write says why.
    void CutBack(std::uint64_t size) {
        try {
            const FileHandle writer = win32::Open(file_, GENERIC_WRITE, OPEN_EXISTING, "Cutting");
            Cut(writer.Get(), size);
        } catch (const RunTimeError&) {
            return;
        }
    }

    std::filesystem::path file_;
    FileHandle handle_;
};

class Win32Replacement : public Replacement {
public:
    explicit Win32Replacement(const std::filesystem::path& file) : target_(file) {
        std::filesystem::path start = file;
        start += ".new-";
        handle_ = win32::CreateUniqueFile(start, half_, "Writing", file);
    }
    ~Win32Replacement() override {
        handle_.Close(); // first: some file systems remove no open file
        if (!half_.empty())
            ::DeleteFileW(half_.c_str());
    }
    Win32Replacement(const Win32Replacement&) = delete;
    Win32Replacement& operator=(const Win32Replacement&) = delete;

    void Write(std::string_view bytes) override {
        if (!win32::WriteAll(handle_.Get(), bytes))
            ThrowError("Writing", target_);
    }

    const std::filesystem::path& HalfFile() const override { return half_; }

    void Commit() override {
        if (!::FlushFileBuffers(handle_.Get()) || !handle_.Close() ||
            !::MoveFileExW(half_.c_str(), target_.c_str(),
                           MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
            ThrowError("Writing", target_);
        half_.clear();
    }

private:
    std::filesystem::path target_;
    std::filesystem::path half_; ///< empty once it is in place
    FileHandle handle_;
};

class Win32FileLock : public FileLock {
public:
    explicit Win32FileLock(FileHandle handle) : handle_(std::move(handle)) {}

private:
    FileHandle handle_; // closing it ends the lock
};

class Win32FileStore : public FileStore {
public:
    std::filesystem::path CreateUnique(const std::filesystem::path& folder,
                                       const std::string& prefix) override {
        std::filesystem::path name;
        win32::CreateUniqueFile(folder / prefix, name, "Making a file in", folder);
        return name;
    }

    std::unique_ptr<AppendFile> OpenForAppend(const std::filesystem::path& file) override {
        return std::make_unique<Win32AppendFile>(file);
    }

    /// Who can read a new file follows from its folder.
    std::unique_ptr<Replacement> BeginReplacement(const std::filesystem::path& file,
                                                  Readers) override {
        return std::make_unique<Win32Replacement>(file);
    }

    void Truncate(const std::filesystem::path& file, std::uint64_t size) override {
        FileHandle handle = win32::Open(file, GENERIC_WRITE, OPEN_EXISTING, "Cutting");
        if (!Cut(handle.Get(), size) || !::FlushFileBuffers(handle.Get()) || !handle.Close())
            ThrowError("Cutting", file);
    }

    std::unique_ptr<FileLock> TryLock(const std::filesystem::path& file) override {
        FileHandle handle =
            win32::Open(file, GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING, "Locking");
        // A byte far behind the end: the system keeps others from the locked bytes themselves.
        OVERLAPPED place{};
        place.OffsetHigh = 0x40000000;
        if (::LockFileEx(handle.Get(), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0,
                         &place))
            return std::make_unique<Win32FileLock>(std::move(handle));
        if (::GetLastError() == ERROR_LOCK_VIOLATION || ::GetLastError() == ERROR_IO_PENDING)
            return nullptr;
        ThrowError("Locking", file);
    }

    DiskRoom RoomOfDisk(const std::filesystem::path& file) const override {
        const std::filesystem::path folder =
            file.has_parent_path() ? file.parent_path() : std::filesystem::path(L".");
        const FileHandle opened(::CreateFileW(
            folder.c_str(), FILE_READ_ATTRIBUTES,
            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
            FILE_FLAG_BACKUP_SEMANTICS, nullptr)); // opens folders, too
        ULARGE_INTEGER room{};
        BY_HANDLE_FILE_INFORMATION information{};
        if (!opened.IsOpen() || !::GetFileInformationByHandle(opened.Get(), &information) ||
            !::GetDiskFreeSpaceExW(folder.c_str(), &room, nullptr, nullptr))
            ThrowError("Finding the free space of", folder);
        return {room.QuadPart, information.dwVolumeSerialNumber};
    }
};

} // namespace

std::unique_ptr<FileStore> MakeFileStore() {
    return std::make_unique<Win32FileStore>();
}

} // namespace platform
