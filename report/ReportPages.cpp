#include "report/ReportPages.h"

#include "base/CodePage.h"
#include "base/RunTimeError.h"
#include "base/Utf8.h"
#include "files/MeasurementLines.h"
#include "report/ForeignText.h"
#include "report/ListSearch.h"

#include <algorithm>
#include <array>
#include <limits>

namespace Mreport {

namespace {
constexpr std::size_t readBlock = std::size_t{256} * 1024;
constexpr std::size_t encodingSample = std::size_t{64} * 1024;
constexpr std::size_t longestLineEnd = 2;

} // namespace

ReportPages::ReportPages() {
    Clear();
}

void ReportPages::Open(std::unique_ptr<TextSource> source) {
    pages_.clear();
    source_ = std::move(source);
    nextOffset_ = 0;
    walk_ = {};
    beforeOpenLine_.reset();
    damaged_ = false;
    DetectEncoding();
    NewPage();
}

void ReportPages::Clear() {
    Open(std::make_unique<MemorySource>(std::string()));
}

void ReportPages::DetectEncoding() {
    std::string sample(encodingSample, '\0');
    sample.resize(source_->Read(0, sample));
    utf8_ = ForeignText::IsUtf8(sample, source_->Size() > sample.size());
    if (sample.starts_with(Utf8::byteOrderMark))
        nextOffset_ = Utf8::byteOrderMark.size();
}

void ReportPages::NewPage() {
    if (!pages_.empty())
        Finish(pages_.back());
    PageIndex page;
    page.base = page.end = nextOffset_;
    pages_.push_back(std::move(page));
}

/// The page gets no more lines.
void ReportPages::Finish(PageIndex& page) const {
    if (page.records)
        page.records->last = walk_.Number();
    page.lines.Finish();
}

ReportPages::Added ReportPages::AddLine(const ScannedLine& line) {
    Added added;
    added.newPage = line.offset - pages_.back().base > std::numeric_limits<std::uint32_t>::max();
    if (added.newPage)
        NewPage();
    PageIndex& page = pages_.back();
    if (line.terminated)
        beforeOpenLine_.reset();
    else
        beforeOpenLine_ = BeforeOpenLine{page.records, walk_};
    page.lines.Add(static_cast<std::uint32_t>(line.offset - page.base));
    page.end = nextOffset_ = line.Next();
    added.step = walk_.Take(line.text);
    const bool begins = added.step == RecordWalk::Step::begins;
    if (begins && page.lines.Count() >= 2) // else its first line stands on the page before
        NoteRecord(page, page.lines.Count() - 2);
    return added;
}

bool ReportPages::AddRecord(const RecordText& record, const RecordLayout& layout) {
    PageIndex& page = pages_.back();
    const std::uint64_t begin = nextOffset_ - page.base;
    if (begin + record.length > std::numeric_limits<std::uint32_t>::max())
        return false;
    walk_.TakeWhole(record.first);
    NoteRecord(page, page.lines.Count());
    page.lines.AddRecord(static_cast<std::uint32_t>(begin), record, layout);
    page.end = nextOffset_ += record.length;
    beforeOpenLine_.reset();
    return true;
}

/// The record that has just been found, or has begun, at this line of the page.
void ReportPages::NoteRecord(PageIndex& page, Line line) const {
    if (!page.records)
        page.records = RecordRange{walk_.Number(), 0, line, line, line, 0};
    RecordRange& records = *page.records;
    records.previousLine = records.lastLine;
    records.lastLine = line;
    ++records.count;
}

void ReportPages::ReopenLastLine() {
    if (!beforeOpenLine_)
        return;
    PageIndex& page = pages_.back();
    nextOffset_ = page.end = page.base + page.lines.Start(page.lines.Count() - 1);
    page.lines.RemoveLast();
    page.records = beforeOpenLine_->records;
    walk_ = beforeOpenLine_->walk;
    beforeOpenLine_.reset();
}

std::optional<ReportPages::RecordRange> ReportPages::Records(Page page) const {
    auto records = At(page).records;
    if (records && page == Last()) // reading each record's number as it comes would cost too much
        records->last = walk_.Number();
    return records;
}

std::int64_t ReportPages::RecordCount(Page page) const {
    const auto& records = At(page).records;
    return records ? records->count : 0;
}

Stretch ReportPages::Bytes(Page page) const {
    const PageIndex& index = At(page);
    const bool open = beforeOpenLine_ && page == Last();
    return {index.base, open ? ExtentOf(index, index.lines.Count() - 1).offset : index.end};
}

ReportPages::Line ReportPages::LineAt(Page page, std::uint64_t offset) const {
    const PageIndex& index = At(page);
    return index.lines.LineAt(offset - index.base);
}

ReportPages::Extent ReportPages::ExtentOf(const PageIndex& page, Line line) const {
    const std::uint64_t start = page.base + page.lines.Start(line);
    const std::uint64_t end =
        line + 1 < page.lines.Count() ? page.base + page.lines.Start(line + 1) : page.end;
    const std::uint64_t bounded =
        std::min<std::uint64_t>(end - start, longestLineText + longestLineEnd);
    return {start, static_cast<std::size_t>(bounded)};
}

std::size_t ReportPages::LinesIn(Page page, Line last) const {
    return std::min(last, LineCount(page));
}

std::string ReportPages::Text(Page page, Line line) const {
    std::string text;
    ForEachLine(page, line, line + 1, [&text](Line, std::string_view found) {
        text = found;
        return false;
    });
    return text;
}

std::string ReportPages::Decoded(std::string_view fileText) const {
    return utf8_ ? CodePage::Legible(fileText) : std::string(fileText);
}

std::string ReportPages::Shown(Page page, Line line) const {
    std::string text = Text(page, line);
    if (MeasurementLines::IsSeparator(text))
        text.assign(MeasurementTexts::listSeparatorWidth, '-');
    return text;
}

/// Lists are painted by this: it must not throw.
std::size_t ReportPages::ReadBack(std::uint64_t offset, std::span<char> buffer) const {
    try {
        return source_->Read(offset, buffer);
    } catch (const RunTimeError&) {
        damaged_ = true;
        return 0;
    }
}

std::size_t ReportPages::ReadHeld(std::uint64_t offset, std::span<char> buffer) const {
    const std::size_t read = ReadBack(offset, buffer);
    damaged_ = damaged_ || read < buffer.size();
    return read;
}

void ReportPages::RefuseDamaged() const {
    if (damaged_)
        throw RunTimeError("The file can no longer be read as it was loaded");
}

void ReportPages::ForEachLine(Page page, Line first, Line last, const Visitor& visit) const {
    const PageIndex& index = At(page);
    const std::size_t end = LinesIn(page, last);
    if (first >= end)
        return;
    const Extent final = ExtentOf(index, end - 1);
    const std::uint64_t endOffset = final.offset + final.length;
    std::vector<char> buffer;
    std::uint64_t bufferOffset = 0;
    std::string decoded;
    for (Line line = first; line < end; ++line) {
        const Extent extent = ExtentOf(index, line);
        if (extent.offset < bufferOffset ||
            extent.offset + extent.length > bufferOffset + buffer.size()) {
            const std::uint64_t wanted =
                std::min<std::uint64_t>(readBlock, endOffset - extent.offset);
            buffer.resize(std::max(static_cast<std::size_t>(wanted), extent.length));
            buffer.resize(ReadBack(extent.offset, buffer));
            bufferOffset = extent.offset;
        }
        std::string_view text;
        if (extent.offset + extent.length <= bufferOffset + buffer.size())
            text = MeasurementLines::WithoutLineEnd(
                       {buffer.data() + (extent.offset - bufferOffset), extent.length})
                       .substr(0, longestLineText);
        else
            damaged_ = true;
        if (utf8_)
            text = decoded = CodePage::Legible(text);
        if (!visit(line, text))
            return;
    }
}

/// The first line of the first record between the lines that pleases.
template <class Wanted>
std::optional<ReportPages::Line> ReportPages::FindRecordIf(Page page, Line first, Line last,
                                                           Wanted wanted) const {
    std::optional<Line> found;
    RecordWalk walk;
    ForEachLine(page, first, last, [&](Line line, std::string_view text) {
        if (walk.Take(text) == RecordWalk::Step::begins && wanted(walk))
            found = line - 1;
        return !found;
    });
    return found;
}

std::optional<ReportPages::Line> ReportPages::FindRecord(Page page, std::int32_t number,
                                                         Line from) const {
    const auto range = Records(page);
    if (!range) // a foreign file may be one page of any size
        return std::nullopt;
    constexpr Line firstAndComment = 2;
    return FindRecordIf(page, std::max(from, range->firstLine), range->lastLine + firstAndComment,
                        [number](const RecordWalk& walk) { return walk.Number() == number; });
}

std::optional<ReportPages::Line> ReportPages::FindPrefix(Page page, std::string_view prefix) const {
    return FindRecordIf(page, 0, LineCount(page), [prefix](const RecordWalk& walk) {
        return ListSearch::Matches(walk.FirstLine(), prefix);
    });
}

void ReportPages::ForEachLineOfRecord(Page page, Line first, const RecordVisitor& visit) const {
    RecordWalk walk;
    ForEachLine(page, first, LineCount(page), [&](Line line, std::string_view text) {
        const RecordWalk::Step step = walk.Take(text);
        if (line == first)
            return true;
        const bool nextBegins = step == RecordWalk::Step::begins && line != first + 1;
        if (!walk.InRecord() || nextBegins)
            return false;
        return step == RecordWalk::Step::other || visit(step, text);
    });
}

std::size_t ReportPages::IndexBytes() const {
    std::size_t bytes = pages_.capacity() * sizeof(PageIndex);
    for (const PageIndex& page : pages_)
        bytes += page.lines.Bytes();
    return bytes;
}

} // namespace Mreport
