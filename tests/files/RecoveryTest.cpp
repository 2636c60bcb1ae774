#include "files/Recovery.h"

#include "base/RunTimeError.h"
#include "files/MeasuringRun.h"
#include "files/RecordedFiles.h"
#include "files/RecordingNote.h"
#include "files/TargetTransfer.h"
#include "settings/mWinInit.h"

#include <chrono>

namespace {

namespace fs = std::filesystem;
using FileOpr::RecordingFiles;

/// A run is recorded, and then its program is gone: the files stay, the lock does not.
class Recovery : public RecordedFiles {
protected:
    void Begin() {
        TakeTempFile();
        run.BeginTarget(target);
    }

    void Record(std::int32_t from, std::int32_t to) {
        for (auto number = from; number <= to; ++number)
            RecordedFiles::Record(number);
    }

    void EndProgram() {
        run.ReleaseTempFile();
        run.targetFile.clear();
    }

    void RecordAndCrash(std::int32_t records) {
        Begin();
        Record(1, records);
        EndProgram();
    }

    /// Everything that a start does when the user agrees.
    static std::size_t RecoverAll() {
        auto found = FileOpr::FindUnfinishedRecordings();
        for (auto& recording : found)
            FileOpr::Recover(recording);
        return found.size();
    }
};

TEST_F(Recovery, A_recording_whose_program_is_gone_is_found_with_its_target_and_count) {
    Begin();
    Record(1, 2);
    platform.clock.now.hour = 15;
    Record(3, 3);
    EndProgram();
    const auto found = FileOpr::FindUnfinishedRecordings();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].temporaryFile, temporary);
    EXPECT_EQ(found[0].target, target);
    EXPECT_EQ(found[0].records, 3);
    EXPECT_EQ(found[0].lastTimeStamp, "15:05:33 07.Mar.2003");
}

TEST_F(Recovery, Recovering_brings_the_records_into_the_target_and_leaves_no_trace) {
    Begin();
    Record(1, 3);
    const std::string recorded = ReadBytes(temporary);
    EndProgram();
    EXPECT_EQ(RecoverAll(), 1U);
    EXPECT_EQ(ReadBytes(target), recorded);
    EXPECT_EQ(FilesInTemporaryFolder(), 0U);
    EXPECT_EQ(RecoverAll(), 0U);
}

TEST_F(Recovery, A_recording_of_eight_channels_is_found_as_well) {
    mWinInit::HardwareSettings.ChannelCount = 8;
    RecordAndCrash(2);
    ASSERT_TRUE(temporary.filename().string().starts_with("8ch"));
    EXPECT_EQ(RecoverAll(), 1U);
    EXPECT_EQ(NumbersIn(target), (Numbers{1, 2}));
}

TEST_F(Recovery, A_recording_that_runs_is_never_found) {
    Begin();
    Record(1, 3);
    EXPECT_TRUE(FileOpr::FindUnfinishedRecordings().empty());
    EXPECT_EQ(NumbersIn(temporary), (Numbers{1, 2, 3}));
}

TEST_F(Recovery, While_one_copy_asks_about_a_recording_another_does_not_find_it) {
    RecordAndCrash(2);
    auto first = FileOpr::FindUnfinishedRecordings();
    ASSERT_EQ(first.size(), 1U);
    EXPECT_TRUE(FileOpr::FindUnfinishedRecordings().empty());
    first.clear(); // not answered: it waits for the next start
    EXPECT_EQ(FileOpr::FindUnfinishedRecordings().size(), 1U);
}

TEST_F(Recovery, Temporary_files_without_a_record_are_removed_silently) {
    Begin(); // a header alone
    EndProgram();
    run.GetTempFile();
    EndProgram();
    EXPECT_TRUE(FileOpr::FindUnfinishedRecordings().empty());
    EXPECT_EQ(FilesInTemporaryFolder(), 0U);
    EXPECT_FALSE(fs::exists(target));
}

TEST_F(Recovery, A_lone_empty_file_is_removed_once_it_is_old_enough_to_be_nobodys) {
    const auto lone = platform.places.TemporaryFolder() / "4chlone";
    WriteBytes(lone, "");
    FileOpr::FindUnfinishedRecordings();
    EXPECT_TRUE(fs::exists(lone));
    fs::last_write_time(lone, fs::file_time_type::clock::now() - std::chrono::hours(1));
    FileOpr::FindUnfinishedRecordings();
    EXPECT_FALSE(fs::exists(lone));
}

