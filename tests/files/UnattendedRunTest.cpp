#include "files/Recording.h"

#include "base/RunTimeError.h"
#include "files/SetUpRun.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <chrono>

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using FileOpr::Recording;
using Mode = Recording::Mode;

/// An automatic run every 8 s that nobody watches.
class UnattendedRun : public testing::Test {
protected:
    UnattendedRun() : target(platform.folder.Path() / "spring-1.4ch") {
        SetUpRun();
        run.currentMeasurementPath = run.GetTempFile();
        platform.clock.now = {2003, 3, 7, 15, 7, 0};
    }

    Recording::Outcome Start() {
        if (run.targetFile.empty())
            platform.dialogs.ExpectFileDialog(
                [this](const platform::FileDialogRequest&) { return target; });
        return recording.Record(Mode::automatic, "8", TakeEntry());
    }
    Recording::Outcome After(std::chrono::seconds time) {
        platform.clock.monotonic += time;
        platform.clock.now.second += static_cast<int>(time.count());
        return recording.Tick(TakeEntry());
    }
    static Recording::TakeEntry TakeEntry() {
        return [] { return Recording::Entry{"", DisplayedRun()}; };
    }
    std::string Line() const {
        return FileOpr::RecordingText(recording.Progress(), "spring-1.4ch");
    }

    fake::Platform platform;
    fs::path target;
    FileOpr::MeasuringRun run;
    Recording recording{run};
};

TEST_F(UnattendedRun, The_line_follows_the_run) {
    EXPECT_EQ(Line(), "");
    Start();
    EXPECT_EQ(Line(), "Recording to spring-1.4ch every 8 s: record 1 at 15:07:00, next in 8 s, "
                      "running 0:00:00");
    After(3s);
    EXPECT_EQ(Line(), "Recording to spring-1.4ch every 8 s: record 1 at 15:07:00, next in 5 s, "
                      "running 0:00:03");
    After(5s);
    EXPECT_EQ(Line(), "Recording to spring-1.4ch every 8 s: record 2 at 15:07:08, next in 8 s, "
                      "running 0:00:08");
    recording.Stop();
    EXPECT_EQ(Line(), "Record 2 saved 15:07:08");
}

TEST_F(UnattendedRun, A_record_that_is_late_is_next_at_once) {
    Start();
    platform.clock.monotonic += 9s;
    EXPECT_NE(Line().find("next in 0 s, running 0:00:09"), std::string::npos) << Line();
}

TEST_F(UnattendedRun, A_new_file_chosen_after_a_failure_begins_without_it) {
    Start();
    recording.Fail("the instrument does not answer");
    run.FlushTempFile();
    run.targetFile.clear();
    platform.dialogs.ExpectFileDialog(
        [this](const platform::FileDialogRequest&) { return target; });
    ASSERT_TRUE(recording.PrepareTarget());
    EXPECT_EQ(Line(), "");
}

TEST_F(UnattendedRun, A_record_that_cannot_be_written_is_told_until_the_next_one) {
    Start();
    // A folder in its place: the temporary file can be written no more.
    const fs::path temporary = run.currentMeasurementPath;
    fs::rename(temporary, temporary.string() + "-away");
    fs::create_directory(temporary);
    EXPECT_THROW(After(8s), RunTimeError);
    EXPECT_TRUE(Line().starts_with("Recording to spring-1.4ch failed at 15:07:08: ")) << Line();
    EXPECT_TRUE(Line().ends_with("Last record: 1 at 15:07:00")) << Line();
    fs::remove(temporary);
    fs::rename(temporary.string() + "-away", temporary);
    Start();
    EXPECT_TRUE(Line().starts_with("Recording to spring-1.4ch every 8 s: record 2 at 15:07:08"));
}

TEST_F(UnattendedRun, An_end_for_another_reason_is_told_as_well) {
    Start();
    recording.Fail("the instrument does not answer");
    EXPECT_FALSE(recording.IsAutomaticOn());
    EXPECT_EQ(Line(), "Recording to spring-1.4ch failed at 15:07:00: the instrument does not "
                      "answer. Last record: 1 at 15:07:00");
}

TEST_F(UnattendedRun, The_system_stays_awake_from_the_runs_start_to_its_end) {
    EXPECT_EQ(platform.desktop.wakeLocks, 0);
    EXPECT_EQ(Start().remark, "");
    EXPECT_EQ(platform.desktop.wakeLocks, 1);
    EXPECT_EQ(platform.desktop.awakeReason, "Measurements are being recorded");
    After(8s);
    EXPECT_EQ(platform.desktop.wakeLocks, 1);
    recording.Stop();
    EXPECT_EQ(platform.desktop.wakeLocks, 0);
}

