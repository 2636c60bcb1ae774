#include "report/RecordSearch.h"

#include "report/support/LoadedReport.h"

namespace {

class Search : public LoadedReport {
protected:
    Mreport::RecordSearch search{viewed};
    MeasurementText text;
};

constexpr int recordsOfFirstPage = 4086;

} // namespace

TEST_F(Search, A_record_gives_time_comment_and_values) {
    text.comment = [](int record) { return "note\tof " + std::to_string(record); };
    View(text.File(20));
    ASSERT_TRUE(search.Find({12}));
    EXPECT_EQ(search.TimeStamp(), "14:05:33 07.Mar.2003");
    EXPECT_EQ(search.Comment(), "note\tof 12");
    EXPECT_EQ(search.ValueText(0, Quantity::mV), "12.0 mV");
    EXPECT_EQ(search.ValueText(2, Quantity::mV), "12.2 mV");
    EXPECT_EQ(search.ValueText(0, Quantity::ppm), "0.5 ppm");
    EXPECT_EQ(search.ValueText(0, Quantity::mol_l), "5.00E-01 mol/l");
    EXPECT_EQ(search.ValueText(1, Quantity::pH), "1.50 pH");
    EXPECT_EQ(search.ValueText(9, Quantity::celsius), "1.5 \xB0"
                                                      "C");
}

TEST_F(Search, Channels_in_use_and_their_sensors_are_offered) {
    View(text.File(1));
    const auto entries = search.Entries();
    ASSERT_EQ(entries.size(), 5U);
    EXPECT_EQ(entries[2].text, "Chan. 3");
    EXPECT_EQ(entries[4].text, "Temp. 2");
    EXPECT_EQ(entries[4].index, 9);
    EXPECT_EQ(search.Units(0),
              (std::vector<Quantity>{Quantity::mV, Quantity::ppm, Quantity::mol_l}));
    EXPECT_EQ(search.Units(1), (std::vector<Quantity>{Quantity::mV, Quantity::pH}));
    EXPECT_EQ(search.Units(2), std::vector<Quantity>{Quantity::mV});
    EXPECT_EQ(search.Units(9), std::vector<Quantity>{Quantity::celsius});
}

TEST_F(Search, Every_record_of_several_pages_is_found_in_its_page) {
    View(text.File(recordsOfFirstPage + 300));
    for (int record = 1; record <= recordsOfFirstPage + 300; record += 97) {
        ASSERT_TRUE(search.Find({record})) << record;
        EXPECT_EQ(search.ValueText(0, Quantity::mV), std::to_string(record) + ".0 mV");
        EXPECT_EQ(search.Place().page, record > recordsOfFirstPage ? 1 : 0);
    }
}

TEST_F(Search, A_number_beyond_the_last_record_is_not_found) {
    View(text.File(20));
    EXPECT_FALSE(search.Find({21}));
    EXPECT_FALSE(search.Find({0}));
    View("");
    EXPECT_FALSE(search.Find({1}));
}

TEST_F(Search, The_first_line_with_the_prefix_wins) {
    View(text.File(130));
    ASSERT_TRUE(search.Find({12}));
    EXPECT_EQ(search.ValueText(0, Quantity::mV), "12.0 mV");
    View(text.File(30, 110)); // 12 is missing, 120 is there
    ASSERT_TRUE(search.Find({12}));
    EXPECT_EQ(search.ValueText(0, Quantity::mV), "120.0 mV");
}

TEST_F(Search, A_record_ends_where_the_next_one_begins) {
    View(text.Header() + text.Record(1) + text.Record(5) + text.Record(7));
    ASSERT_TRUE(search.Find({5}));
    EXPECT_EQ(search.ValueText(0, Quantity::mV), "5.0 mV");
    ASSERT_TRUE(search.Find({7}));
    EXPECT_EQ(search.ValueText(0, Quantity::mV), "7.0 mV");
}

TEST_F(Search, A_record_line_without_its_time_reads_not_valid) {
    View(text.Header() + "Record 1\r\nComment:\t\r\nmV\t3\r\n");
    ASSERT_TRUE(search.Find({1}));
    EXPECT_EQ(search.TimeStamp(), "Not valid");
    EXPECT_EQ(search.ValueText(0, Quantity::mV), "3.0 mV");
    EXPECT_EQ(search.ValueText(1, Quantity::mV), "0.0 mV") << "an empty text counts as 0";
}

TEST_F(Search, A_missing_value_stays_missing) {
    text.cell = [](int, const std::string&, int) { return std::string("NA"); };
    View(text.File(1));
    ASSERT_TRUE(search.Find({1}));
    EXPECT_EQ(search.ValueText(0, Quantity::mV), "NA");
}

TEST_F(Search, A_comment_that_looks_like_a_row_is_a_comment) {
    text.comment = [](int) { return "mV\t99"; };
    View(text.File(2));
    ASSERT_TRUE(search.Find({2}));
    EXPECT_EQ(search.Comment(), "mV\t99");
    EXPECT_EQ(search.ValueText(0, Quantity::mV), "2.0 mV");
}

TEST_F(Search, A_failed_search_forgets_the_record_before) {
    View(text.File(2));
    ASSERT_TRUE(search.Find({2}));
    EXPECT_FALSE(search.Find({9}));
    EXPECT_EQ(search.TimeStamp(), "");
    EXPECT_EQ(search.ValueText(0, Quantity::mV), "0.0 mV");
}

TEST_F(Search, Entries_are_read_as_32_bit_numbers) {
    EXPECT_EQ(Mreport::RecordNumberOf("0012").number, 12);
    EXPECT_EQ(Mreport::RecordNumberOf("").number, 0);
    EXPECT_EQ(Mreport::RecordNumberOf("9999999999").number, 2147483647);
    View(text.File(2));
    EXPECT_FALSE(search.Find({2147483647}));
}

TEST_F(Search, An_idle_channel_does_not_hide_the_value_of_the_sensor_that_it_shares) {
    text.sensors = {"1", "2", "1", "N/A"};
    text.cell = [](int, const std::string&, int channel) {
        return std::string(channel == 2 ? "NA" : "25.0");
    };
    View(text.File(1));
    ASSERT_TRUE(search.Find({1}));
    EXPECT_EQ(search.ValueText(8, Quantity::celsius), "25.0 \xB0"
                                                      "C");
}
