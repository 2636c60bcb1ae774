#pragma once

#include "report/RecordLayout.h"
#include "report/ReportPages.h"

#include <cstdint>
#include <optional>

namespace Mreport {

/// Puts the lines of a measurement file into the list pages, and tells where a page ends. Records
/// that look like the one before them are put in whole.
class PageFiller {
public:
    /// The pages must outlive the filler.
    explicit PageFiller(ReportPages& pages) : pages_(pages) {}

    /// Another file, of which nothing is known yet.
    void Reset();

    /// Goes on behind the last line that the newest page has.
    void Resume();

    /// A separator has ended the newest page; the next line belongs to a page of its own.
    bool PageEnded() const { return pageEnded_; }

    /// Opens that page.
    void NewPage();

    /// Adds a line. A separator near the limit ends its page.
    ReportPages::Added TakeLine(const ScannedLine& line);

    struct WholeRecord {
        unsigned lines = 0;
        std::uint64_t length = 0; ///< of its lines without ends such as the layout's
    };

    /// Adds a record of less than `limit` bytes, its separator included. Nothing, and nothing is
    /// taken off the scanner, where what follows is no such record or not like the one before; it
    /// is then to be taken line by line.
    std::optional<WholeRecord> TakeRecord(LineScanner& scanner, std::uint64_t limit);

private:
    bool EndsPageAt(std::size_t separator) const;

    ReportPages& pages_;
    RecordLayout layout_;
    std::size_t workingLines_ = 0; ///< lines of the newest page, as its limit counts them
    bool pageEnded_ = false;
};

} // namespace Mreport
