#include "report/RecordSearch.h"
#include "report/RecordTable.h"
#include "report/RunSearch.h"
#include "report/SpanInForce.h"
#include "report/SpanMoves.h"
#include "report/WholeRun.h"
#include "report/support/LongRun.h"
#include "report/support/MeasurementText.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace {

constexpr std::int64_t year = 31'536'000; // records, one a second
constexpr std::int64_t recordsAPage = 4000;

/// "Record 1", "Record 2" ..., counted in place: it is done as often as a year has seconds.
class CountedLine {
public:
    void Next() {
        char* digit = text_.data() + size_ - 1;
        while (*digit == '9')
            *digit-- = '0';
        if (*digit != ' ')
            ++*digit;
        else { // all were nines
            digit[1] = '1';
            text_[size_++] = '0';
        }
    }
    std::string_view Text() const { return {text_.data(), size_}; }

private:
    std::array<char, 16> text_{'R', 'e', 'c', 'o', 'r', 'd', ' ', '1'};
    std::size_t size_ = 8;
};

/// The list pages of a year. Of the text only the first record is read; the others are added as
/// like it, which takes seconds.
class YearRun : public testing::Test {
protected:
    YearRun() {
        viewed.channelCount = 4;
        viewed.channelKind.fill(Electrode::Kind::ion);
        viewed.pages.Open(std::make_unique<LongRun>(year));
        const Mreport::RecordLayout layout = AddFirst();
        CountedLine line;
        Mreport::RecordText record;
        record.commentLength = std::string_view("Comment:\t\r\n").size();
        const std::uint64_t behindFirstLine =
            run.OffsetOf(2) - run.OffsetOf(1) - line.Text().size() - LongRun::behindNumber;
        for (std::int64_t number = 2; number <= year; ++number) {
            if (number % recordsAPage == 1)
                viewed.pages.NewPage();
            line.Next();
            record.first = line.Text();
            record.firstLength = record.first.size() + LongRun::behindNumber;
            record.length = record.firstLength + behindFirstLine;
            viewed.pages.AddRecord(record, layout);
        }
    }

    /// The number, time, place in the lists and offset of a record, from wherever it is asked for.
    void ExpectRecord(std::int64_t number) {
        const std::int64_t place = number - 1;
        const auto& pages = viewed.pages;
        const auto at = Mreport::WholeRun::PlaceInLists(pages, place);
        ASSERT_TRUE(at) << number;
        EXPECT_EQ(at->page, place / recordsAPage);
        EXPECT_EQ(at->inPage, place % recordsAPage);
        EXPECT_EQ(Mreport::WholeRun::FirstOfPage(pages, at->page), place - at->inPage);
        const auto line = pages.LineAt(at->page, run.OffsetOf(number));
        EXPECT_EQ(pages.Text(at->page, line), FirstLineOf(number));
        EXPECT_EQ(line, (at->page == 0 ? MeasurementText::headerLines : 0) +
                            at->inPage * MeasurementText::recordLines);
        EXPECT_EQ(table.Text(place, 0), std::to_string(number));
        EXPECT_EQ(table.PlaceOf(place), (Mreport::LinePlace{at->page, line}));
        EXPECT_EQ(table.RowOf({at->page, line}), place);
        Mreport::RecordSearch search(viewed);
        ASSERT_TRUE(search.Find({static_cast<std::int32_t>(number)}));
        EXPECT_EQ(search.TimeStamp(), run.TimeOf(number));
        EXPECT_EQ(search.Place().page, at->page);
        EXPECT_EQ(search.Place().line, line);
    }

    void ExpectPageRanges() const {
        for (int page = 0; page < viewed.pages.Count(); ++page) {
            const auto records = viewed.pages.Records(page);
            ASSERT_TRUE(records);
            ASSERT_EQ(records->first, page * recordsAPage + 1);
            ASSERT_EQ(records->last, (page + 1) * recordsAPage);
            ASSERT_EQ(records->count, recordsAPage);
            const Mreport::PageRange range = Mreport::PageRecordRange(viewed.pages, page);
            ASSERT_EQ(range.recordsInPage, recordsAPage);
            ASSERT_EQ(range.InFile(range.Last()).number, records->last);
        }
    }

