#include "report/RecordScan.h"

#include "base/CodePage.h"
#include "files/MeasurementLines.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace Mreport {

namespace {

/// So much of the text is asked for ahead; a record with a longer comment is walked.
constexpr std::size_t usualRecord = 4096;
constexpr std::size_t mostRows = 12; // of a layout worth learning

CellValues NoValues() {
    CellValues values;
    values.fill(std::numeric_limits<double>::quiet_NaN());
    return values;
}

/// The length of the text's first line with its line end; 0 where that is not in the text.
std::size_t LineLength(std::string_view text) {
    const auto end = text.find('\n');
    return end == std::string_view::npos ? 0 : end + 1;
}

std::string_view WithoutEnd(std::string_view line) {
    line.remove_suffix(1);
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

} // namespace

std::size_t RecordScan::Part::Read(std::uint64_t offset, std::span<char> buffer) {
    if (offset >= end_)
        return 0;
    const std::uint64_t rest = end_ - offset;
    return source_.Read(offset, rest < buffer.size() ? buffer.first(static_cast<std::size_t>(rest))
                                                     : buffer);
}

RecordScan::RecordScan(TextSource& source, const Stretch& stretch, const ScanWish& wish)
    : begin_(stretch.begin), part_(source, stretch.end), scanner_(part_, stretch.begin),
      wish_(wish) {}

bool RecordScan::Next(FoundRecord& record) {
    return (atRecordEnd_ && layout_.learned && NextByLayout(record)) || NextByWalk(record);
}

bool RecordScan::NextByLayout(FoundRecord& record) {
    const std::string_view text = scanner_.Ahead(usualRecord);
    if (!MeasurementLines::IsRecordStart(text))
        return false;
    const std::size_t first = LineLength(text);
    if (first == 0 || !MeasurementLines::IsComment(text.substr(first)))
        return false;
    const std::size_t comment = LineLength(text.substr(first));
    const std::string_view rows = text.substr(first + comment);
    if (comment == 0 || rows.size() < layout_.length || comment > longestLineText ||
        !FitsLayout(rows, record))
        return false;
    const std::string_view firstLine = WithoutEnd(text.substr(0, first));
    record.offset = scanner_.NextOffset();
    record.number = MeasurementLines::RecordNumber(firstLine);
    record.time = times_.Read(MeasurementLines::TimeStamp(firstLine));
    record.comment = MeasurementLines::CommentText(WithoutEnd(text.substr(first, comment)));
    record.ended = true;
    scanner_.Pass(first + comment + layout_.length);
    record.end = scanner_.NextOffset();
    return true;
}

/// True when the rows and the separator that the text begins with are those of the layout; the
/// record then has its values.
bool RecordScan::FitsLayout(std::string_view rows, FoundRecord& record) const {
    std::string_view valueRow;
    for (std::size_t i = 0; i < layout_.rows.size(); ++i) {
        const Row& row = layout_.rows[i];
        if (!rows.starts_with(row.label) || LineLength(rows.substr(0, row.length)) != row.length)
            return false;
        if (layout_.valueRow == i)
            valueRow = rows.substr(0, row.length);
        rows.remove_prefix(row.length);
    }
    const std::string_view separator = rows.substr(0, layout_.separatorLength);
    if (LineLength(separator) != layout_.separatorLength ||
        !MeasurementLines::IsSeparator(WithoutEnd(separator)))
        return false;
    if (!layout_.valueRow) {
        record.values = NoValues();
        return true;
    }
    const std::size_t cells = layout_.rows[*layout_.valueRow].label.size() - 1;
    record.values = ReadCells(WithoutEnd(valueRow).substr(cells));
    return true;
}

bool RecordScan::NextByWalk(FoundRecord& record) {
    ScannedLine line;
    while (scanner_.Next(line)) {
        const bool atHand = walk_.InRecord();
        const RecordWalk::Step step = walk_.Take(line.text);
        const std::uint64_t before = std::exchange(lastLine_, line.offset);
        if (step == RecordWalk::Step::begins) {
            if (atHand)
                Give(record, true, before);
            BeginRecord(before, line.text);
            if (atHand)
                return true;
        } else if (step == RecordWalk::Step::row) {
            TakeRow(line);
        } else if (step == RecordWalk::Step::ends) {
            Learn(line);
            Give(record, true, line.next);
            return true;
        }
    }
    if (!walk_.InRecord())
        return false;
    walk_ = {};
    Give(record, false, scanner_.NextOffset());
    return true;
}

void RecordScan::BeginRecord(std::uint64_t offset, std::string_view commentLine) {
    atRecordEnd_ = false;
    walked_.offset = offset;
    walked_.number = walk_.Number();
    walked_.time = times_.Read(walk_.TimeStamp());
    walked_.values = NoValues();
    comment_ = MeasurementLines::CommentText(commentLine);
    taken_.rows.clear();
    taken_.length = 0;
    taken_.valueRow.reset();
}

void RecordScan::TakeRow(const ScannedLine& line) {
    const auto length = static_cast<std::size_t>(line.next - line.offset);
    taken_.length += length;
    const auto tab = line.text.find('\t');
    if (taken_.rows.size() <= mostRows) // one too many tells that there are
        taken_.rows.push_back({std::string(line.text.substr(0, tab + 1)), length});
    if (tab == std::string_view::npos || !HoldsWish(MeasurementLines::Label(line.text)))
        return;
    taken_.valueRow = taken_.rows.size() - 1;
    walked_.values = ReadCells(line.text.substr(tab));
}

bool RecordScan::HoldsWish(std::string_view label) const {
    if (!wish_.quantity)
        return false;
    const std::string_view wanted = Quantities::Label(*wish_.quantity);
    return wish_.utf8 ? CodePage::Legible(label) == wanted : label == wanted;
}

/// The next records are expected to look like the walked one.
void RecordScan::Learn(const ScannedLine& separator) {
    layout_ = taken_;
    layout_.separatorLength = static_cast<std::size_t>(separator.next - separator.offset);
    layout_.length += layout_.separatorLength;
    const bool labelled =
        std::ranges::all_of(layout_.rows, [](const Row& row) { return row.label.ends_with('\t'); });
    layout_.learned = labelled && layout_.rows.size() <= mostRows && separator.terminated &&
                      layout_.length < usualRecord;
    atRecordEnd_ = true;
}

void RecordScan::Give(FoundRecord& record, bool ended, std::uint64_t end) {
    givenComment_.swap(comment_);
    record = walked_;
    record.comment = givenComment_;
    record.ended = ended;
    record.end = end;
}

} // namespace Mreport
