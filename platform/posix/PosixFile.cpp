#include "platform/posix/PosixFile.h"

#include "base/CodePage.h"
#include "base/RunTimeError.h"

#include <cerrno>
#include <chrono>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace platform::posix {

namespace {

constexpr mode_t ownerOnly = 0600;

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

constexpr const char* halfMark = ".new-"; ///< in the name of a file that is not yet in place

/// Removes the half-made files that killed processes left beside `file`. One that another process
/// is just writing is younger than the limit.
void RemoveLeftOvers(const std::filesystem::path& file) {
    constexpr std::chrono::minutes limit{10};
    const auto oldest = std::filesystem::file_time_type::clock::now() - limit;
    const std::string start = file.filename().string() + halfMark;
    const std::filesystem::path folder = file.has_parent_path() ? file.parent_path() : ".";
    std::error_code ignored; // what cannot be removed now is tried again at the next write
    for (const auto& entry : std::filesystem::directory_iterator(folder, ignored))
        if (entry.path().filename().string().starts_with(start) &&
            entry.last_write_time(ignored) < oldest)
            std::filesystem::remove(entry.path(), ignored);
}

/// Removes a half-made file unless it has been put into place.
class NewFile {
public:
    explicit NewFile(std::filesystem::path name) : name_(std::move(name)) {}
    ~NewFile() {
        if (!name_.empty())
            ::unlink(name_.c_str());
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    void Keep() { name_.clear(); }

private:
    std::filesystem::path name_;
};

/// The file behind a symbolic link; the name itself where there is none.
std::filesystem::path BehindLink(const std::filesystem::path& file) {
    std::error_code noSuchFile;
    if (!std::filesystem::is_symlink(file, noSuchFile))
        return file;
    const auto target = std::filesystem::weakly_canonical(file, noSuchFile);
    return noSuchFile ? file : target;
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

void ReplaceFile(const std::filesystem::path& file, std::string_view bytes) {
    const std::filesystem::path target = BehindLink(file);
    RemoveLeftOvers(target);
    std::string name = target.string() + halfMark + "XXXXXX";
    Descriptor descriptor(::mkstemp(name.data()));
    if (!descriptor.IsOpen())
        ThrowError("Writing", target);
    NewFile half(name);
    struct stat old {};
    const mode_t mode = ::stat(target.c_str(), &old) == 0 ? old.st_mode & 07777 : ownerOnly;
    if (::fchmod(descriptor.Number(), mode) != 0 || !WriteAll(descriptor.Number(), bytes) ||
        ::fsync(descriptor.Number()) != 0 || !descriptor.Close() ||
        ::rename(name.c_str(), target.c_str()) != 0)
        ThrowError("Writing", target);
    half.Keep();
    FlushFolder(target);
}

} // namespace platform::posix
