#pragma once

#include "files/RecordWalk.h"
#include "report/LineIndex.h"
#include "report/LineScanner.h"
#include "report/RecordLayout.h"
#include "report/Stretch.h"
#include "report/TextSource.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Mreport {

/// The list pages: an index of lines over the open file. The text stays in the file and is
/// read when it is shown, searched, printed or plotted; what the file no longer holds is blank.
class ReportPages {
public:
    using Page = int; ///< from 0
    using Line = std::size_t;

    /// Where a page's records lie; empty pages and pages without records have none.
    struct RecordRange {
        std::int32_t first = 0; ///< record number
        std::int32_t last = 0;
        Line firstLine = 0;
        Line lastLine = 0;      ///< at which the last record starts
        Line previousLine = 0;  ///< at which the one before it starts; same as lastLine with one
        std::int64_t count = 0; ///< of records, whatever their numbers
    };

    ReportPages();

    /// Drops everything and starts with one empty page over the source.
    void Open(std::unique_ptr<TextSource> source);
    /// Drops everything; one empty page over nothing.
    void Clear();

    TextSource& Source() const { return *source_; }
    int Count() const { return static_cast<int>(pages_.size()); }
    Page Last() const { return Count() - 1; }
    Line LineCount(Page page) const { return At(page).lines.Count(); }

    /// Offset at which the next line to be added begins.
    std::uint64_t NextOffset() const { return nextOffset_; }

    void NewPage();

    /// What a line that was added is, and whether it opened a page of its own.
    struct Added {
        RecordWalk::Step step = RecordWalk::Step::other;
        bool newPage = false;
    };

    /// Adds a line that follows the last one to the newest page. A page's lines lie within 4 GiB;
    /// a line beyond that opens a page.
    Added AddLine(const ScannedLine& line);

    /// Adds all lines of a record that follows the last line and has this layout, which must be
    /// that of a record added before it without a line between them. False, and nothing is added,
    /// where it would not fit into the newest page.
    bool AddRecord(const RecordText& record, const RecordLayout& layout);

    /// Where the lines added so far leave the walk through the records.
    const RecordWalk& Walk() const { return walk_; }

    /// Takes back a last line without line end, which the file may have completed by now.
    void ReopenLastLine();

    std::optional<RecordRange> Records(Page page) const;
    std::int64_t RecordCount(Page page) const;

    /// Where the page's whole lines lie in the source; a last line without line end is left out.
    Stretch Bytes(Page page) const;

    /// The line that begins at or before this offset of the source; the page must hold it.
    Line LineAt(Page page, std::uint64_t offset) const;

    bool IsUtf8() const { return utf8_; }

    /// The line as the list shows it: a separator is a line of 200 dashes.
    std::string Shown(Page page, Line line) const;

    /// The line as the file has it, without its end, as Windows-1252.
    std::string Text(Page page, Line line) const;

    /// Text of the file as Windows-1252.
    std::string Decoded(std::string_view fileText) const;

    /// Called with each line from `first` to before `last` (or the page's end) until it returns
    /// false. The text lives until the call returns.
    using Visitor = std::function<bool(Line line, std::string_view text)>;
    void ForEachLine(Page page, Line first, Line last, const Visitor& visit) const;

    /// The first line at or behind `from`, among the page's records, that starts a record with this
    /// number.
    std::optional<Line> FindRecord(Page page, std::int32_t number, Line from = 0) const;

    /// The first line of the first record whose first line begins with the prefix by the rules of
    /// ListSearch, from the list's top.
    std::optional<Line> FindPrefix(Page page, std::string_view prefix) const;

    /// Called with the comment line (Step::begins) and each row of the record that begins at
    /// `first`, until it returns false.
    using RecordVisitor = std::function<bool(RecordWalk::Step step, std::string_view text)>;
    void ForEachLineOfRecord(Page page, Line first, const RecordVisitor& visit) const;

    /// Fills the buffer from the offset on, with bytes that the pages hold; fewer where Damaged.
    std::size_t ReadHeld(std::uint64_t offset, std::span<char> buffer) const;

    /// True once a line could not be read back whole: the file has shrunk or gone, or its medium
    /// fails. The line is blank then.
    bool Damaged() const { return damaged_; }

    /// Throws RunTimeError when Damaged, for what must hold every record.
    void RefuseDamaged() const;

    /// Bytes that the index takes.
    std::size_t IndexBytes() const;

private:
    struct PageIndex {
        std::uint64_t base = 0;
        std::uint64_t end = 0;              ///< behind the last line
        LineIndex lines;                    ///< relative to base
        std::optional<RecordRange> records; ///< its last number once the page is finished
    };
    /// What stood before a last line without line end, which the file may complete.
    struct BeforeOpenLine {
        std::optional<RecordRange> records;
        RecordWalk walk;
    };
    struct Extent {
        std::uint64_t offset;
        std::size_t length; ///< with the line end, bounded
    };

    const PageIndex& At(Page page) const { return pages_[static_cast<std::size_t>(page)]; }
    Extent ExtentOf(const PageIndex& page, Line line) const;
    void Finish(PageIndex& page) const;
    void NoteRecord(PageIndex& page, Line line) const;
    template <class Wanted>
    std::optional<Line> FindRecordIf(Page page, Line first, Line last, Wanted wanted) const;
    std::size_t LinesIn(Page page, Line last) const;
    std::size_t ReadBack(std::uint64_t offset, std::span<char> buffer) const;
    void DetectEncoding();

    std::unique_ptr<TextSource> source_;
    std::vector<PageIndex> pages_;
    std::uint64_t nextOffset_ = 0;
    RecordWalk walk_;
    std::optional<BeforeOpenLine> beforeOpenLine_; ///< set while the last line is open
    bool utf8_ = false;
    mutable bool damaged_ = false;
};

/// A line of a list.
struct LinePlace {
    ReportPages::Page page = 0;
    ReportPages::Line line = 0;

    bool operator==(const LinePlace&) const = default;
};

} // namespace Mreport
