#include "report/RecordScan.h"

#include "base/CodePage.h"
#include "files/MeasurementLines.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace Mreport {

namespace {

CellValues NoValues() {
    CellValues values;
    values.fill(std::numeric_limits<double>::quiet_NaN());
    return values;
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
    return NextByLayout(record) || NextByWalk(record);
}

bool RecordScan::NextByLayout(FoundRecord& record) {
    RecordText text;
    if (!layout_.Match(scanner_.Ahead(RecordLayout::usualRecord), text))
        return false;
    record.offset = scanner_.NextOffset();
    record.number = MeasurementLines::RecordNumber(text.first);
    record.time = times_.Read(MeasurementLines::TimeStamp(text.first));
    record.comment = MeasurementLines::CommentText(text.comment);
    record.values =
        valueRow_ ? ReadCells(MeasurementLines::WithoutLineEnd(ValueRow(text.rows))) : NoValues();
    record.ended = true;
    scanner_.Pass(text.length);
    record.end = scanner_.NextOffset();
    return true;
}

/// The cells of the row with the wanted values, from the tab on, with the line end.
std::string_view RecordScan::ValueRow(std::string_view rows) const {
    for (std::size_t row = 0; row < *valueRow_; ++row)
        rows.remove_prefix(layout_.Rows()[row].length);
    return rows.substr(0, layout_.Rows()[*valueRow_].length).substr(MeasurementTexts::labelWidth);
}

bool RecordScan::NextByWalk(FoundRecord& record) {
    ScannedLine line;
    while (scanner_.Next(line)) {
        const bool atHand = walk_.InRecord();
        const RecordWalk::Step step = walk_.Take(line.text);
        const std::uint64_t before = std::exchange(lastLine_, line.offset);
        layout_.Learn(step, line);
        if (step == RecordWalk::Step::begins) {
            if (atHand)
                Give(record, true, before);
            BeginRecord(before, line.text);
            if (atHand)
                return true;
        } else if (step == RecordWalk::Step::row) {
            TakeRow(line);
        } else if (step == RecordWalk::Step::ends) {
            Give(record, true, line.Next());
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
    valueRow_.reset();
    rows_ = 0;
    walked_.offset = offset;
    walked_.number = walk_.Number();
    walked_.time = times_.Read(walk_.TimeStamp());
    walked_.values = NoValues();
    comment_ = MeasurementLines::CommentText(commentLine);
}

void RecordScan::TakeRow(const ScannedLine& line) {
    const std::size_t row = rows_++;
    const auto tab = line.text.find('\t');
    if (tab == std::string_view::npos || !HoldsWish(MeasurementLines::Label(line.text)))
        return;
    valueRow_ = row;
    walked_.values = ReadCells(line.text.substr(tab));
}

bool RecordScan::HoldsWish(std::string_view label) const {
    if (!wish_.quantity)
        return false;
    const std::string_view wanted = Quantities::Label(*wish_.quantity);
    return wish_.utf8 ? CodePage::Legible(label) == wanted : label == wanted;
}

void RecordScan::Give(FoundRecord& record, bool ended, std::uint64_t end) {
    givenComment_.swap(comment_);
    record = walked_;
    record.comment = givenComment_;
    record.ended = ended;
    record.end = end;
}

} // namespace Mreport
