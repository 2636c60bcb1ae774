#include "base/RunTimeError.h"
#include "report/PrintCompact.h"
#include "report/PrintFirstPage.h"
#include "report/PrintJob.h"
#include "report/PrintedLines.h"
#include "report/support/LoadedReport.h"

// On the paper of the fake printer a column is 6 points wide, a line 12.5 points high, the page 540
// points wide, and 57 lines fit below the page header of a table.

namespace {

using Lines = std::vector<std::string>;

class PrintChoices : public LoadedReport {
protected:
    fake::Printer printer;
    PrintedLines page;

    /// Five lines a record.
    void PrintLines(int records, bool wholeRecords) {
        for (int number = 1; number <= records; ++number)
            page.AddRecord(number);
        Mreport::PrintTable(printer, {page, 1, 5, 4, "Well 7", "07-Mar-2003", wholeRecords},
                            {1, records}, [](const auto&) {});
    }
    Lines RecordsOn(int paper) const {
        Lines records;
        for (const std::string& line : printer.Page(paper))
            if (const auto at = line.find("Record "); at != std::string::npos)
                records.push_back(line.substr(at));
        return records;
    }
    bool Printed(int paper, const std::string& text) const {
        const Lines lines = printer.Page(paper);
        return std::any_of(lines.begin(), lines.end(), [&text](const std::string& line) {
            return line.find(text) != std::string::npos;
        });
    }
    platform::PrintOutcome PrintPage(Mreport::RecordRange range, Mreport::TableChoices choices) {
        return Mreport::PrintPageTable(viewed, 0, range, choices, [](const auto&) {});
    }
    bool Tells(int paper, const std::string& text) const {
        const Lines lines = Document().Page(paper);
        return std::any_of(lines.begin(), lines.end(), [&text](const std::string& line) {
            return line.find(text) != std::string::npos;
        });
    }
    const fake::Printer& Document() const { return platform.printing.documents.at(0); }
};

} // namespace

TEST_F(PrintChoices, A_record_is_cut_by_the_end_of_a_page_unless_it_is_to_be_whole) {
    PrintLines(12, false);
    EXPECT_EQ(RecordsOn(1).size(), 12U) << "57 lines: eleven records and two lines";
    EXPECT_TRUE(RecordsOn(2).empty());
}

TEST_F(PrintChoices, A_whole_record_begins_on_the_page_that_it_fits) {
    PrintLines(12, true);
    EXPECT_EQ(RecordsOn(1).size(), 11U);
    EXPECT_EQ(RecordsOn(2), Lines{"Record 12"});
}

TEST_F(PrintChoices, A_record_longer_than_a_page_is_cut_all_the_same) {
    page.AddRecord(1);
    page.Add("Record 2\tAt\t14:05:33 07.Mar.2003");
    page.Add("Comment:\t");
    for (int line = 0; line < 70; ++line)
        page.Add("mV             \t1.5         ");
    Mreport::PrintTable(printer, {page, 1, 5, 4, "Well 7", "07-Mar-2003", true}, {1, 2},
                        [](const auto&) {});
    EXPECT_EQ(RecordsOn(1).size(), 2U);
    EXPECT_EQ(printer.PageNumber(), 2);
}

TEST_F(PrintChoices, A_compact_table_prints_one_line_a_record) {
    View(MeasurementText().File(30));
    PrintPage({3, 29}, {.compact = true});
    const Lines lines = Document().Page(1);
    EXPECT_NE(lines.at(0).find("4-Channel Vantrel - River Report: Table"), std::string::npos)
        << lines.at(0);
    EXPECT_EQ(Document().PageNumber(), 1);
    int records = 0;
    for (const fake::PrintedText& text : Document().texts)
        records += text.text == "14:05:33 07.Mar.2003" ? 1 : 0;
    EXPECT_EQ(records, 27);
}

TEST_F(PrintChoices, A_comment_stands_below_its_record_and_is_not_parted_from_it) {
    MeasurementText text;
    text.comment = [](int) { return std::string("shaken"); };
    View(text.File(60));
    PrintPage({1, 60}, {.compact = true});
    std::size_t times = 0;
    std::size_t comments = 0;
    for (const fake::PrintedText& printed : Document().texts) {
        times += printed.text == "14:05:33 07.Mar.2003" ? 1 : 0;
        comments += printed.text == "shaken" ? 1 : 0;
        EXPECT_LE(times - comments, 1U);
    }
    EXPECT_EQ(times, 60U);
    EXPECT_EQ(comments, 60U);
    EXPECT_GT(Document().PageNumber(), 1);
}