TEST_F(Recovery, Files_of_other_programs_are_left_alone) {
    const auto folder = platform.places.TemporaryFolder();
    for (const auto* name : {"note.txt", "4chess.pgn", "data.note", "data.lock"})
        WriteBytes(folder / name, "1. e4 e5");
    EXPECT_TRUE(FileOpr::FindUnfinishedRecordings().empty());
    EXPECT_EQ(FilesInTemporaryFolder(), 4U);
}

TEST_F(Recovery, A_half_written_last_record_is_left_out) {
    Begin();
    Record(1, 2);
    const std::string whole = ReadBytes(temporary);
    Record(3, 3);
    EndProgram();
    fs::resize_file(temporary, fs::file_size(temporary) - 1);
    EXPECT_EQ(RecoverAll(), 1U);
    EXPECT_EQ(ReadBytes(target), whole);
}

TEST_F(Recovery, A_tail_of_zeros_after_a_power_failure_is_left_out) {
    Begin();
    Record(1, 2);
    const std::string whole = ReadBytes(temporary);
    EndProgram();
    WriteBytes(temporary, whole + std::string(5000, '\0'));
    EXPECT_EQ(RecoverAll(), 1U);
    EXPECT_EQ(ReadBytes(target), whole);
}

TEST_F(Recovery, A_flush_interrupted_at_any_byte_is_completed_exactly) {
    Begin();
    Record(1, 1);
    run.FlushTempFile();
    const std::string before = ReadBytes(target);
    Record(2, 4);
    const std::string recorded = ReadBytes(temporary);
    EndProgram();
    const RecordingFiles files(temporary);
    const std::string lock = ReadBytes(files.lock);
    for (std::size_t copied = 0; copied <= recorded.size(); copied += 31) {
        WriteBytes(temporary, recorded);
        WriteBytes(files.lock, lock);
        FileOpr::WriteNote(files.note, {target, FileOpr::FlushMark{before.size(), 0}});
        WriteBytes(target, before + recorded.substr(0, copied));
        RecoverAll();
        ASSERT_EQ(ReadBytes(target), before + recorded) << copied;
        ASSERT_EQ(FilesInTemporaryFolder(), 0U);
    }
}

TEST_F(Recovery, An_interrupted_flush_whose_bytes_did_not_reach_the_disk_is_completed_exactly) {
    Begin();
    Record(1, 3);
    const std::string recorded = ReadBytes(temporary);
    EndProgram();
    const RecordingFiles files(temporary);
    FileOpr::WriteNote(files.note, {target, FileOpr::FlushMark{0, 0}});
    WriteBytes(target, recorded.substr(0, 1000) + std::string(1500, '\0'));
    EXPECT_EQ(RecoverAll(), 1U);
    EXPECT_EQ(ReadBytes(target), recorded);
}

TEST_F(Recovery, A_flush_that_lacks_nothing_but_its_end_is_not_asked_about) {
    Begin();
    Record(1, 3);
    const std::string recorded = ReadBytes(temporary);
    EndProgram();
    WriteBytes(target, recorded);
    FileOpr::WriteNote(RecordingFiles(temporary).note, {target, FileOpr::FlushMark{0, 0}});
    EXPECT_TRUE(FileOpr::FindUnfinishedRecordings().empty());
    EXPECT_EQ(ReadBytes(target), recorded);
    EXPECT_EQ(FilesInTemporaryFolder(), 0U);
}

TEST_F(Recovery, What_somebody_added_after_an_interrupted_flush_stays_and_no_record_is_doubled) {
    Begin();
    Record(1, 1);
    run.FlushTempFile();
    const std::string before = ReadBytes(target);
    Record(2, 4);
    const std::string recorded = ReadBytes(temporary);
    EndProgram();
    const std::size_t oneRecord = recorded.size() / 3;
    const std::string added = "\r\na remark\r\n" + Separator();
    WriteBytes(target, before + recorded.substr(0, oneRecord + 10) + added);
    FileOpr::WriteNote(RecordingFiles(temporary).note,
                       {target, FileOpr::FlushMark{before.size(), 0}});
    EXPECT_EQ(RecoverAll(), 1U);
    EXPECT_EQ(ReadBytes(target),
              before + recorded.substr(0, oneRecord + 10) + added + recorded.substr(oneRecord));
}

