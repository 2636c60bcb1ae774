#include "report/RecordTime.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;
using Mreport::RecordTimeReader;

} // namespace

TEST(RecordTime, A_time_stamp_is_read_to_the_second) {
    const std::chrono::local_days day(2003y / 3 / 7);
    EXPECT_EQ(RecordTimeReader().Read("14:05:33 07.Mar.2003"), day + 14h + 5min + 33s);
    EXPECT_EQ(RecordTimeReader().Read("00:00:00 07.Mar.2003  "), day + 0s);
}

TEST(RecordTime, The_next_day_follows_on_the_last_second) {
    RecordTimeReader reader;
    const auto last = reader.Read("23:59:59 28.Feb.2004");
    const auto next = reader.Read("00:00:00 29.Feb.2004");
    ASSERT_TRUE(last && next);
    EXPECT_EQ(*next - *last, 1s);
}

TEST(RecordTime, What_is_no_time_stamp_has_no_time) {
    RecordTimeReader reader;
    for (const char* text :
         {"", "14:05:33", "24:00:00 07.Mar.2003", "14:60:33 07.Mar.2003", "14:05:61 07.Mar.2003",
          "14:05:33 30.Feb.2003", "14:05:33 07.Mrz.2003", "14:05:33 07-Mar-2003",
          "1a:05:33 07.Mar.2003", "14:05:33 07.Mar.2003 x", "14:05:33  07.Mar.2003"})
        EXPECT_FALSE(reader.Read(text)) << text;
    EXPECT_TRUE(reader.Read("14:05:33 07.Mar.2003"));
}
