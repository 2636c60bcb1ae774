#include "platform/posix/PosixFile.h"

#include "base/CodePage.h"
#include "base/RunTimeError.h"
#include "platform/System.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace platform::posix {

namespace {

/// The names that the program uses for the errors a user can meet; the system's own otherwise.
std::string Reason(int error) {
    switch (error) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return "Disk full";
    case ENOENT:
    case ENOTDIR:
        return "Path not found";
    case EACCES:
    case EPERM:
    case EROFS:
        return "Permission denied";
    default:
        return std::generic_category().message(error);
    }
}

} // namespace

Descriptor::~Descriptor() {
    Close();
}

Descriptor::Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
}

bool Descriptor::Close() {
    return number_ < 0 || ::close(std::exchange(number_, -1)) == 0;
}

void ThrowError(const std::string& operation, const std::filesystem::path& file) {
    const int error = errno;
    throw RunTimeError(operation + " " + CodePage::NameOf(file) + ": " + Reason(error));
}

Descriptor Open(const std::filesystem::path& file, int flags, unsigned int mode,
                const std::string& operation) {
    int number = -1;
    do {
        number = ::open(file.c_str(), flags | O_CLOEXEC, mode);
    } while (number < 0 && errno == EINTR);
    if (number < 0)
        ThrowError(operation, file);
    return Descriptor(number);
}

bool WriteAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR)
            return false;
        if (written > 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

void FlushFolder(const std::filesystem::path& file) {
    const std::filesystem::path folder = file.has_parent_path() ? file.parent_path() : ".";
    if (::access(folder.c_str(), R_OK) != 0)
        return;
    const Descriptor opened = Open(folder, O_RDONLY | O_DIRECTORY, 0, "Flushing");
    if (::fsync(opened.Number()) != 0 && errno != EINVAL) // some file systems have no such flush
        ThrowError("Flushing", folder);
}

} // namespace platform::posix

void platform::IgnoreSignalsOfWrites() {
    std::signal(SIGXFSZ, SIG_IGN); // a file at the limit that its user has set for all
    std::signal(SIGPIPE, SIG_IGN); // messages of which the reader has gone
}
