#include "base/DateText.h"

#include <gtest/gtest.h>

namespace {

constexpr LocalTime afternoon{2003, 3, 7, 14, 5, 33};
constexpr LocalTime earlyMorning{2024, 12, 31, 7, 0, 9};

TEST(DateText, Each_pattern_is_the_one_of_its_place) {
    EXPECT_EQ(DateText::Record(afternoon), "14:05:33 07.Mar.2003");
    EXPECT_EQ(DateText::Header(afternoon), "14:05:33  07.Mar.2003");
    EXPECT_EQ(DateText::Clock(afternoon), "14:05:33 07.Mar.2003");
    EXPECT_EQ(DateText::Date(afternoon), "07.Mar.2003");
    EXPECT_EQ(DateText::SingleCalibration(afternoon), "14:05 07.Mar.2003");
    EXPECT_EQ(DateText::PrintedPage(afternoon), "07-Mar-2003");
    EXPECT_EQ(DateText::General(afternoon), "07.Mar.2003 14:05:33");
}

TEST(DateText, Only_the_clock_and_the_link_messages_show_the_hour_without_a_leading_zero) {
    EXPECT_EQ(DateText::Record(earlyMorning), "07:00:09 31.Dec.2024");
    EXPECT_EQ(DateText::Header(earlyMorning), "07:00:09  31.Dec.2024");
    EXPECT_EQ(DateText::SingleCalibration(earlyMorning), "07:00 31.Dec.2024");
    EXPECT_EQ(DateText::Clock(earlyMorning), "7:00:09 31.Dec.2024");
    EXPECT_EQ(DateText::General(earlyMorning), "31.Dec.2024 7:00:09");
}

TEST(DateText, Midnight_is_hour_0) {
    EXPECT_EQ(DateText::Record({2003, 1, 1, 0, 0, 0}), "00:00:00 01.Jan.2003");
    EXPECT_EQ(DateText::Clock({2003, 1, 1, 0, 0, 0}), "0:00:00 01.Jan.2003");
}

TEST(DateText, A_time_of_day_has_two_digits_each) {
    EXPECT_EQ(DateText::TimeOfDay({2003, 3, 7, 2, 4, 8}), "02:04:08");
    EXPECT_EQ(DateText::TimeOfDay({2003, 3, 7, 14, 46, 56}), "14:46:56");
}

TEST(DateText, Month_names_are_the_English_ones) {
    const char* const names[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                 "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    for (int month = 1; month <= 12; ++month)
        EXPECT_EQ(DateText::Date({2003, month, 5, 0, 0, 0}),
                  std::string("05.") + names[month - 1] + ".2003");
}

TEST(DateText, A_month_is_known_by_its_name_alone) {
    EXPECT_EQ(DateText::MonthOf("Jan"), 1);
    EXPECT_EQ(DateText::MonthOf("Dec"), 12);
    for (const char* text : {"", "dec", "Dez", "June"})
        EXPECT_EQ(DateText::MonthOf(text), 0) << text;
}

} // namespace
