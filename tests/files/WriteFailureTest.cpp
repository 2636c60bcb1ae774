#include "base/RunTimeError.h"
#include "files/MeasurementReader.h"
#include "files/MeasuringRun.h"
#include "files/RecordingNote.h"
#include "files/Recovery.h"
#include "files/SetUpRun.h"
#include "support/FakePlatform.h"
#include "support/FullDisk.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using Numbers = std::vector<std::int32_t>;

class WriteFailure : public testing::Test {
protected:
    WriteFailure() : target(platform.folder.Path() / "run.4ch") {
        SetUpRun();
        run.currentMeasurementPath = run.GetTempFile();
        temporary = run.currentMeasurementPath;
        run.BeginTarget(target);
    }

    void Record(std::int32_t number, const std::string& comment = "") {
        run.SaveMeasure(run.currentMeasurementPath, number, comment, DisplayedRun());
    }

    template <class Action>
    static std::string ErrorOf(Action action) {
        try {
            action();
        } catch (const RunTimeError& error) {
            return error.what();
        }
        return "no error";
    }

    static Numbers NumbersIn(const fs::path& file) {
        Numbers numbers;
        for (const auto& record : FileOpr::ReadMeasurementFile(file).records)
            numbers.push_back(record.number);
        return numbers;
    }

    fake::Platform platform;
    FileOpr::MeasuringRun run;
    fs::path target;
    fs::path temporary;
};

TEST_F(WriteFailure, A_symbolic_link_to_the_temporary_file_is_refused_as_a_target) {
    const fs::path link = platform.folder.Path() / "link.4ch";
    fs::create_symlink(temporary, link);
    Record(1);
    EXPECT_THROW(run.BeginTarget(link), RunTimeError);
    run.FlushTempFile();
    EXPECT_EQ(NumbersIn(target), Numbers{1}) << "nothing recorded was lost";
    EXPECT_THROW(run.BeginTarget(link), RunTimeError) << "the file comes back with a record";
}

TEST_F(WriteFailure, A_link_is_followed_by_its_own_folder_and_through_others) {
    const fs::path first = platform.folder.Path() / "first.4ch";
    const fs::path second = platform.folder.Path() / "second.4ch";
    fs::create_symlink(fs::relative(temporary, first.parent_path()), first);
    fs::create_symlink("first.4ch", second);
    Record(1);
    for (const fs::path& link : {first, second})
        EXPECT_THROW(run.BeginTarget(link), RunTimeError) << link;
    run.FlushTempFile();
    EXPECT_EQ(NumbersIn(target), Numbers{1}) << "nothing recorded was lost";
    for (const fs::path& link : {first, second})
        EXPECT_THROW(run.BeginTarget(link), RunTimeError) << "the file is away, " << link;
}

TEST_F(WriteFailure, A_link_that_leads_to_itself_is_refused_as_a_target) {
    const fs::path loop = platform.folder.Path() / "loop.4ch";
    fs::create_symlink(loop, loop);
    EXPECT_THROW(run.BeginTarget(loop), RunTimeError);
    EXPECT_EQ(run.targetFile, target);
}

TEST_F(WriteFailure, A_target_of_another_copy_is_refused_by_the_name_of_a_link_too) {
    const fs::path link = platform.folder.Path() / "link";
    fs::create_directory_symlink(target.parent_path(), link);
    Record(1);
    FileOpr::MeasuringRun other;
    other.currentMeasurementPath = other.GetTempFile();
    EXPECT_THROW(other.BeginTarget(link / target.filename()), RunTimeError);
    other.BeginTarget(link / "other.4ch");
    EXPECT_EQ(other.targetFile, link / "other.4ch");
}

TEST_F(WriteFailure, A_folder_that_is_a_link_leads_to_the_temporary_file_as_well) {
    const fs::path link = platform.folder.Path() / "link";
    fs::create_directory_symlink(temporary.parent_path(), link);
    Record(1);
    run.FlushTempFile();
    EXPECT_THROW(run.BeginTarget(link / temporary.filename()), RunTimeError) << "it is away";
}

