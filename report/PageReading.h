#pragma once

#include "report/LineScanner.h"
#include "report/PageFiller.h"

#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <string_view>

namespace Mreport {

/// One reading of the viewed file's lines into its list pages, from behind the last whole line that
/// they have to the end that the file has by then.
class PageReading {
public:
    /// `givenUp` is asked now and then within a line of any length; true ends the reading. Pages
    /// and filler must outlive the reading.
    PageReading(ReportPages& pages, PageFiller& filler, std::function<bool()> givenUp);

    /// What has been put into the pages in one go: a line, or a record with its separator.
    struct Taken {
        int lines = 1;
        std::uint64_t length = 0; ///< of the lines without their ends
        std::string_view text;    ///< of a line, until the next call; empty for a record
        RecordWalk::Step step = RecordWalk::Step::ends; ///< of the line
        bool newPage = false;                           ///< it is the first of its page
    };

    /// The next line, onto the page at hand; nothing at the end.
    std::optional<Taken> TakeLine();

    /// A record of less than `limit` bytes at once, where it looks like those before, else a line.
    /// A page that its separator has ended is followed by the next. Nothing at the end.
    std::optional<Taken> Take(std::uint64_t limit = std::numeric_limits<std::uint64_t>::max());

private:
    Taken Put(const ScannedLine& line);

    PageFiller& filler_;
    LineScanner scanner_;
};

} // namespace Mreport
