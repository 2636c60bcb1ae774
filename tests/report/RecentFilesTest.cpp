#include "report/RecentFiles.h"

#include "support/FakePlatform.h"

#include <gtest/gtest.h>

using Files = std::vector<std::filesystem::path>;

TEST(RecentFiles, The_newest_stands_first_and_each_once) {
    const fake::Platform platform;
    RecentFiles::Add("a");
    RecentFiles::Add("b");
    RecentFiles::Add("a");
    EXPECT_EQ(RecentFiles::List(), (Files{"a", "b"}));
}

TEST(RecentFiles, Six_are_kept) {
    const fake::Platform platform;
    for (const char* name : {"1", "2", "3", "4", "5", "6", "7"})
        RecentFiles::Add(name);
    EXPECT_EQ(RecentFiles::List(), (Files{"7", "6", "5", "4", "3", "2"}));
}

TEST(RecentFiles, One_that_is_gone_is_taken_out) {
    const fake::Platform platform;
    RecentFiles::Add("a");
    RecentFiles::Add("b");
    RecentFiles::Remove("b");
    EXPECT_EQ(RecentFiles::List(), Files{"a"});
}

TEST(RecentFiles, A_name_that_the_store_cannot_hold_is_left_out) {
    const fake::Platform platform;
    RecentFiles::Add(std::filesystem::path(u8"\u6F22.4ch"));
    EXPECT_EQ(RecentFiles::List(), Files{});
}
