#include "platform/win32/Win32File.h"

#include "base/CodePage.h"
#include "base/RunTimeError.h"
#include "platform/System.h"

#include <limits>
#include <random>
#include <system_error>
#include <utility>

namespace platform::win32 {

namespace {

constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// The names that the program uses for the errors a user can meet; the system's own otherwise.
std::string Reason(DWORD error) {
    switch (error) {
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return "Disk full";
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
        return "Path not found";
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
    case ERROR_SHARING_VIOLATION:
        return "Permission denied";
    default:
        return std::system_category().message(static_cast<int>(error));
    }
}

} // namespace

FileHandle::~FileHandle() {
    Close();
}

FileHandle::FileHandle(FileHandle&& other) noexcept
    : handle_(std::exchange(other.handle_, INVALID_HANDLE_VALUE)) {}

FileHandle& FileHandle::operator=(FileHandle&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
}

bool FileHandle::Close() {
    return !IsOpen() || ::CloseHandle(std::exchange(handle_, INVALID_HANDLE_VALUE)) != 0;
}

void ThrowError(const std::string& operation, const std::filesystem::path& file) {
    const DWORD error = ::GetLastError();
    throw RunTimeError(operation + " " + CodePage::NameOf(file) + ": " + Reason(error));
}

FileHandle Open(const std::filesystem::path& file, DWORD access, DWORD disposition,
                const std::string& operation) {
    FileHandle handle(::CreateFileW(file.c_str(), access, shareAll, nullptr, disposition,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!handle.IsOpen())
        ThrowError(operation, file);
    return handle;
}

FileHandle CreateUniqueFile(const std::filesystem::path& start, std::filesystem::path& name,
                            const std::string& operation, const std::filesystem::path& file) {
    std::random_device random;
    for (;;) {
        name = start;
        name += std::to_wstring(random());
        FileHandle handle(::CreateFileW(name.c_str(), GENERIC_WRITE, shareAll, nullptr, CREATE_NEW,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
        if (handle.IsOpen())
            return handle;
        if (::GetLastError() != ERROR_FILE_EXISTS)
            ThrowError(operation, file);
    }
}

bool WriteAll(HANDLE handle, std::string_view bytes) {
    if (bytes.size() > std::numeric_limits<DWORD>::max()) {
        ::SetLastError(ERROR_FILE_TOO_LARGE);
        return false;
    }
    DWORD written = 0;
    const auto size = static_cast<DWORD>(bytes.size());
    if (!::WriteFile(handle, bytes.data(), size, &written, nullptr))
        return false;
    if (written == size)
        return true;
    ::SetLastError(ERROR_DISK_FULL);
    return false;
}

} // namespace platform::win32

/// This system has none.
void platform::IgnoreSignalsOfWrites() {}
