#include "history/Entry.h"
#include "history/Row.h"

#include <gtest/gtest.h>

using History::DataOf;
using History::FactOf;

TEST(HistoryEntry, Facts_come_back_by_their_names_without_line_ends) {
    const std::string data = DataOf({{"old", "a=b"}, {"new", "two\nlines"}, {"empty", ""}});
    EXPECT_EQ(data, "old=a=b\nnew=two lines\nempty=\n");
    EXPECT_EQ(FactOf(data, "old"), "a=b");
    EXPECT_EQ(FactOf(data, "new"), "two lines");
    EXPECT_EQ(FactOf(data, "empty"), "");
    EXPECT_EQ(FactOf(data, "ol"), std::nullopt);
    EXPECT_EQ(FactOf("", "old"), std::nullopt);
    EXPECT_EQ(FactOf("old=cut off", "old"), "cut off");
}

TEST(HistoryEntry, A_time_sorts_as_the_moment_does_and_comes_back) {
    const LocalTime time{2026, 11, 21, 9, 5, 7};
    EXPECT_EQ(History::SortableTime(time), "2026-11-21 09:05:07");
    const auto back = History::TimeOf("2026-11-21 09:05:07");
    ASSERT_TRUE(back);
    EXPECT_EQ(History::SortableTime(*back), "2026-11-21 09:05:07");
    EXPECT_FALSE(History::TimeOf("2026-11-21"));
    EXPECT_FALSE(History::TimeOf("2026-11-21 09:05:x7"));
}

TEST(HistoryEntry, Every_kind_has_a_name_of_its_own) {
    for (const History::Kind kind : History::allKinds) {
        EXPECT_FALSE(History::NameOf(kind).empty());
        EXPECT_EQ(History::KindNamed(History::NameOf(kind)), kind);
    }
    EXPECT_EQ(History::KindNamed("something else"), std::nullopt);
}

TEST(HistoryEntry, A_row_holds_an_entry_in_utf_8_and_gives_it_back) {
    History::Entry entry;
    entry.at = {2026, 11, 21, 14, 30, 7};
    entry.kind = History::Kind::calibration;
    entry.analyst = "J\xF6rg"; // o with diaeresis
    entry.channel = 2;
    entry.serialNo = "A 12";
    entry.text = "25 \xB0"
                 "C";
    History::Row row{7, History::FieldsOf(entry), {}, {}};
    EXPECT_EQ(row.fields[History::Row::analyst], "J\xC3\xB6rg");
    EXPECT_EQ(row.fields[History::Row::channel], "3");
    const auto back = History::EntryOf(row);
    EXPECT_EQ(back.number, 7);
    EXPECT_EQ(back.entry.kind, entry.kind);
    EXPECT_EQ(back.entry.analyst, entry.analyst);
    EXPECT_EQ(back.entry.channel, 2);
    EXPECT_EQ(back.entry.serialNo, "A 12");
    EXPECT_EQ(back.entry.text, entry.text);
    EXPECT_EQ(back.entry.electrode, "");
}

TEST(HistoryEntry, The_sum_of_a_row_tells_apart_what_stands_in_which_field) {
    History::Row one{1, {}, History::noSum, {}};
    History::Row other = one;
    one.fields[History::Row::electrode] = "CaA1";
    other.fields[History::Row::electrode] = "Ca";
    other.fields[History::Row::serialNo] = "A1";
    EXPECT_NE(History::SumOf(one), History::SumOf(other));
    History::Row later = one;
    later.number = 2;
    EXPECT_NE(History::SumOf(one), History::SumOf(later));
}
