#include "base/RunTimeError.h"
#include "files/RecordedFiles.h"
#include "files/RecordingNote.h"
#include "files/Recovery.h"

#include <functional>

namespace {

namespace fs = std::filesystem;
using FileOpr::RecordingFiles;

/// Another program looks at the temporary folder just before a new file's lock is taken.
class BusyFolder : public fake::FileStore {
public:
    /// What it does to the lock; true where it holds it.
    std::function<bool(const fs::path& lock)> otherProgram;

    std::unique_ptr<platform::FileLock> TryLock(const fs::path& file) override {
        if (otherProgram(file))
            return nullptr;
        return fake::FileStore::TryLock(file);
    }
};

class TemporaryFileTest : public RecordedFiles {
protected:
    TemporaryFileTest() : before_(&platform::Current()) { platform::Install(&services_); }
    ~TemporaryFileTest() override { platform::Install(before_); }

    /// The first of the new files meets the other program, the second none.
    void MeetOnce(const std::function<bool(const fs::path& lock)>& act) {
        store.otherProgram = [act, met = false](const fs::path& lock) mutable {
            return !std::exchange(met, true) && act(lock);
        };
    }

    bool IsLocked(const fs::path& file) {
        return !platform.files->TryLock(RecordingFiles(file).lock);
    }

    static fs::path RecordingOf(const fs::path& lock) {
        fs::path recording = lock;
        return recording.replace_extension();
    }

    BusyFolder store;

private:
    const platform::Services services_{
        platform.dialogs,   platform.desktop, platform.clock, *platform.profile,
        platform.userStore, platform.places,  store,          platform.printing};
    const platform::Services* before_;
};

TEST_F(TemporaryFileTest, One_whose_lock_another_program_took_is_not_the_programs_own) {
    fs::path taken;
    MeetOnce([&taken](const fs::path& lock) {
        taken = RecordingOf(lock);
        return true;
    });
    const auto file = run.GetTempFile();
    EXPECT_NE(file, taken);
    EXPECT_TRUE(IsLocked(file));
}

TEST_F(TemporaryFileTest, One_that_another_program_cleared_away_is_made_under_another_name) {
    MeetOnce([](const fs::path& lock) {
        fs::remove(RecordingOf(lock));
        return false;
    });
    const auto file = run.GetTempFile();
    EXPECT_TRUE(fs::exists(file));
    EXPECT_TRUE(IsLocked(file));
}

TEST_F(TemporaryFileTest, Where_every_lock_is_taken_it_says_so) {
    store.otherProgram = [](const fs::path&) { return true; };
    try {
        run.GetTempFile();
        FAIL() << "no error";
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.what(), "Locking a temporary file in " +
                                    platform.places.TemporaryFolder().string() +
                                    ": Permission denied");
    }
}

// ---- Its note ----------------------------------------------------------------------------------

class TemporaryNote : public RecordedFiles {
protected:
    TemporaryNote() {
        TakeTempFile();
        run.BeginTarget(target);
        Record(1);
    }

    /// Where the next start would bring the records.
    fs::path TargetAfterACrash() {
        run.ReleaseTempFile();
        return FileOpr::FindUnfinishedRecordings().at(0).target;
    }
};

TEST_F(TemporaryNote, It_names_the_target_that_the_last_record_was_for) {
    run.targetFile = platform.folder.Path() / "second.4ch";
    Record(2);
    EXPECT_EQ(TargetAfterACrash(), platform.folder.Path() / "second.4ch");
}

TEST_F(TemporaryNote, A_record_without_a_target_is_for_none_of_before) {
    run.FlushTempFile();
    run.targetFile.clear();
    Record(2);
    EXPECT_EQ(TargetAfterACrash(), fs::path());
}

TEST_F(TemporaryNote, After_a_flush_into_another_target_it_names_the_one_before_again) {
    run.targetFile = platform.folder.Path() / "second.4ch";
    run.FlushTempFile();
    run.targetFile = target;
    Record(2);
    EXPECT_EQ(TargetAfterACrash(), target);
}

TEST_F(TemporaryNote, A_flush_that_has_ended_leaves_no_mark) {
    run.FlushTempFile();
    const auto note = FileOpr::ReadNote(RecordingFiles(temporary).note);
    ASSERT_TRUE(note);
    EXPECT_EQ(note->target, target);
    EXPECT_FALSE(note->flush);
}

} // namespace
