#include "report/RunSearch.h"

#include "report/support/MeasurementText.h"
#include "report/support/PlainRun.h"
#include "report/support/RandomRun.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;
using Mreport::CommentWish;
using Mreport::RunSearch;
using Mreport::TimeWish;
using Mreport::ValueWish;

/// The number of the record that a search finds; 0 for none.
std::int32_t Find(const std::string& text, const Mreport::RunSearchWish& wish,
                  std::size_t recordsPerPiece = 30) {
    Mreport::MemorySource source(text);
    RunSearch search(source, PiecesOf(ReadPlainly(text), recordsPerPiece), wish);
    while (search.Step(5000)) {
    }
    return search.Found() ? search.Found()->number : 0;
}

std::string WithComments() {
    MeasurementText text;
    text.comment = [](int number) {
        return number % 40 == 7 ? "Stirrer on, " + std::to_string(number) : std::string();
    };
    return text.File(100);
}

const Mreport::RunSearchWish stirrer = {CommentWish{"STIRRER"}, false, false, std::nullopt};

/// One record every ten seconds from 14:00:00 on.
std::string WithTimes() {
    std::string text;
    for (int number = 1; number <= 30; ++number) {
        std::string record = MeasurementText().Record(number);
        const int second = (number - 1) * 10;
        const std::string clock =
            "14:0" + std::to_string(second / 60) + ":" + std::to_string(second % 60 / 10) + "0";
        record.replace(record.find("14:05:33"), 8, clock);
        text += record;
    }
    return text;
}

Mreport::RunSearchWish Time(std::chrono::seconds clock) {
    return {TimeWish{std::chrono::local_days(2003y / 3 / 7) + clock}, false, false, std::nullopt};
}

} // namespace

TEST(RunSearch, The_first_comment_that_holds_the_text_is_found_whatever_its_case) {
    EXPECT_EQ(Find(WithComments(), stirrer), 7);
}

TEST(RunSearch, From_the_end_the_last_one_is_found) {
    auto wish = stirrer;
    wish.fromEnd = true;
    EXPECT_EQ(Find(WithComments(), wish), 87);
}

TEST(RunSearch, The_next_one_lies_beyond_the_one_found) {
    auto wish = stirrer;
    wish.beyond = 6; // record 7
    EXPECT_EQ(Find(WithComments(), wish), 47);
    wish.fromEnd = true;
    wish.beyond = 46;
    EXPECT_EQ(Find(WithComments(), wish), 7);
    wish.beyond = 6;
    EXPECT_EQ(Find(WithComments(), wish), 0);
}

TEST(RunSearch, A_text_outside_the_comments_is_not_found) {
    EXPECT_EQ(Find(WithComments(), {CommentWish{"Record"}, false, false, std::nullopt}), 0);
}

TEST(RunSearch, The_comment_of_a_UTF8_file_is_searched_as_it_is_shown) {
    MeasurementText text;
    text.comment = [](int number) { return number == 3 ? "K\xC3\xBChlung" : ""; };
    EXPECT_EQ(Find(text.File(5), {CommentWish{"k\xFChl"}, true, false, std::nullopt}), 3);
}

TEST(RunSearch, The_record_nearest_in_time_is_found) {
    EXPECT_EQ(Find(WithTimes(), Time(14h + 1min + 4s)), 7);
    EXPECT_EQ(Find(WithTimes(), Time(14h + 1min + 6s)), 8);
    EXPECT_EQ(Find(WithTimes(), Time(0h)), 1);
    EXPECT_EQ(Find(WithTimes(), Time(23h)), 30);
}

TEST(RunSearch, Of_two_records_as_near_in_time_the_earlier_one_is_found) {
    auto wish = Time(14h + 1min + 5s);
    EXPECT_EQ(Find(WithTimes(), wish, 3), 7);
    wish.fromEnd = true;
    EXPECT_EQ(Find(WithTimes(), wish, 3), 7);
}

TEST(RunSearch, A_value_above_or_below_a_limit_is_found_from_either_end) {
    const std::string text = MeasurementText().File(100); // channel 1 has its record number in mV
    ValueWish above{Quantity::mV, {0}, 41.5, true};
    EXPECT_EQ(Find(text, {above, false, false, std::nullopt}), 42);
    EXPECT_EQ(Find(text, {above, false, true, std::nullopt}), 100);
    const ValueWish below{Quantity::mV, {0}, 10, false};
    EXPECT_EQ(Find(text, {below, false, false, std::nullopt}), 1);
    EXPECT_EQ(Find(text, {below, false, true, std::nullopt}), 9) << "the limit itself is not below";
}

TEST(RunSearch, A_missing_value_is_neither_above_nor_below) {
    MeasurementText text;
    text.cell = [](int, const std::string&, int) { return "NA"; };
    const ValueWish above{Quantity::mV, {0}, -1e9, true};
    EXPECT_EQ(Find(text.File(10), {above, false, false, std::nullopt}), 0);
}

TEST(RunSearch, Nothing_is_found_in_a_run_without_records) {
    EXPECT_EQ(Find(MeasurementText().Header(), stirrer), 0);
}

TEST(RunSearch, Random_runs_give_what_looking_at_every_value_gives) {
    for (std::uint32_t seed = 1; seed <= 30; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomRun random(seed);
        const std::string text = random.Text(200);
        const auto records = ReadPlainly(text);
        const ValueWish value{
            Quantity::pH, {2}, static_cast<double>(random.Below(4900)), random.Below(2) == 0};
        const bool fromEnd = random.Below(2) == 0;
        const int beyond = random.Below(200);
        std::int32_t expected = 0;
        for (int place = 0; place < 200; ++place) {
            const auto found = records[static_cast<std::size_t>(place)].Value("pH", 2);
            const bool pleases =
                found && (value.above ? *found > value.limit : *found < value.limit);
            if (pleases && (fromEnd ? place < beyond : place > beyond && expected == 0))
                expected = place + 1;
        }
        EXPECT_EQ(Find(text, {value, false, fromEnd, beyond}), expected);
    }
}

TEST(RunSearch, A_search_can_be_stopped_between_two_slices) {
    const std::string text = WithComments();
    Mreport::MemorySource source(text);
    auto wish = stirrer;
    wish.fromEnd = true;
    RunSearch search(source, PiecesOf(ReadPlainly(text), 10), wish);
    EXPECT_TRUE(search.Step(600)) << "a record or two";
    EXPECT_FALSE(search.Found());
    EXPECT_LT(search.Share(), 0.2);
}
