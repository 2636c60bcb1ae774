#include "report/WholeRun.h"

#include "report/support/LoadedReport.h"

namespace {

namespace WholeRun = Mreport::WholeRun;

using WholeRunTest = LoadedReport;

} // namespace

TEST_F(WholeRunTest, Each_list_page_is_a_piece_with_its_records) {
    View(MeasurementText().File(5000));
    const auto pieces = WholeRun::Pieces(viewed.pages);
    ASSERT_EQ(pieces.size(), 2U);
    EXPECT_EQ(pieces[0].records + pieces[1].records, 5000);
    EXPECT_EQ(pieces[1].bytes.begin, pieces[0].bytes.end);
    EXPECT_EQ(WholeRun::Records(viewed.pages), 5000);
    EXPECT_EQ(WholeRun::FirstOfPage(viewed.pages, 1), pieces[0].records);
}

TEST_F(WholeRunTest, The_pieces_give_every_record_in_its_place) {
    View(MeasurementText().File(5000));
    Mreport::RunOverview overview;
    std::vector<std::int32_t> numbers(5000);
    overview.Observe([&numbers](std::int64_t place, const Mreport::FoundRecord& record) {
        numbers[static_cast<std::size_t>(place)] = record.number;
    });
    overview.Start(viewed.pages.Source(), WholeRun::Pieces(viewed.pages),
                   {WholeRun::Wish(viewed, Quantity::mV), {{0}}, {0, 5000}, false, 0});
    while (overview.Step(100'000)) {
    }
    for (std::size_t i = 0; i < numbers.size(); ++i)
        ASSERT_EQ(numbers[i], static_cast<std::int32_t>(i + 1));
}

TEST_F(WholeRunTest, A_record_is_found_in_its_list_by_place_and_by_offset) {
    View(MeasurementText().File(5000));
    const std::int64_t first = WholeRun::FirstOfPage(viewed.pages, 1);
    const auto place = WholeRun::PlaceInLists(viewed.pages, first + 7);
    ASSERT_TRUE(place);
    EXPECT_EQ(place->page, 1);
    EXPECT_EQ(place->inPage, 7);
    EXPECT_FALSE(WholeRun::PlaceInLists(viewed.pages, 5000));

    const auto line = viewed.pages.FindRecord(1, static_cast<std::int32_t>(first + 8));
    ASSERT_TRUE(line);
    const auto bytes = viewed.pages.Bytes(1);
    const auto recordLength = MeasurementText().Record(4500).size();
    EXPECT_EQ(viewed.pages.LineAt(1, bytes.begin + 7 * recordLength), *line);
}

TEST_F(WholeRunTest, A_last_line_without_line_end_is_left_out_until_it_is_whole) {
    const std::string text = MeasurementText().File(3);
    View(text.substr(0, text.size() - 100));
    EXPECT_EQ(WholeRun::Pieces(viewed.pages)[0].bytes.end, text.size() - 152);
}

TEST_F(WholeRunTest, The_series_are_the_channels_that_can_have_the_quantity_selected_or_not) {
    View(MeasurementText().File(3)); // Ca, H (pH), Redox, None; sensors 1 and 2
    shown.channelInUse.fill(false);
    EXPECT_EQ(WholeRun::Series(viewed, Quantity::mV), (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(WholeRun::Series(viewed, Quantity::pH), (std::vector<int>{2}));
    EXPECT_EQ(WholeRun::Series(viewed, Quantity::ppm), (std::vector<int>{1}));
    EXPECT_EQ(WholeRun::Series(viewed, Quantity::celsius), (std::vector<int>{1, 2}));
    EXPECT_EQ(WholeRun::QuantitiesOf(viewed).size(), quantityCount);
}

TEST_F(WholeRunTest, A_quantity_that_no_channel_can_have_is_not_offered) {
    MeasurementText text;
    text.electrodes = {"Redox", "Redox"};
    text.sensors = {"N/A", "N/A"};
    View(text.File(3));
    EXPECT_EQ(WholeRun::QuantitiesOf(viewed), (std::vector<Quantity>{Quantity::mV}));
}

TEST_F(WholeRunTest, A_shared_sensor_has_the_columns_of_all_its_channels) {
    MeasurementText text;
    text.sensors = {"2", "N/A", "2", "2"};
    View(text.File(3));
    EXPECT_EQ(WholeRun::ColumnsOf(viewed, Quantity::celsius, {2}),
              (std::vector<Mreport::SeriesColumns>{{0, 2}}))
        << "the channel without an electrode gives no temperature";
    EXPECT_EQ(WholeRun::ColumnsOf(viewed, Quantity::mV, {1, 3}),
              (std::vector<Mreport::SeriesColumns>{{0}, {2}}));
}
