#include "report/RunReader.h"

namespace Mreport {

RunReader::Found RunReader::Next() {
    if (NextRecord())
        return Found::record;
    if (NextOffset() >= end_ || !scanner_.Next(line_))
        return Found::end;
    step_ = walk_.Take(line_.text);
    Learn();
    return Found::line;
}

bool RunReader::NextRecord() {
    RecordText text;
    if (linesAlone_ || walk_.InRecord() || NextOffset() >= end_ ||
        !layout_.Match(scanner_.Ahead(RecordLayout::usualRecord), text) ||
        text.length > end_ - NextOffset())
        return false;
    record_ = {NextOffset(), text.first, text.comment, columns_.Take(text.rows, layout_)};
    walk_.TakeWhole(text.first);
    scanner_.Pass(text.length);
    return true;
}

void RunReader::Learn() {
    switch (step_) {
    case RecordWalk::Step::begins:
        layout_.Begin();
        break;
    case RecordWalk::Step::row:
        layout_.AddRow(line_);
        break;
    case RecordWalk::Step::ends:
        layout_.End(line_);
        columns_.Forget();
        break;
    case RecordWalk::Step::other:
    case RecordWalk::Step::separator:
        break;
    }
}

} // namespace Mreport
