#include "faults/FailingCalls.h"
#include "settings/mWinInit.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>

namespace {

using FailingCalls::Fault;

std::multiset<std::string> LinesOf(const std::string& text) {
    std::multiset<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.insert(line);
    return lines;
}

std::string KeyOf(const std::string& line) {
    return line.substr(0, line.find('='));
}

void ChangeSettings() {
    mWinInit::ProjectInfo.ProjectName = "A new project";
    mWinInit::HardwareSettings.AveragingForMeasurement = 77;
    mWinInit::ChannelSetup[1] = {"Ca", "CA-12", "Single", "R-2", 40.078F, 2};
}

class SettingsFaults : public testing::TestWithParam<Fault> {
protected:
    /// Saves changed settings over older ones; returns how many calls that took.
    int SaveAndLook(int failing) {
        const fake::Platform platform;
        mWinInit::Reset();
        mWinInit::LoadSettings();
        EXPECT_TRUE(mWinInit::SaveSettings().empty());
        const std::string before = ReadBytes(platform.SettingsFile());
        ChangeSettings();
        const auto saved = FailingCalls::InChild(
            [] {
                if (!mWinInit::SaveSettings().empty())
                    ::_exit(0); // told, and so not finished
            },
            failing, GetParam());
        const std::string after = ReadBytes(platform.SettingsFile());
        EXPECT_TRUE(mWinInit::SaveSettings().empty()) << "the next save is as any other";
        const std::string whole = ReadBytes(platform.SettingsFile());
        if (saved.finished) {
            EXPECT_EQ(after, whole) << "a value that was not kept, without a word";
        }
        ExpectLinesOf(after, before, whole);
        return saved.calls;
    }

    /// Each line is the older or the newer one, and none is missing.
    static void ExpectLinesOf(const std::string& text, const std::string& before,
                              const std::string& whole) {
        const auto older = LinesOf(before);
        const auto newer = LinesOf(whole);
        const auto lines = LinesOf(text);
        EXPECT_EQ(lines.size(), older.size());
        for (const std::string& line : lines)
            EXPECT_TRUE(older.contains(line) || newer.contains(line)) << KeyOf(line);
    }
};

} // namespace

TEST_P(SettingsFaults, Whichever_call_fails_each_value_is_the_old_or_the_new_one) {
    const int calls = SaveAndLook(0);
    ASSERT_GT(calls, 10);
    for (int failing = 1; failing <= calls; ++failing) {
        SCOPED_TRACE("call " + std::to_string(failing));
        SaveAndLook(failing);
    }
}

INSTANTIATE_TEST_SUITE_P(EachFault, SettingsFaults, testing::ValuesIn(FailingCalls::allFaults),
                         [](const auto& fault) { return FailingCalls::NameOf(fault.param); });
