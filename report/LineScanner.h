#pragma once

#include "report/TextSource.h"

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace Mreport {

/// Longest part of a line that is ever looked at or shown, in bytes. A foreign file may be one line
/// of gigabytes.
inline constexpr std::size_t longestLineText = 16384;

/// One line found by the scanner.
struct ScannedLine {
    std::uint64_t offset = 0; ///< of its first byte in the source
    std::string_view text;    ///< without CR LF or LF, at most longestLineText; until the next call
    std::size_t length = 0;   ///< of the whole line without its end
    std::size_t lengthWithEnd = 0;
    bool terminated = false; ///< false for a last line without a line end

    /// Of the byte behind its line end.
    std::uint64_t Next() const { return offset + lengthWithEnd; }
};

/// Reads a source line by line in blocks, from any offset on.
class LineScanner {
public:
    explicit LineScanner(TextSource& source, std::uint64_t offset = 0);

    /// Called between the blocks of a line that is longer than a block; true gives the scan up.
    std::function<bool()> onLongLine;

    /// The next line; false at the end of the source or where the scan was given up.
    bool Next(ScannedLine& line);

    /// The bytes from the next line on: at least `wanted` of them where the source has so many.
    /// Live until the next call. For a reader that knows how the lines go on.
    std::string_view Ahead(std::size_t wanted);

    /// Passes over the first `count` bytes of what Ahead gave, which must be whole lines.
    void Pass(std::size_t count) { begin_ += count; }

    /// Of the next line's first byte in the source.
    std::uint64_t NextOffset() const { return bufferOffset_ + begin_; }

private:
    bool Refill();
    bool FinishLongLine(ScannedLine& line);
    static std::string_view WithoutCarriageReturn(std::string_view text);

    TextSource& source_;
    std::vector<char> buffer_;
    std::size_t begin_ = 0; ///< first byte of the next line within the buffer
    std::size_t end_ = 0;   ///< behind the last byte read
    std::uint64_t bufferOffset_;
};

} // namespace Mreport