TEST_F(Recovery, Records_after_a_flush_are_appended_to_the_target) {
    Begin();
    Record(1, 2);
    run.FlushTempFile();
    Record(3, 4);
    EndProgram();
    EXPECT_EQ(RecoverAll(), 1U);
    EXPECT_EQ(NumbersIn(target), (Numbers{1, 2, 3, 4}));
}

TEST_F(Recovery, A_recording_with_header_never_goes_into_a_file_of_another_run) {
    RecordAndCrash(2);
    WriteBytes(target, "another run");
    const auto second = platform.folder.Path() / "run (2).4ch";
    auto found = FileOpr::FindUnfinishedRecordings();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].target, second);
    FileOpr::Recover(found[0]);
    EXPECT_EQ(ReadBytes(target), "another run");
    EXPECT_EQ(NumbersIn(second), (Numbers{1, 2}));
}

TEST_F(Recovery, A_flush_interrupted_before_another_run_took_the_file_goes_beside_it) {
    RecordAndCrash(2);
    FileOpr::WriteNote(RecordingFiles(temporary).note, {target, FileOpr::FlushMark{0, 0}});
    WriteBytes(target, Separator() + "another run\r\n");
    EXPECT_EQ(RecoverAll(), 1U);
    EXPECT_EQ(ReadBytes(target), Separator() + "another run\r\n");
    EXPECT_EQ(NumbersIn(platform.folder.Path() / "run (2).4ch"), (Numbers{1, 2}));
}

TEST_F(Recovery, A_target_that_cannot_be_written_keeps_the_records_and_another_may_be_chosen) {
    target = platform.folder.Path() / "stick" / "run.4ch";
    fs::create_directory(target.parent_path());
    RecordAndCrash(2);
    fs::remove_all(target.parent_path());
    auto found = FileOpr::FindUnfinishedRecordings();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_THROW(FileOpr::Recover(found[0]), RunTimeError);
    EXPECT_EQ(NumbersIn(temporary), (Numbers{1, 2}));
    found[0].target = platform.folder.Path() / "elsewhere.4ch";
    FileOpr::Recover(found[0]);
    EXPECT_EQ(NumbersIn(found[0].target), (Numbers{1, 2}));
    EXPECT_EQ(FilesInTemporaryFolder(), 0U);
}

TEST_F(Recovery, Records_without_a_readable_note_are_found_and_need_a_target) {
    RecordAndCrash(2);
    WriteBytes(RecordingFiles(temporary).note, "garbage");
    auto found = FileOpr::FindUnfinishedRecordings();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_TRUE(found[0].target.empty());
    EXPECT_THROW(FileOpr::Recover(found[0]), RunTimeError);
    found[0].target = target;
    FileOpr::Recover(found[0]);
    EXPECT_EQ(NumbersIn(target), (Numbers{1, 2}));
}

TEST_F(Recovery, A_recording_whose_lock_file_was_cleared_away_is_found) {
    RecordAndCrash(2);
    fs::remove(RecordingFiles(temporary).lock);
    EXPECT_EQ(RecoverAll(), 1U);
    EXPECT_EQ(NumbersIn(target), (Numbers{1, 2}));
    EXPECT_EQ(FilesInTemporaryFolder(), 0U);
}

TEST_F(Recovery, A_lone_file_that_holds_something_stays_however_old_it_is) {
    RecordAndCrash(2);
    fs::remove(RecordingFiles(temporary).note);
    fs::remove(RecordingFiles(temporary).lock);
    fs::last_write_time(temporary, fs::file_time_type::clock::now() - std::chrono::hours(1));
    FileOpr::FindUnfinishedRecordings();
    EXPECT_EQ(NumbersIn(temporary), (Numbers{1, 2}));
}

TEST_F(Recovery, What_half_written_files_are_left_beside_a_recording_goes_with_it) {
    RecordAndCrash(2);
    const auto halfWritten = temporary.filename().string() + ".note.";
    platform.files->CreateUnique(temporary.parent_path(), halfWritten);
    EXPECT_EQ(RecoverAll(), 1U);
    EXPECT_EQ(NumbersIn(target), (Numbers{1, 2}));
    EXPECT_EQ(FilesInTemporaryFolder(), 0U);
}

TEST_F(Recovery, What_half_written_files_are_left_beside_a_lone_file_goes_with_it) {
    const auto folder = platform.places.TemporaryFolder();
    const auto lone = platform.files->CreateUnique(folder, "4ch");
    platform.files->CreateUnique(folder, lone.filename().string() + ".lock.");
    fs::last_write_time(lone, fs::file_time_type::clock::now() - std::chrono::hours(1));
    FileOpr::FindUnfinishedRecordings();
    EXPECT_EQ(FilesInTemporaryFolder(), 0U);
}

