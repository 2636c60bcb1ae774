#include "report/LiveGraph.h"

#include "report/support/LoadedReport.h"

namespace {

/// A viewer that follows a file into which the test records.
class Live : public LoadedReport {
protected:
    MeasurementText text;

    void Follow(int records) {
        run.targetFile = File();
        run.measuring = true;
        View(text.File(records));
        loader.SetAutoUpdate(true);
    }
    /// Records a reading with this value in every cell.
    void Record(std::int32_t record, int value) {
        MeasurementText written = text;
        written.cell = [value](int, const std::string&, int) { return std::to_string(value); };
        Append(written.Record(record));
        loader.LiveRecord();
    }
};

} // namespace

TEST_F(Live, Each_of_the_first_fifty_records_widens_the_graph) {
    Follow(0);
    for (int record = 1; record <= 50; ++record) {
        Record(record, record);
        EXPECT_EQ(view.graph.NumPoints(), record);
        EXPECT_EQ(view.graph.labels.at(record), std::to_string(record));
    }
    EXPECT_EQ(view.graph.Values(1), 50);
    EXPECT_EQ(view.graph.sets.at(3).data.at(50), 50);
}

TEST_F(Live, Record_51_starts_a_fresh_block) {
    Follow(50);
    const int resets = view.graph.resets;
    Record(51, 7);
    EXPECT_EQ(view.graph.resets, resets + 1);
    EXPECT_EQ(view.graph.Values(1), 1);
    EXPECT_EQ(view.graph.labels.at(1), "51");
    EXPECT_EQ(view.graph.NumPoints(), 50);
    EXPECT_EQ(view.firstRecord, 51);
    Record(52, 8);
    EXPECT_EQ(view.graph.Values(1), 2);
    EXPECT_EQ(view.graph.sets.at(1).data.at(2), 8);
    EXPECT_EQ(view.graph.resets, resets + 1);
}

TEST_F(Live, Blocks_start_at_51_and_101_and_151) {
    Follow(0);
    std::vector<int> starts;
    for (int record = 1; record <= 160; ++record) {
        const int before = view.graph.resets;
        Record(record, 1);
        if (view.graph.resets > before)
            starts.push_back(record);
    }
    EXPECT_EQ(starts, (std::vector<int>{1, 51, 101, 151}));
}

TEST_F(Live, The_scroll_bar_follows_the_newest_record) {
    Follow(60);
    Record(61, 1);
    EXPECT_EQ(Range().recordsInPage, 61);
    EXPECT_EQ(view.scroll.max, 61);
    EXPECT_EQ(view.scroll.value, 61);
}

TEST_F(Live, New_lines_join_the_list) {
    Follow(2);
    Record(3, 1);
    EXPECT_EQ(viewed.pages.LineCount(0), 12U + 24U);
    EXPECT_EQ(viewed.pages.Shown(0, 28), "Record 3\tAt\t14:05:33 07.Mar.2003");
    EXPECT_EQ(viewed.pages.Shown(0, 35), std::string(200, '-'));
}

TEST_F(Live, Without_automatic_update_the_list_grows_and_the_graph_stays) {
    Follow(60);
    loader.SetAutoUpdate(false);
    const int draws = view.graph.draws;
    Record(61, 1);
    EXPECT_EQ(view.graph.draws, draws);
    EXPECT_EQ(viewed.pages.Records(0)->last, 61);
    EXPECT_EQ(view.scroll.max, 61);
}

TEST_F(Live, Switching_on_shows_the_block_of_the_newest_record) {
    Follow(120);
    EXPECT_EQ(view.firstRecord, 101);
    EXPECT_EQ(view.graph.Values(1), 20);
    Record(121, 5);
    EXPECT_EQ(view.graph.Values(1), 21);
    EXPECT_EQ(view.graph.sets.at(1).data.at(21), 5);
}

