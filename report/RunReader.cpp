#include "report/RunReader.h"

namespace Mreport {

RunReader::Found RunReader::Next() {
    if (NextRecord())
        return Found::record;
    if (NextOffset() >= end_ || !scanner_.Next(line_))
        return Found::end;
    step_ = walk_.Take(line_.text);
    layout_.Learn(step_, line_);
    if (step_ == RecordWalk::Step::ends)
        columns_.Forget();
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

} // namespace Mreport
