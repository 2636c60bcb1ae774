#include "files/RecordedFiles.h"
#include "files/RecordingNote.h"
#include "files/Recovery.h"

namespace {

using FileOpr::RecordingFiles;

/// A recording of some 800,000 bytes, more than is read or written at once, whose program ended
/// while it was flushed.
class LongTransfer : public RecordedFiles {
protected:
    LongTransfer() {
        TakeTempFile();
        run.BeginTarget(target);
        for (std::int32_t number = 1; number <= 40; ++number) {
            starts.push_back(ReadBytes(temporary).size());
            run.SaveMeasure(temporary, number, std::string(20000, 'c'), DisplayedRun());
        }
        recorded = ReadBytes(temporary);
        run.ReleaseTempFile();
        run.targetFile.clear();
    }

    /// The next start finds the target like this.
    void RecoverFrom(const std::string& inTarget) {
        WriteBytes(target, inTarget);
        FileOpr::WriteNote(RecordingFiles(temporary).note, {target, FileOpr::FlushMark{0, 0}});
        auto found = FileOpr::FindUnfinishedRecordings();
        ASSERT_EQ(found.size(), 1U);
        found[0].target = target;
        FileOpr::Recover(found[0]);
        EXPECT_EQ(FilesInTemporaryFolder(), 0U);
    }

    std::string recorded;
    std::vector<std::size_t> starts; ///< of each record
};

TEST_F(LongTransfer, What_was_copied_is_not_copied_again) {
    RecoverFrom(recorded.substr(0, 600'000));
    EXPECT_TRUE(ReadBytes(target) == recorded);
}

TEST_F(LongTransfer, Of_what_was_copied_all_but_a_byte_that_byte_alone_is_missing) {
    RecoverFrom(recorded.substr(0, recorded.size() - 1));
    EXPECT_TRUE(ReadBytes(target) == recorded);
}

TEST_F(LongTransfer, What_is_alike_behind_a_difference_counts_as_missing) {
    auto changed = recorded.substr(0, 600'000);
    changed[starts[5] + 100] = 'x';
    RecoverFrom(changed);
    EXPECT_TRUE(ReadBytes(target) == changed + recorded.substr(starts[5]));
}

TEST_F(LongTransfer, A_long_tail_of_zeros_is_what_did_not_reach_the_disk) {
    RecoverFrom(recorded.substr(0, 100'000) + std::string(600'000, '\0'));
    EXPECT_TRUE(ReadBytes(target) == recorded);
}

TEST_F(LongTransfer, A_byte_behind_a_long_tail_of_zeros_is_somebody_elses) {
    const auto changed = recorded.substr(0, starts[5]) + std::string(600'000, '\0') + "x";
    RecoverFrom(changed);
    EXPECT_TRUE(ReadBytes(target) == changed + recorded.substr(starts[5]));
}

} // namespace
