#include "settings/CheckChoices.h"
#include "settings/WindowSize.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

using mWinInit::WindowSize;

namespace {

class ChoicesOfScreens : public testing::Test {
protected:
    fake::Platform platform;
};

} // namespace

TEST_F(ChoicesOfScreens, A_window_has_no_size_before_one_was_kept_and_that_one_afterwards) {
    EXPECT_EQ(mWinInit::LoadWindowSize(), std::nullopt);
    EXPECT_TRUE(mWinInit::SaveWindowSize({1, 2}).empty());
    EXPECT_EQ(mWinInit::LoadWindowSize(), (WindowSize{1, 2}));
    EXPECT_TRUE(mWinInit::SaveWindowSize({2, 1}).empty());
    EXPECT_EQ(mWinInit::LoadWindowSize(), (WindowSize{2, 1}));
}

TEST_F(ChoicesOfScreens, What_is_no_size_in_the_file_is_none) {
    for (const char* text : {"Width=0\r\nHeight=700\r\n", "Width=900\r\nHeight=0\r\n",
                             "Width=900\r\n", "Height=700\r\n", "Width=-900\r\nHeight=-700\r\n"}) {
        WriteBytes(platform.SettingsFile(), std::string("[Window Size]\r\n") + text);
        EXPECT_EQ(mWinInit::LoadWindowSize(), std::nullopt) << text;
    }
}

TEST_F(ChoicesOfScreens, The_bounds_of_a_check_come_back_as_they_were_kept) {
    EXPECT_EQ(mWinInit::LoadCheckBounds(), CheckStandard::Bounds{});
    EXPECT_TRUE(mWinInit::SaveCheckBounds({92.5F, 104.25F}).empty());
    EXPECT_EQ(mWinInit::LoadCheckBounds(), (CheckStandard::Bounds{92.5F, 104.25F}));
    EXPECT_TRUE(mWinInit::SaveCheckBounds({100, 100}).empty());
    EXPECT_EQ(mWinInit::LoadCheckBounds(), (CheckStandard::Bounds{100, 100}));
}

TEST_F(ChoicesOfScreens, Bounds_that_are_none_or_stand_the_wrong_way_round_are_as_at_first) {
    for (const char* text : {"Lowest Percent=80\r\n", "Highest Percent=120\r\n",
                             "Lowest Percent=x\r\nHighest Percent=120\r\n",
                             "Lowest Percent=80\r\nHighest Percent=\r\n",
                             "Lowest Percent=120\r\nHighest Percent=80\r\n"}) {
        WriteBytes(platform.SettingsFile(), std::string("[Check Standard]\r\n") + text);
        EXPECT_EQ(mWinInit::LoadCheckBounds(), CheckStandard::Bounds{}) << text;
    }
}
