#include "report/RunReader.h"

#include "report/support/MeasurementText.h"
#include "report/support/PlainRun.h"
#include "report/support/RandomRun.h"

#include <gtest/gtest.h>

namespace {

using Mreport::RunReader;

struct Row {
    Quantity quantity{};
    std::vector<std::string> cells;

    bool operator==(const Row&) const = default;
};

struct Record {
    std::uint64_t offset = 0;
    std::string first;
    std::string comment;
    std::vector<Row> rows;

    bool operator==(const Record&) const = default;
};

Row RowOf(Quantity quantity, const MeasurementLines::Cells& found) {
    Row row{quantity, {}};
    for (std::size_t i = 0; i < found.count; ++i)
        row.cells.emplace_back(found.cell[i]);
    return row;
}

/// All records of a text, whether they came whole or line by line.
class ReadRun {
public:
    ReadRun(const std::string& text, std::uint64_t end, bool linesAlone)
        : source_(text), reader_(source_, 0, end) {
        if (linesAlone)
            reader_.ReadLinesAlone();
        for (auto found = reader_.Next(); found != RunReader::Found::end; found = reader_.Next())
            if (found == RunReader::Found::record)
                TakeRecord();
            else
                TakeLine();
    }
    ReadRun(const std::string& text, bool linesAlone) : ReadRun(text, text.size(), linesAlone) {}

    std::vector<Record> records;
    int whole = 0;

private:
    void TakeRecord() {
        ++whole;
        const Mreport::AlikeRecord& found = reader_.Record();
        Begin(found.offset, found.first, found.comment);
        for (const Mreport::RowCells& row : reader_.Rows())
            records.back().rows.push_back(RowOf(row.quantity, row.cells));
    }

    void TakeLine() {
        const std::string_view text = reader_.Line().text;
        if (reader_.Step() == RecordWalk::Step::begins) {
            Begin(lastLine_, reader_.Walk().FirstLine(), text);
        } else if (reader_.Step() == RecordWalk::Step::row) {
            if (const auto quantity = MeasurementLines::QuantityOf(text))
                records.back().rows.push_back(RowOf(*quantity, MeasurementLines::SplitCells(text)));
        }
        lastLine_ = reader_.Line().offset;
    }

    void Begin(std::uint64_t offset, std::string_view first, std::string_view commentLine) {
        records.push_back({offset,
                           std::string(first),
                           std::string(MeasurementLines::CommentText(commentLine)),
                           {}});
    }

    Mreport::MemorySource source_;
    RunReader reader_;
    std::uint64_t lastLine_ = 0;
};

void ExpectSame(const std::string& text) {
    const ReadRun fast(text, false);
    const ReadRun slow(text, true);
    EXPECT_EQ(slow.whole, 0);
    ASSERT_EQ(fast.records.size(), slow.records.size());
    for (std::size_t i = 0; i < fast.records.size(); ++i)
        ASSERT_EQ(fast.records[i], slow.records[i])
            << "record " << i << " at " << slow.records[i].offset;
}

/// The cells of a row in the simplest way.
std::vector<std::string> CellsOf(const PlainRecord& record, Quantity quantity) {
    for (const auto& row : record.rows)
        if (row.front() == Quantities::Label(quantity))
            return {row.begin() + 1, row.end()};
    return {};
}

} // namespace

TEST(RunReader, Records_like_the_one_before_them_are_read_whole_with_every_cell) {
    const std::string text = MeasurementText().File(400);
    const ReadRun run(text, false);
    const auto plain = ReadPlainly(text);
    ASSERT_EQ(run.records.size(), 400U);
    EXPECT_EQ(run.whole, 399);
    for (std::size_t i = 0; i < plain.size(); ++i) {
        EXPECT_EQ(run.records[i].offset, plain[i].offset);
        EXPECT_EQ(run.records[i].first, plain[i].firstLine);
        ASSERT_EQ(run.records[i].rows.size(), quantityCount);
        for (const Row& row : run.records[i].rows)
            ASSERT_EQ(row.cells, CellsOf(plain[i], row.quantity)) << "record " << i;
    }
}

TEST(RunReader, A_tab_that_has_moved_within_a_row_parts_other_cells) {
    MeasurementText text;
    text.cell = [](int record, const std::string& row, int) -> std::string {
        return record == 3 && row == "pH" ? "7\t.0" : "7.00";
    };
    ExpectSame(text.File(6));
    std::string moved = MeasurementText().File(6);
    const auto tab = moved.find('\t', moved.find("\r\nppm", moved.find("Record 4")) + 25);
    std::swap(moved[tab], moved[tab - 1]);
    ExpectSame(moved);
    EXPECT_EQ(ReadRun(moved, false).whole, 5) << "the lines are as long as before";
}

TEST(RunReader, A_tab_more_in_one_row_and_less_in_another_parts_other_cells) {
    std::string text = MeasurementText().File(6);
    const auto fourth = text.find("Record 4");
    const auto row = text.find("\r\nmol/l", fourth) + 2;
    text[text.find('\t', row + MeasurementTexts::labelWidth + 1)] = ' ';
    const auto other = text.find("\r\nmV", fourth) + 2;
    text[other + MeasurementTexts::labelWidth + 2] = '\t';
    ExpectSame(text);
    EXPECT_EQ(ReadRun(text, false).whole, 5);
}

TEST(RunReader, Damaged_files_give_whole_what_their_lines_give) {
    int whole = 0;
    for (std::uint32_t seed = 1; seed <= 200; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomRun random(seed);
        std::string text = random.Text(60);
        random.Damage(text, random.Below(12));
        ExpectSame(text);
        const ReadRun run(text, false);
        ASSERT_EQ(run.records.size(), ReadPlainly(text).size());
        whole += run.whole;
        if (HasFailure())
            return;
    }
    EXPECT_GT(whole, 200 * 20) << "most records of a run are alike";
}

TEST(RunReader, Only_lines_that_begin_before_the_end_are_read) {
    const std::string text = MeasurementText().File(10);
    const auto sixth = text.find("Record 6\t");
    const ReadRun run(text, sixth, false);
    EXPECT_EQ(run.records.size(), 5U);
    EXPECT_EQ(run.whole, 4);
}
