#include "app/Mcommon.h"

#include "base/RunTimeError.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace std::chrono_literals;
namespace style = platform::style;
namespace button = platform::button;

class McommonTest : public testing::Test {
protected:
    fake::Platform platform;
};

TEST_F(McommonTest, A_message_box_beeps_before_it_is_shown) {
    platform.dialogs.ExpectMessage("Disk full", style::okOnly);
    Mcommon::MessageBoxEx("Disk full", style::okOnly);
    EXPECT_EQ(platform.dialogs.events, (std::vector<std::string>{"beep", "message"}));
}

TEST_F(McommonTest, A_message_box_has_the_sum_of_its_styles_and_returns_the_button) {
    const int sum = style::yesNo + style::question + style::defaultButton2;
    platform.dialogs.ExpectMessage("Exit?", sum, button::no);
    platform.dialogs.ExpectMessage("Exit?", sum, button::yes);
    const auto ask = [] {
        return Mcommon::MessageBoxEx("Exit?", style::yesNo, style::question, style::defaultButton2);
    };
    EXPECT_EQ(ask(), 7);
    EXPECT_EQ(ask(), 6);
}

TEST_F(McommonTest, A_remark_and_a_warning_have_one_button_and_their_icon) {
    platform.dialogs.ExpectMessage("The list has been updated.", style::information);
    platform.dialogs.ExpectMessage("Disk full", style::exclamation);
    Mcommon::Inform("The list has been updated.");
    Mcommon::Warn("Disk full");
}

TEST_F(McommonTest, A_question_is_true_for_yes_and_enter_means_what_the_caller_chose) {
    platform.dialogs.ExpectMessage("Exit?", style::yesNo + style::question + style::defaultButton2,
                                   button::no);
    platform.dialogs.ExpectMessage("Quit?", style::yesNo + style::exclamation, button::yes);
    EXPECT_FALSE(Mcommon::Ask("Exit?", Mcommon::EnterMeans::no));
    EXPECT_TRUE(Mcommon::Ask("Quit?", Mcommon::EnterMeans::yes, Mcommon::Tone::exclamation));
}

TEST(FormatNumber, Standards_from_a_tenth_to_ten_thousand_are_fixed_the_rest_scientific) {
    EXPECT_EQ(Mcommon::FormatNumber(0, 0, 0.1F, 10000), "0.0");
    EXPECT_EQ(Mcommon::FormatNumber(0.05F, 0, 0.1F, 10000), "5.00E-02");
    EXPECT_EQ(Mcommon::FormatNumber(12345, 0, 0.1F, 10000), "1.23E+04");
    EXPECT_EQ(Mcommon::FormatStandard(0.1F), "0.1");
    EXPECT_EQ(Mcommon::FormatStandard(0.0999F), "9.99E-02");
    EXPECT_EQ(Mcommon::FormatStandard(-0.1F), "-0.1");
}

TEST(FormatNumber, Readings_are_fixed_from_a_hundredth) {
    EXPECT_EQ(Mcommon::FormatReading(0.01F), "0.0");
    EXPECT_EQ(Mcommon::FormatReading(0.0099F), "9.90E-03");
    EXPECT_EQ(Mcommon::FormatReading(-55.25F), "-55.3");
    EXPECT_EQ(Mcommon::FormatReading(0), "0.0");
}

TEST(FormatNumber, The_upper_limit_itself_is_scientific_and_the_value_just_below_is_not) {
    EXPECT_EQ(Mcommon::FormatReading(10000), "1.00E+04");
    EXPECT_EQ(Mcommon::FormatReading(-10000), "-1.00E+04");
    EXPECT_EQ(Mcommon::FormatReading(std::nextafter(10000.0F, 0.0F)), "10000.0");
}

TEST(FormatNumber, Up_to_the_zero_limit_a_value_counts_as_zero) {
    EXPECT_EQ(Mcommon::FormatNumber(0.001F, 0.001F, 0.1F, 10000), "0.0");
    EXPECT_EQ(Mcommon::FormatNumber(0.002F, 0.001F, 0.1F, 10000), "2.00E-03");
}

TEST(Log10, The_logarithm_is_that_of_base_ten) {
    EXPECT_DOUBLE_EQ(Mcommon::Log10(1), 0);
    EXPECT_DOUBLE_EQ(Mcommon::Log10(1000), std::log(1000.0) / std::log(10.0));
    EXPECT_NEAR(Mcommon::Log10(0.001), -3, 1e-15); // two roundings of the quotient
}

TEST(Log10, Zero_negative_numbers_and_no_number_have_no_logarithm) {
    EXPECT_THROW(Mcommon::Log10(0), RunTimeError);
    EXPECT_THROW(Mcommon::Log10(-1), RunTimeError);
    EXPECT_THROW(Mcommon::Log10(std::nan("")), RunTimeError);
}

TEST_F(McommonTest, Waiting_no_time_returns_at_once) {
    Mcommon::Wait(0ms);
    EXPECT_EQ(platform.desktop.eventPasses, 0);
}

TEST_F(McommonTest, Events_run_on_every_pass_of_a_wait) {
    platform.desktop.onEvents = [this] { platform.clock.monotonic += 10ms; };
    const auto before = platform.clock.monotonic;
    Mcommon::Wait(95ms);
    EXPECT_EQ(platform.desktop.eventPasses, 10);
    EXPECT_EQ(platform.clock.monotonic - before, 100ms);
}

TEST_F(McommonTest, Letting_events_run_does_so_at_most_once_a_millisecond) {
    for (int line = 0; line < 1000; ++line)
        Mcommon::LetEventsRun();
    EXPECT_EQ(platform.desktop.eventPasses, 1);
    platform.clock.monotonic += 1ms;
    Mcommon::LetEventsRun();
    EXPECT_EQ(platform.desktop.eventPasses, 2);
}

TEST_F(McommonTest, An_event_that_lets_events_run_does_not_recurse) {
    platform.desktop.onEvents = [] { Mcommon::LetEventsRun(); };
    Mcommon::LetEventsRun();
    EXPECT_EQ(platform.desktop.eventPasses, 1);
}

TEST_F(McommonTest, A_file_exists_when_it_can_be_read) {
    const auto file = platform.folder.Path() / "run.4ch";
    EXPECT_FALSE(Mcommon::FileExists(file));
    WriteBytes(file, "");
    EXPECT_TRUE(Mcommon::FileExists(file));
    EXPECT_FALSE(Mcommon::FileExists(platform.folder.Path()));
    EXPECT_EQ(ReadBytes(file), "");
}

TEST(TrimControl, Characters_below_33_go_from_both_ends) {
    EXPECT_EQ(Mcommon::TrimControl(" \t\r\n\x0F Lake water \x1F\x01"), "Lake water");
    EXPECT_EQ(Mcommon::TrimControl("!x!"), "!x!");
}

TEST(TrimControl, Inner_blanks_stay) {
    EXPECT_EQ(Mcommon::TrimControl("two words"), "two words");
}

TEST(TrimControl, A_text_of_blanks_alone_becomes_empty) {
    EXPECT_EQ(Mcommon::TrimControl(" \t \n"), "");
    EXPECT_EQ(Mcommon::TrimControl(""), "");
}

TEST(TrimControl, Accented_letters_are_no_controls) {
    EXPECT_EQ(Mcommon::TrimControl("\xE9t\xE9\xA0"), "\xE9t\xE9\xA0");
}

} // namespace
