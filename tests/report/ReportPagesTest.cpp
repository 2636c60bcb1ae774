#include "report/ViewedFile.h"

#include "report/support/MeasurementText.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

/// Pages over bytes in memory, all lines in one page.
class Pages : public testing::Test {
protected:
    fake::Platform platform;
    Mreport::ReportPages pages;

    Mreport::MemorySource* Open(const std::string& bytes) {
        auto source = std::make_unique<Mreport::MemorySource>(bytes);
        Mreport::MemorySource* opened = source.get();
        pages.Open(std::move(source));
        ReadOn();
        return opened;
    }
    void ReadOn() {
        Mreport::LineScanner scanner(pages.Source(), pages.NextOffset());
        Mreport::ScannedLine line;
        while (scanner.Next(line))
            pages.AddLine(line);
    }
    std::vector<std::string> All(int page) const {
        std::vector<std::string> lines;
        for (std::size_t i = 0; i < pages.LineCount(page); ++i)
            lines.push_back(pages.Text(page, i));
        return lines;
    }
};

/// Gives lines of two bytes each at any offset, without holding them.
class EndlessSource : public Mreport::TextSource {
public:
    std::uint64_t Size() override { return std::uint64_t{1} << 40; }
    std::size_t Read(std::uint64_t offset, std::span<char> buffer) override {
        for (std::size_t i = 0; i < buffer.size(); ++i)
            buffer[i] = (offset + i) % 2 == 0 ? 'x' : '\n';
        return buffer.size();
    }
};

} // namespace

TEST_F(Pages, Lines_are_read_back_as_the_file_has_them) {
    Open("one\r\n\r\nthree\nfour");
    EXPECT_EQ(All(0), (std::vector<std::string>{"one", "", "three", "four"}));
}

TEST_F(Pages, A_walk_gives_the_same_lines_as_single_reads) {
    Open(MeasurementText().File(800)); // more than one block
    const auto single = All(0);
    std::vector<std::string> walked;
    pages.ForEachLine(0, 0, single.size(), [&](std::size_t line, std::string_view text) {
        EXPECT_EQ(line, walked.size());
        walked.emplace_back(text);
        return true;
    });
    EXPECT_EQ(walked, single);
}

TEST_F(Pages, The_record_range_is_that_of_first_and_last_record_line) {
    Open(MeasurementText().File(7, 31));
    EXPECT_EQ(Mreport::PageRecordRange(pages, 0).recordsInPage, 7);
    EXPECT_EQ(Mreport::PageRecordRange(pages, 0).lastRecord.number, 37);
    EXPECT_EQ(Mreport::PageRecordRange(pages, 0).pageFirstRecordOffset, 30);
}

TEST_F(Pages, A_page_without_records_has_an_empty_range) {
    Open(MeasurementText().Header());
    EXPECT_EQ(Mreport::PageRecordRange(pages, 0).recordsInPage, 0);
    EXPECT_EQ(Mreport::PageRecordRange(pages, 0).lastRecord.number, 0);
    EXPECT_EQ(Mreport::PageRecordRange(pages, 0).pageFirstRecordOffset, 0);
}

TEST_F(Pages, A_line_that_only_looks_like_a_record_is_none) {
    Open("Record 7\tAt\tnow\r\nno comment line\r\nRecord x\r\nComment:\r\nComment:\tRecord 3\r\n");
    EXPECT_FALSE(pages.Records(0).has_value());
}