TEST_F(Recovery, A_target_that_is_there_and_empty_is_no_other_run) {
    RecordAndCrash(2);
    WriteBytes(target, "");
    EXPECT_EQ(FileOpr::FindUnfinishedRecordings().at(0).target, target);
    WriteBytes(target, "?");
    EXPECT_NE(FileOpr::FindUnfinishedRecordings().at(0).target, target);
}

TEST_F(Recovery, Another_copy_and_one_that_has_ended_keep_no_other_target_busy) {
    RecordAndCrash(1);
    const auto second = platform.folder.Path() / "second.4ch";
    run.currentMeasurementPath = run.GetTempFile();
    {
        const auto heldByAnother = FileOpr::FindUnfinishedRecordings();
        ASSERT_EQ(heldByAnother.size(), 1U);
        EXPECT_NO_THROW(run.BeginTarget(second)) << "the other records into the first";
    }
    EXPECT_NO_THROW(run.BeginTarget(target)) << "its program has ended";
}

TEST_F(Recovery, Note_and_lock_without_their_recording_are_cleared_away) {
    RecordAndCrash(2);
    fs::remove(temporary);
    EXPECT_TRUE(FileOpr::FindUnfinishedRecordings().empty());
    EXPECT_EQ(FilesInTemporaryFolder(), 0U);
}

TEST_F(Recovery, Several_recordings_are_found_each_with_its_own_target) {
    RecordAndCrash(1);
    target = platform.folder.Path() / "second.4ch";
    RecordAndCrash(2);
    EXPECT_EQ(RecoverAll(), 2U);
    EXPECT_EQ(NumbersIn(platform.folder.Path() / "run.4ch"), (Numbers{1}));
    EXPECT_EQ(NumbersIn(target), (Numbers{1, 2}));
}

TEST_F(Recovery, A_target_that_another_copy_records_into_is_refused) {
    // The lock is held as by another program: it belongs to another open file.
    RecordAndCrash(1);
    const auto heldByAnother = FileOpr::FindUnfinishedRecordings();
    ASSERT_EQ(heldByAnother.size(), 1U);
    WriteBytes(target, "what the other copy has flushed");
    run.currentMeasurementPath = run.GetTempFile();
    EXPECT_THROW(run.BeginTarget(target), RunTimeError);
    EXPECT_EQ(ReadBytes(target), "what the other copy has flushed");
}

TEST(RecordingNote, A_note_is_read_back_whatever_its_target_is_called) {
    fake::Platform platform;
    FileOpr::MeasuringRun run;
    const auto file = platform.folder.Path() / "a.note";
    const FileOpr::RecordingNote plain{fs::path(u8"/d/\u00B5 \u20AC\ntarget=x.4ch"), std::nullopt};
    FileOpr::WriteNote(file, plain);
    EXPECT_EQ(FileOpr::ReadNote(file), plain);
    const FileOpr::RecordingNote marked{"/d/run.4ch", FileOpr::FlushMark{5000000000ULL, 17}};
    FileOpr::WriteNote(file, marked);
    EXPECT_EQ(FileOpr::ReadNote(file), marked);
}

TEST(RecordingNote, Other_bytes_are_no_note) {
    fake::Platform platform;
    FileOpr::MeasuringRun run;
    const auto file = platform.folder.Path() / "a.note";
    EXPECT_FALSE(FileOpr::ReadNote(file));
    for (const std::string bytes :
         {"", "target=/x", "Vantrel recording\n", "Vantrel recording\ntarget=",
          "Vantrel recording\nflush=1\ntarget=/x", "Vantrel recording\nflush=-1,0\ntarget=/x",
          "Vantrel recording\nflush=,0\ntarget=/x", "Vantrel recording\nflush=1,\ntarget=/x"}) {
        WriteBytes(file, bytes);
        EXPECT_FALSE(FileOpr::ReadNote(file)) << bytes;
    }
}

TEST_F(Recovery, A_recording_that_cannot_be_read_is_said_and_not_taken_for_empty) {
    Begin();
    Record(1, 2);
    fs::remove(temporary);
    fs::create_directory(temporary); // reading it fails
    EXPECT_THROW(FileOpr::ExamineRecording(temporary), RunTimeError);
}

} // namespace