TEST_F(WriteFailure, Another_file_of_the_temporary_folder_is_a_target_as_others_are) {
    const fs::path beside = temporary.parent_path() / "beside.4ch";
    run.BeginTarget(beside);
    Record(1);
    run.FlushTempFile();
    EXPECT_EQ(NumbersIn(beside), Numbers{1});
}

TEST_F(WriteFailure, A_record_that_a_full_disk_refuses_leaves_the_file_as_it_was) {
    Record(1);
    const std::string before = ReadBytes(temporary);
    {
        const FullDisk limit(before.size() + 100);
        const auto error = ErrorOf([&] { Record(2); });
        EXPECT_NE(error.find("Disk full"), std::string::npos) << error;
    }
    EXPECT_EQ(ReadBytes(temporary), before);
    Record(2); // there is room again
    run.FlushTempFile();
    EXPECT_EQ(NumbersIn(target), (Numbers{1, 2}));
}

TEST_F(WriteFailure, A_flush_that_a_full_disk_refuses_says_so_and_loses_nothing) {
    for (std::int32_t number = 1; number <= 40; ++number) // several pieces of the copy
        Record(number, std::string(20000, 'c'));
    const std::string recorded = ReadBytes(temporary);
    {
        const FullDisk limit(recorded.size() - 100);
        const auto error = ErrorOf([this] { run.FlushTempFile(); });
        EXPECT_NE(error.find("run.4ch: Disk full"), std::string::npos) << error;
        EXPECT_NE(error.find("kept in " + temporary.string()), std::string::npos) << error;
    }
    EXPECT_FALSE(fs::exists(target));
    EXPECT_EQ(ReadBytes(temporary), recorded);
    run.FlushTempFile();
    EXPECT_EQ(ReadBytes(target), recorded);
}

TEST_F(WriteFailure, A_refused_flush_leaves_an_older_part_of_the_target_as_it_was) {
    Record(1);
    run.FlushTempFile();
    const std::string before = ReadBytes(target);
    for (std::int32_t number = 2; number <= 5; ++number)
        Record(number);
    {
        const FullDisk limit(fs::file_size(temporary) + 50);
        EXPECT_NE(ErrorOf([this] { run.FlushTempFile(); }).find("Disk full"), std::string::npos);
    }
    EXPECT_EQ(ReadBytes(target), before);
    Record(6);
    run.FlushTempFile();
    EXPECT_EQ(NumbersIn(target), (Numbers{1, 2, 3, 4, 5, 6}));
}

TEST_F(WriteFailure, A_temporary_file_that_cannot_be_deleted_is_named) {
    fs::remove(temporary);
    fs::create_directories(temporary / "in it");
    const auto error = ErrorOf([this] { run.FlushTempFile(); });
    EXPECT_TRUE(error.starts_with("Deleting " + temporary.string() + ": ")) << error;
}

TEST_F(WriteFailure, A_flush_that_fails_twice_halfway_copies_nothing_twice) {
    for (std::int32_t number = 1; number <= 40; ++number)
        Record(number, std::string(20000, 'c'));
    const std::string recorded = ReadBytes(temporary);
    const std::string half = recorded.substr(0, recorded.size() / 2);
    WriteBytes(target, half); // what a first one has left, which could not be undone
    FileOpr::WriteNote(FileOpr::RecordingFiles(temporary).note, {target, FileOpr::FlushMark{0, 0}});
    {
        const FullDisk limit(half.size() + 1000);
        EXPECT_NE(ErrorOf([this] { run.FlushTempFile(); }), "no error");
    }
    EXPECT_EQ(ReadBytes(target).size(), half.size());
    run.FlushTempFile();
    EXPECT_TRUE(ReadBytes(target) == recorded);
}