    /// Of the graph of records.
    void ExpectLastSpan() const {
        Mreport::SpanInForce span;
        span.Choose(Mreport::SpanMoves::Within({year, year + 50}, year));
        EXPECT_EQ(span.Span(), (Mreport::RecordSpan{year - 50, year}));
        const auto inGraph = span.PlaceInGraph(viewed.pages);
        ASSERT_TRUE(inGraph);
        EXPECT_EQ(inGraph->page, viewed.pages.Last());
        EXPECT_EQ(inGraph->end, recordsAPage);
    }

    void ExpectOverviewOfTheEnd() const {
        Mreport::RunOverview overview;
        overview.Start(viewed.pages.Source(), Mreport::WholeRun::Pieces(viewed.pages),
                       {{Quantity::mV, false}, {{0}}, {0, year}, true, year - 1});
        std::int64_t last = 0;
        std::uint64_t lastOffset = 0;
        overview.Observe([&](std::int64_t place, const Mreport::FoundRecord& record) {
            EXPECT_EQ(place, record.number - 1);
            last = std::max<std::int64_t>(last, record.number);
            lastOffset = std::max(lastOffset, record.offset);
        });
        const Mreport::Stretch end = viewed.pages.Bytes(viewed.pages.Last());
        overview.Step(end.end - end.begin);
        EXPECT_EQ(last, year);
        EXPECT_EQ(lastOffset, run.OffsetOf(year));
        EXPECT_LE(overview.GroupCount(), std::size_t{Mreport::RunOverview::mostGroups});
        const auto& group = overview.At(overview.GroupCount() - 1);
        EXPECT_EQ(*group.end - *group.begin, std::chrono::seconds(group.records - 1));
    }

    /// The last record has 600.0 mV.
    void ExpectFoundFromTheEnd() const {
        constexpr std::int64_t nearestAbove = 31'529'999; // with 999.9 mV
        Mreport::RunSearchWish wish;
        wish.what = Mreport::ValueWish{Quantity::mV, {0}, 600.05, true};
        wish.fromEnd = true;
        Mreport::RunSearch search(viewed.pages.Source(), Mreport::WholeRun::Pieces(viewed.pages),
                                  wish);
        while (search.Step(1 << 20)) {
        }
        ASSERT_TRUE(search.Found());
        EXPECT_EQ(search.Found()->number, nearestAbove);
        EXPECT_EQ(search.Found()->place, nearestAbove - 1);
        EXPECT_EQ(search.Found()->offset, run.OffsetOf(nearestAbove));
    }

    std::string FirstLineOf(std::int64_t number) const {
        return std::string(LongRun::beforeNumber) + std::to_string(number) + "\tAt\t" +
               run.TimeOf(number);
    }

    fake::Platform platform;
    LongRun run{year};
    Mreport::ViewedFile viewed;
    Mreport::RecordTable table{viewed};

private:
    /// Walks the header and the first record.
    Mreport::RecordLayout AddFirst() {
        Mreport::LineScanner scanner(viewed.pages.Source());
        Mreport::RecordLayout layout;
        Mreport::ScannedLine line;
        auto step = RecordWalk::Step::other;
        while (step != RecordWalk::Step::ends && scanner.Next(line)) {
            step = viewed.pages.AddLine(line).step;
            layout.Learn(step, line);
        }
        return layout;
    }
};

} // namespace

TEST_F(YearRun, Every_count_offset_and_record_number_of_31_million_records_holds) {
    ASSERT_EQ(Mreport::WholeRun::Records(viewed.pages), year);
    EXPECT_EQ(viewed.pages.NextOffset(), run.Size());
    EXPECT_GT(run.Size(), std::uint64_t{16} << 30);
    EXPECT_LT(viewed.pages.IndexBytes(), run.Size() / 1000);
    table.Reset();
    EXPECT_EQ(table.Update(), year);
    for (const std::int64_t number : {std::int64_t{1}, recordsAPage, recordsAPage + 1,
                                      std::int64_t{9'999'999}, std::int64_t{10'000'000}, year})
        ExpectRecord(number);
    EXPECT_FALSE(Mreport::WholeRun::PlaceInLists(viewed.pages, year));
    EXPECT_FALSE(Mreport::RecordSearch(viewed).Find({year + 1}));
    ExpectPageRanges();
    ExpectLastSpan();
    ExpectOverviewOfTheEnd();
    ExpectFoundFromTheEnd();
}
