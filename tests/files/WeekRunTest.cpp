// A run of a week that nobody watches, in the time of a test: a record each second with all that
// stands beside the recording. The files themselves are counted, not written.

#include "bench/ResidentMemory.h"
#include "chem/LimitWatch.h"
#include "chem/TrendHistory.h"
#include "files/ReadingGaps.h"
#include "files/Recording.h"
#include "files/SetUpRun.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <map>

/// Under the address sanitizer: what is freed is given back soon, so that memory that stays flat is
/// seen to do so.
extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options() {
    return "quarantine_size_mb=1";
}

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using FileOpr::Recording;
using std::chrono::seconds;

constexpr seconds week = 168h;

/// Files of which only the lengths are kept, on a disk that fills.
class CountedFiles : public fake::FileStore {
public:
    std::unique_ptr<platform::AppendFile> OpenForAppend(const fs::path& file) override {
        return std::make_unique<Counted>(*this, sizes_[file]);
    }
    void Truncate(const fs::path& file, std::uint64_t size) override { sizes_[file] = size; }

private:
    class Counted : public platform::AppendFile {
    public:
        Counted(CountedFiles& disk, std::uint64_t& size) : disk_(disk), size_(size) {}
        void Append(std::string_view bytes, bool /*durable*/) override {
            size_ += bytes.size();
            disk_.free_bytes -= bytes.size();
        }
        std::uint64_t Size() const override { return size_; }

    private:
        CountedFiles& disk_;
        std::uint64_t& size_;
    };

    std::map<fs::path, std::uint64_t> sizes_;
};

class WeekRun : public testing::Test {
protected:
    WeekRun()
        : services{platform.dialogs,   platform.desktop, platform.clock, *platform.profile,
                   platform.userStore, platform.places,  files,          platform.printing} {
        platform::Install(&services);
        SetUpRun();
        run.currentMeasurementPath = run.GetTempFile();
        platform.dialogs.ExpectFileDialog([this](const platform::FileDialogRequest&) {
            return platform.folder.Path() / "spring-1.4ch";
        });
        ChannelLimits channelLimits;
        channelLimits[1] = {1.0F, 100.0F, Quantity::ppm};
        limits.Watch(channelLimits);
        MoveTo(0s);
    }
    ~WeekRun() override {
        run.ReleaseTempFile();
        platform::Install(before);
    }

    void MoveTo(seconds time) {
        platform.clock.monotonic = 1h + time;
        const auto second = static_cast<int>(time.count());
        const int firstDay = 7;
        platform.clock.now = {
            2003, 3, firstDay + second / 86400, second / 3600 % 24, second / 60 % 60, second % 60};
    }

    /// One second of the measuring page; `ppm` is nothing while the instrument is silent.
    Recording::Outcome Second(seconds time, std::optional<float> ppm) {
        MoveTo(time);
        const LocalTime now = platform.clock.now;
        if (ppm) {
            gaps.Answered(now);
            TrendHistory::Reading reading;
            reading[1][Quantity::ppm] = ppm;
            trend.Add(platform.clock.monotonic, reading);
            alarms += limits.Add(1, reading[1], now) ? 1 : 0;
        } else {
            gaps.Lost(now);
            trend.Break();
        }
        const auto outcome = recording.Tick(ppm ? TakeEntry() : NoEntry());
        if (outcome.status == Recording::Status::recorded)
            gaps.Noted();
        return outcome;
    }
    Recording::TakeEntry TakeEntry() {
        return [this] {
            lastComment = gaps.InComment("");
            if (!lastComment.empty())
                comments.push_back(lastComment);
            return Recording::Entry{lastComment, DisplayedRun()};
        };
    }
    static Recording::TakeEntry NoEntry() {
        return [] { return std::nullopt; };
    }
    std::string Line() const {
        return FileOpr::RecordingText(recording.Progress(), "spring-1.4ch");
    }

    fake::Platform platform;
    const platform::Services* before = &platform::Current();
    CountedFiles files;
    platform::Services services;
    FileOpr::MeasuringRun run;
    Recording recording{run};
    FileOpr::ReadingGaps gaps;
    LimitWatch limits;
    TrendHistory trend;
    int alarms = 0;
    std::string lastComment;
    std::vector<std::string> comments;
};

} // namespace

TEST_F(WeekRun, Everything_is_told_at_its_second_and_memory_does_not_grow) {
    constexpr seconds trendIsFull{TrendHistory::capacity}; // at a reading a second
    constexpr seconds silence = 34h;                       // for 143 s
    constexpr seconds answer = silence + 143s;
    constexpr seconds outside = 61h; // for 10 s
    constexpr seconds shortOfRoom = 126h;
    constexpr seconds tidied = 140h; // somebody frees a terabyte

    recording.Record(Recording::Mode::automatic, "1", TakeEntry());
    // Records wait on the disk onto which they will be copied. What is left is halved for that, and
    // falls to a day's worth at the moment above.
    const std::uint64_t record = FileOpr::RecordBytes(run.Rows(), 4);
    const auto roomFor = [&](seconds time) {
        return record * 2 * static_cast<std::uint64_t>(time.count());
    };
    files.free_bytes = roomFor(24h) + record * static_cast<std::uint64_t>(shortOfRoom.count());

    std::map<seconds, std::string> remarks;
    long memory_KiB = 0;
    for (seconds time = 1s; time <= week; ++time) {
        const bool silent = time >= silence && time < answer;
        const bool isOutside = time >= outside && time < outside + 10s;
        if (time == tidied)
            files.free_bytes += fake::FileStore::terabyte;
        const auto outcome = Second(time, silent ? std::optional<float>()
                                                 : std::optional(isOutside ? 101.0F : 50.0F));
        if (!outcome.remark.empty())
            remarks[time] = outcome.remark;
        ASSERT_EQ(platform.desktop.wakeLocks, 1) << time.count();
        if (time == trendIsFull)
            memory_KiB = ResidentMemory_KiB();
        if (time == outside + 1s) {
            EXPECT_EQ(alarms, 0);
        }
        if (time == outside + 2s) {
            EXPECT_EQ(alarms, 1) << "the third reading outside";
            EXPECT_EQ(limits.Text(1), "outside its limits (1 to 100 ppm) since 13:00:00");
        }
    }

    EXPECT_LE(ResidentMemory_KiB() - memory_KiB, 1024);
    // One record a second from 0 on, less the silent ones; a record's length has grown by two
    // digits meanwhile, which brings the shortage some minutes earlier.
    EXPECT_EQ(recording.Counter(), week.count() + 1 - 143);
    EXPECT_EQ(comments, std::vector<std::string>{"no readings from 10:00:00 to 10:02:23"});
    EXPECT_EQ(alarms, 1);
    EXPECT_EQ(limits.StateOf(1), LimitWatch::State::alarm);
    EXPECT_EQ(limits.Text(1), "was outside its limits (1 to 100 ppm) from 13:00:00 to 13:00:10");
    ASSERT_EQ(remarks.size(), 1U);
    EXPECT_NEAR(static_cast<double>(remarks.begin()->first.count()),
                static_cast<double>(shortOfRoom.count()), 3600);
    EXPECT_EQ(remarks.begin()->second, "At this period there is room on the disk for 23 hours.");
    EXPECT_EQ(Line(),
              "Recording to spring-1.4ch every 1 s: record 604658 at 00:00:00, next in 1 s, "
              "running 168:00:00");
    recording.Stop();
    EXPECT_EQ(platform.desktop.wakeLocks, 0);
    EXPECT_EQ(Line(), "Record 604658 saved 00:00:00");
}
