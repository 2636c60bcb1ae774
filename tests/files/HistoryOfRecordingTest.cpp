#include "base/RunTimeError.h"
#include "files/NotedRecording.h"
#include "files/Recovery.h"
#include "support/FullDisk.h"

using namespace std::chrono_literals;

namespace {

namespace fs = std::filesystem;
using FileOpr::Recording;
using Mode = Recording::Mode;
using Texts = std::vector<std::string>;

class HistoryOfRecording : public NotedRecording {
protected:
    HistoryOfRecording() {
        run.targetFile = target;
        run.CreateHeadLines(run.currentMeasurementPath);
    }
    void Record(Mode mode, std::string_view period = "5") {
        recording.Record(mode, period, Taking());
    }
    std::string Flushed(int record) const { return "Records in file: " + Reached(record); }
    std::string Reached(int record) const {
        return std::to_string(fs::file_size(target)) + " bytes, up to record " +
               std::to_string(record);
    }
};

} // namespace

TEST_F(HistoryOfRecording, An_automatic_run_is_noted_with_its_period_target_and_count) {
    Record(Mode::automatic);
    platform.clock.monotonic += 5s;
    recording.Tick(Taking());
    recording.Stop();
    recording.Stop();
    EXPECT_EQ(noted.Texts(), (Texts{"Recording begun: every 5 s, from record 1",
                                    "Recording ended: 2 records, the last is record 2"}));
    EXPECT_EQ(noted.All().front().file, target.string());
}

TEST_F(HistoryOfRecording, Records_by_hand_are_one_recording_until_the_page_is_left) {
    Record(Mode::manual);
    Record(Mode::manual);
    recording.Leave();
    run.FlushTempFile();
    EXPECT_EQ(noted.Texts(),
              (Texts{"Recording begun: by hand, from record 1",
                     "Recording ended: 2 records, the last is record 2", Flushed(2)}));
}

TEST_F(HistoryOfRecording, A_run_behind_records_by_hand_is_a_recording_of_its_own) {
    Record(Mode::manual);
    Record(Mode::automatic);
    recording.Stop();
    EXPECT_EQ(noted.Texts(), (Texts{"Recording begun: by hand, from record 1",
                                    "Recording ended: 1 record, the last is record 1",
                                    "Recording begun: every 5 s, from record 2",
                                    "Recording ended: 1 record, the last is record 2"}));
}

TEST_F(HistoryOfRecording, A_new_file_ends_the_recording_into_the_one_before) {
    Record(Mode::manual);
    Record(Mode::manual);
    run.FlushTempFile();
    run.targetFile.clear();
    platform.dialogs.ExpectFileDialog([this](const platform::FileDialogRequest&) {
        return platform.folder.Path() / "second.4ch";
    });
    Record(Mode::manual);
    const Texts texts = noted.Texts();
    ASSERT_GE(texts.size(), 4U);
    EXPECT_EQ(texts[2], "Recording ended: 2 records, the last is record 2");
    EXPECT_EQ(texts.back(), "Recording begun: by hand, from record 1");
}

TEST_F(HistoryOfRecording, A_new_files_sum_is_that_of_its_own_bytes) {
    Record(Mode::manual);
    run.FlushTempFile();
    const fs::path second = platform.folder.Path() / "second.4ch";
    platform.clock.now.hour += 1; // else it begins with the same bytes
    run.BeginTarget(second);
    for (int number = 1; number <= 3; ++number) // longer than the first
        run.SaveMeasure(run.currentMeasurementPath, number, "", DisplayedRun());
    run.FlushTempFile();
    const auto sealed = FileOpr::TargetSeal().Take(second);
    ASSERT_TRUE(sealed);
    EXPECT_NE(noted.All().back().data.find(sealed->sha256), std::string::npos)
        << noted.All().back().data;
}

TEST_F(HistoryOfRecording, A_record_that_cannot_be_written_is_noted_with_its_reason) {
    noted.mayFail = true;
    {
        const FullDisk full(fs::file_size(run.currentMeasurementPath));
        EXPECT_THROW(Record(Mode::manual), RunTimeError);
    }
    platform.clock.monotonic += 61s; // the history's own disk was full as well
    recording.Record(Mode::manual, "", Taking());
    const Texts texts = noted.Texts();
    ASSERT_EQ(texts.size(), 2U);
    EXPECT_EQ(texts[0].find("Write failed: Record 1: Writing "), 0U) << texts[0];
    EXPECT_EQ(texts[1], "Recording begun: by hand, from record 1");
}

TEST_F(HistoryOfRecording, A_target_that_cannot_be_begun_is_noted_with_its_reason) {
    const fs::path tooLong = platform.folder.Path() / std::string(300, 'x');
    EXPECT_THROW(run.BeginTarget(tooLong), RunTimeError);
    ASSERT_FALSE(noted.All().empty());
    EXPECT_TRUE(noted.Texts().back().starts_with("Write failed: Writing ")) << noted.Texts().back();
    EXPECT_EQ(noted.All().back().file, tooLong.string());
}

TEST_F(HistoryOfRecording, A_flush_that_fails_is_noted_and_tried_again) {
    Record(Mode::manual);
    run.targetFile = platform.folder.Path() / "missing" / "run.4ch";
    EXPECT_THROW(run.FlushTempFile(), RunTimeError);
    run.targetFile = target;
    run.FlushTempFile();
    const Texts texts = noted.Texts();
    ASSERT_EQ(texts.size(), 3U);
    EXPECT_EQ(texts[1].find("Write failed: "), 0U) << texts[1];
    EXPECT_EQ(texts[2], Flushed(1));
}

TEST_F(HistoryOfRecording, A_recovery_that_fails_is_noted_with_its_reason) {
    Record(Mode::manual);
    run.ReleaseTempFile();
    auto unfinished = FileOpr::FindUnfinishedRecordings();
    ASSERT_EQ(unfinished.size(), 1U);
    unfinished[0].target = platform.folder.Path() / "missing" / "run.4ch";
    EXPECT_THROW(FileOpr::Recover(unfinished[0]), RunTimeError);
    EXPECT_TRUE(noted.Texts().back().starts_with("Write failed: ")) << noted.Texts().back();
    EXPECT_EQ(noted.All().back().file, unfinished[0].target.string());
}

TEST_F(HistoryOfRecording, A_recovery_is_noted_with_its_records) {
    Record(Mode::manual);
    run.ReleaseTempFile();
    auto unfinished = FileOpr::FindUnfinishedRecordings();
    ASSERT_EQ(unfinished.size(), 1U);
    FileOpr::Recover(unfinished[0]);
    EXPECT_EQ(noted.Texts().back(),
              "Recovered: 1 records, the last at 14:05:33 07.Mar.2003; " + Reached(1));
    EXPECT_EQ(noted.All().back().file, target.string());
}
