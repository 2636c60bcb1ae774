#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include <windows.h>

/// What the Windows parts of the seam share: handles that close themselves, and errors that say
/// operation, object and reason.
namespace platform::win32 {

/// A file handle that is closed with its object.
class FileHandle {
public:
    explicit FileHandle(HANDLE handle = INVALID_HANDLE_VALUE) : handle_(handle) {}
    ~FileHandle();
    FileHandle(FileHandle&& other) noexcept;
    FileHandle& operator=(FileHandle&& other) noexcept;

    HANDLE Get() const { return handle_; }
    bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }

    /// Closes now; false when the system reports a write error only here.
    bool Close();

private:
    HANDLE handle_;
};

/// Throws RunTimeError "<operation> <file>: <reason of GetLastError>".
[[noreturn]] void ThrowError(const std::string& operation, const std::filesystem::path& file);

/// Opens a file that others may read, write and delete meanwhile; throws RunTimeError.
FileHandle Open(const std::filesystem::path& file, DWORD access, DWORD disposition,
                const std::string& operation);

/// Makes a new file of a unique name that begins with `start`; `name` is what it is called. Where
/// that fails, it throws as ThrowError does for the operation and the file that it is about.
FileHandle CreateUniqueFile(const std::filesystem::path& start, std::filesystem::path& name,
                            const std::string& operation, const std::filesystem::path& file);

/// Writes all bytes at once; false where the system took only a part of them.
bool WriteAll(HANDLE handle, std::string_view bytes);

} // namespace platform::win32