TEST_F(UnattendedRun, Records_by_hand_keep_nothing_awake) {
    platform.dialogs.ExpectFileDialog(
        [this](const platform::FileDialogRequest&) { return target; });
    recording.Record(Mode::manual, "8", TakeEntry());
    EXPECT_EQ(platform.desktop.wakeLocks, 0);
}

TEST_F(UnattendedRun, A_run_that_fails_lets_the_system_sleep) {
    Start();
    recording.Fail("the instrument does not answer");
    EXPECT_EQ(platform.desktop.wakeLocks, 0);
}

TEST_F(UnattendedRun, A_system_that_cannot_be_kept_awake_is_told_once) {
    platform.desktop.keepsAwake = false;
    EXPECT_EQ(Start().remark,
              "This computer offers no way to keep it awake: see that it does not go to sleep.");
    recording.Stop();
    EXPECT_EQ(Start().remark, "");
}

TEST_F(UnattendedRun, The_room_on_the_disk_is_told_when_it_falls_below_a_day) {
    const auto record = FileOpr::RecordBytes(run.Rows(), 4); // before the header: two rows
    EXPECT_GT(record, 0U);
    EXPECT_EQ(Start().remark, "");
    EXPECT_GT(recording.Room()->hours, 1000);
    EXPECT_EQ(After(8s).remark, "");
    // Each record of the run takes its room twice on the one disk.
    const auto whole = FileOpr::RecordBytes(run.Rows(), 4);
    platform.files->free_bytes =
        fs::file_size(run.currentMeasurementPath) + 3 * whole + 2 * whole * 450 * 18;
    EXPECT_EQ(After(8s).remark, "At this period there is room on the disk for 18 hours.");
    EXPECT_TRUE(Line().ends_with(", room on the disk for 18 hours")) << Line();
    EXPECT_EQ(After(8s).remark, "");
    platform.files->free_bytes = fake::FileStore::terabyte;
    After(8s);
    EXPECT_TRUE(Line().ends_with("running 0:00:32")) << Line();
}

TEST_F(UnattendedRun, Room_for_just_a_day_is_room_enough) {
    Start();
    const auto record = FileOpr::RecordBytes(run.Rows(), 4); // of a number of six digits
    const std::uint64_t recordsOfADay = 24 * 3600 / 8;
    const auto waiting = fs::file_size(run.currentMeasurementPath) + record - 5;
    platform.files->free_bytes = waiting + 2 * record * recordsOfADay;
    After(8s);
    EXPECT_DOUBLE_EQ(recording.Room()->hours, 24);
    EXPECT_TRUE(Line().ends_with("running 0:00:08")) << Line();
}

TEST_F(UnattendedRun, Room_that_cannot_be_told_any_more_is_not_the_room_of_before) {
    Start();
    ASSERT_TRUE(recording.Room());
    platform.files->answersForRoom = false;
    After(8s);
    EXPECT_FALSE(recording.Room());
}

TEST_F(UnattendedRun, Short_room_is_told_before_the_run_has_begun_to_need_it) {
    platform.files->free_bytes = 100'000;
    const auto outcome = Start();
    EXPECT_TRUE(outcome.remark.starts_with("At this period there is room on the disk for less"))
        << outcome.remark;
}

TEST_F(UnattendedRun, A_disk_that_does_not_tell_its_room_disturbs_no_record) {
    platform.files->answersForRoom = false;
    EXPECT_EQ(Start().status, Recording::Status::recorded);
    EXPECT_EQ(After(8s).status, Recording::Status::recorded);
    EXPECT_FALSE(recording.Room());
}

TEST_F(UnattendedRun, Before_a_header_was_written_nothing_has_changed_since) {
    run.targetFile = target; // chosen, and nothing recorded yet
    EXPECT_EQ(recording.ChangesSinceHeader(), "");
}

TEST_F(UnattendedRun, A_setup_that_changes_after_the_header_is_told_until_a_new_file) {
    EXPECT_EQ(recording.ChangesSinceHeader(), "");
    Start();
    EXPECT_EQ(recording.ChangesSinceHeader(), "");
    recording.Stop();
    mWinInit::ChannelSetup[1].Electrode = "K";
    EXPECT_EQ(recording.ChangesSinceHeader(), "channel 2: electrode");
    run.FlushTempFile();
    run.targetFile.clear(); // a new measurement file is wanted
    EXPECT_EQ(recording.ChangesSinceHeader(), "");
    Start();
    EXPECT_EQ(recording.ChangesSinceHeader(), "");
}

} // namespace