TEST_F(Pages, Numbers_that_run_backwards_or_far_apart_stay_in_bounds) {
    const MeasurementText text;
    Open(text.Record(2'000'000'000) + text.Record(3));
    EXPECT_EQ(Mreport::PageRecordRange(pages, 0).recordsInPage, 0);
    Open(text.Record(1) + text.Record(2'000'000'000));
    EXPECT_EQ(Mreport::PageRecordRange(pages, 0).recordsInPage, 16)
        << "not more than the page has lines";
    Open(text.Record(0));
    EXPECT_EQ(Mreport::PageRecordRange(pages, 0).recordsInPage, 0);
    EXPECT_EQ(Mreport::PageRecordRange(pages, 0).pageFirstRecordOffset, 0);
}

TEST_F(Pages, Lines_per_record_count_the_separator) {
    Open(MeasurementText().File(3));
    EXPECT_EQ(Mreport::CountLinesPerRecord(pages), 8);
    Open(MeasurementText().File(1));
    EXPECT_EQ(Mreport::CountLinesPerRecord(pages), 8);
}

TEST_F(Pages, A_cut_last_record_does_not_shorten_the_others) {
    const std::string whole = MeasurementText().File(3);
    Open(whole.substr(0, whole.size() - 300));
    EXPECT_EQ(Mreport::CountLinesPerRecord(pages), 8);
}

TEST_F(Pages, The_first_line_with_a_prefix_wins) {
    const MeasurementText text;
    Open(text.Record(120) + text.Record(12));
    EXPECT_EQ(pages.FindPrefix(0, "Record 12"), 0U);
    EXPECT_EQ(pages.FindPrefix(0, "record 12\t"), 8U);
    EXPECT_FALSE(pages.FindPrefix(0, "Record 13").has_value());
    EXPECT_EQ(pages.FindRecord(0, 12), 8U);
    EXPECT_FALSE(pages.FindRecord(0, 120, 1).has_value());
}

TEST_F(Pages, An_incomplete_last_line_is_taken_back_and_read_anew) {
    auto* source = Open("Record 1\tAt\tnow\r\nComm");
    EXPECT_FALSE(pages.Records(0).has_value());
    source->Append("ent:\t\r\nRecord 2\tAt\tnow\r\nComment:");
    pages.ReopenLastLine();
    ReadOn();
    EXPECT_EQ(pages.Records(0)->last, 2);
    source->Append("\t\r\n");
    pages.ReopenLastLine();
    EXPECT_EQ(pages.Records(0)->last, 1);
    ReadOn();
    EXPECT_EQ(pages.Records(0)->last, 2);
    EXPECT_EQ(pages.Records(0)->first, 1);
    EXPECT_EQ(All(0).size(), 4U);
}

TEST_F(Pages, A_source_that_shrinks_gives_blank_lines) {
    auto* source = Open("first\r\nsecond\r\nthird\r\n");
    source->Cut(9);
    EXPECT_FALSE(pages.Damaged());
    EXPECT_EQ(All(0), (std::vector<std::string>{"first", "", ""}));
    EXPECT_TRUE(pages.Damaged());
}

TEST_F(Pages, A_page_ends_before_its_lines_lie_4_gib_apart) {
    pages.Open(std::make_unique<EndlessSource>());
    Mreport::ScannedLine line;
    line.terminated = true;
    line.lengthWithEnd = 2;
    EXPECT_FALSE(pages.AddLine(line).newPage);
    line.offset = std::numeric_limits<std::uint32_t>::max();
    line.lengthWithEnd = 1;
    EXPECT_FALSE(pages.AddLine(line).newPage);
    line.offset = line.Next();
    line.lengthWithEnd = 2;
    EXPECT_TRUE(pages.AddLine(line).newPage);
    EXPECT_EQ(pages.Count(), 2);
    EXPECT_EQ(pages.Text(1, 0), "x");
}

TEST_F(Pages, The_index_takes_a_tenth_of_the_file_at_most) {
    const std::string file = MeasurementText().File(20'000);
    Open(file);
    EXPECT_LT(pages.IndexBytes(), file.size() / 10);
}

TEST_F(Pages, Text_in_utf8_is_shown_as_the_code_page_has_it) {
    Open("20 \xC2\xB0"
         "C \xE2\x82\xAC \xE6\xBC\xA2 \xF0\x9F\x98\x80\r\n");
    EXPECT_EQ(pages.Text(0, 0), "20 \xB0"
                                "C \x80 ? ?");
}

TEST_F(Pages, Text_of_the_code_page_stays_as_it_is) {
    Open("20 \xB0"
         "C \xE9t\xE9\r\n");
    EXPECT_EQ(pages.Text(0, 0), "20 \xB0"
                                "C \xE9t\xE9");
}
