#include "history/Log.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

TEST(HistoryLog, Where_none_can_be_kept_nothing_is_told_and_reading_says_so) {
    const fake::Platform platform;
    int told = 0;
    History::Log log(History::UsualFile(), [&told](const std::string&) { ++told; });
    log.Add({});
    EXPECT_EQ(told, 0);
    EXPECT_FALSE(std::filesystem::exists(log.File()));
    EXPECT_THROW(log.Entries({}), RunTimeError);
}
