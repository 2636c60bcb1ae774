#include "report/PageFiller.h"

#include "report/ViewedFile.h"

#include <algorithm>

namespace Mreport {

void PageFiller::Reset() {
    layout_ = {};
    workingLines_ = 0;
    pageEnded_ = false;
}

void PageFiller::Resume() {
    workingLines_ = std::max<std::size_t>(pages_.LineCount(pages_.Last()), 1) - 1;
}

void PageFiller::NewPage() {
    pages_.NewPage();
    workingLines_ = 0;
    pageEnded_ = false;
}

bool PageFiller::EndsPageAt(std::size_t separator) const {
    return separator + pageMargin > maxPageLines;
}

ReportPages::Added PageFiller::TakeLine(const ScannedLine& line) {
    const ReportPages::Added added = pages_.AddLine(line);
    layout_.Learn(added.step, line);
    const bool separator =
        added.step == RecordWalk::Step::ends || added.step == RecordWalk::Step::separator;
    pageEnded_ = separator && EndsPageAt(workingLines_);
    ++workingLines_;
    return added;
}

std::optional<PageFiller::WholeRecord> PageFiller::TakeRecord(LineScanner& scanner,
                                                              std::uint64_t limit) {
    constexpr unsigned firstCommentAndSeparator = 3;
    RecordText record;
    if (pageEnded_ || pages_.Walk().InRecord() ||
        !layout_.Match(scanner.Ahead(RecordLayout::usualRecord), record) ||
        record.length >= limit || !pages_.AddRecord(record, layout_))
        return std::nullopt;
    scanner.Pass(record.length);
    WholeRecord taken;
    taken.lines = static_cast<unsigned>(layout_.Rows().size()) + firstCommentAndSeparator;
    taken.length = record.length - (record.firstLength - record.first.size()) -
                   (record.commentLength - record.comment.size()) - layout_.LineEnds();
    workingLines_ += taken.lines;
    pageEnded_ = EndsPageAt(workingLines_ - 1);
    return taken;
}

} // namespace Mreport
