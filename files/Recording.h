#pragma once

#include "files/DiskForecast.h"
#include "files/HeaderDifference.h"
#include "files/MeasuringRun.h"
#include "files/RecordingProgress.h"
#include "platform/Desktop.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace FileOpr {

/// The recording of the measuring page, apart from its form: when a record is due, and where it
/// goes. The form asks, and shows what the outcome says.
class Recording {
public:
    /// The positions of the mode list.
    enum class Mode { manual = 0, automatic = 1 };

    /// Shown when a period is refused.
    static constexpr std::string_view periodMessage = "The period cannot be less than One second";

    /// What is recorded, taken from the page when a record is due.
    struct Entry {
        std::string comment;
        DisplayedChannels displayed;
    };
    /// Nothing while no values are being read: a record is taken only from values of this moment,
    /// not after the link has failed while a dialog was open, nor while a new average fills.
    using TakeEntry = std::function<std::optional<Entry>()>;

    /// The run must outlive it.
    explicit Recording(MeasuringRun& run) : run_(run) {}

    enum class Status {
        nothing,        ///< no record was due, or a click found no values
        recorded,       ///< the comment is used up
        due,            ///< a record was due but the instrument gave none; the period began anew
        periodTooShort, ///< refused: show periodMessage
        cancelled,      ///< no target was chosen
    };
    struct Outcome {
        Status status = Status::nothing;
        bool targetChosen = false; ///< a new target: the caption names it
        /// A message to show: the record is safe, but the target could not be followed any more.
        std::string warning;
        /// For the status line: what endangers a run that nobody watches.
        std::string remark;
    };

    /// Sees to it that there is a target, by asking for one where none is set; false where none is
    /// chosen. Throws RunTimeError where it cannot be begun.
    bool PrepareTarget();

    /// "&Record": checks the period (automatic mode), asks for a target where none is set, writes
    /// one record, and in automatic mode starts the run; without values neither happens. Throws
    /// RunTimeError; nothing is then recorded or counted and no run starts.
    Outcome Record(Mode mode, std::string_view periodText, const TakeEntry& takeEntry);

    /// The timer's tick: in an automatic run, records when as many whole seconds as the period
    /// have passed. Throws RunTimeError when the record cannot be written; the run has then ended.
    Outcome Tick(const TakeEntry& takeEntry);

    /// "&Stop", and the end of reading for another reason: no automatic run, and the temporary file
    /// receives what comes later.
    void Stop();

    /// The page is left, or the target given up: what was recorded by hand has come to its end.
    void Leave() { NoteEnd(counter_); }

    /// Stop for a reason that the progress tells until the next record.
    void Fail(const std::string& reason);

    /// The live report shows the target: it is completed first; while an automatic run goes on and
    /// the report shows this file, records go straight into it. Throws RunTimeError when the target
    /// cannot be written; the report then shows an older state.
    void ReportOpened();

    /// The live report was closed or shows another file.
    void ReportClosed();

    MeasuringRun& Run() const { return run_; }
    bool IsAutomaticOn() const { return automaticOn_; }
    std::int32_t Counter() const { return counter_; } ///< records of this run's target

    /// How it stands at this moment, but for the readings, which the page knows.
    RecordingProgress Progress() const;

    /// The room for the run, or for one of the last period; nothing before there was a run.
    const std::optional<DiskForecast>& Room() const { return room_; }

    /// What setup and calibration now tell differently from the target's header; empty for nothing.
    std::string ChangesSinceHeader() const;

private:
    bool ChooseTarget();
    void BeginRun(float period_s, Outcome& outcome);
    void CheckRoom(Outcome& outcome);
    void RecordReading(const Entry& entry, Outcome& outcome);
    void NoteFailure(const std::string& reason);
    void NoteBegin(const std::string& how);
    void NoteEnd(std::int32_t last);

    MeasuringRun& run_;
    float period_s_ = 0;
    bool automaticOn_ = false;
    bool reportShowsTarget_ = false;
    std::chrono::seconds lastRecordTime_{0}; ///< whole seconds of the monotonic clock
    std::chrono::seconds runStart_{0};       ///< of the same clock
    std::int32_t counter_ = 0;
    std::string noted_;             ///< how the history says that it is recorded; empty: it is not
    std::int32_t countAtBegin_ = 0; ///< records before that
    LocalTime recordedAt_;          ///< of the last record
    std::size_t recordBytes_ = 0;   ///< of the run
    std::optional<RecordingProgress::Failure> failure_;
    std::optional<HeaderRecords> header_;
    std::unique_ptr<platform::WakeLock> awake_; ///< while an automatic run goes on
    bool sleepIsTold_ = false;
    std::optional<DiskForecast> room_;
    RoomWatch roomWatch_;
};

} // namespace FileOpr
