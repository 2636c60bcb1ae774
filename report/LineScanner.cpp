#include "report/LineScanner.h"

#include <algorithm>
#include <cstring>

namespace Mreport {

namespace {
// Large enough that the read calls do not count, small enough to stay in the cache.
constexpr std::size_t blockSize = std::size_t{256} * 1024;
static_assert(longestLineText < blockSize);
} // namespace

LineScanner::LineScanner(TextSource& source, std::uint64_t offset)
    : source_(source), buffer_(blockSize), bufferOffset_(offset) {}

std::string_view LineScanner::WithoutCarriageReturn(std::string_view text) {
    if (text.ends_with('\r'))
        text.remove_suffix(1);
    return text;
}

bool LineScanner::Next(ScannedLine& line) {
    const void* lineFeed = nullptr;
    std::size_t searched = 0;
    for (;;) {
        const char* start = buffer_.data() + begin_;
        lineFeed = std::memchr(start + searched, '\n', end_ - begin_ - searched);
        if (lineFeed != nullptr)
            break;
        searched = end_ - begin_;
        if (searched == buffer_.size())
            return FinishLongLine(line);
        if (!Refill())
            break;
    }
    const char* start = buffer_.data() + begin_;
    if (lineFeed == nullptr && begin_ == end_)
        return false;
    const char* stop =
        lineFeed == nullptr ? buffer_.data() + end_ : static_cast<const char*>(lineFeed);
    const std::string_view upToLineFeed(start, stop);
    const std::string_view whole = WithoutCarriageReturn(upToLineFeed);
    line.terminated = lineFeed != nullptr;
    line.offset = bufferOffset_ + begin_;
    line.length = whole.size();
    line.lengthWithEnd = upToLineFeed.size() + (line.terminated ? 1 : 0);
    line.text = whole.substr(0, longestLineText);
    begin_ += line.lengthWithEnd;
    return true;
}

std::string_view LineScanner::Ahead(std::size_t wanted) {
    if (end_ - begin_ < wanted)
        Refill();
    return {buffer_.data() + begin_, end_ - begin_};
}

bool LineScanner::Refill() {
    const std::size_t kept = end_ - begin_;
    std::memmove(buffer_.data(), buffer_.data() + begin_, kept);
    bufferOffset_ += begin_;
    begin_ = 0;
    end_ = kept;
    const std::size_t read = source_.Read(bufferOffset_ + kept, std::span(buffer_).subspan(kept));
    end_ += read;
    return read > 0;
}

/// The buffer holds a line's beginning from its first byte on and no line end.
bool LineScanner::FinishLongLine(ScannedLine& line) {
    constexpr std::size_t skipped = blockSize - longestLineText;
    line.offset = bufferOffset_;
    std::size_t length = end_;
    bool carriageReturn = buffer_[end_ - 1] == '\r';
    line.terminated = false;
    const std::span<char> rest = std::span(buffer_).last(skipped);
    std::size_t read = 0;
    while (!line.terminated && (read = source_.Read(line.offset + length, rest)) > 0) {
        const std::size_t lineFeed = std::string_view(rest.data(), read).find('\n');
        const std::size_t used = std::min(lineFeed, read);
        if (used > 0)
            carriageReturn = rest[used - 1] == '\r';
        length += used;
        line.terminated = used < read;
        if (onLongLine && onLongLine())
            return false;
    }
    line.length = length - (carriageReturn ? 1 : 0);
    line.lengthWithEnd = length + (line.terminated ? 1 : 0);
    line.text = {buffer_.data(), longestLineText};
    bufferOffset_ = line.Next();
    begin_ = end_ = 0;
    return true;
}

} // namespace Mreport
