#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace Mreport {

/// How far a load has come, told by the lengths of the lines read so far: a text for the status
/// line whenever its percentage changes.
class LoadProgress {
public:
    /// Nothing has been read yet of a file of this many bytes.
    void Begin(std::uint64_t fileLength);

    /// Lines of less than this many bytes change nothing of what is shown.
    std::uint64_t UntilNext() const { return next_ - read_; }

    /// Lines of this many bytes have been read. The text that is to be shown now; nothing while the
    /// percentage stays.
    std::optional<std::string> Take(std::uint64_t length) {
        read_ += length;
        return read_ < next_ ? std::nullopt : std::optional(Changed());
    }

    /// The text for a file read to its end.
    std::string Whole() const;

    std::uint64_t FileLength() const { return fileLength_; }

private:
    std::string Changed();

    std::uint64_t fileLength_ = 0;
    std::uint64_t read_ = 0;
    std::uint64_t next_ = 0; ///< value of read_ at which the percentage changes
};

} // namespace Mreport
