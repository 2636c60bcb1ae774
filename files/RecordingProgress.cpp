#include "files/RecordingProgress.h"

#include "base/DateText.h"
#include "base/NumberText.h"
#include "files/DiskForecast.h"

namespace FileOpr {

namespace {

std::string RunText(const RecordingProgress& progress, std::string_view targetName) {
    std::string text = "Recording to " + std::string(targetName) + " every " +
                       NumberText::Plain(progress.period_s) + " s: ";
    if (progress.record > 0)
        text += "record " + NumberText::Plain(progress.record) + " at " +
                DateText::TimeOfDay(progress.recordedAt) + ", ";
    if (progress.noReadingsSince)
        text += "no readings since " + DateText::TimeOfDay(*progress.noReadingsSince) + ", ";
    else
        text += "next in " + std::to_string(progress.untilNext.count()) + " s, ";
    text += "running " + HoursMinutesSeconds(progress.running);
    if (progress.hoursOfRoom)
        text += ", " + RoomText(*progress.hoursOfRoom);
    return text;
}

std::string FailureText(const RecordingProgress& progress, std::string_view targetName) {
    std::string text = "Recording to " + std::string(targetName) + " failed at " +
                       DateText::TimeOfDay(progress.failure->at) + ": " + progress.failure->reason;
    if (!text.ends_with('.'))
        text += '.';
    if (progress.record == 0)
        return text + " No record is saved.";
    return text + " Last record: " + NumberText::Plain(progress.record) + " at " +
           DateText::TimeOfDay(progress.recordedAt);
}

} // namespace

std::string RecordingText(const RecordingProgress& progress, std::string_view targetName) {
    if (progress.failure)
        return FailureText(progress, targetName);
    if (progress.automatic)
        return RunText(progress, targetName);
    if (progress.record == 0)
        return {};
    return "Record " + NumberText::Plain(progress.record) + " saved " +
           DateText::TimeOfDay(progress.recordedAt);
}

std::string HoursMinutesSeconds(std::chrono::seconds time) {
    const auto twoDigits = [](std::chrono::seconds::rep number) {
        return (number < 10 ? ":0" : ":") + std::to_string(number);
    };
    const auto seconds = time.count();
    return std::to_string(seconds / 3600) + twoDigits(seconds / 60 % 60) + twoDigits(seconds % 60);
}

} // namespace FileOpr
