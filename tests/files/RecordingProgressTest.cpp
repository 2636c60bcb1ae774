#include "files/RecordingProgress.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;
using FileOpr::RecordingProgress;
using FileOpr::RecordingText;

namespace {

constexpr LocalTime today(int hour, int minute, int second) {
    return {2003, 3, 7, hour, minute, second};
}

RecordingProgress AutomaticRun() {
    RecordingProgress progress;
    progress.automatic = true;
    progress.period_s = 8;
    progress.record = 32;
    progress.recordedAt = today(15, 7, 24);
    progress.untilNext = 5s;
    progress.running = 4min + 10s;
    return progress;
}

RecordingProgress ByHand() {
    RecordingProgress progress;
    progress.record = 3;
    progress.recordedAt = today(14, 46, 56);
    return progress;
}

} // namespace

TEST(RecordingText, An_automatic_run_tells_file_period_record_and_the_next_one) {
    EXPECT_EQ(RecordingText(AutomaticRun(), "spring-1.4ch"),
              "Recording to spring-1.4ch every 8 s: record 32 at 15:07:24, next in 5 s, "
              "running 0:04:10");
}

TEST(RecordingText, By_hand_it_tells_the_record_that_is_saved) {
    EXPECT_EQ(RecordingText(ByHand(), "spring-1.4ch"), "Record 3 saved 14:46:56");
    EXPECT_EQ(RecordingText({}, "spring-1.4ch"), "");
}

TEST(RecordingText, A_run_that_waits_for_the_instrument_says_since_when) {
    auto progress = AutomaticRun();
    progress.noReadingsSince = today(15, 7, 30);
    EXPECT_EQ(RecordingText(progress, "spring-1.4ch"),
              "Recording to spring-1.4ch every 8 s: record 32 at 15:07:24, no readings since "
              "15:07:30, running 0:04:10");
}

TEST(RecordingText, A_run_without_a_record_tells_of_none) {
    auto progress = AutomaticRun();
    progress.record = 0;
    EXPECT_EQ(RecordingText(progress, "spring-1.4ch"),
              "Recording to spring-1.4ch every 8 s: next in 5 s, running 0:04:10");
}

TEST(RecordingText, Short_room_is_told_with_the_run) {
    auto progress = AutomaticRun();
    progress.hoursOfRoom = 18.2;
    EXPECT_TRUE(RecordingText(progress, "spring-1.4ch")
                    .ends_with("running 0:04:10, room on the disk for 18 hours"));
}

TEST(RecordingText, A_failure_tells_when_why_and_the_last_record) {
    auto progress = AutomaticRun();
    progress.automatic = false;
    progress.failure = {today(15, 7, 32), "Writing spring-1.4ch: Disk full"};
    EXPECT_EQ(RecordingText(progress, "spring-1.4ch"),
              "Recording to spring-1.4ch failed at 15:07:32: Writing spring-1.4ch: Disk full. "
              "Last record: 32 at 15:07:24");
    progress.record = 0;
    EXPECT_EQ(RecordingText(progress, "spring-1.4ch"),
              "Recording to spring-1.4ch failed at 15:07:32: Writing spring-1.4ch: Disk full. "
              "No record is saved.");
}

TEST(RecordingText, The_hours_of_a_long_run_go_on_counting) {
    EXPECT_EQ(FileOpr::HoursMinutesSeconds(0s), "0:00:00");
    EXPECT_EQ(FileOpr::HoursMinutesSeconds(59min + 59s), "0:59:59");
    EXPECT_EQ(FileOpr::HoursMinutesSeconds(168h + 1s), "168:00:01");
}
