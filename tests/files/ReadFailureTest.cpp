#include "base/RunTimeError.h"
#include "files/RecordedFiles.h"
#include "files/Recovery.h"
#include "files/TargetSeal.h"
#include "files/TargetTransfer.h"

#include <sys/resource.h>

namespace {

namespace fs = std::filesystem;

/// No file can be opened while the object lives, as where a program has too many at hand. What the
/// system knows of files without opening them it still tells.
class NoMoreFiles {
public:
    NoMoreFiles() {
        ::getrlimit(RLIMIT_NOFILE, &old_);
        const rlimit none{0, old_.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
    }
    ~NoMoreFiles() { ::setrlimit(RLIMIT_NOFILE, &old_); }
    NoMoreFiles(const NoMoreFiles&) = delete;
    NoMoreFiles& operator=(const NoMoreFiles&) = delete;

private:
    rlimit old_{};
};

/// Files that are there and cannot be read: they must not count as empty.
class ReadFailure : public RecordedFiles {
protected:
    ReadFailure() {
        TakeTempFile();
        run.BeginTarget(target);
        Record(1);
        Record(2);
        // A sanitizer opens a pipe where it meets a kind of object for the first time: what works
        // without files below has been met here, and gets its objects from outside.
        EXPECT_EQ(FileOpr::ExamineRecording(temporary).records, 2);
        EXPECT_NE(ErrorOf([] { FileOpr::ReadMeasurementFile("missing"); }), "no error");
    }

    /// What the action says when it can open no file.
    template <class Action>
    static std::string ErrorOf(Action action) {
        try {
            const NoMoreFiles limit;
            action();
        } catch (const RunTimeError& error) {
            return error.what();
        }
        return "no error";
    }
};

TEST_F(ReadFailure, A_measurement_file_that_cannot_be_opened_is_no_empty_one) {
    run.FlushTempFile();
    EXPECT_EQ(ErrorOf([&file = target] { FileOpr::ReadMeasurementFile(file); }),
              "Reading " + target.string() + ": Path/File access error");
}

TEST_F(ReadFailure, A_recording_that_cannot_be_opened_is_no_empty_one) {
    EXPECT_EQ(ErrorOf([&file = temporary] { FileOpr::ExamineRecording(file); }),
              "Reading " + temporary.string() + ": Path/File access error");
}

TEST_F(ReadFailure, A_flush_that_cannot_read_the_records_keeps_them) {
    EXPECT_NE(ErrorOf([&measuring = run] { measuring.FlushTempFile(); }), "no error");
    EXPECT_FALSE(fs::exists(target));
    run.FlushTempFile();
    EXPECT_EQ(NumbersIn(target), (Numbers{1, 2}));
}

TEST_F(ReadFailure, A_sum_that_could_not_be_read_is_begun_anew) {
    run.FlushTempFile();
    FileOpr::TargetSeal seal;
    ASSERT_TRUE(seal.Take(target));
    Record(3);
    run.FlushTempFile();
    {
        const NoMoreFiles limit;
        EXPECT_FALSE(seal.Take(target));
    }
    EXPECT_EQ(seal.Take(target)->sha256, FileOpr::TargetSeal().Take(target)->sha256);
}

TEST_F(ReadFailure, A_start_that_can_read_no_recording_keeps_them_for_the_next) {
    run.ReleaseTempFile();
    {
        const NoMoreFiles limit;
        EXPECT_TRUE(FileOpr::FindUnfinishedRecordings().empty());
    }
    const auto found = FileOpr::FindUnfinishedRecordings();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].records, 2);
    EXPECT_EQ(found[0].target, target);
}

} // namespace
