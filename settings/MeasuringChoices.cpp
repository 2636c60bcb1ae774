#include "settings/MeasuringChoices.h"

#include "app/Mcommon.h"
#include "platform/Platform.h"
#include "settings/StoredLines.h"

#include <algorithm>
#include <iterator>

namespace mWinInit {

namespace {

const std::string choicesSection = "Measuring Choices";
const std::string commentsSection = "Measuring Comments";

namespace key {
const std::string automatic = "Automatic";
const std::string period = "Period";
const std::string whenSteady = "Record When Steady";
const std::string resume = "Go On When Answered";
const std::string trendShown = "Trend";
const std::string trendMinutes = "Trend Minutes";
const std::string trendQuantity = "Trend Unit";
} // namespace key

/// The quotes keep blanks at a text's ends and quotes of its own.
constexpr std::size_t quotes = 2;

std::string CommentKey(std::size_t index) {
    return "Comment " + std::to_string(index + 1);
}

bool ReadFlag(const std::string& name, bool fallback) {
    return platform::Current().profile.GetInt(choicesSection, name, int{fallback}) != 0;
}

int ReadMinutes(int fallback) {
    const int minutes =
        platform::Current().profile.GetInt(choicesSection, key::trendMinutes, fallback);
    return std::ranges::find(trendSpans, minutes) == std::end(trendSpans) ? fallback : minutes;
}

std::vector<std::string> ReadComments() {
    std::vector<std::string> comments;
    for (std::size_t i = 0; i < rememberedComments; ++i)
        if (std::string comment = ReadValue(commentsSection, CommentKey(i)); !comment.empty())
            comments.push_back(std::move(comment));
    return comments;
}

void WriteFlag(LineWriter& writer, const std::string& name, bool flag) {
    writer.WriteNumber(choicesSection, name, int{flag});
}

} // namespace

MeasuringChoices LoadMeasuringChoices() {
    MeasuringChoices choices;
    choices.automatic = ReadFlag(key::automatic, choices.automatic);
    choices.period = ReadValue(choicesSection, key::period);
    choices.whenSteady = ReadFlag(key::whenSteady, choices.whenSteady);
    choices.resume = ReadFlag(key::resume, choices.resume);
    choices.trendShown = ReadFlag(key::trendShown, choices.trendShown);
    choices.trendMinutes = ReadMinutes(choices.trendMinutes);
    choices.trendQuantity = Quantities::WithLabel(ReadValue(choicesSection, key::trendQuantity))
                                .value_or(choices.trendQuantity);
    choices.comments = ReadComments();
    return choices;
}

std::vector<std::string> SaveMeasuringChoices(const MeasuringChoices& choices) {
    LineWriter writer;
    WriteFlag(writer, key::automatic, choices.automatic);
    writer.WriteText(choicesSection, key::period, choices.period, "recording period");
    WriteFlag(writer, key::whenSteady, choices.whenSteady);
    WriteFlag(writer, key::resume, choices.resume);
    WriteFlag(writer, key::trendShown, choices.trendShown);
    writer.WriteNumber(choicesSection, key::trendMinutes, choices.trendMinutes);
    writer.WriteLine(choicesSection, key::trendQuantity,
                     std::string(Quantities::Label(choices.trendQuantity)));
    for (std::size_t i = 0; i < choices.comments.size(); ++i)
        writer.WriteLine(commentsSection, CommentKey(i), '"' + choices.comments[i] + '"');
    return writer.TakeMessages();
}

void RememberComment(MeasuringChoices& choices, const std::string& comment) {
    const std::string text = Mcommon::TrimControl(comment);
    if (text.empty() || text.size() + quotes > longestValue)
        return;
    auto& comments = choices.comments;
    std::erase(comments, text);
    comments.insert(comments.begin(), text);
    comments.resize(std::min(comments.size(), rememberedComments));
}

} // namespace mWinInit
