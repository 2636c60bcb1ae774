#include "platform/posix/PosixReplacement.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <random>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace platform::posix {

namespace {

constexpr unsigned int readableByUser = 0600;
constexpr unsigned int readableByAll = 0666; // less what the user's umask takes away
constexpr const char* halfMark = ".new-";    ///< in the name of a file that is not yet in place

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

/// The file behind a symbolic link; the name itself where there is none.
std::filesystem::path BehindLink(const std::filesystem::path& file) {
    std::error_code noSuchFile;
    if (!std::filesystem::is_symlink(file, noSuchFile))
        return file;
    const auto target = std::filesystem::weakly_canonical(file, noSuchFile);
    return noSuchFile ? file : target;
}

/// A name beside `target` that no other file is likely to have.
std::filesystem::path HalfName(const std::filesystem::path& target) {
    std::random_device random;
    return target.string() + halfMark + std::to_string(random());
}

} // namespace

PosixReplacement::PosixReplacement(const std::filesystem::path& file, Readers readers)
    : target_(BehindLink(file)) {
    RemoveLeftOvers(target_);
    // The new file may hold what only its user may read, as long as it has not got its access.
    const bool open = readers == Readers::asUsual && ::access(target_.c_str(), F_OK) != 0;
    Create(open ? readableByAll : readableByUser);
}

PosixReplacement::~PosixReplacement() {
    if (!half_.empty())
        ::unlink(half_.c_str());
}

void PosixReplacement::Create(unsigned int mode) {
    int number = -1;
    do {
        half_ = HalfName(target_);
        number = ::open(half_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    } while (number < 0 && (errno == EINTR || errno == EEXIST));
    if (number < 0)
        ThrowError("Writing", target_);
    descriptor_ = Descriptor(number);
}

void PosixReplacement::Write(std::string_view bytes) {
    if (!WriteAll(descriptor_.Number(), bytes))
        ThrowError("Writing", target_);
}

void PosixReplacement::Commit() {
    struct stat old {};
    const bool replaces = ::stat(target_.c_str(), &old) == 0;
    if ((replaces && ::fchmod(descriptor_.Number(), old.st_mode & 07777) != 0) ||
        ::fsync(descriptor_.Number()) != 0 || !descriptor_.Close() ||
        ::rename(half_.c_str(), target_.c_str()) != 0)
        ThrowError("Writing", target_);
    half_.clear();
    FlushFolder(target_);
}

} // namespace platform::posix
