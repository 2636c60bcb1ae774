#include "files/RecordWalk.h"

RecordWalk::Step RecordWalk::Begin() {
    firstLine_.swap(nextFirstLine_);
    firstLineTaken_ = false;
    inRecord_ = true;
    return Step::begins;
}

RecordWalk::Step RecordWalk::TakeFirstLine(std::string_view line) {
    nextFirstLine_ = line; // keeps its memory from record to record
    firstLineTaken_ = true;
    return Step::other;
}

RecordWalk::Step RecordWalk::End() {
    const Step step = inRecord_ ? Step::ends : Step::separator;
    firstLineTaken_ = false;
    inRecord_ = false;
    return step;
}
