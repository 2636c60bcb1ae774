#include "files/MeasurementReader.h"
#include "files/RecordingNote.h"
#include "support/FakePlatform.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <optional>
#include <random>
#include <thread>

extern char** environ;

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

/// The recording program; what it says is read from a pipe.
class Recorder {
public:
    Recorder(const fs::path& root, unsigned seed, bool recover) {
        std::array<int, 2> ends{};
        EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
        posix_spawn_file_actions_t actions{};
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
        std::string program = CRASH_RECORDER;
        std::string folder = root.string();
        std::string number = std::to_string(seed);
        std::string mode = "recover";
        std::array<char*, 5> arguments{program.data(), folder.data(), number.data(),
                                       recover ? mode.data() : nullptr, nullptr};
        EXPECT_EQ(
            ::posix_spawn(&process_, program.c_str(), &actions, nullptr, arguments.data(), environ),
            0);
        posix_spawn_file_actions_destroy(&actions);
        ::close(ends[1]);
        output_ = ends[0];
    }
    ~Recorder() {
        Kill();
        ::close(output_);
    }
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    /// Waits until the program has said its first line.
    void AwaitFirstLine() {
        std::array<char, 64> bytes{};
        const auto count = ::read(output_, bytes.data(), bytes.size());
        said_.append(bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }

    /// Kills the program and returns its exit status where it had ended by itself.
    std::optional<int> Kill() {
        if (process_ <= 0)
            return std::nullopt;
        ::kill(process_, SIGKILL);
        int status = 0;
        ::waitpid(process_, &status, 0);
        process_ = 0;
        return WIFEXITED(status) ? std::optional(WEXITSTATUS(status)) : std::nullopt;
    }

    int Wait() {
        int status = 0;
        ::waitpid(process_, &status, 0);
        process_ = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    /// The last record whose writing had returned; after Kill.
    std::int32_t LastReturned() {
        std::array<char, 4096> bytes{};
        for (ssize_t count = 0; (count = ::read(output_, bytes.data(), bytes.size())) > 0;)
            said_.append(bytes.data(), static_cast<std::size_t>(count));
        while (!said_.empty() && said_.back() != '\n')
            said_.pop_back();
        if (said_.empty())
            return 0;
        const auto line = said_.rfind('\n', said_.size() - 2) + 1;
        return static_cast<std::int32_t>(std::atoi(said_.c_str() + line)); // "begun" gives 0
    }

private:
    pid_t process_ = 0;
    int output_ = -1;
    std::string said_;
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
    Recorder recorder(root, static_cast<unsigned>(random()), false);
    recorder.AwaitFirstLine();
    pause(10000);
    ASSERT_FALSE(recorder.Kill()) << "the recorder ended by itself";
    const std::int32_t returned = recorder.LastReturned();
    tally.killsInsideFlush += WasInsideFlush(root) ? 1 : 0;

    for (int tries = 0; tries < 2; ++tries) {
        Recorder recovery(root, 0, true);
        pause(6000);
        tally.interruptedRecoveries += recovery.Kill() ? 0 : 1;
    }
    ASSERT_EQ(Recorder(root, 0, true).Wait(), 0);

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
    constexpr int lives = 500;
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
