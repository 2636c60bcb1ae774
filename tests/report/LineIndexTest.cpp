#include "report/LineIndex.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using Mreport::LineIndex;

/// An index beside a plain list of the same lines.
class LineIndexTest : public testing::Test {
protected:
    LineIndexTest() {
        layout.Learn(RecordWalk::Step::begins, {});
        for (const std::string row : {"mV             \t20.0", "pH             \t7.0"})
            layout.Learn(RecordWalk::Step::row, {0, row, row.size(), row.size() + 2, true});
        layout.Learn(RecordWalk::Step::ends, {0, separator, separator.size(), 152, true});
    }

    void AddLine(std::uint32_t length) {
        index.Add(end);
        Take({length});
    }
    void AddRecord(std::uint32_t first, std::uint32_t comment) {
        Mreport::RecordText record;
        record.firstLength = first;
        record.commentLength = comment;
        record.length = first + comment + 22 + 21 + 152;
        index.AddRecord(end, record, layout);
        Take({first, comment, 22, 21, 152});
    }
    void RemoveLast() {
        index.RemoveLast();
        end = starts.back();
        starts.pop_back();
    }

    void ExpectAllLines() const {
        ASSERT_EQ(index.Count(), starts.size());
        for (std::size_t line = 0; line < starts.size(); ++line) {
            ASSERT_EQ(index.Start(line), starts[line]) << line;
            const std::uint32_t next = line + 1 < starts.size() ? starts[line + 1] : end;
            ASSERT_EQ(index.LineAt(starts[line]), line);
            ASSERT_EQ(index.LineAt(next - 1), line);
        }
        EXPECT_EQ(index.LineAt(std::uint64_t{end} + 1000), starts.size() - 1)
            << "behind the last line";
    }

    LineIndex index;
    std::vector<std::uint32_t> starts;
    std::uint32_t end = 0;

private:
    void Take(const std::vector<std::uint32_t>& lengths) {
        for (const std::uint32_t length : lengths) {
            starts.push_back(end);
            end += length;
        }
    }

    std::string separator = std::string(150, '-');
    Mreport::RecordLayout layout;
};

} // namespace

TEST_F(LineIndexTest, Lines_and_records_are_found_where_they_were_added) {
    AddLine(2);
    AddLine(100);
    AddRecord(32, 11);
    AddRecord(32, 11);
    AddRecord(33, 11); // a longer number
    AddRecord(33, 20); // a comment
    AddRecord(33, 11);
    AddLine(7);
    AddRecord(33, 11);
    ExpectAllLines();
}

TEST_F(LineIndexTest, An_index_without_lines_counts_none) {
    EXPECT_EQ(index.Count(), 0U);
}

TEST_F(LineIndexTest, Records_alike_take_no_more_room_than_a_few) {
    for (int i = 0; i < 4; ++i)
        AddRecord(32, 11);
    const std::size_t bytes = index.Bytes();
    for (int i = 0; i < 10'000; ++i)
        AddRecord(32, 11);
    EXPECT_EQ(index.Bytes(), bytes);
    ExpectAllLines();
}

TEST_F(LineIndexTest, A_last_line_is_taken_back_alone_or_behind_records) {
    AddLine(5);
    RemoveLast();
    EXPECT_EQ(index.Count(), 0U);
    AddRecord(32, 11);
    AddLine(9);
    RemoveLast();
    ExpectAllLines();
    AddRecord(32, 11);
    AddLine(9);
    ExpectAllLines();
}

TEST_F(LineIndexTest, Up_to_four_gigabytes_no_place_is_lost) {
    end = 0xFFFF'0000;
    AddRecord(32, 11);
    while (end < 0xFFFF'F000)
        AddRecord(32, 11);
    AddLine(0xFFFF'FFFF - end);
    ExpectAllLines();
}

TEST_F(LineIndexTest, Lines_by_chance_are_found) {
    for (std::uint32_t seed = 1; seed <= 30; ++seed) {
        index = {};
        starts.clear();
        end = 0;
        std::mt19937 chance(seed);
        const auto below = [&chance](std::uint32_t bound) {
            return static_cast<std::uint32_t>(chance() % bound);
        };
        for (int i = 0; i < 400; ++i) {
            if (below(4) == 0)
                AddLine(1 + below(50));
            else
                AddRecord(30 + below(2), 10 + below(2));
        }
        index.Finish();
        ExpectAllLines();
        ASSERT_FALSE(HasFailure()) << "seed " << seed;
    }
}
