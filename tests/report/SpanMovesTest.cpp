#include "report/SpanMoves.h"

#include <gtest/gtest.h>

namespace {

using Mreport::RecordSpan;
namespace SpanMoves = Mreport::SpanMoves;

TEST(SpanMoves, A_span_beyond_the_run_comes_back_into_it_at_its_length) {
    EXPECT_EQ(SpanMoves::Within({380, 430}, 400), (RecordSpan{350, 400}));
    EXPECT_EQ(SpanMoves::Within({-20, 30}, 400), (RecordSpan{0, 50}));
    EXPECT_EQ(SpanMoves::Within({10, 20}, 400), (RecordSpan{10, 20}));
}

TEST(SpanMoves, A_span_is_never_longer_than_the_run_and_no_shorter_than_two_records) {
    EXPECT_EQ(SpanMoves::Within({100, 900}, 400), (RecordSpan{0, 400}));
    EXPECT_EQ(SpanMoves::Within({10, 11}, 400), (RecordSpan{10, 12}));
    EXPECT_EQ(SpanMoves::Within({0, 50}, 1), (RecordSpan{0, 1}));
    EXPECT_EQ(SpanMoves::Within({0, 50}, 0), (RecordSpan{0, 0}));
}

TEST(SpanMoves, Zooming_keeps_the_record_under_the_mouse_where_it_is) {
    EXPECT_EQ(SpanMoves::Zoomed({100, 200}, 2, 0.5), (RecordSpan{50, 250}));
    EXPECT_EQ(SpanMoves::Zoomed({100, 200}, 2, 0), (RecordSpan{100, 300}));
    EXPECT_EQ(SpanMoves::Zoomed({100, 200}, 0.5, 1), (RecordSpan{150, 200}));
}

TEST(SpanMoves, Zooming_changes_a_short_span_by_one_record_at_least) {
    EXPECT_EQ(SpanMoves::Zoomed({10, 12}, 1.25, 0), (RecordSpan{10, 13}));
    EXPECT_EQ(SpanMoves::Zoomed({10, 13}, 0.8, 0), (RecordSpan{10, 12}));
    EXPECT_EQ(SpanMoves::Zoomed({10, 12}, 0.8, 0), (RecordSpan{10, 12})) << "two records stay";
}

TEST(SpanMoves, An_end_is_not_drawn_over_the_other) {
    EXPECT_EQ(SpanMoves::WithBegin({10, 60}, 100), (RecordSpan{58, 60}));
    EXPECT_EQ(SpanMoves::WithBegin({10, 60}, -5), (RecordSpan{0, 60}));
    EXPECT_EQ(SpanMoves::WithEnd({10, 60}, 3), (RecordSpan{10, 12}));
}

TEST(SpanMoves, A_record_comes_into_the_middle) {
    EXPECT_EQ(SpanMoves::Around({0, 50}, 300), (RecordSpan{275, 325}));
    EXPECT_EQ(SpanMoves::Moved({0, 50}, 7), (RecordSpan{7, 57}));
}

} // namespace
