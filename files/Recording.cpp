#include "files/Recording.h"

#include "base/NumberText.h"
#include "base/RunTimeError.h"
#include "platform/Platform.h"

namespace FileOpr {

namespace {

constexpr float shortestPeriod_s = 1;

/// A change of the wall clock must neither stop nor double records.
std::chrono::seconds WholeSeconds() {
    return std::chrono::floor<std::chrono::seconds>(platform::Current().clock.Monotonic());
}

} // namespace

Recording::Outcome Recording::Record(Mode mode, std::string_view periodText,
                                     const TakeEntry& takeEntry) {
    Outcome outcome;
    const float period_s = NumberText::LeadingSingle(periodText);
    const bool automatic = mode == Mode::automatic;
    if (automatic && period_s < shortestPeriod_s) {
        outcome.status = Status::periodTooShort;
        return outcome;
    }
    if (run_.targetFile.empty()) {
        if (!ChooseTarget()) {
            outcome.status = Status::cancelled;
            return outcome;
        }
        outcome.targetChosen = true;
    }
    const std::optional<Entry> entry = takeEntry();
    if (!entry)
        return outcome;
    if (automatic && reportShowsTarget_)
        run_.FollowTarget(true);
    RecordReading(*entry, outcome);
    if (automatic) {
        period_s_ = period_s;
        automaticOn_ = true;
        lastRecordTime_ = WholeSeconds();
    }
    return outcome;
}

Recording::Outcome Recording::Tick(const TakeEntry& takeEntry) {
    Outcome outcome;
    const auto now = WholeSeconds();
    const auto elapsed_s = static_cast<double>((now - lastRecordTime_).count());
    if (!automaticOn_ || elapsed_s < static_cast<double>(period_s_))
        return outcome;
    lastRecordTime_ = now;
    const std::optional<Entry> entry = takeEntry();
    if (!entry) {
        outcome.status = Status::due;
        return outcome;
    }
    try {
        RecordReading(*entry, outcome);
    } catch (const RunTimeError&) {
        Stop(); // the same message each period would bury the first
        throw;
    }
    return outcome;
}

void Recording::Stop() {
    automaticOn_ = false;
    run_.FollowTarget(false);
}

void Recording::ReportOpened() {
    if (run_.targetFile.empty())
        return;
    if (automaticOn_)
        run_.FollowTarget(true);
    else
        run_.FlushTempFile();
    reportShowsTarget_ = true;
}

void Recording::ReportClosed() {
    reportShowsTarget_ = false;
    run_.FollowTarget(false);
}

bool Recording::ChooseTarget() {
    std::filesystem::path chosen;
    if (!run_.dialog.ShowFileDialog(chosen, DialogMode::save))
        return false;
    run_.BeginTarget(chosen);
    recordedSinceLastSave_ = false;
    counter_ = 0;
    return true;
}

void Recording::RecordReading(const Entry& entry, Outcome& outcome) {
    const std::int32_t number = counter_ + 1;
    try {
        run_.SaveMeasure(run_.currentMeasurementPath, number, entry.comment, entry.displayed);
    } catch (const RunTimeError& error) {
        if (!run_.IsFollowing())
            throw;
        // The target has gone from under the live report; the temporary file still takes records.
        run_.FollowTarget(false);
        run_.SaveMeasure(run_.currentMeasurementPath, number, entry.comment, entry.displayed);
        outcome.warning = error.what();
    }
    counter_ = number;
    recordedSinceLastSave_ = true;
    outcome.status = Status::recorded;
}

} // namespace FileOpr