TEST_F(Live, Switching_off_returns_to_the_sliding_span) {
    Follow(120);
    loader.SetAutoUpdate(false);
    EXPECT_EQ(view.graph.Values(1), 50);
    EXPECT_EQ(view.graph.labels.at(50), "120");
}

TEST_F(Live, An_idle_channel_has_no_value) {
    text.cell = [](int, const std::string&, int channel) {
        return std::string(channel == 1 ? "NA" : "2.5");
    };
    Follow(1);
    Append(text.Record(2));
    loader.LiveRecord();
    EXPECT_EQ(view.graph.sets.at(1).extra.at(2), 0);
    EXPECT_EQ(view.graph.sets.at(2).extra.at(2), 1);
}

TEST_F(Live, Degrees_are_taken_by_sensor) {
    Follow(1);
    shown.unitCode = Quantity::celsius;
    text.cell = [](int, const std::string&, int channel) {
        return std::to_string(20 + 10 * channel);
    };
    Append(text.Record(2));
    loader.LiveRecord();
    EXPECT_EQ(view.graph.sets.at(1).legend, "Temp. 1");
    EXPECT_EQ(view.graph.sets.at(1).data.at(2), 20);
    EXPECT_EQ(view.graph.sets.at(2).data.at(2), 30);
}

TEST_F(Live, A_full_page_is_followed_by_a_new_one_in_front) {
    Follow(4085); // 12 + 8 * 4085 = 32692 lines, and 9 more reach 32701
    EXPECT_TRUE(Mreport::PageIsFull(viewed.pages));
    Follow(4084);
    EXPECT_FALSE(Mreport::PageIsFull(viewed.pages));
    Record(4085, 1);
    EXPECT_EQ(view.tabs.size(), 2U);
    EXPECT_EQ(view.selectedTab, 1);
    EXPECT_EQ(shown.graphPageIndex, 1);
    EXPECT_EQ(shown.shownPageIndex, 1);
    EXPECT_EQ(Range().pageFirstRecordOffset, 4085);
    Record(4086, 3);
    EXPECT_EQ(Range().recordsInPage, 1);
    EXPECT_EQ(viewed.pages.LineCount(1), 8U);
    EXPECT_EQ(view.graph.sets.at(1).data.at(36), 3) << "the block goes on across the page";
}

TEST_F(Live, Records_that_arrive_during_a_load_are_in_the_list_once) {
    run.targetFile = File();
    run.measuring = true;
    int passes = 0;
    platform.desktop.onEvents = [&] {
        if (++passes == 5 || passes == 60) { // while it reads, and in the pause at the end
            const int record = passes == 5 ? 41 : 42;
            Append(text.Record(record));
            loader.LiveRecord();
        }
    };
    View(text.File(40));
    EXPECT_GE(passes, 60);
    EXPECT_EQ(viewed.pages.LineCount(0), 12U + 8U * 42U);
    EXPECT_EQ(viewed.pages.Records(0)->last, 42);
}

TEST_F(Live, A_block_on_the_second_list_is_as_wide_as_on_the_first) {
    Follow(4101); // 15 records on the second list, one in the block
    EXPECT_EQ(viewed.LastPageIndex(), 1);
    EXPECT_EQ(view.graph.NumPoints(), 50);
    EXPECT_EQ(view.firstRecord, 4101);
    for (int record = 4102; record <= 4150; ++record)
        Record(record, 3);
    EXPECT_EQ(view.graph.NumPoints(), 50);
    EXPECT_EQ(view.graph.Values(1), 50);
}

TEST_F(Live, A_list_without_records_yet_begins_behind_the_one_before) {
    Follow(4084);
    Record(4085, 1); // the first list is full, the next one is empty
    ASSERT_EQ(viewed.LastPageIndex(), 1);
    loader.SetAutoUpdate(false);
    loader.SetAutoUpdate(true);
    EXPECT_EQ(Range().pageFirstRecordOffset, 4085);
    Record(4086, 1);
    EXPECT_EQ(Range().recordsInPage, 1);
}

