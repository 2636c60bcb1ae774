#include "files/MeasurementReader.h"
#include "files/RecordingNote.h"
#include "support/FakePlatform.h"
#include "support/ToldProcess.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <random>
#include <thread>

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr int usualLives = 500;

/// VANTREL_KILLS gives another number.
int LivesWanted() {
    const char* wanted = std::getenv("VANTREL_KILLS");
    return wanted == nullptr ? usualLives : std::atoi(wanted);
}

/// The recording program.
class Recorder : public ToldProcess {
public:
    Recorder(const fs::path& root, unsigned seed)
        : ToldProcess(CRASH_RECORDER, {root.string(), std::to_string(seed)}) {}

    /// The last record whose writing had returned; after its end.
    std::int32_t LastReturned() { return std::atoi(LastLine().c_str()); } // "begun" gives 0
};

/// The same program, which recovers what it left.
class RecoveringRecorder : public ToldProcess {
public:
    explicit RecoveringRecorder(const fs::path& root)
        : ToldProcess(CRASH_RECORDER, {root.string(), "0", "recover"}) {}
};

struct Tally {
    int records = 0;
    int killsInsideFlush = 0;
    int interruptedRecoveries = 0;
};

/// Whether the killed program has left a flush that had begun.
bool WasInsideFlush(const fs::path& root) {
    for (const auto& entry : fs::directory_iterator(root / "tmp")) {
        const auto note = FileOpr::ReadNote(entry.path());
        if (note && note->flush)
            return true;
    }
    return false;
}

/// One life: record, be killed, recover (itself killed a few times), and compare.
void LiveOnce(const fs::path& root, std::mt19937& random, Tally& tally) {
    const auto pause = [&](int most_us) {
        std::this_thread::sleep_for(
            std::chrono::microseconds(std::uniform_int_distribution<int>(0, most_us)(random)));
    };
    Recorder recorder(root, static_cast<unsigned>(random()));
    recorder.AwaitWord();
    pause(10000);
    ASSERT_FALSE(recorder.Kill()) << "the recorder ended by itself";
    const std::int32_t returned = recorder.LastReturned();
    tally.killsInsideFlush += WasInsideFlush(root) ? 1 : 0;

    for (int tries = 0; tries < 2; ++tries) {
        RecoveringRecorder recovery(root);
        pause(6000);
        tally.interruptedRecoveries += recovery.Kill() ? 0 : 1;
    }
    ASSERT_EQ(RecoveringRecorder(root).Wait(), 0);

    const auto target = root / "run.4ch";
    if (returned == 0 && !fs::exists(target))
        return;
    const auto file = FileOpr::ReadMeasurementFile(target);
    EXPECT_EQ(file.header.projectName, "Well 7");
    // The write of one more record may have been complete without its return having been seen.
    ASSERT_GE(file.records.size(), static_cast<std::size_t>(returned));
    ASSERT_LE(file.records.size(), static_cast<std::size_t>(returned) + 1);
    for (std::size_t i = 0; i < file.records.size(); ++i)
        ASSERT_EQ(file.records[i].number, static_cast<std::int32_t>(i + 1));
    EXPECT_TRUE(fs::is_empty(root / "tmp"));
    tally.records += returned;
}

TEST(Crash, Every_record_whose_writing_returned_is_in_the_target_once_and_in_order) {
    const int lives = LivesWanted();
    std::mt19937 random(20030307);
    Tally tally;
    const fake::Platform platform;
    for (int life = 0; life < lives && !HasFatalFailure(); ++life) {
        SCOPED_TRACE("life " + std::to_string(life));
        const auto root = platform.folder.Path() / std::to_string(life);
        fs::create_directory(root);
        LiveOnce(root, random, tally);
        fs::remove_all(root);
    }
    EXPECT_GT(tally.records, lives);                    // the kills came in the midst of recording,
    EXPECT_GT(tally.killsInsideFlush, lives / 50);      // of flushing,
    EXPECT_GT(tally.interruptedRecoveries, lives / 10); // and of recovering
    RecordProperty("kills_inside_flush", tally.killsInsideFlush);
    RecordProperty("records", tally.records);
    RecordProperty("interrupted_recoveries", tally.interruptedRecoveries);
}

} // namespace
