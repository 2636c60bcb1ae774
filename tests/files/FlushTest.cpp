#include "base/RunTimeError.h"
#include "files/LiveReport.h"
#include "files/MeasuringRun.h"
#include "files/RecordedFiles.h"
#include "files/RecordingNote.h"
#include "settings/mWinInit.h"

namespace {

namespace fs = std::filesystem;

/// A medium that goes in the middle of a write, when half of the bytes have reached it.
class VanishingMedium : public platform::FileStore {
public:
    VanishingMedium(platform::FileStore& real, fs::path folder)
        : real_(real), folder_(std::move(folder)) {}

    fs::path CreateUnique(const fs::path& folder, const std::string& prefix) override {
        return real_.CreateUnique(folder, prefix);
    }
    std::unique_ptr<platform::AppendFile> OpenForAppend(const fs::path& file) override {
        auto opened = real_.OpenForAppend(file);
        if (file.parent_path() != folder_)
            return opened;
        return std::make_unique<HalfWritten>(std::move(opened), folder_);
    }
    std::unique_ptr<platform::Replacement> BeginReplacement(const fs::path& file,
                                                            platform::Readers readers) override {
        return real_.BeginReplacement(file, readers);
    }
    void Truncate(const fs::path& file, std::uint64_t size) override { real_.Truncate(file, size); }
    bool IsPrivate(const fs::path& file) const override { return real_.IsPrivate(file); }
    std::unique_ptr<platform::FileLock> TryLock(const fs::path& file) override {
        return real_.TryLock(file);
    }
    platform::DiskRoom RoomOfDisk(const fs::path& file) const override {
        return real_.RoomOfDisk(file);
    }

    static fs::path Away(const fs::path& folder) { return folder.string() + "-away"; }

private:
    class HalfWritten : public platform::AppendFile {
    public:
        HalfWritten(std::unique_ptr<platform::AppendFile> file, fs::path folder)
            : file_(std::move(file)), folder_(std::move(folder)) {}

        void Append(std::string_view bytes, bool durable) override {
            file_->Append(bytes.substr(0, bytes.size() / 2), durable);
            file_.reset(); // some systems rename no folder with an open file
            fs::rename(folder_, Away(folder_));
            throw RunTimeError("Input/output error");
        }
        std::uint64_t Size() const override { return file_->Size(); }

    private:
        std::unique_ptr<platform::AppendFile> file_;
        fs::path folder_;
    };

