#include "files/ReadingGaps.h"

#include "base/DateText.h"

namespace FileOpr {

void ReadingGaps::Lost(const LocalTime& now) {
    if (!since_)
        since_ = now;
}

void ReadingGaps::Answered(const LocalTime& now) {
    if (!since_)
        return;
    if (!ended_)
        ended_ = Ended{*since_, now, 0};
    ended_->to = now;
    ++ended_->times;
    since_.reset();
}

std::string ReadingGaps::Text() const {
    if (!ended_)
        return {};
    const bool oneDay = DateText::Date(ended_->from) == DateText::Date(ended_->to);
    const auto moment = oneDay ? DateText::TimeOfDay : DateText::Record;
    const std::string times =
        ended_->times > 1 ? std::to_string(ended_->times) + " times " : std::string();
    return "no readings " + times + "from " + moment(ended_->from) + " to " + moment(ended_->to);
}

std::string ReadingGaps::InComment(std::string_view comment) const {
    std::string text(comment);
    if (!ended_)
        return text;
    if (!text.empty())
        text += "; ";
    return text + Text();
}

} // namespace FileOpr
