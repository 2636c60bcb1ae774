#include "files/Recording.h"

#include "base/RunTimeError.h"
#include "files/MeasurementReader.h"
#include "files/MeasuringRun.h"
#include "files/SetUpRun.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <chrono>

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using FileOpr::Recording;
using Mode = Recording::Mode;
using Status = Recording::Status;
using Numbers = std::vector<std::int32_t>;

constexpr auto tick = 250ms;

class RecordingRun : public testing::Test {
protected:
    RecordingRun() : target(platform.folder.Path() / "run.4ch") {
        SetUpRun();
        run.currentMeasurementPath = run.GetTempFile();
    }

    void ChooseTarget() {
        platform.dialogs.ExpectFileDialog(
            [this](const platform::FileDialogRequest&) { return target; });
    }

    Recording::Outcome Record(Mode mode, std::string_view period = "1") {
        return recording.Record(mode, period, TakeEntry());
    }

    Recording::Outcome Tick() { return recording.Tick(TakeEntry()); }

    /// Lets time pass in ticks; how many records were written.
    int Run(std::chrono::milliseconds time) {
        int records = 0;
        for (auto passed = 0ms; passed < time; passed += tick) {
            platform.clock.monotonic += tick;
            records += Tick().status == Status::recorded ? 1 : 0;
        }
        return records;
    }

    Recording::TakeEntry TakeEntry() {
        return [this]() -> std::optional<Recording::Entry> {
            if (!valuesAreRead)
                return std::nullopt;
            ++entriesTaken;
            return Recording::Entry{comment, DisplayedRun()};
        };
    }

    static Numbers NumbersIn(const fs::path& file) {
        Numbers numbers;
        if (fs::exists(file))
            for (const auto& record : FileOpr::ReadMeasurementFile(file).records)
                numbers.push_back(record.number);
        return numbers;
    }

    fake::Platform platform;
    FileOpr::MeasuringRun run;
    fs::path target;
    Recording recording{run};
    std::string comment;
    bool valuesAreRead = true;
    int entriesTaken = 0;
};

TEST_F(RecordingRun, A_period_below_one_second_is_refused_and_nothing_is_recorded) {
    for (const auto* period : {"0.99", "", "abc", "-5", "0", " .9 s"}) {
        EXPECT_EQ(Record(Mode::automatic, period).status, Status::periodTooShort) << period;
        EXPECT_FALSE(recording.IsAutomaticOn());
    }
    EXPECT_EQ(entriesTaken, 0);
    EXPECT_TRUE(run.targetFile.empty());
}

TEST_F(RecordingRun, A_period_of_exactly_one_second_is_accepted) {
    ChooseTarget();
    EXPECT_EQ(Record(Mode::automatic, "1").status, Status::recorded);
    EXPECT_TRUE(recording.IsAutomaticOn());
}

TEST_F(RecordingRun, The_period_is_not_asked_for_in_manual_mode) {
    ChooseTarget();
    EXPECT_EQ(Record(Mode::manual, "0").status, Status::recorded);
    EXPECT_FALSE(recording.IsAutomaticOn());
}

TEST_F(RecordingRun, A_cancelled_dialog_records_nothing) {
    platform.dialogs.ExpectFileDialog(
        [](const platform::FileDialogRequest&) { return std::nullopt; });
    EXPECT_EQ(Record(Mode::automatic).status, Status::cancelled);
    EXPECT_TRUE(run.targetFile.empty());
    EXPECT_FALSE(recording.IsAutomaticOn());
    EXPECT_EQ(ReadBytes(run.currentMeasurementPath), "");
}

TEST_F(RecordingRun, The_first_record_asks_for_the_target_and_later_ones_do_not) {
    ChooseTarget();
    auto outcome = Record(Mode::manual);
    EXPECT_TRUE(outcome.targetChosen);
    EXPECT_EQ(run.targetFile, target);
    EXPECT_EQ(recording.Counter(), 1);
    outcome = Record(Mode::manual);
    EXPECT_FALSE(outcome.targetChosen);
    EXPECT_EQ(recording.Counter(), 2);
    EXPECT_EQ(NumbersIn(run.currentMeasurementPath), (Numbers{1, 2}));
}

