#include "settings/MeasuringChoices.h"

#include "support/FakePlatform.h"

#include <gtest/gtest.h>

using namespace mWinInit;

namespace {

class MeasuringChoicesTest : public ::testing::Test {
protected:
    fake::Platform platform;

    void WriteSettings(const std::string& text) { WriteBytes(platform.SettingsFile(), text); }
};

} // namespace

TEST_F(MeasuringChoicesTest, A_new_user_records_by_hand_with_nothing_beyond_switched_on) {
    const MeasuringChoices choices = LoadMeasuringChoices();
    EXPECT_EQ(choices, MeasuringChoices());
    EXPECT_FALSE(choices.automatic || choices.whenSteady || choices.resume);
    EXPECT_EQ(choices.trendMinutes, 10);
}

TEST_F(MeasuringChoicesTest, All_choices_come_back) {
    MeasuringChoices choices;
    choices.automatic = choices.whenSteady = choices.resume = true;
    choices.period = "8";
    choices.trendShown = false;
    choices.trendMinutes = 60;
    choices.trendQuantity = Quantity::celsius;
    choices.comments = {"second sample", "\"quoted\"", "semi;colon = \xB0"};
    EXPECT_TRUE(SaveMeasuringChoices(choices).empty());
    EXPECT_EQ(LoadMeasuringChoices(), choices);
}

TEST_F(MeasuringChoicesTest, The_file_holds_each_choice_as_a_number_or_text_and_counts_comments) {
    MeasuringChoices choices;
    choices.automatic = true;
    choices.comments = {"one", "two"};
    SaveMeasuringChoices(choices);
    EXPECT_EQ(ReadBytes(platform.SettingsFile()),
              "[Measuring Choices]\r\nAutomatic=1\r\nPeriod=\r\nRecord When Steady=0\r\n"
              "Go On When Answered=0\r\nTrend=1\r\nTrend Minutes=10\r\nTrend Unit=mV\r\n"
              "[Measuring Comments]\r\nComment 1=\"one\"\r\nComment 2=\"two\"\r\n");
}

TEST_F(MeasuringChoicesTest, The_other_sections_keep_every_byte) {
    const std::string before = "[Project Info]\r\nProject Name=Well 7\r\n; a remark\r\n";
    WriteSettings(before);
    SaveMeasuringChoices({});
    EXPECT_TRUE(ReadBytes(platform.SettingsFile()).starts_with(before));
}

TEST_F(MeasuringChoicesTest, What_the_file_holds_wrongly_is_as_for_a_new_user) {
    WriteSettings("[Measuring Choices]\r\nAutomatic=maybe\r\nTrend Minutes=7\r\n"
                  "Trend Unit=furlongs\r\n");
    EXPECT_EQ(LoadMeasuringChoices(), MeasuringChoices());
}

TEST_F(MeasuringChoicesTest, The_last_comment_comes_first_and_none_twice) {
    MeasuringChoices choices;
    for (const char* comment : {"one", "two", " one ", "", "  "})
        RememberComment(choices, comment);
    EXPECT_EQ(choices.comments, (std::vector<std::string>{"one", "two"}));
}

TEST_F(MeasuringChoicesTest, Twenty_comments_are_remembered) {
    MeasuringChoices choices;
    for (int i = 0; i < 30; ++i)
        RememberComment(choices, "comment " + std::to_string(i));
    ASSERT_EQ(choices.comments.size(), 20U);
    EXPECT_EQ(choices.comments.front(), "comment 29");
    EXPECT_EQ(choices.comments.back(), "comment 10");
    SaveMeasuringChoices(choices);
    EXPECT_EQ(LoadMeasuringChoices().comments, choices.comments);
    platform.profile->Write("Measuring Comments", "Comment 21", "one more");
    EXPECT_EQ(LoadMeasuringChoices().comments, choices.comments);
}

TEST_F(MeasuringChoicesTest, A_comment_that_the_file_would_cut_is_not_remembered) {
    MeasuringChoices choices;
    RememberComment(choices, std::string(128, 'x'));
    EXPECT_TRUE(choices.comments.empty());
    RememberComment(choices, std::string(127, 'x'));
    EXPECT_EQ(choices.comments.size(), 1U);
    SaveMeasuringChoices(choices);
    EXPECT_EQ(LoadMeasuringChoices().comments, choices.comments);
}

TEST_F(MeasuringChoicesTest, A_file_that_cannot_be_written_is_told) {
    std::filesystem::create_directories(platform.SettingsFile());
    EXPECT_EQ(SaveMeasuringChoices({}).size(), 1U);
}
