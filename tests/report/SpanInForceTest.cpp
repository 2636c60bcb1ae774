#include "report/SpanInForce.h"

#include "report/support/LoadedReport.h"

namespace {

using Mreport::RecordSpan;

class SpanInForceTest : public LoadedReport {
protected:
    Mreport::SpanInForce span;

    SpanInForceTest() { span.GraphShows({0, 50}); }

    /// Page and end within it, as text; "" where the graph of records cannot show the span.
    std::string Place(const RecordSpan& chosen) {
        span.Choose(chosen);
        const auto place = span.PlaceInGraph(viewed.pages);
        return place ? std::to_string(place->page) + ":" + std::to_string(place->end) : "";
    }
};

TEST_F(SpanInForceTest, A_chosen_span_stays_while_the_graph_of_records_moves_on) {
    EXPECT_EQ(span.Span(), (RecordSpan{0, 50}));
    span.Choose({10, 200});
    EXPECT_FALSE(span.GraphShows({50, 100}));
    EXPECT_EQ(span.Span(), (RecordSpan{10, 200}));
    span.BackToGraph();
    EXPECT_EQ(span.Span(), (RecordSpan{50, 100}));
    EXPECT_FALSE(span.Chosen());
}

TEST_F(SpanInForceTest, The_graph_of_records_shows_fifty_records_of_one_page) {
    View(MeasurementText().File(4200)); // 4086 in the first page
    EXPECT_EQ(Place({100, 150}), "0:150");
    EXPECT_EQ(Place({4086, 4136}), "1:50");
    EXPECT_EQ(Place({100, 151}), "") << "too long";
    EXPECT_EQ(Place({4080, 4130}), "") << "over the page's end";
}

TEST_F(SpanInForceTest, Numbers_that_do_not_follow_one_another_are_no_places) {
    View(MeasurementText().File(60) + MeasurementText().Record(90));
    EXPECT_EQ(Place({5, 55}), "");
    EXPECT_EQ(Place({0, 50}), "0:50") << "the graph shows this one already";
}

TEST_F(SpanInForceTest, A_file_without_records_has_no_place) {
    View(MeasurementText().Header());
    EXPECT_EQ(Place({0, 0}), "");
}

} // namespace
