#include "report/PrintLayout.h"

#include "app/Mcommon.h"
#include "base/RunTimeError.h"
#include "report/PrintedLines.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <algorithm>

// On the paper of the fake printer a column is 6 points wide, a line 12.5 points high, a rule ends
// 6 characters before the right edge (504 of 540) and 57 lines fit below the page header.

namespace {

using Lines = std::vector<std::string>;
using Mreport::RecordRange;
using Mreport::TableProgress;

constexpr int linesOnPage = 57;

class PrintLayout : public testing::Test {
protected:
    fake::Platform platform;
    fake::Printer printer;
    PrintedLines page;
    int channelCount = 4;
    std::string name = "Well 7";
    std::vector<TableProgress> progress;

    Mreport::TableReport Report(std::int32_t firstRecordOfPage = 1) const {
        return {page, firstRecordOfPage, 5, channelCount, name, "07-Mar-2003"};
    }

    void Print(RecordRange range) {
        Mreport::PrintTable(printer, Report(), range,
                            [this](const TableProgress& now) { progress.push_back(now); });
    }

    /// Lines of a record that fill `count` lines of paper, without a separator.
    void AddRecordOf(int count) {
        page.Add("Record 1\tAt\t14:05:33 07.Mar.2003");
        page.Add("Comment:\t");
        for (int line = 2; line < count; ++line)
            page.Add("mV             \t" + std::to_string(line) + "         ");
    }
};

TEST_F(PrintLayout, A_page_starts_with_a_bold_title_page_number_date_headings_and_a_rule) {
    page.AddRecord(1);

    Print({1, 1});

    const Lines printed = printer.Page(1);
    const Lines header(printed.begin(), printed.begin() + 6);
    EXPECT_EQ(header,
              (Lines{"0,0 4-Channel Vantrel - Well 7 Report: Table",
                     "384,0 Page 1   07-Mar-2003", // 20 characters to the end of the rule
                     "120,12.5 Chan 1", "210,12.5 Chan 2", "300,12.5 Chan 3", "390,12.5 Chan 4"}));
    EXPECT_EQ(printer.rules.at(0).from, (platform::PrintPosition{0, 23.75F}));
    EXPECT_EQ(printer.rules.at(0).to, (platform::PrintPosition{504, 23.75F}));
    EXPECT_TRUE(printer.texts.at(5).font.bold);
    EXPECT_FALSE(printer.texts.at(6).font.bold);
}

TEST_F(PrintLayout, A_record_s_parts_stand_in_the_columns_of_four_channels) {
    page.AddRecord(1, "first sample");

    Print({1, 1});

    const Lines printed = printer.Page(1);
    const Lines record(printed.begin() + 6, printed.end());
    EXPECT_EQ(record, (Lines{
                          "0,25 Record 1",
                          "120,25 At",
                          "210,25 14:05:33 07.Mar.2003",
                          "0,37.5 Comment:",
                          "120,37.5 first sample",
                          "0,50 mV",
                          "120,50 177.5",
                          "210,50 -12.3",
                          "300,50 NA",
                          "390,50 1.23E+04",
                          "0,62.5 \xB0"
                          "C",
                          "120,62.5 25.0",
                          "210,62.5 25.1",
                          "300,62.5 NA",
                      }));
}

TEST_F(PrintLayout, A_separator_is_a_rule_at_the_height_of_its_line_and_no_text) {
    page.AddRecord(1);
    page.AddRecord(2);

    Print({1, 2});

    ASSERT_EQ(printer.rules.size(), 3U);
    EXPECT_EQ(printer.rules[1].from, (platform::PrintPosition{0, 75}));
    EXPECT_EQ(printer.rules[1].to, (platform::PrintPosition{504, 75}));
    EXPECT_EQ(printer.rules[2].from.y_pt, 137.5F);
    EXPECT_TRUE(std::none_of(printer.texts.begin(), printer.texts.end(),
                             [](const auto& text) { return text.text.starts_with("--"); }));
}

TEST_F(PrintLayout, Eight_channels_have_their_own_columns_in_a_smaller_font) {
    channelCount = 8;
    page.Add("Record 1\tAt\t14:05:33 07.Mar.2003");
    page.Add("Comment:\t");
    page.Add("mV\t1.0\t2.0\t3.0\t4.0\t5.0\t6.0\t7.0\t8.0");

    Print({1, 1});

    // 102 characters fit 540 points at 8 points: 4.8 points each.
    const Lines printed = printer.Page(1);
    EXPECT_EQ(printed[0], "0,0 8-Channel Vantrel - Well 7 Report: Table");
    const Lines headings(printed.begin() + 2, printed.begin() + 10);
    EXPECT_EQ(headings,
              (Lines{"72,10 Chan 1", "124.8,10 Chan 2", "177.6,10 Chan 3", "230.4,10 Chan 4",
                     "283.2,10 Chan 5", "336,10 Chan 6", "388.8,10 Chan 7", "441.6,10 Chan 8"}));
    EXPECT_EQ(printed.back(), "441.6,40 8.0");
}

TEST_F(PrintLayout, Cells_beyond_the_channel_count_are_not_printed) {
    page.Add("Record 1\tAt\t14:05:33 07.Mar.2003");
    page.Add("Comment:\t");
    page.Add("mV\t1.0\t2.0\t3.0\t4.0\t5.0");

    Print({1, 1});

    EXPECT_EQ(printer.texts.back().text, "4.0");
}

TEST_F(PrintLayout, The_file_s_own_channel_heading_stands_in_the_same_columns) {
    page.Add("Record 1\tAt\t14:05:33 07.Mar.2003");
    page.Add("Comment:\t");
    page.Add("Channel :      \tChan 1      \tChan 2      ");

    Print({1, 1});

    const Lines printed = printer.Page(1);
    EXPECT_EQ(Lines(printed.end() - 3, printed.end()),
              (Lines{"0,50 Channel :", "120,50 Chan 1", "210,50 Chan 2"}));
}

TEST_F(PrintLayout, A_comment_of_dashes_or_with_a_record_s_name_is_printed_as_text) {
    page.AddRecord(1, "---- see Record 2");
    page.AddRecord(2, "----");

    Print({1, 1});

    const Lines printed = printer.Page(1);
    EXPECT_EQ(std::count(printed.begin(), printed.end(), "120,37.5 ---- see Record 2"), 1);
    EXPECT_EQ(printer.rules.size(), 2U);
    EXPECT_EQ(printer.texts.back().text, "NA");
}

TEST_F(PrintLayout, A_comment_wider_than_the_page_goes_on_in_the_next_lines) {
    // From column 20 to the end of the rule there is room for 64 characters.
    page.AddRecord(1, std::string(60, 'a') + " " + std::string(64, 'b') + " end");

    Print({1, 1});

    const Lines printed = printer.Page(1);
    const Lines comment(printed.begin() + 9, printed.begin() + 14);
    EXPECT_EQ(comment, (Lines{"0,37.5 Comment:", "120,37.5 " + std::string(60, 'a'),
                              "120,50 " + std::string(64, 'b'), "120,62.5 end", "0,75 mV"}));
}

TEST_F(PrintLayout, A_comment_without_blanks_is_broken_where_the_page_ends) {
    page.AddRecord(1, std::string(100, 'x'));

    Print({1, 1});

    const Lines printed = printer.Page(1);
    EXPECT_EQ(printed[10], "120,37.5 " + std::string(64, 'x'));
    EXPECT_EQ(printed[11], "120,50 " + std::string(36, 'x'));
}

TEST_F(PrintLayout, A_table_that_fills_a_page_exactly_stays_on_one_page) {
    AddRecordOf(linesOnPage);

    Print({1, 1});

    EXPECT_EQ(printer.PageNumber(), 1);
    EXPECT_EQ(printer.texts.back().position.y_pt, 725.0F); // and ends at 737.5 of 750
}

TEST_F(PrintLayout, The_line_behind_a_full_page_follows_a_new_header_with_page_number_2) {
    AddRecordOf(linesOnPage + 1);

    Print({1, 1});

    EXPECT_EQ(printer.Page(2),
              (Lines{"0,0 4-Channel Vantrel - Well 7 Report: Table", "384,0 Page 2   07-Mar-2003",
                     "120,12.5 Chan 1", "210,12.5 Chan 2", "300,12.5 Chan 3", "390,12.5 Chan 4",
                     "0,25 mV", "120,25 57"}));
    EXPECT_EQ(printer.rules.back().page, 2);
    EXPECT_EQ(printer.rules.back().from.y_pt, 23.75F);
}

TEST_F(PrintLayout, A_separator_that_no_longer_fits_is_ruled_on_the_next_page) {
    AddRecordOf(linesOnPage);
    page.Add(std::string(200, '-'));

    Print({1, 1});

    EXPECT_EQ(printer.PageNumber(), 2);
    ASSERT_EQ(printer.rules.size(), 3U); // two headers and the separator
}

TEST_F(PrintLayout, Every_line_of_a_long_table_is_printed_once_and_in_order) {
    for (int record = 1; record <= 100; ++record)
        page.AddRecord(record);

    Print({1, 100});

    EXPECT_EQ(printer.PageNumber(), 9); // 500 lines, 57 a page
    std::vector<std::string> records;
    for (const fake::PrintedText& text : printer.texts)
        if (text.text.starts_with("Record "))
            records.push_back(text.text);
    ASSERT_EQ(records.size(), 100U);
    for (int record = 1; record <= 100; ++record)
        EXPECT_EQ(records[static_cast<std::size_t>(record - 1)],
                  "Record " + std::to_string(record));
    for (int number = 1; number <= 9; ++number)
        EXPECT_EQ(printer.Page(number)[1],
                  "384,0 Page " + std::to_string(number) + "   07-Mar-2003");
}

TEST_F(PrintLayout, Paper_too_small_for_a_line_still_gets_one_line_a_page) {
    printer.height_pt = 20;
    page.AddRecord(1);

    Print({1, 1});

    EXPECT_EQ(printer.PageNumber(), 5);
}

TEST_F(PrintLayout, On_narrow_paper_the_font_shrinks_until_the_columns_fit) {
    printer.width_pt = 320; // 75 columns at 7 points are 315 points wide
    page.AddRecord(1);

    Print({1, 1});

    EXPECT_EQ(printer.texts.front().font.size_pt, 7.0F);
}

TEST_F(PrintLayout, A_long_name_is_cut_before_it_reaches_the_page_number) {
    name = std::string(100, 'N');
    page.AddRecord(1);

    Print({1, 1});

    // 384 points less the margin of 18 leave 61 characters.
    EXPECT_EQ(printer.Page(1)[0],
              "0,0 4-Channel Vantrel - " + std::string(24, 'N') + "... Report: Table");
}

TEST_F(PrintLayout, The_title_tells_channel_count_name_and_kind) {
    EXPECT_EQ(Mreport::PrintTitle(4, "", Mreport::PrintKind::table),
              "4-Channel Vantrel - Noname Report: Table");
    EXPECT_EQ(Mreport::PrintTitle(8, "Well 7", Mreport::PrintKind::graph),
              "8-Channel Vantrel - Well 7 Report: Graphic");
}

TEST_F(PrintLayout, A_range_is_printed_from_its_first_record_to_before_the_one_behind_it) {
    page.Add("Project Name: Record 2\tAnalyst: \tReport created at: ");
    for (int record = 1; record <= 30; ++record)
        page.AddRecord(record);

    const Mreport::LineRange lines = Mreport::FindPrintedLines(Report(), {2, 3});

    EXPECT_EQ(lines.first, 6U); // behind the heading line and the five lines of record 1
    EXPECT_EQ(lines.end, 16U);
}

TEST_F(PrintLayout, Record_12_is_not_found_in_record_120) {
    page.AddRecord(120);
    page.AddRecord(12);

    EXPECT_EQ(Mreport::FindPrintedLines(Report(), {12, 12}).first, 5U);
}

TEST_F(PrintLayout, The_page_s_last_record_is_printed_to_the_end_of_the_page) {
    page.AddRecord(101);
    page.AddRecord(102);
    page.Add("mV\t1.0");

    const Mreport::LineRange lines = Mreport::FindPrintedLines(Report(101), {102, 102});

    EXPECT_EQ(lines.first, 5U);
    EXPECT_EQ(lines.end, 11U);
}

TEST_F(PrintLayout, A_record_before_its_expected_place_is_found_too) {
    page.Add("Record 1\tAt\t14:05:33 07.Mar.2003"); // a record without any further line
    page.AddRecord(2);
    page.AddRecord(3);

    EXPECT_EQ(Mreport::FindPrintedLines(Report(), {3, 3}).first, 6U);
}

TEST_F(PrintLayout, A_gap_in_the_record_numbers_prints_what_the_range_holds) {
    page.AddRecord(1);
    page.AddRecord(4);
    page.AddRecord(9);

    const Mreport::LineRange lines = Mreport::FindPrintedLines(Report(), {2, 8});

    EXPECT_EQ(lines.first, 5U);
    EXPECT_EQ(lines.end, 10U);
}

TEST_F(PrintLayout, A_range_without_any_record_is_an_error_that_names_it) {
    page.AddRecord(1);

    try {
        Print({5, 7});
        FAIL() << "the range was accepted";
    } catch (const RunTimeError& error) {
        EXPECT_STREQ(error.what(), "The list holds no record from 5 to 7");
    }
    EXPECT_EQ(Mcommon::errorLocation, "PrintTable");
    EXPECT_TRUE(printer.texts.empty());
}

TEST_F(PrintLayout, Printing_ends_at_the_line_at_which_ESC_is_seen) {
    for (int record = 1; record <= 100; ++record)
        page.AddRecord(record);
    int asked = 0;
    printer.stopRequested = [&asked] { return ++asked > 3; };

    Print({1, 100});

    EXPECT_EQ(progress.size(), 3U);
    EXPECT_EQ(printer.texts.back().position.y_pt, 50.0F); // the third line
}

TEST_F(PrintLayout, Progress_counts_every_line_and_tells_the_page) {
    AddRecordOf(linesOnPage + 1);

    Print({1, 1});

    ASSERT_EQ(progress.size(), 58U);
    EXPECT_EQ(progress.front().linesPrinted, 1U);
    EXPECT_EQ(progress[56].page, 1);
    EXPECT_EQ(progress[57].page, 2);
    EXPECT_EQ(progress[57].linesPrinted, 58U);
    EXPECT_EQ(progress[57].linesTotal, 58U);
}

TEST_F(PrintLayout, Events_run_at_each_line) {
    page.AddRecord(1);
    platform.clock.step = std::chrono::milliseconds(1);

    Print({1, 1});

    EXPECT_GE(platform.desktop.eventPasses, 5);
}

} // namespace