TEST_F(WriteFailure, A_flush_that_failed_at_the_end_is_found_at_the_next_start) {
    Record(1);
    fs::create_directory(target);
    EXPECT_NE(ErrorOf([this] { run.FlushTempFile(); }), "no error");
    run.ReleaseTempFile();
    fs::remove(target);
    auto found = FileOpr::FindUnfinishedRecordings();
    ASSERT_EQ(found.size(), 1U);
    FileOpr::Recover(found[0]);
    EXPECT_EQ(NumbersIn(target), (Numbers{1}));
}

/// A folder in which nobody may make a file: /sys for root, the test's own for others.
class ReadOnlyFolder {
public:
    explicit ReadOnlyFolder(const fs::path& own) : own_(own) {
        if (::geteuid() != 0)
            fs::permissions(own_, fs::perms::owner_read | fs::perms::owner_exec);
    }
    ~ReadOnlyFolder() {
        if (::geteuid() != 0)
            fs::permissions(own_, fs::perms::owner_all);
    }
    ReadOnlyFolder(const ReadOnlyFolder&) = delete;
    ReadOnlyFolder& operator=(const ReadOnlyFolder&) = delete;

    fs::path Path() const { return ::geteuid() == 0 ? fs::path("/sys/kernel") : own_; }

private:
    fs::path own_;
};

TEST_F(WriteFailure, A_folder_that_may_not_be_written_keeps_the_records) {
    if (::geteuid() == 0 && !fs::is_directory("/sys/kernel"))
        GTEST_SKIP() << "no folder that root may not write into";
    Record(1);
    const auto own = platform.folder.Path() / "own";
    fs::create_directory(own);
    {
        const ReadOnlyFolder folder(own);
        run.targetFile = folder.Path() / "run.4ch";
        const auto error = ErrorOf([this] { run.FlushTempFile(); });
        EXPECT_NE(error.find("run.4ch: Permission denied"), std::string::npos) << error;
    }
    EXPECT_EQ(NumbersIn(temporary), (Numbers{1}));
    run.targetFile = target;
    run.FlushTempFile();
    EXPECT_EQ(NumbersIn(target), (Numbers{1}));
}

TEST_F(WriteFailure, The_temporary_file_its_note_and_its_lock_are_for_their_user_alone) {
    Record(1);
    run.FlushTempFile();
    Record(2); // made anew
    int files = 0;
    for (const auto& entry : fs::directory_iterator(platform.places.TemporaryFolder())) {
        struct stat status {};
        ASSERT_EQ(::stat(entry.path().c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777, 0600U) << entry.path();
        ++files;
    }
    EXPECT_EQ(files, 3);
}

TEST_F(WriteFailure, A_header_in_a_temporary_file_made_anew_is_for_its_user_alone) {
    Record(1);
    run.FlushTempFile();
    run.BeginTarget(platform.folder.Path() / "second.4ch");
    EXPECT_EQ(fs::status(temporary).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(WriteFailure,
       A_link_or_a_shared_file_in_the_temporary_folder_is_never_taken_for_a_recording) {
    Record(1);
    run.ReleaseTempFile();
    const auto folder = platform.places.TemporaryFolder();
    const auto elsewhere = platform.folder.Path() / "elsewhere";
    fs::rename(folder, elsewhere);
    fs::create_directory(folder);
    for (const auto& entry : fs::directory_iterator(elsewhere))
        fs::create_symlink(entry.path(), folder / entry.path().filename());
    EXPECT_TRUE(FileOpr::FindUnfinishedRecordings().empty());
    fs::remove_all(folder);
    fs::rename(elsewhere, folder);
    for (const auto& entry : fs::directory_iterator(folder))
        fs::permissions(entry.path(), fs::perms::others_write, fs::perm_options::add);
    EXPECT_TRUE(FileOpr::FindUnfinishedRecordings().empty());
    EXPECT_FALSE(fs::exists(target));
}

} // namespace