TEST_F(RecordingRun, The_comment_goes_with_its_record) {
    ChooseTarget();
    comment = "first look";
    Record(Mode::manual);
    const auto file = FileOpr::ReadMeasurementFile(run.currentMeasurementPath);
    EXPECT_EQ(file.records.at(0).comment, "first look");
}

TEST_F(RecordingRun, An_automatic_run_records_at_once_and_then_once_per_period) {
    ChooseTarget();
    Record(Mode::automatic, "5");
    EXPECT_EQ(recording.Counter(), 1);
    EXPECT_EQ(Run(4750ms), 0);
    EXPECT_EQ(Run(250ms), 1);
    EXPECT_EQ(Run(15s), 3);
}

TEST_F(RecordingRun, A_period_of_one_and_a_half_seconds_records_every_two) {
    ChooseTarget();
    Record(Mode::automatic, "1.5");
    EXPECT_EQ(Run(20s), 10);
}

TEST_F(RecordingRun, A_period_of_one_second_gives_3600_records_in_an_hour) {
    ChooseTarget();
    Record(Mode::automatic, "1");
    EXPECT_NEAR(Run(3600s), 3600, 1);
    EXPECT_NEAR(recording.Counter(), 3601, 1);
}

TEST_F(RecordingRun, Late_and_uneven_ticks_lose_no_second) {
    ChooseTarget();
    Record(Mode::automatic, "1");
    int records = 0;
    const auto end = platform.clock.monotonic + 3600s;
    for (int i = 0; platform.clock.monotonic < end; ++i) {
        platform.clock.monotonic += 200ms + std::chrono::milliseconds(i * 37 % 130);
        records += Tick().status == Status::recorded ? 1 : 0;
    }
    EXPECT_NEAR(records, 3600, 1);
}

TEST_F(RecordingRun, A_change_of_the_wall_clock_neither_stops_nor_doubles_records) {
    ChooseTarget();
    Record(Mode::automatic, "1");
    EXPECT_EQ(Run(10s), 10);
    platform.clock.now.hour -= 1; // the end of daylight saving
    EXPECT_EQ(Run(10s), 10);
    platform.clock.now.year += 5;
    EXPECT_EQ(Run(10s), 10);
}

TEST_F(RecordingRun, Without_an_instrument_the_period_begins_anew_and_nothing_is_recorded) {
    ChooseTarget();
    Record(Mode::automatic, "2");
    platform.clock.monotonic += 2s;
    valuesAreRead = false;
    EXPECT_EQ(Tick().status, Status::due);
    valuesAreRead = true;
    EXPECT_EQ(Tick().status, Status::nothing);
    EXPECT_EQ(recording.Counter(), 1);
    EXPECT_EQ(Run(2s), 1);
}

TEST_F(RecordingRun, Values_that_are_gone_once_the_file_is_chosen_are_not_recorded) {
    platform.dialogs.ExpectFileDialog([this](const platform::FileDialogRequest&) {
        valuesAreRead = false;
        return target;
    });
    const auto outcome = Record(Mode::automatic);
    EXPECT_EQ(outcome.status, Status::nothing);
    EXPECT_TRUE(outcome.targetChosen);
    EXPECT_FALSE(recording.IsAutomaticOn());
    EXPECT_EQ(recording.Counter(), 0);
    run.FlushTempFile();
    EXPECT_TRUE(FileOpr::ReadMeasurementFile(target).records.empty());
}

TEST_F(RecordingRun, Stop_ends_the_run_and_the_next_one_goes_on_counting) {
    ChooseTarget();
    Record(Mode::automatic, "1");
    Run(2s);
    recording.Stop();
    EXPECT_FALSE(recording.IsAutomaticOn());
    EXPECT_EQ(Run(10s), 0);
    Record(Mode::automatic, "1");
    EXPECT_EQ(NumbersIn(run.currentMeasurementPath), (Numbers{1, 2, 3, 4}));
}

TEST_F(RecordingRun, A_period_typed_during_a_run_has_no_effect_on_it) {
    ChooseTarget();
    Record(Mode::automatic, "1");
    EXPECT_EQ(Record(Mode::automatic, "0.5").status, Status::periodTooShort);
    EXPECT_TRUE(recording.IsAutomaticOn());
    EXPECT_EQ(Run(5s), 5);
}

