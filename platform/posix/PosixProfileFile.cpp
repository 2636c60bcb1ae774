#include "platform/System.h"

#include "base/RunTimeError.h"
#include "platform/posix/PosixReplacement.h"
#include "platform/posix/ProfileText.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace platform {

namespace {

using posix::ProfileText;

/// What tells that a file is still the one that was read.
struct Stamp {
    dev_t device = 0;
    ino_t node = 0;
    off_t size = 0;
    timespec changed{};

    bool operator==(const Stamp& other) const {
        return device == other.device && node == other.node && size == other.size &&
               changed.tv_sec == other.changed.tv_sec && changed.tv_nsec == other.changed.tv_nsec;
    }
};

Stamp StampOf(const struct stat& status) {
    return {status.st_dev, status.st_ino, status.st_size, status.st_mtim};
}

/// True when a further change of the file would give it another time. File systems count time in
/// steps, so a change within the step of the last one shows nothing.
bool IsSettled(const struct stat& status) {
    constexpr std::chrono::milliseconds longestStep{100};
    const auto changed = std::chrono::seconds(status.st_mtim.tv_sec) +
                         std::chrono::nanoseconds(status.st_mtim.tv_nsec);
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return now > changed + longestStep;
}

std::string ReadAll(int descriptor, off_t size) {
    std::string bytes(static_cast<std::size_t>(size), '\0');
    std::size_t filled = 0;
    while (filled < bytes.size()) {
        const ssize_t count = ::read(descriptor, bytes.data() + filled, bytes.size() - filled);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        filled += static_cast<std::size_t>(count);
    }
    bytes.resize(filled);
    return bytes;
}

/// At most `bufferSize` - 1 characters of the value, without one pair of equal quotes around it. A
/// closing quote counts against the buffer like the system's call counts it: where it is the one
/// character too many, the last one before it goes with it.
std::string Copied(std::string_view value, std::size_t bufferSize) {
    const bool quoted = value.size() > 1 && value.front() == value.back() &&
                        (value.front() == '"' || value.front() == '\'');
    if (!quoted)
        return std::string(value.substr(0, bufferSize - 1));
    const std::string_view opened = value.substr(1);
    std::string copy(opened.substr(0, bufferSize - 1));
    if (bufferSize >= opened.size())
        copy.pop_back();
    return copy;
}

/// Without its trailing blanks, of which the system's call leaves the first character.
std::string_view Fallback(std::string_view text) {
    while (text.size() > 1 && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

/// The value of a digit in bases up to 16; 16 for another character.
unsigned int DigitOf(char c) {
    if (c >= '0' && c <= '9')
        return static_cast<unsigned int>(c - '0');
    if (c >= 'a' && c <= 'f')
        return static_cast<unsigned int>(c - 'a' + 10);
    if (c >= 'A' && c <= 'F')
        return static_cast<unsigned int>(c - 'A' + 10);
    return 16;
}

/// Takes "0x", "0o" or "0b" off; 10 where there is none.
unsigned int TakeBase(std::string_view& text) {
    const char mark = text.size() > 1 && text[0] == '0' ? text[1] : ' ';
    const unsigned int base = mark == 'x' ? 16 : mark == 'o' ? 8 : mark == 'b' ? 2 : 10;
    if (base != 10)
        text.remove_prefix(2);
    return base;
}

/// Leading digits behind blanks and a sign, wrapping at 32 bits as the system's call does.
int LeadingDigits(std::string_view text) {
    while (!text.empty() && static_cast<unsigned char>(text.front()) <= ' ')
        text.remove_prefix(1);
    const bool negative = !text.empty() && text.front() == '-';
    if (!text.empty() && (text.front() == '-' || text.front() == '+'))
        text.remove_prefix(1);
    const unsigned int base = TakeBase(text);
    std::uint32_t value = 0;
    for (const char c : text) {
        if (DigitOf(c) >= base)
            break;
        value = value * base + DigitOf(c);
    }
    return static_cast<int>(negative ? 0 - value : value);
}

class PosixProfileFile : public ProfileFile {
public:
    explicit PosixProfileFile(std::filesystem::path file) : file_(std::move(file)) {}

    std::string GetString(const std::string& section, const std::string& key,
                          const std::string& fallback, std::size_t bufferSize) const override {
        if (bufferSize == 0)
            return {};
        const auto value = Text().Value(section, key);
        return Copied(value ? *value : Fallback(fallback), bufferSize);
    }

    int GetInt(const std::string& section, const std::string& key, int fallback) const override {
        constexpr std::size_t bufferOfIntegers = 30; // the system's call reads no more digits
        const std::string value = GetString(section, key, {}, bufferOfIntegers);
        return value.empty() ? fallback : LeadingDigits(value);
    }

    bool Write(const std::string& section, const std::optional<std::string>& key,
               const std::optional<std::string>& value) override {
        try {
            Text();
            if (!whole_) // writing would throw away what could not be read
                return false;
            const bool changed = !key     ? text_.RemoveSection(section)
                                 : !value ? text_.Remove(section, *key)
                                          : text_.Set(section, *key, *value);
            if (changed) {
                stamp_.reset();
                posix::PosixReplacement replacement(file_, Readers::user);
                replacement.Write(text_.Bytes());
                replacement.Commit();
            }
            return true;
        } catch (const RunTimeError&) {
            return false; // the caller tells the user; the file is as it was
        }
    }

private:
    /// The file's text, read anew when the file is no longer the one that was read; empty where
    /// there is none or it cannot be read, which `whole_` tells apart.
    const ProfileText& Text() const {
        posix::Descriptor descriptor(::open(file_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
        const bool missing = !descriptor.IsOpen() && (errno == ENOENT || errno == ENOTDIR);
        struct stat status {};
        if (!descriptor.IsOpen() || ::fstat(descriptor.Number(), &status) != 0 ||
            !S_ISREG(status.st_mode)) {
            stamp_.reset();
            text_ = ProfileText({});
            whole_ = missing;
        } else if (stamp_ != StampOf(status)) {
            const std::string bytes = ReadAll(descriptor.Number(), status.st_size);
            if (!text_.Holds(bytes))
                text_ = ProfileText(bytes);
            whole_ = bytes.size() == static_cast<std::size_t>(status.st_size);
            stamp_ = whole_ && IsSettled(status) ? std::optional(StampOf(status)) : std::nullopt;
        }
        return text_;
    }

    std::filesystem::path file_;
    mutable std::optional<Stamp> stamp_;
    mutable bool whole_ = true; ///< the text is all that the file holds
    mutable ProfileText text_{{}};
};

} // namespace

std::unique_ptr<ProfileFile> MakeProfileFile(std::filesystem::path file) {
    return std::make_unique<PosixProfileFile>(std::move(file));
}

} // namespace platform
