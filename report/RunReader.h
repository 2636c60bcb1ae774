#pragma once

#include "files/RecordWalk.h"
#include "report/LineScanner.h"
#include "report/RecordCells.h"
#include "report/RecordLayout.h"
#include "report/TextSource.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace Mreport {

/// A record that is like the one before it, from its first line to its separator. Lives until the
/// reader goes on.
struct AlikeRecord {
    std::uint64_t offset = 0; ///< of its first line
    std::string_view first;   ///< the first line without its end, as the comment line
    std::string_view comment;
    bool cellsAsBefore = false; ///< they stand where those of the record read before it stood
};

/// Reads all that a run holds, for whoever needs every cell. Records that are like the one before
/// them are read at once, which is several times as fast; whatever else comes line by line.
class RunReader {
public:
    enum class Found { record, line, end };

    /// Lines that begin before `end`; the source must outlive the reader.
    RunReader(TextSource& source, std::uint64_t begin, std::uint64_t end)
        : scanner_(source, begin), end_(end) {}

    /// Every line by itself from now on, for who must decode each.
    void ReadLinesAlone() { linesAlone_ = true; }

    Found Next();

    const AlikeRecord& Record() const { return record_; }
    /// The record's rows that have a quantity, in their order.
    std::span<const RowCells> Rows() { return columns_.Rows(); }

    const ScannedLine& Line() const { return line_; }
    RecordWalk::Step Step() const { return step_; } ///< what the line is

    const RecordWalk& Walk() const { return walk_; }
    std::uint64_t NextOffset() const { return scanner_.NextOffset(); }

private:
    bool NextRecord();

    LineScanner scanner_;
    std::uint64_t end_;
    bool linesAlone_ = false;
    RecordWalk walk_;
    RecordLayout layout_;
    RecordCells columns_;
    AlikeRecord record_;
    ScannedLine line_;
    RecordWalk::Step step_ = RecordWalk::Step::other;
};

} // namespace Mreport
