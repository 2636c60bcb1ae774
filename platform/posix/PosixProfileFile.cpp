#include "platform/System.h"

#include "app/RunTimeError.h"
#include "platform/posix/PosixFile.h"
#include "platform/posix/ProfileText.h"

#include <cerrno>
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

/// Without one pair of equal quotes around it.
std::string_view Unquoted(std::string_view value) {
    const bool quoted = value.size() > 1 && value.front() == value.back() &&
                        (value.front() == '"' || value.front() == '\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

std::string_view WithoutTrailingBlanks(std::string_view text) {
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

/// Leading decimal digits behind an optional sign, wrapping at 32 bits as the system's call does.
int LeadingDigits(std::string_view text) {
    const bool negative = !text.empty() && text.front() == '-';
    if (!text.empty() && (text.front() == '-' || text.front() == '+'))
        text.remove_prefix(1);
    std::uint32_t value = 0;
    for (const char c : text) {
        if (c < '0' || c > '9')
            break;
        value = value * 10 + static_cast<std::uint32_t>(c - '0');
    }
    return static_cast<int>(negative ? 0 - value : value);
}

class PosixProfileFile : public ProfileFile {
public:
    explicit PosixProfileFile(std::filesystem::path file) : file_(std::move(file)) {}

    std::string GetString(const std::string& section, const std::string& key,
                          const std::string& fallback, std::size_t bufferSize) const override {
        const auto value = Text().Value(section, key);
        std::string_view result = value ? Unquoted(*value) : WithoutTrailingBlanks(fallback);
        return std::string(result.substr(0, bufferSize == 0 ? 0 : bufferSize - 1));
    }

    int GetInt(const std::string& section, const std::string& key, int fallback) const override {
        const auto value = Text().Value(section, key);
        if (!value || Unquoted(*value).empty())
            return fallback;
        return LeadingDigits(Unquoted(*value));
    }

    bool Write(const std::string& section, const std::optional<std::string>& key,
               const std::optional<std::string>& value) override {
        try {
            ProfileText text = Text();
            if (!key)
                text.RemoveSection(section);
            else if (!value)
                text.Remove(section, *key);
            else
                text.Set(section, *key, *value);
            if (text.Bytes() != text_.Bytes())
                posix::ReplaceFile(file_, text.Bytes());
            return true;
        } catch (const RunTimeError&) {
            return false; // the caller tells the user; the file is as it was
        }
    }

private:
    /// The file's text, read anew when the file is no longer the one that was read; empty where
    /// there is none or it cannot be read.
    const ProfileText& Text() const {
        posix::Descriptor descriptor(::open(file_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
        struct stat status {};
        if (!descriptor.IsOpen() || ::fstat(descriptor.Number(), &status) != 0 ||
            !S_ISREG(status.st_mode)) {
            stamp_.reset();
            text_ = ProfileText({});
        } else if (stamp_ != StampOf(status)) {
            text_ = ProfileText(ReadAll(descriptor.Number(), status.st_size));
            stamp_ = StampOf(status);
        }
        return text_;
    }

    std::filesystem::path file_;
    mutable std::optional<Stamp> stamp_;
    mutable ProfileText text_{{}};
};

} // namespace

std::unique_ptr<ProfileFile> MakeProfileFile(std::filesystem::path file) {
    return std::make_unique<PosixProfileFile>(std::move(file));
}

} // namespace platform
