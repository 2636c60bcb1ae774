#include "report/ReportPages.h"

#include "files/MeasurementLines.h"
#include "report/ForeignText.h"
#include "report/ListSearch.h"

#include <algorithm>
#include <array>
#include <limits>

namespace Mreport {

namespace {
// A page is split at this many lines; reserving them at once keeps the index free of slack.
constexpr std::size_t usualPageLines = 32'704;
constexpr std::size_t readBlock = std::size_t{256} * 1024;
constexpr std::size_t encodingSample = std::size_t{64} * 1024;
constexpr std::size_t longestLineEnd = 2;

bool LooksLikeRecord(std::string_view text) {
    return !text.empty() && text.front() == 'R' && MeasurementLines::IsRecordStart(text);
}

bool LooksLikeComment(std::string_view text) {
    return !text.empty() && text.front() == 'C' && MeasurementLines::IsComment(text);
}

std::string_view WithoutLineEnd(std::string_view text) {
    if (text.ends_with('\n'))
        text.remove_suffix(1);
    if (text.ends_with('\r'))
        text.remove_suffix(1);
    return text.substr(0, longestLineText);
}
} // namespace

ReportPages::ReportPages() {
    Clear();
}

void ReportPages::Open(std::unique_ptr<TextSource> source) {
    pages_.clear();
    source_ = std::move(source);
    nextOffset_ = 0;
    lastLineOpen_ = false;
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
    if (sample.starts_with(ForeignText::byteOrderMark))
        nextOffset_ = ForeignText::byteOrderMark.size();
}

void ReportPages::NewPage() {
    if (!pages_.empty())
        pages_.back().starts.shrink_to_fit();
    PageIndex page;
    page.base = page.end = nextOffset_;
    if (!pages_.empty()) // the first page of a small file stays small
        page.starts.reserve(usualPageLines);
    pages_.push_back(std::move(page));
}

bool ReportPages::AddLine(const ScannedLine& line) {
    const bool beyond =
        line.offset - pages_.back().base > std::numeric_limits<std::uint32_t>::max();
    if (beyond)
        NewPage();
    PageIndex& page = pages_.back();
    page.starts.push_back(static_cast<std::uint32_t>(line.offset - page.base));
    page.end = nextOffset_ = line.next;
    lastLineOpen_ = !line.terminated;
    NoteRecordLine(page, line.text);
    return beyond;
}

void ReportPages::NoteRecordLine(PageIndex& page, std::string_view text) {
    if (page.candidate >= 0 && LooksLikeComment(text)) {
        page.previousRecord = page.lastRecord >= 0 ? page.lastRecord : page.candidate;
        page.lastRecord = page.candidate;
        page.lastNumber = page.candidateNumber;
        if (page.firstRecord < 0) {
            page.firstRecord = page.candidate;
            page.firstNumber = page.candidateNumber;
        }
    }
    page.candidate = -1;
    if (LooksLikeRecord(text)) {
        page.candidate = static_cast<std::int64_t>(page.starts.size()) - 1;
        page.candidateNumber = MeasurementLines::RecordNumber(text);
    }
}

void ReportPages::ReopenLastLine() {
    if (!lastLineOpen_)
        return;
    PageIndex& page = pages_.back();
    const auto line = static_cast<std::int64_t>(page.starts.size()) - 1;
    nextOffset_ = page.end = page.base + page.starts.back();
    page.starts.pop_back();
    lastLineOpen_ = false;
    // What the incomplete line stood for is found again when it is added anew.
    if (page.lastRecord >= 0 && page.lastRecord == line - 1) {
        if (page.firstRecord == page.lastRecord)
            page.firstRecord = page.previousRecord = -1;
        page.lastRecord = page.previousRecord;
        page.lastNumber = page.lastRecord < 0 ? 0 : NumberAt(Last(), page.lastRecord);
    }
    const bool follows = line > 0 && LooksLikeRecord(Text(Last(), static_cast<Line>(line - 1)));
    page.candidate = follows ? line - 1 : -1;
    page.candidateNumber = follows ? NumberAt(Last(), line - 1) : 0;
}

std::int32_t ReportPages::NumberAt(Page page, std::int64_t line) const {
    return MeasurementLines::RecordNumber(Text(page, static_cast<Line>(line)));
}

std::optional<ReportPages::RecordRange> ReportPages::Records(Page page) const {
    const PageIndex& index = At(page);
    if (index.firstRecord < 0)
        return std::nullopt;
    return RecordRange{index.firstNumber, index.lastNumber, static_cast<Line>(index.firstRecord),
                       static_cast<Line>(index.lastRecord),
                       static_cast<Line>(index.previousRecord)};
}

ReportPages::Extent ReportPages::ExtentOf(const PageIndex& page, Line line) const {
    const std::uint64_t start = page.base + page.starts[line];
    const std::uint64_t end =
        line + 1 < page.starts.size() ? page.base + page.starts[line + 1] : page.end;
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
    return utf8_ ? ForeignText::FromUtf8(fileText) : std::string(fileText);
}

std::string ReportPages::Shown(Page page, Line line) const {
    std::string text = Text(page, line);
    if (MeasurementLines::IsSeparator(text))
        text.assign(MeasurementTexts::listSeparatorWidth, '-');
    return text;
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
            buffer.resize(source_->Read(extent.offset, buffer));
            bufferOffset = extent.offset;
        }
        std::string_view text;
        if (extent.offset + extent.length <= bufferOffset + buffer.size())
            text = WithoutLineEnd({buffer.data() + (extent.offset - bufferOffset), extent.length});
        else
            damaged_ = true;
        if (utf8_)
            text = decoded = ForeignText::FromUtf8(text);
        if (!visit(line, text))
            return;
    }
}

std::optional<ReportPages::Line> ReportPages::FindRecord(Page page, std::int32_t number,
                                                         Line from) const {
    std::optional<Line> found;
    const auto range = Records(page);
    if (!range) // a foreign file may be one page of any size
        return found;
    const std::string beginning = "Record " + std::to_string(number) + "\t";
    ForEachLine(page, std::max(from, range->firstLine), range->lastLine + 1,
                [&](Line line, std::string_view text) {
                    if (text.starts_with(beginning))
                        found = line;
                    return !found;
                });
    return found;
}

std::optional<ReportPages::Line> ReportPages::FindPrefix(Page page, std::string_view prefix) const {
    std::optional<Line> found;
    ForEachLine(page, 0, LineCount(page), [&](Line line, std::string_view text) {
        if (ListSearch::Matches(text, prefix))
            found = line;
        return !found;
    });
    return found;
}

std::size_t ReportPages::IndexBytes() const {
    std::size_t bytes = pages_.capacity() * sizeof(PageIndex);
    for (const PageIndex& page : pages_)
        bytes += page.starts.capacity() * sizeof(std::uint32_t);
    return bytes;
}

} // namespace Mreport