TEST_F(Live, What_ESC_has_left_unread_is_read_when_the_user_asks_for_it) {
    run.targetFile = File();
    run.measuring = true;
    int passes = 0;
    platform.desktop.onEvents = [&] {
        if (++passes == 20)
            loader.RequestStop();
    };
    View(text.File(5000));
    const auto lines = viewed.pages.LineCount(0);
    EXPECT_LT(lines, 12U + 8U * 5000U);
    Record(5001, 1);
    EXPECT_EQ(viewed.pages.LineCount(0), lines);
    loader.SetAutoUpdate(true);
    EXPECT_EQ(viewed.LastPageIndex(), 1);
    EXPECT_EQ(viewed.pages.Records(1)->last, 5001);
    Record(5002, 1);
    EXPECT_EQ(viewed.pages.Records(1)->last, 5002);
}

TEST_F(Live, Many_records_at_once_overfill_no_list) {
    Follow(4000);
    std::string more;
    for (int record = 4001; record <= 4200; ++record)
        more += text.Record(record);
    Append(more);
    loader.LiveRecord();
    EXPECT_EQ(viewed.LastPageIndex(), 1);
    EXPECT_LE(viewed.pages.LineCount(0), 32700U);
    EXPECT_EQ(shown.graphPageIndex, 1);
    EXPECT_EQ(Range().recordsInPage, 4200 - Range().pageFirstRecordOffset);
}

TEST_F(Live, Escape_in_the_pause_at_the_end_of_a_load_does_not_end_the_following) {
    run.targetFile = File();
    run.measuring = true;
    platform.desktop.onEvents = [&] {
        if (StatusShown("Loading data, 100% complete. [Press ESC to stop loading]"))
            loader.RequestStop();
    };
    View(text.File(60));
    Record(61, 5);
    EXPECT_EQ(Range().recordsInPage, 61);
    EXPECT_EQ(view.scroll.max, 61);
}

TEST_F(Live, Range_scroll_bar_and_graph_know_the_records_that_came_during_the_load) {
    run.targetFile = File();
    run.measuring = true;
    int passes = 0;
    platform.desktop.onEvents = [&] {
        if (StatusShown("Loading data, 100% complete. [Press ESC to stop loading]") &&
            passes++ == 0)
            Append(text.Record(41));
    };
    View(text.File(40));
    EXPECT_EQ(Range().recordsInPage, 41);
    EXPECT_EQ(view.scroll.max, 41);
    EXPECT_EQ(view.graph.Values(1), 41);
}

TEST_F(Live, A_catching_up_that_crosses_the_page_s_end_tells_the_scroll_bar_of_its_last_records) {
    Follow(4000);
    loader.SetAutoUpdate(false);
    std::string more;
    for (int record = 4001; record <= 4200; ++record)
        more += text.Record(record);
    Append(more);
    loader.LiveRecord();
    EXPECT_EQ(shown.graphPageIndex, 0);
    EXPECT_EQ(view.scroll.max, 4086);
}

TEST_F(Live, What_has_come_since_is_read_with_events_and_the_shown_page_stays) {
    Follow(10);
    loader.SetAutoUpdate(false);
    EXPECT_EQ(loader.NewBytes(), 0U);
    std::string more;
    for (int record = 11; record <= 5000; ++record)
        more += text.Record(record);
    Append(more);
    EXPECT_EQ(loader.NewBytes(), more.size());
    const int passes = platform.desktop.eventPasses;
    loader.ReadNew();
    EXPECT_GT(platform.desktop.eventPasses, passes + 100);
    EXPECT_EQ(viewed.pages.Records(1)->last, 5000);
    EXPECT_EQ(shown.graphPageIndex, 0);
    EXPECT_EQ(view.scroll.max, 4086);
    EXPECT_EQ(LastStatus(), "Ready");
}
