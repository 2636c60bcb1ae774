#include "files/RecordedFiles.h"
#include "files/RecordingNote.h"
#include "files/Recovery.h"
#include "files/TargetTransfer.h"

namespace {

namespace fs = std::filesystem;
using FileOpr::FlushMark;
using FileOpr::RecordingFiles;

/// What the note of an interrupted flush says, held against what the files hold.
class FlushMarkTest : public RecordedFiles {
protected:
    FlushMarkTest() {
        TakeTempFile();
        run.BeginTarget(target);
        for (std::int32_t number = 1; number <= 3; ++number) {
            starts.push_back(ReadBytes(temporary).size());
            Record(number);
        }
        recorded = ReadBytes(temporary);
    }

    void Note(const FlushMark& mark) const {
        FileOpr::WriteNote(RecordingFiles(temporary).note, {target, mark});
    }

    void EndProgram() {
        run.ReleaseTempFile();
        run.targetFile.clear();
    }

    std::vector<FileOpr::UnfinishedRecording> Found() {
        EndProgram();
        return FileOpr::FindUnfinishedRecordings();
    }

    void Recover() {
        auto found = Found();
        ASSERT_EQ(found.size(), 1U);
        found[0].target = target;
        FileOpr::Recover(found[0]);
    }

    fs::path Beside() const { return platform.folder.Path() / "run (2).4ch"; }

    std::string recorded;
    std::vector<std::size_t> starts; ///< of each record
    const std::string other = "another run";
};

// ---- The flush that goes on --------------------------------------------------------------------

TEST_F(FlushMarkTest, A_mark_behind_the_end_of_the_target_counts_for_nothing) {
    Note({5000, 0});
    WriteBytes(target, other);
    Recover();
    EXPECT_EQ(ReadBytes(target), other + recorded);
}

TEST_F(FlushMarkTest, A_mark_behind_the_end_of_the_records_counts_for_nothing) {
    Note({0, 1'000'000});
    Recover();
    EXPECT_EQ(ReadBytes(target), recorded);
}

TEST_F(FlushMarkTest, Records_before_the_mark_are_not_copied_again) {
    const auto inTarget = recorded.substr(0, starts[1]) + "a remark\r\n";
    WriteBytes(target, inTarget);
    Note({inTarget.size(), starts[1]}); // and then the power failed
    Recover();
    EXPECT_EQ(ReadBytes(target), inTarget + recorded.substr(starts[1]));
}

TEST_F(FlushMarkTest, Where_the_mark_is_behind_the_last_record_nothing_is_copied) {
    const auto inTarget = recorded + "a remark\r\n";
    WriteBytes(target, inTarget);
    Note({inTarget.size(), recorded.size()});
    run.FlushTempFile();
    EXPECT_EQ(ReadBytes(target), inTarget);
}

TEST_F(FlushMarkTest, A_remark_just_behind_a_record_does_not_double_that_record) {
    const auto inTarget = recorded.substr(0, starts[1]) + "a remark\r\n";
    WriteBytes(target, inTarget);
    Note({0, 0});
    Recover();
    EXPECT_EQ(ReadBytes(target), inTarget + recorded.substr(starts[1]));
}

// ---- What a start finds ------------------------------------------------------------------------

TEST_F(FlushMarkTest, Where_the_mark_is_behind_the_last_record_a_start_asks_nothing) {
    WriteBytes(target, recorded);
    Note({recorded.size(), recorded.size()});
    EXPECT_TRUE(Found().empty());
    EXPECT_EQ(FilesInTemporaryFolder(), 0U);
    EXPECT_EQ(ReadBytes(target), recorded);
}

TEST_F(FlushMarkTest, A_target_that_was_cut_afterwards_is_not_taken_for_whole) {
    WriteBytes(target, other);
    Note({5000, recorded.size()});
    EXPECT_EQ(Found().size(), 1U);
    EXPECT_EQ(NumbersIn(temporary), (Numbers{1, 2, 3}));
}

TEST_F(FlushMarkTest, A_target_shorter_than_its_mark_is_another_run) {
    WriteBytes(target, other);
    Note({5000, 0});
    EXPECT_EQ(Found().at(0).target, Beside());
}

TEST_F(FlushMarkTest, A_mark_behind_the_records_tells_of_another_run) {
    WriteBytes(target, other);
    Note({0, 1'000'000});
    EXPECT_EQ(Found().at(0).target, Beside());
}

TEST_F(FlushMarkTest, A_target_just_as_long_as_when_the_flush_began_is_the_same) {
    WriteBytes(target, other);
    Note({other.size(), 0});
    EXPECT_EQ(Found().at(0).target, target);
}

TEST_F(FlushMarkTest, The_next_free_name_beside_a_target_is_taken) {
    WriteBytes(target, other);
    WriteBytes(Beside(), other);
    EXPECT_EQ(Found().at(0).target, platform.folder.Path() / "run (3).4ch");
}

TEST_F(FlushMarkTest, A_record_whose_line_end_is_not_whole_has_not_reached_the_disk) {
    WriteBytes(temporary, recorded.substr(0, recorded.size() - 2) + "\n");
    const auto content = FileOpr::ExamineRecording(temporary);
    EXPECT_EQ(content.records, 2);
    EXPECT_EQ(content.soundLength, starts[2]);
}

// ---- What reaches the disk ---------------------------------------------------------------------

/// Remembers of each append whether it was to reach the disk.
class NotedAppends : public fake::FileStore {
public:
    std::vector<bool> durable;

    std::unique_ptr<platform::AppendFile> OpenForAppend(const fs::path& file) override {
        return std::make_unique<Noted>(fake::FileStore::OpenForAppend(file), durable);
    }

private:
    class Noted : public platform::AppendFile {
    public:
        Noted(std::unique_ptr<platform::AppendFile> file, std::vector<bool>& noted)
            : file_(std::move(file)), noted_(noted) {}
        void Append(std::string_view bytes, bool isDurable) override {
            file_->Append(bytes, isDurable);
            noted_.push_back(isDurable);
        }
        std::uint64_t Size() const override { return file_->Size(); }

    private:
        std::unique_ptr<platform::AppendFile> file_;
        std::vector<bool>& noted_;
    };
};

TEST_F(FlushMarkTest, A_flush_and_a_record_have_reached_the_disk_when_they_return) {
    NotedAppends store;
    const platform::Services services{
        platform.dialogs,   platform.desktop, platform.clock, *platform.profile,
        platform.userStore, platform.places,  store,          platform.printing};
    const auto* const before = &platform::Current();
    platform::Install(&services);
    run.FlushTempFile();
    Record(4);
    platform::Install(before);
    EXPECT_EQ(store.durable, (std::vector<bool>{true, true}));
}

} // namespace
