#include "files/Recording.h"

#include "base/NumberText.h"
#include "base/RunTimeError.h"
#include "history/Notes.h"
#include "platform/Platform.h"
#include "settings/mWinInit.h"

#include <algorithm>
#include <cmath>
#include <system_error>
#include <utility>

namespace FileOpr {

namespace {

constexpr float shortestPeriod_s = 1;
constexpr std::string_view sleepMessage =
    "This computer offers no way to keep it awake: see that it does not go to sleep.";

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
    const bool hadTarget = !run_.targetFile.empty();
    if (!PrepareTarget()) {
        outcome.status = Status::cancelled;
        return outcome;
    }
    outcome.targetChosen = !hadTarget;
    const std::optional<Entry> entry = takeEntry();
    if (!entry)
        return outcome;
    if (automatic && reportShowsTarget_)
        run_.FollowTarget(true);
    RecordReading(*entry, outcome);
    NoteBegin(automatic ? "every " + NumberText::Plain(period_s) + " s" : "by hand");
    if (automatic)
        BeginRun(period_s, outcome);
    return outcome;
}

void Recording::BeginRun(float period_s, Outcome& outcome) {
    period_s_ = period_s;
    automaticOn_ = true;
    runStart_ = lastRecordTime_ = WholeSeconds();
    recordBytes_ = RecordBytes(run_.Rows(), mWinInit::ChannelsInUse());
    awake_ = platform::Current().desktop.KeepAwake("Measurements are being recorded");
    if (!awake_ && !std::exchange(sleepIsTold_, true))
        outcome.remark = std::string(sleepMessage);
    CheckRoom(outcome);
}

void Recording::CheckRoom(Outcome& outcome) {
    RunOnDisk run{run_.currentMeasurementPath,
                  run_.targetFile,
                  run_.IsFollowing(),
                  0,
                  recordBytes_,
                  period_s_};
    std::error_code missing; // a temporary file that a flush has deleted holds nothing
    if (const auto waiting = std::filesystem::file_size(run.temporaryFile, missing); !missing)
        run.waitingBytes = waiting;
    try {
        room_ = ForecastRoom(run);
    } catch (const RunTimeError&) {
        room_.reset(); // a forecast more or less must not keep a record from being written
        return;
    }
    const std::string remark = roomWatch_.Add(*room_);
    if (!remark.empty())
        outcome.remark += (outcome.remark.empty() ? "" : " ") + remark;
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
    CheckRoom(outcome);
    return outcome;
}

void Recording::Stop() {
    automaticOn_ = false;
    awake_.reset();
    NoteEnd(counter_);
    run_.FollowTarget(false);
}

/// Behind the first record. By hand and by the clock are two recordings.
void Recording::NoteBegin(const std::string& how) {
    if (noted_ == how)
        return;
    const std::int32_t before = counter_ - 1;
    NoteEnd(before);
    History::Entry entry;
    entry.kind = History::Kind::recordingBegun;
    entry.file = History::FileText(run_.targetFile);
    entry.text = how + ", from record " + NumberText::Plain(counter_);
    if (counter_ == 1) // what was known of a file of this name is of another one
        entry.data = History::DataOf({{"new file", "yes"}});
    History::Note(std::move(entry));
    noted_ = how;
    countAtBegin_ = before;
}

void Recording::NoteEnd(std::int32_t last) {
    if (std::exchange(noted_, {}).empty())
        return;
    const std::int32_t records = last - countAtBegin_;
    History::Note(History::Kind::recordingEnded,
                  NumberText::Plain(records) + (records == 1 ? " record" : " records") +
                      ", the last is record " + NumberText::Plain(last),
                  run_.targetFile);
}

void Recording::Fail(const std::string& reason) {
    NoteFailure(reason);
    Stop();
}

void Recording::NoteFailure(const std::string& reason) {
    failure_ = {platform::Current().clock.Now(), reason};
}

RecordingProgress Recording::Progress() const {
    RecordingProgress progress;
    progress.automatic = automaticOn_;
    progress.period_s = period_s_;
    progress.record = counter_;
    progress.recordedAt = recordedAt_;
    progress.failure = failure_;
    const auto now = WholeSeconds();
    const std::chrono::seconds period(static_cast<std::int64_t>(std::ceil(period_s_)));
    progress.untilNext = std::max(lastRecordTime_ + period - now, std::chrono::seconds(0));
    progress.running = now - runStart_;
    if (room_ && room_->hours < enoughHours)
        progress.hoursOfRoom = room_->hours;
    return progress;
}

std::string Recording::ChangesSinceHeader() const {
    if (!header_ || run_.targetFile.empty())
        return {};
    return HeaderDifferences(*header_, RecordsInForce(), mWinInit::ChannelsInUse());
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

bool Recording::PrepareTarget() {
    return !run_.targetFile.empty() || ChooseTarget();
}

bool Recording::ChooseTarget() {
    std::filesystem::path chosen;
    if (!run_.dialog.ShowFileDialog(chosen, DialogMode::save))
        return false;
    NoteEnd(counter_);
    run_.BeginTarget(chosen);
    header_ = RecordsInForce();
    failure_.reset();
    counter_ = 0;
    return true;
}

void Recording::RecordReading(const Entry& entry, Outcome& outcome) {
    const std::int32_t number = counter_ + 1;
    try {
        run_.SaveMeasure(run_.currentMeasurementPath, number, entry.comment, entry.displayed);
    } catch (const RunTimeError& error) {
        NoteFailure(error.what());
        History::Note(History::Kind::writeFailed,
                      "Record " + NumberText::Plain(number) + ": " + error.what(), run_.targetFile);
        if (!run_.IsFollowing())
            throw;
        // The target has gone from under the live report; the temporary file still takes records.
        run_.FollowTarget(false);
        run_.SaveMeasure(run_.currentMeasurementPath, number, entry.comment, entry.displayed);
        outcome.warning = error.what();
    }
    counter_ = number;
    recordedAt_ = platform::Current().clock.Now();
    failure_.reset();
    outcome.status = Status::recorded;
}

} // namespace FileOpr
