#include "report/RecordLayout.h"

#include "files/MeasurementLines.h"
#include "report/ByteCount.h"

#include <algorithm>
#include <cstring>

namespace Mreport {

namespace {

constexpr std::size_t mostRows = 12; // of a layout worth learning

/// The length of the text's first line with its line end; 0 where that is not in the text.
std::size_t LineLength(std::string_view text) {
    const std::size_t end = text.find('\n');
    return end == std::string_view::npos ? 0 : end + 1;
}

} // namespace

void RecordLayout::Learn(RecordWalk::Step step, const ScannedLine& line) {
    switch (step) {
    case RecordWalk::Step::begins:
        return Begin();
    case RecordWalk::Step::row:
        return AddRow(line);
    case RecordWalk::Step::ends:
        return End(line);
    case RecordWalk::Step::other:
    case RecordWalk::Step::separator:
        break;
    }
}

void RecordLayout::Begin() {
    rows_.clear();
    rowsLength_ = rowEnds_ = 0;
    regular_ = true;
    known_ = false;
}

void RecordLayout::AddRow(const ScannedLine& row) {
    regular_ =
        regular_ && rows_.size() < mostRows && row.text.find('\t') == MeasurementTexts::labelWidth;
    if (!regular_)
        return;
    Row& added = rows_.emplace_back();
    std::copy_n(row.text.begin(), added.label.size(), added.label.begin());
    added.length = row.lengthWithEnd;
    rowsLength_ += added.length;
    rowEnds_ += added.length - row.length;
}

void RecordLayout::End(const ScannedLine& separator) {
    separatorLength_ = separator.lengthWithEnd;
    length_ = rowsLength_ + separatorLength_;
    lineEnds_ = rowEnds_ + separatorLength_ - separator.length;
    known_ = regular_ && separator.terminated && length_ < usualRecord;
}

bool RecordLayout::Match(std::string_view text, RecordText& record) {
    if (!known_ || !MeasurementLines::IsRecordStart(text))
        return false;
    if (!Fits(text, usual_)) {
        const Head head = HeadOf(text);
        if (head == usual_ || !Fits(text, head))
            return false;
        usual_ = head;
    }
    record.first = MeasurementLines::WithoutLineEnd(text.substr(0, usual_.first));
    record.firstLength = usual_.first;
    record.comment = MeasurementLines::WithoutLineEnd(text.substr(usual_.first, usual_.comment));
    record.commentLength = usual_.comment;
    record.rows = text.substr(usual_.Length(), rowsLength_);
    record.length = usual_.Length() + length_;
    return true;
}

/// Nothing where a line is too long or does not end within the text.
RecordLayout::Head RecordLayout::HeadOf(std::string_view text) {
    const std::size_t first = LineLength(text);
    const std::size_t comment = LineLength(text.substr(first));
    if (first == 0 || first > longestLineText || comment > longestLineText)
        return {};
    return {first, comment};
}

/// True when the text begins with lines as long as these and with the rows and the separator.
bool RecordLayout::Fits(std::string_view text, const Head& head) const {
    if (head.first == 0 || head.comment == 0 || text.size() < head.Length() + length_ ||
        text[head.first - 1] != '\n' || text[head.Length() - 1] != '\n' ||
        !MeasurementLines::IsComment(text.substr(head.first)) ||
        !FitRows(text.substr(head.Length(), length_)))
        return false;
    // As many line ends as lines: none lies elsewhere.
    constexpr std::size_t firstAndComment = 2;
    return CountOf('\n', text.substr(0, head.Length() + rowsLength_)) ==
           rows_.size() + firstAndComment;
}

/// True when the text has the rows' labels, a line end where each row ends, and a separator.
bool RecordLayout::FitRows(std::string_view text) const {
    for (const Row& row : rows_) {
        if (std::memcmp(text.data(), row.label.data(), row.label.size()) != 0 ||
            text[row.length - 1] != '\n')
            return false;
        text.remove_prefix(row.length);
    }
    return text.back() == '\n' &&
           MeasurementLines::IsSeparator(MeasurementLines::WithoutLineEnd(text));
}

} // namespace Mreport
