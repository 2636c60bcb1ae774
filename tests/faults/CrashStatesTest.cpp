#include "faults/CrashDisk.h"
#include "faults/TakenMeasurement.h"
#include "files/SetUpRun.h"
#include "settings/mWinInit.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <algorithm>

// The power fails while the program writes, at any moment, with any of what was not flushed lost.

namespace {

namespace fs = std::filesystem;

std::string ListOf(const CrashDisk::State& state) {
    std::string list;
    for (const auto& [name, content] : state)
        list += "\n" + fs::path(name).filename().string() + ": " + std::to_string(content.size()) +
                " bytes";
    return list;
}

class CrashStates : public testing::Test {
protected:
    CrashStates() { SetUpRun(); }

    /// Takes the measurement, and returns what the disk was told.
    CrashDisk Measure() {
        WriteBytes(folder / "second.4ch", oldMeasurement);
        CrashDisk disk(folder);
        disk.Promised = [this] { return told.count; };
        FailingCalls::Watch(disk, [this] { TakenMeasurement(folder, told).Take(); });
        EXPECT_EQ(told.count, 9U);
        return disk;
    }

    /// The first `promised` records are there, and the older measurement as long as none of the
    /// target that replaces it was promised.
    void ExpectAll(std::size_t promised) const {
        constexpr std::size_t recordsOfFirst = 7;
        Told then = told;
        then.count = promised;
        Remains(folder).ExpectAllOf(then);
        if (promised < recordsOfFirst) {
            EXPECT_EQ(ReadBytes(folder / "second.4ch"), oldMeasurement);
        }
        ASSERT_FALSE(HasFailure()) << "the states behind would say the same";
    }

    const fake::Platform platform;
    const fs::path folder = platform.folder.Path();
    Told told;
};

} // namespace

TEST_F(CrashStates, Every_record_that_was_said_to_be_saved_is_found_at_the_next_start) {
    const CrashDisk disk = Measure();
    const auto states = disk.States();
    ASSERT_GT(states.size(), 100U);
    for (const auto& [state, promised] : states) {
        SCOPED_TRACE(ListOf(state));
        disk.Restore(state);
        ASSERT_TRUE(FailingCalls::InChild(RecoverAll).finished);
        ASSERT_NO_FATAL_FAILURE(ExpectAll(promised));
    }
}

TEST_F(CrashStates, A_recovery_that_loses_its_power_is_completed_by_the_next_start) {
    const CrashDisk measured = Measure();
    const auto states = measured.States();
    for (std::size_t i = 0; i < states.size(); i += 9) {
        measured.Restore(states[i].first);
        CrashDisk recovering(folder);
        FailingCalls::Watch(recovering, RecoverAll);
        for (const auto& [state, ignored] : recovering.States()) {
            SCOPED_TRACE("power lost at state " + std::to_string(i) + ", then at" + ListOf(state));
            recovering.Restore(state);
            ASSERT_TRUE(FailingCalls::InChild(RecoverAll).finished);
            ASSERT_NO_FATAL_FAILURE(ExpectAll(states[i].second));
        }
    }
}

TEST_F(CrashStates, Settings_are_the_older_or_the_newer_ones_as_a_whole_line) {
    mWinInit::Reset();
    mWinInit::LoadSettings();
    ASSERT_TRUE(mWinInit::SaveSettings().empty());
    CrashDisk disk(platform.folder.Path());
    mWinInit::ProjectInfo.ProjectName = "A new project";
    mWinInit::HardwareSettings.AveragingForMeasurement = 77;
    bool saved = false;
    disk.Promised = [&saved] { return saved ? std::size_t{1} : std::size_t{0}; };
    FailingCalls::Watch(disk, [&saved] { saved = mWinInit::SaveSettings().empty(); });
    ASSERT_TRUE(saved);

    for (const auto& [state, promised] : disk.States()) {
        SCOPED_TRACE(ListOf(state));
        disk.Restore(state);
        mWinInit::Reset();
        mWinInit::LoadSettings();
        const bool newName = mWinInit::ProjectInfo.ProjectName == "A new project";
        const bool newAveraging = mWinInit::HardwareSettings.AveragingForMeasurement == 77;
        EXPECT_TRUE(promised == 0 || (newName && newAveraging)) << "said to be kept, yet lost";
        EXPECT_TRUE(fs::exists(platform.SettingsFile()));
        EXPECT_GT(fs::file_size(platform.SettingsFile()), 100U) << "the other settings";
    }
}
