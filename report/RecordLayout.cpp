#include "report/RecordLayout.h"

#include "files/MeasurementLines.h"

#include <algorithm>
#include <cstring>

namespace Mreport {

namespace {

constexpr std::size_t mostRows = 12; // of a layout worth learning

/// The length of the text's first line with its line end; 0 where that is not in the text.
std::size_t LineLength(std::string_view text) {
    const void* end = std::memchr(text.data(), '\n', text.size());
    return end == nullptr
               ? 0
               : static_cast<std::size_t>(static_cast<const char*>(end) - text.data()) + 1;
}

} // namespace

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
    added.length = static_cast<std::size_t>(row.next - row.offset);
    rowsLength_ += added.length;
    rowEnds_ += added.length - static_cast<std::size_t>(row.length);
}

void RecordLayout::End(const ScannedLine& separator) {
    separatorLength_ = static_cast<std::size_t>(separator.next - separator.offset);
    length_ = rowsLength_ + separatorLength_;
    lineEnds_ = rowEnds_ + separatorLength_ - static_cast<std::size_t>(separator.length);
    known_ = regular_ && separator.terminated && length_ < usualRecord;
}

bool RecordLayout::Match(std::string_view text, RecordText& record) const {
    if (!known_ || !MeasurementLines::IsRecordStart(text))
        return false;
    const std::size_t first = LineLength(text);
    if (first == 0 || first > longestLineText || !MeasurementLines::IsComment(text.substr(first)))
        return false;
    const std::size_t comment = LineLength(text.substr(first));
    const std::size_t head = first + comment;
    if (comment == 0 || comment > longestLineText || text.size() - head < length_ ||
        !FitRows(text.substr(head, length_)))
        return false;
    record.first = MeasurementLines::WithoutLineEnd(text.substr(0, first));
    record.firstLength = first;
    record.comment = MeasurementLines::WithoutLineEnd(text.substr(first, comment));
    record.commentLength = comment;
    record.rows = text.substr(head, rowsLength_);
    record.length = head + length_;
    return true;
}

/// True when the text is these rows and a separator, line by line.
bool RecordLayout::FitRows(std::string_view text) const {
    for (const Row& row : rows_) {
        if (std::memcmp(text.data(), row.label.data(), row.label.size()) != 0 ||
            LineLength(text) != row.length)
            return false;
        text.remove_prefix(row.length);
    }
    return LineLength(text) == separatorLength_ &&
           MeasurementLines::IsSeparator(MeasurementLines::WithoutLineEnd(text));
}

} // namespace Mreport
