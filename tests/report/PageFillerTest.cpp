#include "report/PageFiller.h"

#include "report/support/MeasurementText.h"
#include "report/support/PlainRun.h"
#include "report/support/RandomRun.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr std::uint64_t anyLength = std::numeric_limits<std::uint64_t>::max();

/// Pages over a text: whole records where they can be taken so, else line by line.
class Filled {
public:
    Filled(const std::string& text, bool wholeRecords) {
        pages.Open(std::make_unique<Mreport::MemorySource>(text));
        ReadOn(wholeRecords);
    }

    void ReadOn(bool wholeRecords) {
        pages.ReopenLastLine();
        filler.Resume();
        Mreport::LineScanner scanner(pages.Source(), pages.NextOffset());
        Mreport::ScannedLine line;
        for (;;) {
            if (wholeRecords && TakeRecord(scanner))
                continue;
            if (!scanner.Next(line))
                return;
            if (filler.PageEnded())
                filler.NewPage();
            filler.TakeLine(line);
            length += line.length;
        }
    }

    Mreport::ReportPages pages;
    Mreport::PageFiller filler{pages};
    int whole = 0;            ///< records that were taken so
    std::uint64_t length = 0; ///< of all lines without their ends

private:
    bool TakeRecord(Mreport::LineScanner& scanner) {
        const auto record = filler.TakeRecord(scanner, anyLength);
        whole += record ? 1 : 0;
        length += record ? record->length : 0;
        return record.has_value();
    }
};

void ExpectSamePages(const Filled& fast, const Filled& plain) {
    ASSERT_EQ(fast.pages.Count(), plain.pages.Count());
    EXPECT_EQ(fast.pages.NextOffset(), plain.pages.NextOffset());
    EXPECT_EQ(fast.filler.PageEnded(), plain.filler.PageEnded());
    EXPECT_EQ(fast.pages.Walk().InRecord(), plain.pages.Walk().InRecord());
    EXPECT_EQ(fast.pages.Walk().FirstLine(), plain.pages.Walk().FirstLine());
    for (int page = 0; page < plain.pages.Count(); ++page) {
        ASSERT_EQ(fast.pages.LineCount(page), plain.pages.LineCount(page)) << page;
        for (std::size_t line = 0; line < plain.pages.LineCount(page); line += 7)
            ASSERT_EQ(fast.pages.Text(page, line), plain.pages.Text(page, line));
        const auto records = fast.pages.Records(page);
        const auto expected = plain.pages.Records(page);
        ASSERT_EQ(records.has_value(), expected.has_value());
        if (!expected)
            continue;
        EXPECT_EQ(records->first, expected->first);
        EXPECT_EQ(records->last, expected->last);
        EXPECT_EQ(records->firstLine, expected->firstLine);
        EXPECT_EQ(records->lastLine, expected->lastLine);
        EXPECT_EQ(records->previousLine, expected->previousLine);
        EXPECT_EQ(records->count, expected->count);
    }
}

class PageFillerTest : public testing::Test {
protected:
    fake::Platform platform;
};

} // namespace

TEST_F(PageFillerTest, Records_taken_whole_give_the_pages_that_their_lines_give) {
    const std::string text = MeasurementText().File(9000);
    const Filled fast(text, true);
    const Filled plain(text, false);
    EXPECT_EQ(plain.pages.Count(), 3);
    ExpectSamePages(fast, plain);
    EXPECT_EQ(fast.length, plain.length);
    EXPECT_EQ(fast.whole, 9000 - 3) << "the first record of each page is walked";
}

TEST_F(PageFillerTest, A_damaged_run_gives_the_pages_that_its_lines_give) {
    constexpr int runs = 200;
    int whole = 0;
    for (std::uint32_t seed = 1; seed <= runs; ++seed) {
        RandomRun random(seed);
        std::string text = random.Text(60);
        random.Damage(text, random.Below(12));
        const Filled fast(text, true);
        ExpectSamePages(fast, Filled(text, false));
        ASSERT_EQ(fast.pages.RecordCount(0), static_cast<std::int64_t>(ReadPlainly(text).size()))
            << "seed " << seed;
        whole += fast.whole;
        ASSERT_FALSE(HasFailure()) << "seed " << seed;
    }
    EXPECT_GT(whole, runs * 20) << "most records of a run are alike";
}

TEST_F(PageFillerTest, A_record_with_a_line_end_in_a_cell_is_walked) {
    MeasurementText text;
    text.cell = [](int record, const std::string& row, int channel) {
        return record == 5 && row == "pH" && channel == 1 ? "4\n5" : std::string("1.25");
    };
    const std::string file = text.File(10);
    const Filled fast(file, true);
    ExpectSamePages(fast, Filled(file, false));
    EXPECT_LT(fast.whole, 9);
}

TEST_F(PageFillerTest, A_record_that_is_longer_than_asked_for_is_left_where_it_stands) {
    const std::string text = MeasurementText().File(3);
    Filled filled(MeasurementText().File(1), true);
    filled.pages.Open(std::make_unique<Mreport::MemorySource>(text));
    filled.filler.Reset();
    Mreport::LineScanner scanner(filled.pages.Source());
    Mreport::ScannedLine line;
    for (int i = 0; i < MeasurementText::headerLines + MeasurementText::recordLines; ++i) {
        ASSERT_TRUE(scanner.Next(line));
        filled.filler.TakeLine(line);
    }
    const std::uint64_t second = scanner.NextOffset();
    const std::uint64_t length = MeasurementText().Record(2).size();
    EXPECT_FALSE(filled.filler.TakeRecord(scanner, length));
    EXPECT_EQ(scanner.NextOffset(), second);
    EXPECT_TRUE(filled.filler.TakeRecord(scanner, length + 1));
    EXPECT_EQ(scanner.NextOffset(), second + length);
}

TEST_F(PageFillerTest, A_file_that_grows_within_a_line_goes_on_with_whole_records) {
    const std::string text = MeasurementText().File(6);
    for (const std::size_t cut : {text.size() - 1, text.size() - 40, text.size() - 250}) {
        auto source = std::make_unique<Mreport::MemorySource>(text.substr(0, cut));
        Mreport::MemorySource& growing = *source;
        Filled fast("", true);
        fast.pages.Open(std::move(source));
        fast.ReadOn(true);
        growing.Append(text.substr(cut) + MeasurementText().Record(7) +
                       MeasurementText().Record(8));
        fast.ReadOn(true);
        EXPECT_EQ(fast.pages.RecordCount(0), 8) << cut;
        EXPECT_EQ(fast.pages.Records(0)->last, 8);
    }
}
