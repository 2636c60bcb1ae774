#include "faults/FailingCalls.h"
#include "files/MeasurementReader.h"
#include "files/MeasuringRun.h"
#include "files/Recovery.h"
#include "files/SetUpRun.h"
#include "support/FakePlatform.h"

#include "base/RunTimeError.h"

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <algorithm>
#include <array>
#include <new>

namespace {

namespace fs = std::filesystem;
using FailingCalls::Fault;

/// What the child was told, in memory that it shares with the test.
struct Told {
    static constexpr std::size_t most = 32;
    struct Saved {
        int target = 0;
        std::int32_t number = 0;
    };
    std::array<Saved, most> saved{}; ///< the records that were said to be on the disk
    std::size_t count = 0;
    std::size_t wordless = 0; ///< failures without a reason
    bool oldKept = true;      ///< a target that was refused still holds what it held
};

class Shared {
public:
    Shared()
        : memory_(::mmap(nullptr, sizeof(Told), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS,
                         -1, 0)),
          told_(new (memory_) Told) {}
    ~Shared() { ::munmap(memory_, sizeof(Told)); }
    Shared(const Shared&) = delete;
    Shared& operator=(const Shared&) = delete;
    Told* operator->() const { return told_; }

private:
    void* memory_;
    Told* told_;
};

constexpr const char* oldMeasurement = "an older measurement\r\n";

/// A measurement as the program takes it: what fails is told, and the analyst goes on.
class Measurement {
public:
    Measurement(const fs::path& folder, const Shared& told)
        : targets_{folder / "first.4ch", folder / "second.4ch"}, told_(told) {}

    void Take() {
        Try([&] { run_.currentMeasurementPath = run_.GetTempFile(); });
        Begin(0);
        Save(3);
        Try([&] { run_.FlushTempFile(); });
        Save(1);
        Try([&] { run_.FollowTarget(true); });
        Save(2);
        Try([&] { run_.FollowTarget(false); });
        Save(1);
        Begin(1);
        Save(2);
        Try([&] { run_.FlushTempFile(); });
    }

private:
    template <class Step>
    bool Try(const Step& step) {
        try {
            step();
            return true;
        } catch (const RunTimeError& error) {
            if (std::string(error.what()).empty())
                ++told_->wordless;
            return false;
        }
    }

    /// Chooses a target; the analyst tries once more where that fails.
    void Begin(int target) {
        const fs::path& file = targets_[static_cast<std::size_t>(target)];
        for (int tries = 0; tries < 2; ++tries) {
            if (Try([&] { run_.BeginTarget(file); })) {
                target_ = target;
                number_ = 1;
                return;
            }
            if (target == 1 && (!fs::exists(file) || fs::file_size(file) == 0))
                told_->oldKept = false;
        }
    }

    void Save(int count) {
        for (int i = 0; i < count && !run_.targetFile.empty(); ++i)
            if (Try([&] {
                    run_.SaveMeasure(run_.currentMeasurementPath, number_, "", DisplayedRun());
                }))
                told_->saved.at(told_->count++) = {target_, number_++};
    }

    FileOpr::MeasuringRun run_;
    std::array<fs::path, 2> targets_;
    const Shared& told_;
    int target_ = 0;
    std::int32_t number_ = 1;
};

/// The next start of the program; what cannot be recovered is told, and tried again at a later one.
void RecoverAll() {
    for (auto& recording : FileOpr::FindUnfinishedRecordings()) {
        try {
            FileOpr::Recover(recording);
        } catch (const RunTimeError&) {
            continue;
        }
    }
}

/// What is left of a measurement, seen after the next start.
class Remains {
public:
    explicit Remains(const fs::path& folder) : folder_(folder) {}