TEST_F(PrintChoices, Columns_too_many_for_the_paper_stand_in_further_lines) {
    View(MeasurementText().File(1));
    Mreport::RecordTable records(viewed);
    records.Reset();
    const std::size_t values = records.Columns().size() - 3;
    const auto groups = Mreport::ColumnGroups(records.Columns(), 31 + 3 * 11);
    EXPECT_EQ(groups.front(), (std::vector<std::size_t>{3, 4, 5}));
    std::size_t all = 0;
    for (const auto& group : groups)
        all += group.size();
    EXPECT_EQ(all, values);
    EXPECT_EQ(Mreport::ColumnGroups(records.Columns(), 10).size(), values) << "one in each line";
}

TEST_F(PrintChoices, The_first_page_tells_of_the_header_and_has_a_line_to_sign) {
    View(MeasurementText().File(3));
    PrintPage({1, 3}, {.firstPage = true});
    const Lines first = Document().Page(1);
    const auto tells = [&first](const std::string& text) {
        return std::any_of(first.begin(), first.end(), [&text](const std::string& line) {
            return line.find(text) != std::string::npos;
        });
    };
    for (const char* text : {"run.4ch", "River", "Ann", "Electrode", "H (pH)", "Signature"})
        EXPECT_TRUE(tells(text)) << text;
    EXPECT_FALSE(tells("Record 1"));
    const Lines second = Document().Page(2);
    EXPECT_TRUE(std::any_of(second.begin(), second.end(), [](const std::string& line) {
        return line.find("Record 1") != std::string::npos;
    }));
}

TEST_F(PrintChoices, Calibration_and_slopes_stand_in_the_columns_of_their_channels) {
    FileOpr::MeasurementHeader header;
    header.channelCount = 2;
    header.hasCalibration = true;
    header.channels[0].name = "Chan 1";
    header.channels[1].name = "Chan 2";
    header.channels[1].standard[0] = "10.5";
    header.channels[1].slope[0] = "-29.1";
    Mreport::PrintFirstPage(printer, "Title", "run.4ch", header);
    EXPECT_TRUE(Printed(1, "198,")) << "the second channel, 33 columns from the left";
    EXPECT_TRUE(Printed(1, "Standard 1:"));
    EXPECT_TRUE(Printed(1, "10.5"));
    EXPECT_TRUE(Printed(1, "Slope 1:"));
    EXPECT_TRUE(Printed(1, "-29.1"));
    EXPECT_FALSE(Printed(1, "Standard 2:")) << "a row that no channel has is left out";
}

TEST_F(PrintChoices, Long_names_stay_on_the_paper) {
    MeasurementText text;
    text.project =
        "Spring water survey of the upper valley and of all its side valleys, second summer";
    View(text.File(3));
    PrintPage({1, 3}, {.compact = true, .firstPage = true});
    for (const fake::PrintedText& printed : Document().texts) {
        const float width = 0.6F * printed.font.size_pt * static_cast<float>(printed.text.size());
        EXPECT_LE(printed.position.x_pt + width, Document().width_pt) << printed.text;
    }
    EXPECT_TRUE(Tells(1, "second summer")) << "nothing of it is lost";
    EXPECT_TRUE(Tells(2, "... Report: Table"));
}

TEST_F(PrintChoices, A_long_comment_of_a_compact_table_goes_on_in_the_next_lines) {
    MeasurementText text;
    text.comment = [](int record) {
        return record == 1 ? std::string(200, 'x') + " last-words" : std::string();
    };
    View(text.File(2));
    PrintPage({1, 2}, {.compact = true});
    EXPECT_TRUE(Tells(1, "last-words"));
}

TEST_F(PrintChoices, A_range_that_the_list_does_not_hold_is_refused) {
    View(MeasurementText().File(3));
    EXPECT_THROW(PrintPage({7, 9}, {.compact = true}), RunTimeError);
}