TEST_F(RecordingRun, A_target_that_cannot_be_made_starts_nothing) {
    target = platform.folder.Path() / "gone" / "run.4ch";
    ChooseTarget();
    EXPECT_THROW(Record(Mode::automatic), RunTimeError);
    EXPECT_FALSE(recording.IsAutomaticOn());
    EXPECT_EQ(recording.Counter(), 0);
    target = platform.folder.Path() / "run.4ch";
    ChooseTarget(); // asked again
    EXPECT_TRUE(Record(Mode::manual).targetChosen);
}

TEST_F(RecordingRun, A_record_that_cannot_be_written_ends_the_run_and_is_not_counted) {
    ChooseTarget();
    Record(Mode::automatic, "1");
    run.currentMeasurementPath = platform.folder.Path() / "gone" / "file";
    platform.clock.monotonic += 1s;
    EXPECT_THROW(Tick(), RunTimeError);
    EXPECT_FALSE(recording.IsAutomaticOn());
    EXPECT_EQ(recording.Counter(), 1);
}

TEST_F(RecordingRun, Opening_the_report_in_manual_mode_completes_the_target_only) {
    ChooseTarget();
    Record(Mode::manual);
    recording.ReportOpened();
    EXPECT_EQ(NumbersIn(target), (Numbers{1}));
    Record(Mode::manual);
    EXPECT_EQ(NumbersIn(target), (Numbers{1}));
    run.FlushTempFile();
    EXPECT_EQ(NumbersIn(target), (Numbers{1, 2}));
}

TEST_F(RecordingRun, While_the_report_shows_an_automatic_run_its_records_go_into_the_target) {
    ChooseTarget();
    Record(Mode::automatic, "1");
    Run(1s);
    recording.ReportOpened();
    EXPECT_EQ(NumbersIn(target), (Numbers{1, 2}));
    Run(2s);
    EXPECT_EQ(NumbersIn(target), (Numbers{1, 2, 3, 4}));
    recording.ReportClosed();
    Run(1s);
    EXPECT_EQ(NumbersIn(target), (Numbers{1, 2, 3, 4}));
    run.FlushTempFile();
    EXPECT_EQ(NumbersIn(target), (Numbers{1, 2, 3, 4, 5}));
}

TEST_F(RecordingRun, Stop_ends_the_following_and_a_new_run_takes_it_up_in_order) {
    ChooseTarget();
    Record(Mode::automatic, "1");
    recording.ReportOpened();
    recording.Stop();
    EXPECT_FALSE(run.IsFollowing());
    Record(Mode::manual);
    EXPECT_EQ(NumbersIn(target), (Numbers{1}));
    Record(Mode::automatic, "1"); // the report still shows the file
    EXPECT_TRUE(run.IsFollowing());
    EXPECT_EQ(NumbersIn(target), (Numbers{1, 2, 3}));
}

TEST_F(RecordingRun, A_run_begun_after_the_report_was_closed_is_not_followed) {
    ChooseTarget();
    Record(Mode::manual);
    recording.ReportOpened();
    recording.ReportClosed();
    Record(Mode::automatic, "1");
    EXPECT_FALSE(run.IsFollowing());
    EXPECT_EQ(NumbersIn(target), Numbers{1});
}

TEST_F(RecordingRun, Opening_the_report_before_any_target_follows_nothing) {
    recording.ReportOpened();
    ChooseTarget();
    Record(Mode::automatic, "1");
    EXPECT_FALSE(run.IsFollowing());
    EXPECT_TRUE(NumbersIn(target).empty());
}

TEST_F(RecordingRun, A_target_that_goes_while_it_is_followed_loses_no_record) {
    const auto folder = platform.folder.Path() / "stick";
    fs::create_directory(folder);
    target = folder / "run.4ch";
    ChooseTarget();
    Record(Mode::automatic, "1");
    recording.ReportOpened();
    Run(1s);
    const auto away = platform.folder.Path() / "pocket";
    fs::rename(folder, away);
    platform.clock.monotonic += 1s;
    const auto outcome = Tick();
    EXPECT_EQ(outcome.status, Status::recorded);
    EXPECT_NE(outcome.warning.find("run.4ch"), std::string::npos) << outcome.warning;
    EXPECT_TRUE(recording.IsAutomaticOn());
    EXPECT_EQ(Run(1s), 1);
    fs::rename(away, folder);
    run.FlushTempFile();
    EXPECT_EQ(NumbersIn(target), (Numbers{1, 2, 3, 4}));
}

} // namespace