    /// The numbers of a target's records, those that a recovery has put beside it behind.
    std::vector<std::int32_t> NumbersOf(int target) const {
        std::vector<std::int32_t> numbers;
        const std::string stem = target == 0 ? "first" : "second";
        for (const std::string& name : {stem + ".4ch", stem + " (2).4ch"}) {
            if (!fs::exists(folder_ / name))
                continue;
            const auto bytes = ReadBytes(folder_ / name);
            if (bytes == oldMeasurement)
                continue;
            for (const auto& record : FileOpr::ReadMeasurementFile(folder_ / name).records)
                numbers.push_back(record.number);
        }
        return numbers;
    }

private:
    fs::path folder_;
};

/// A fault, met by each of the calls on files that a measurement makes.
class RecordingFaults : public testing::TestWithParam<Fault> {
protected:
    RecordingFaults() { SetUpRun(); }

    /// Takes a measurement in a folder of its own, lets a next start recover, and compares.
    int MeasureAndLook(int failing) {
        const fake::Platform platform;
        SetUpRun();
        const fs::path folder = platform.folder.Path();
        WriteBytes(folder / "second.4ch", oldMeasurement);
        const Shared told;
        const auto taken =
            FailingCalls::InChild([&] { Measurement(folder, told).Take(); }, failing, GetParam());
        EXPECT_TRUE(FailingCalls::InChild(RecoverAll).finished);
        LookAt(folder, told);
        return taken.calls;
    }

    /// Takes a measurement that ends in the `ending`th call, lets a start meet the fault in the
    /// `failing`th of its own while it recovers, and the next one do what is left.
    int RecoverAndLook(int ending, int failing) {
        const fake::Platform platform;
        SetUpRun();
        const fs::path folder = platform.folder.Path();
        WriteBytes(folder / "second.4ch", oldMeasurement);
        const Shared told;
        FailingCalls::InChild([&] { Measurement(folder, told).Take(); }, ending, Fault::end);
        const auto recovered = FailingCalls::InChild(RecoverAll, failing, GetParam());
        EXPECT_TRUE(FailingCalls::InChild(RecoverAll).finished);
        LookAt(folder, told);
        return recovered.calls;
    }

    void LookAt(const fs::path& folder, const Shared& told) {
        EXPECT_EQ(told->wordless, 0U);
        EXPECT_TRUE(told->oldKept) << "a target that was refused has lost what it held";
        const Remains remains(folder);
        for (int target = 0; target < 2; ++target) {
            const auto found = remains.NumbersOf(target);
            EXPECT_TRUE(std::ranges::is_sorted(found));
            EXPECT_EQ(std::ranges::adjacent_find(found), found.end()) << "a record twice";
            for (std::size_t i = 0; i < told->count; ++i) {
                if (told->saved[i].target != target)
                    continue;
                EXPECT_EQ(std::ranges::count(found, told->saved[i].number), 1)
                    << "record " << told->saved[i].number << " of target " << target;
            }
        }
        EXPECT_EQ(FileOpr::FindUnfinishedRecordings().size(), 0U) << "recovered, yet offered again";
    }
};

} // namespace

TEST_P(RecordingFaults, Whichever_call_fails_no_record_that_was_saved_is_lost_or_doubled) {
    const int calls = MeasureAndLook(0);
    ASSERT_GT(calls, 100);
    for (int failing = 1; failing <= calls; ++failing) {
        SCOPED_TRACE("call " + std::to_string(failing));
        MeasureAndLook(failing);
    }
}

TEST_P(RecordingFaults, Whichever_call_fails_in_a_recovery_the_next_start_completes_it) {
    const int measuringCalls = MeasureAndLook(0);
    for (int ending = 20; ending <= measuringCalls; ending += 19) {
        const int calls = RecoverAndLook(ending, 0);
        for (int failing = 1; failing <= calls; ++failing) {
            SCOPED_TRACE("ended in call " + std::to_string(ending) + ", recovery failed in call " +
                         std::to_string(failing));
            RecoverAndLook(ending, failing);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(EachFault, RecordingFaults, testing::ValuesIn(FailingCalls::allFaults),
                         [](const auto& fault) { return FailingCalls::NameOf(fault.param); });
