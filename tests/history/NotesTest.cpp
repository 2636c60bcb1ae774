#include "history/Notes.h"
#include "files/SetUpRun.h"
#include "history/CalibrationEntry.h"
#include "history/Log.h"
#include "platform/System.h"
#include "settings/mWinInit.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

class HistoryNotes : public testing::Test {
protected:
    HistoryNotes() {
        SetUpRun();
        mWinInit::ProjectInfo.Experimentator = "Kim";
        log.emplace(History::UsualFile(),
                    [](const std::string& message) { ADD_FAILURE() << message; });
        History::KnowSettings();
    }
    /// All but the history's own beginning.
    std::vector<History::Entry> Noted() {
        std::vector<History::Entry> entries;
        History::Wish wish;
        wish.after = 1;
        for (const auto& numbered : log->Entries(wish))
            entries.push_back(numbered.entry);
        return entries;
    }

    fake::Platform platform;
    std::optional<History::Log> log;
};

} // namespace

TEST_F(HistoryNotes, Each_note_tells_when_and_who) {
    const std::filesystem::path file = platform.folder.Path() / "run.4ch";
    History::Note(History::Kind::linkFailed, "COM1 does not answer", file);
    const auto noted = Noted();
    ASSERT_EQ(noted.size(), 1U);
    EXPECT_EQ(History::SortableTime(noted[0].at), "2003-03-07 14:05:33");
    EXPECT_EQ(noted[0].analyst, "Kim");
    EXPECT_EQ(noted[0].user, platform::UserName());
    EXPECT_EQ(noted[0].file, std::filesystem::absolute(file).string());
    EXPECT_EQ(noted[0].text, "COM1 does not answer");
}

TEST_F(HistoryNotes, The_prompt_for_the_analyst_is_nobodys_name) {
    mWinInit::ProjectInfo.Experimentator = mWinInit::analystPlaceholder;
    History::Note(History::Kind::linkFailed, "COM1 does not answer");
    EXPECT_EQ(Noted().at(0).analyst, "");
}

TEST_F(HistoryNotes, Each_changed_setting_is_one_entry_with_its_old_and_its_new_value) {
    History::NoteSettings();
    EXPECT_TRUE(Noted().empty());
    const std::string before = mWinInit::ChannelSetup[1].SerialNo;
    mWinInit::ChannelSetup[1].SerialNo = "B7";
    mWinInit::HardwareSettings.AveragingForMeasurement = 9;
    History::NoteSettings();
    History::NoteSettings(); // nothing new
    const auto noted = Noted();
    ASSERT_EQ(noted.size(), 2U);
    EXPECT_EQ(noted[0].text, "Averaging for measurement: \"9\", was \"2\"");
    EXPECT_EQ(noted[1].kind, History::Kind::setting);
    EXPECT_EQ(noted[1].channel, 1);
    EXPECT_EQ(History::FactOf(noted[1].data, "old"), before);
    EXPECT_EQ(History::FactOf(noted[1].data, "new"), "B7");
}

TEST_F(HistoryNotes, A_calibration_comes_back_with_all_that_was_known_of_it) {
    auto& setup = mWinInit::ChannelSetup[0];
    setup = {"Ca", "A12", "Ag/AgCl", "R3", 40.078F, 1};
    auto& record = mWinInit::Calibration[0];
    record = {};
    record.PointCount = 2;
    record.Standard = {10, 100};
    record.CaliData = {-55.3F, -26.6F};
    record.Slope = {28.7F};
    History::NoteCalibration(0, "24.9");
    const auto noted = Noted();
    ASSERT_EQ(noted.size(), 1U);
    EXPECT_EQ(noted[0].text, "Ca in channel 1, 2 points in ppm, 97.0 % of theory");
    const auto past = History::CalibrationOf(noted[0]);
    EXPECT_EQ(past.electrode, "Ca");
    EXPECT_EQ(past.serialNo, "A12");
    EXPECT_EQ(past.reference, "Ag/AgCl");
    EXPECT_EQ(past.referenceSerialNo, "R3");
    EXPECT_EQ(past.unit, "ppm");
    EXPECT_EQ(past.points, "10 -55.3; 100 -26.6");
    EXPECT_EQ(past.slopes, "28.7");
    EXPECT_FLOAT_EQ(past.slope_percent.value_or(0), 97.0F); // 28.7 of 29.58
    EXPECT_FLOAT_EQ(past.offset_mV.value_or(0), -84.0F);    // one decade of 28.7 below -55.3
    EXPECT_EQ(past.temperature_celsius, "24.9");
    EXPECT_EQ(past.analyst, "Kim");
}

TEST_F(HistoryNotes, Without_a_history_nothing_is_noted_and_nothing_fails) {
    log.reset();
    History::Note(History::Kind::linkFailed, "COM1 does not answer");
    mWinInit::HardwareSettings.AveragingForMeasurement = 9;
    History::NoteSettings();
    History::NoteCalibration(0, "");
    SUCCEED();
}