    platform::FileStore& real_;
    fs::path folder_;
};

class Flush : public RecordedFiles {
protected:
    Flush() { TakeTempFile(); }
};

TEST_F(Flush, The_temporary_file_is_new_empty_and_named_after_the_channel_count) {
    EXPECT_EQ(temporary.parent_path(), platform.places.TemporaryFolder());
    EXPECT_TRUE(temporary.filename().string().starts_with("4ch"));
    EXPECT_EQ(ReadBytes(temporary), "");
    mWinInit::HardwareSettings.ChannelCount = 8;
    const auto second = run.GetTempFile();
    EXPECT_TRUE(second.filename().string().starts_with("8ch"));
    EXPECT_NE(second, temporary);
}

TEST_F(Flush, Records_wait_in_the_temporary_file_until_it_is_flushed) {
    run.BeginTarget(target);
    Record(1);
    Record(2);
    EXPECT_FALSE(fs::exists(target));
    const std::string recorded = ReadBytes(temporary);
    run.FlushTempFile();
    EXPECT_EQ(ReadBytes(target), recorded);
    EXPECT_FALSE(fs::exists(temporary));
}

TEST_F(Flush, A_flush_before_any_record_deletes_the_temporary_file_and_makes_no_target) {
    run.FlushTempFile();
    EXPECT_FALSE(fs::exists(temporary));
    EXPECT_FALSE(fs::exists(target));
}

TEST_F(Flush, Later_records_are_appended_without_a_second_header) {
    run.BeginTarget(target);
    Record(1);
    run.FlushTempFile();
    const std::string first = ReadBytes(target);
    Record(2);
    EXPECT_TRUE(fs::exists(temporary));
    run.FlushTempFile();
    run.FlushTempFile();
    const std::string both = ReadBytes(target);
    EXPECT_TRUE(both.starts_with(first));
    EXPECT_TRUE(both.substr(first.size()).starts_with("Record 2\t"));
    EXPECT_EQ(NumbersIn(target), (Numbers{1, 2}));
}

TEST_F(Flush, A_new_target_deletes_a_file_of_that_name) {
    WriteBytes(target, "an old measurement");
    run.BeginTarget(target);
    EXPECT_FALSE(fs::exists(target));
    Record(1);
    run.FlushTempFile();
    EXPECT_TRUE(ReadBytes(target).starts_with("-----"));
}

TEST_F(Flush, A_new_target_leaves_the_records_of_the_old_one_in_the_old_one) {
    run.BeginTarget(target);
    Record(1);
    const auto second = platform.folder.Path() / "second.4ch";
    run.BeginTarget(second);
    Record(1);
    Record(2);
    run.FlushTempFile();
    EXPECT_EQ(NumbersIn(target), (Numbers{1}));
    EXPECT_EQ(NumbersIn(second), (Numbers{1, 2}));
}

TEST_F(Flush, A_target_that_is_a_folder_is_refused_and_stays) {
    fs::create_directory(target);
    EXPECT_THROW(run.BeginTarget(target), RunTimeError);
    EXPECT_TRUE(fs::is_directory(target));
    EXPECT_TRUE(run.targetFile.empty());
}

TEST_F(Flush, A_target_in_a_folder_that_is_missing_is_refused_before_anything_is_recorded) {
    EXPECT_THROW(run.BeginTarget(platform.folder.Path() / "gone" / "run.4ch"), RunTimeError);
    EXPECT_TRUE(run.targetFile.empty());
    EXPECT_EQ(ReadBytes(temporary), "");
}

TEST_F(Flush, A_target_that_the_system_cannot_look_at_leaves_the_one_before) {
    run.BeginTarget(target);
    Record(1);
    EXPECT_THROW(run.BeginTarget(platform.folder.Path() / std::string(300, 'x')), RunTimeError);
    EXPECT_EQ(run.targetFile, target);
    EXPECT_FALSE(run.HasWaitingRecords());
    EXPECT_EQ(NumbersIn(target), (Numbers{1}));
    Record(2);
    run.FlushTempFile();
    EXPECT_EQ(NumbersIn(target), (Numbers{1, 2}));
}

TEST_F(Flush, While_the_report_follows_records_go_straight_into_the_target_in_order) {
    run.BeginTarget(target);
    Record(1);
    run.FollowTarget(true);
    EXPECT_TRUE(run.IsFollowing());
    EXPECT_EQ(NumbersIn(target), (Numbers{1}));
    Record(2);
    EXPECT_EQ(NumbersIn(target), (Numbers{1, 2}));
    EXPECT_FALSE(fs::exists(temporary));
    run.FollowTarget(false);
    Record(3);
    EXPECT_EQ(NumbersIn(target), (Numbers{1, 2}));
    EXPECT_EQ(NumbersIn(temporary), (Numbers{3}));
    run.FollowTarget(true);
    Record(4);
    run.FlushTempFile();
    EXPECT_EQ(NumbersIn(target), (Numbers{1, 2, 3, 4}));
}

TEST_F(Flush, A_new_target_ends_the_following_and_leaves_the_old_one_whole) {
    run.BeginTarget(target);
    Record(1);
    run.FollowTarget(true);
    Record(2);
    const auto second = platform.folder.Path() / "second.4ch";
    run.BeginTarget(second);
    EXPECT_FALSE(run.IsFollowing());
    Record(1);
    run.FlushTempFile();
    EXPECT_EQ(NumbersIn(target), (Numbers{1, 2}));
    EXPECT_EQ(NumbersIn(second), Numbers{1});
}

TEST_F(Flush, Without_a_temporary_file_no_record_waits_and_no_file_is_the_target) {
    run.ReleaseTempFile();
    EXPECT_FALSE(run.HasWaitingRecords());
    EXPECT_FALSE(run.IsTarget({}));
}

TEST_F(Flush, The_target_is_live_while_the_measuring_page_is_open) {
    run.BeginTarget(target);
    EXPECT_TRUE(run.IsTarget(target));
    EXPECT_FALSE(run.IsLiveFile(target));
    run.measuring = true;
    EXPECT_TRUE(run.IsLiveFile(target));
    EXPECT_FALSE(run.IsLiveFile(temporary));
}

TEST_F(Flush, Without_a_target_there_is_nothing_to_follow) {
    run.FollowTarget(true);
    EXPECT_FALSE(run.IsFollowing());
    EXPECT_EQ(run.currentMeasurementPath, temporary);
}

TEST_F(Flush, A_flush_into_a_vanished_folder_says_so_and_keeps_the_records) {
    const auto folder = platform.folder.Path() / "stick";
    fs::create_directory(folder);
    run.BeginTarget(folder / "run.4ch");
    Record(1);
    const std::string recorded = ReadBytes(temporary);
    fs::remove_all(folder);
    try {
        run.FlushTempFile();
        FAIL() << "no error";
    } catch (const RunTimeError& error) {
        EXPECT_NE(std::string(error.what()).find("run.4ch"), std::string::npos) << error.what();
        EXPECT_NE(std::string(error.what()).find(temporary.string()), std::string::npos);
    }
    EXPECT_EQ(ReadBytes(temporary), recorded);
    fs::create_directory(folder); // the stick is back
    run.FlushTempFile();
    EXPECT_EQ(ReadBytes(folder / "run.4ch"), recorded);
}

TEST_F(Flush, A_flush_into_what_has_become_a_folder_keeps_the_records) {
    run.BeginTarget(target);
    Record(1);
    fs::create_directory(target);
    EXPECT_THROW(run.FlushTempFile(), RunTimeError);
    EXPECT_EQ(NumbersIn(temporary), (Numbers{1}));
    EXPECT_TRUE(fs::is_directory(target));
    Record(2); // recording goes on
    fs::remove(target);
    run.FlushTempFile();
    EXPECT_EQ(NumbersIn(target), (Numbers{1, 2}));
}

TEST_F(Flush, An_ordinary_end_leaves_nothing_in_the_temporary_folder) {
    run.BeginTarget(target);
    Record(1);
    EXPECT_EQ(FilesInTemporaryFolder(), 3U); // the records, their note, their lock
    run.FlushTempFile();
    run.ReleaseTempFile();
    EXPECT_EQ(FilesInTemporaryFolder(), 0U);
}

TEST_F(Flush, A_file_that_is_gone_from_the_temporary_folder_is_made_anew) {
    run.BeginTarget(target);
    fs::remove(temporary);
    Record(1);
    run.FlushTempFile();
    EXPECT_EQ(NumbersIn(target), (Numbers{1}));
}

TEST_F(Flush, A_target_whose_header_finds_no_room_leaves_the_old_measurement) {
    WriteBytes(target, "an old measurement");
    fs::remove(temporary);
    fs::create_directory(temporary); // nothing can be written there
    EXPECT_THROW(run.BeginTarget(target), RunTimeError);
    EXPECT_EQ(ReadBytes(target), "an old measurement");
    EXPECT_TRUE(run.targetFile.empty());

    fs::remove(temporary);
    run.BeginTarget(target); // the same name again is no other program's
    Record(1);
    run.FlushTempFile();
    EXPECT_EQ(NumbersIn(target), Numbers{1});
}

TEST_F(Flush, A_target_that_cannot_be_made_leaves_no_header_behind) {
    EXPECT_THROW(run.BeginTarget(platform.folder.Path() / "gone" / "run.4ch"), RunTimeError);
    EXPECT_FALSE(run.HasWaitingRecords());
}

TEST_F(Flush, A_part_that_a_failed_flush_has_left_in_the_target_is_not_written_twice) {
    run.BeginTarget(target);
    Record(1);
    const std::string recorded = ReadBytes(temporary);
    fs::create_directory(target); // the flush begins, fails and cannot be undone
    EXPECT_THROW(run.FlushTempFile(), RunTimeError);
    fs::remove(target);
    WriteBytes(target, recorded.substr(0, recorded.size() / 2)); // what had been copied
    Record(2);
    run.FlushTempFile();
    EXPECT_EQ(NumbersIn(target), (Numbers{1, 2}));
    EXPECT_TRUE(ReadBytes(target).starts_with(recorded));
}

TEST_F(Flush, A_medium_that_goes_in_the_middle_and_comes_back_holds_each_record_once) {
    const fs::path stick = platform.folder.Path() / "stick";
    fs::create_directory(stick);
    target = stick / "run.4ch";
    run.BeginTarget(target);
    Record(1);
    const std::string recorded = ReadBytes(temporary);
    VanishingMedium medium(*platform.files, stick);
    const platform::Services services{
        platform.dialogs,   platform.desktop, platform.clock, *platform.profile,
        platform.userStore, platform.places,  medium,         platform.printing};
    const auto* const before = &platform::Current();
    platform::Install(&services);
    EXPECT_THROW(run.FlushTempFile(), RunTimeError);
    platform::Install(before);
    fs::rename(VanishingMedium::Away(stick), stick);
    Record(2);
    run.FlushTempFile();
    EXPECT_EQ(NumbersIn(target), (Numbers{1, 2}));
    EXPECT_TRUE(ReadBytes(target).starts_with(recorded));
}

TEST_F(Flush, The_temporary_file_is_no_target_by_whatever_name) {
    run.BeginTarget(target);
    Record(1);
    const fs::path hardLink = platform.folder.Path() / "hard.4ch";
    fs::create_hard_link(temporary, hardLink);
    const fs::path detour = temporary.parent_path() / "." / temporary.filename();
    for (const fs::path& name : {temporary, detour, hardLink}) {
        EXPECT_THROW(run.BeginTarget(name), RunTimeError) << name;
        EXPECT_EQ(run.targetFile, target);
    }
    Record(2);
    run.FlushTempFile();
    EXPECT_EQ(NumbersIn(target), (Numbers{1, 2})) << "nothing recorded was lost";
    EXPECT_THROW(run.BeginTarget(temporary), RunTimeError) << "the file comes back with a record";
}

TEST_F(Flush, What_stands_beside_the_temporary_file_is_no_target_either) {
    run.BeginTarget(target);
    Record(1);
    const FileOpr::RecordingFiles own(temporary);
    for (const fs::path& name : {own.note, own.lock}) {
        const std::string before = ReadBytes(name);
        EXPECT_THROW(run.BeginTarget(name), RunTimeError) << name;
        EXPECT_EQ(ReadBytes(name), before) << name;
    }
    run.FlushTempFile();
    EXPECT_EQ(NumbersIn(target), Numbers{1});
}

TEST_F(Flush, Live_reports_are_told_when_the_records_have_reached_the_target) {
    std::vector<Numbers> found;
    const FileOpr::LiveReport report(run, [&] {
        if (fs::exists(target))
            found.push_back(NumbersIn(target));
    });
    run.BeginTarget(target);
    Record(1);
    Record(2);
    EXPECT_TRUE(found.empty());
    run.FlushTempFile();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0], (Numbers{1, 2}));
    run.FlushTempFile();
    EXPECT_EQ(found.size(), 1U) << "nothing was waiting";
}

} // namespace
