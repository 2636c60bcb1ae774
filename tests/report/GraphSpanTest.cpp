#include "report/GraphSpan.h"

#include "app/Mcommon.h"
#include "report/support/LoadedReport.h"

namespace {

class Graph : public LoadedReport {
protected:
    const RecordingGraph& Drawn() const { return view.graph; }

    Mreport::DrawnSpan Draw(std::int32_t endRecord, std::int32_t points, bool live = false) {
        return Mreport::UpdateGraph(view.graph, viewed, shown,
                                    {shown.graphPageIndex, {endRecord}, points, live});
    }
};

} // namespace

TEST(TickEvery, Spacing_is_one_up_to_54_points_then_a_multiple_of_five) {
    EXPECT_EQ(Mreport::TickEvery(7), 1);
    EXPECT_EQ(Mreport::TickEvery(50), 1);
    EXPECT_EQ(Mreport::TickEvery(54), 1);
    EXPECT_EQ(Mreport::TickEvery(55), 5) << "2 is raised to 5";
    EXPECT_EQ(Mreport::TickEvery(219), 5) << "4 is raised to 5";
    EXPECT_EQ(Mreport::TickEvery(220), 10) << "5 is raised by a full step";
    EXPECT_EQ(Mreport::TickEvery(275), 10) << "6 is raised to 10";
    EXPECT_EQ(Mreport::TickEvery(1500), 30) << "28 is raised to 30";
}

TEST_F(Graph, Each_channel_in_use_is_a_series_with_its_legend) {
    View(MeasurementText().File(60));
    EXPECT_EQ(Drawn().sets.at(1).legend, "Ch. 1");
    EXPECT_EQ(Drawn().sets.at(2).legend, "Ch. 2");
    EXPECT_EQ(Drawn().sets.at(3).legend, "Ch. 3");
    EXPECT_EQ(Drawn().Values(4), 0) << "None has no series";
    // A value of record r and channel c (from 0) reads "r.c".
    EXPECT_FLOAT_EQ(static_cast<float>(Drawn().sets.at(2).data.at(5)), 5.1F);
    EXPECT_FLOAT_EQ(static_cast<float>(Drawn().sets.at(3).data.at(50)), 50.2F);
    EXPECT_EQ(Drawn().LeftTitle(), "mV");
    EXPECT_EQ(Drawn().tickEvery, 1);
}

TEST_F(Graph, A_none_channel_between_others_is_skipped) {
    MeasurementText text;
    text.electrodes = {"None", "Ca", "None", "Cl"};
    View(text.File(5));
    EXPECT_EQ(Drawn().sets.at(1).legend, "Ch. 2");
    EXPECT_EQ(Drawn().sets.at(2).legend, "Ch. 4");
    EXPECT_FLOAT_EQ(static_cast<float>(Drawn().sets.at(2).data.at(3)), 3.3F);
}

TEST_F(Graph, Seven_records_draw_ten_points_three_of_them_fillers) {
    View(MeasurementText().File(7));
    EXPECT_EQ(Drawn().NumPoints(), 10);
    for (int set = 1; set <= 3; ++set) {
        EXPECT_EQ(Drawn().Values(set), 7);
        for (int point = 1; point <= 10; ++point)
            EXPECT_EQ(Drawn().sets.at(set).extra.at(point), point > 7 ? 1 : 0);
    }
    EXPECT_EQ(Drawn().labels.at(7), "7");
    EXPECT_EQ(Drawn().labels.at(10), "10");
    EXPECT_EQ(Drawn().draws, 1);
}

TEST_F(Graph, A_span_ends_with_the_wanted_record) {
    View(MeasurementText().File(120));
    EXPECT_EQ(Draw(90, 50).firstRecord.number, 41);
    EXPECT_EQ(Drawn().labels.at(1), "41");
    EXPECT_EQ(Drawn().labels.at(50), "90");
    EXPECT_EQ(Drawn().Values(1), 50);
}

TEST_F(Graph, A_span_never_starts_before_the_page) {
    View(MeasurementText().File(120));
    EXPECT_EQ(Draw(20, 50).firstRecord.number, 1);
    EXPECT_EQ(Drawn().labels.at(1), "1");
}

TEST_F(Graph, Record_numbers_are_those_of_the_file) {
    View(MeasurementText().File(60, 1001));
    EXPECT_EQ(Draw(60, 50).firstRecord.number, 1011);
    EXPECT_EQ(Drawn().labels.at(1), "1011");
}

TEST_F(Graph, Wide_spans_label_the_first_point_and_multiples_of_the_spacing) {
    View(MeasurementText().File(300));
    Draw(300, 275);
    EXPECT_EQ(Drawn().tickEvery, 10);
    EXPECT_EQ(Drawn().labels.at(1), "26");
    EXPECT_EQ(Drawn().minorTicks.at(1), 0);
    EXPECT_EQ(Drawn().labels.at(2), "");
    EXPECT_EQ(Drawn().minorTicks.at(2), 1);
    EXPECT_EQ(Drawn().labels.at(5), "30");
    EXPECT_EQ(Drawn().labels.at(275), "300");
    EXPECT_EQ(Drawn().Values(1), 275);
}

TEST_F(Graph, Fifteen_hundred_points_are_drawn_and_no_more) {
    View(MeasurementText().File(1600));
    Draw(1600, 1500);
    EXPECT_EQ(Drawn().Values(1), 1500);
    Draw(1600, 1600);
    EXPECT_EQ(Drawn().NumPoints(), 1500);
}

TEST_F(Graph, Each_unit_shows_its_own_row) {
    MeasurementText text;
    text.cell = [](int, const std::string& row, int) {
        return row == "mV"      ? "1"
               : row == "pH"    ? "2"
               : row == "ppm"   ? "3"
               : row == "mol/l" ? "4"
                                : "5";
    };
    View(text.File(10));
    for (int unit = 0; unit < 5; ++unit) {
        shown.unitCode = static_cast<Quantity>(unit);
        Draw(10, 10);
        EXPECT_EQ(Drawn().sets.at(1).data.at(1), unit + 1);
        EXPECT_EQ(Drawn().LeftTitle(), Mreport::UnitText(shown.unitCode));
    }
}

TEST_F(Graph, A_sensor_that_two_channels_share_is_one_series) {
    MeasurementText text;
    text.sensors = {"2", "2", "4", "1"};
    View(text.File(3));
    shown.unitCode = Quantity::celsius;
    Draw(3, 3);
    EXPECT_EQ(Mreport::Series(viewed, shown), (std::vector<int>{2, 4}))
        << "sensor 1 belongs to a channel without an electrode";
    EXPECT_EQ(Drawn().sets.at(1).legend, "Temp. 2");
    EXPECT_EQ(Drawn().sets.at(2).legend, "Temp. 4");
    EXPECT_EQ(Drawn().sets.at(1).data.at(1), 0.5) << "the column of channel 1";
    EXPECT_EQ(Drawn().sets.at(2).data.at(1), 2.5) << "the column of channel 3";
}

TEST_F(Graph, A_missing_value_is_a_point_without_a_value) {
    MeasurementText text;
    text.cell = [](int record, const std::string&, int) -> std::string {
        return record == 2 ? "NA" : record == 3 ? "Error" : "1.5";
    };
    View(text.File(3));
    EXPECT_EQ(Drawn().sets.at(1).extra.at(1), 0);
    EXPECT_EQ(Drawn().sets.at(1).extra.at(2), 1);
    EXPECT_EQ(Drawn().sets.at(1).data.at(3), 0) << "a text without a number reads 0";
}

TEST_F(Graph, A_unit_that_the_records_do_not_have_draws_no_values) {
    View(MeasurementText().File(3) + "Record 4\tAt\tnow\r\nComment:\t\r\n");
    Draw(4, 4);
    EXPECT_EQ(Drawn().Values(1), 3);
    EXPECT_EQ(Drawn().labels.at(4), "4");
}

TEST_F(Graph, A_span_whose_first_record_is_missing_draws_no_points) {
    const MeasurementText text;
    View(text.Header() + text.Record(1) + text.Record(2) + text.Record(100));
    EXPECT_EQ(Draw(90, 50).points, 0);
    EXPECT_EQ(Drawn().Values(1), 0);
    EXPECT_EQ(Mcommon::errorLocation, "UpdateGraph");
}

TEST_F(Graph, Records_of_unequal_length_are_found_all_the_same) {
    const MeasurementText text;
    std::string file = text.Header();
    for (int record = 1; record <= 80; ++record)
        file += "Record " + std::to_string(record) + "\tAt\tnow\r\nComment:\t\r\nmV\t" +
                std::to_string(record) + "\r\n" + std::string(record > 78 ? 900 : 150, '-') +
                std::string(record > 78 ? "\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n" : "\r\n");
    View(file);
    Draw(80, 50);
    EXPECT_EQ(Drawn().sets.at(1).data.at(50), 80);
}

TEST_F(Graph, A_live_span_starts_behind_the_last_multiple_of_fifty) {
    View(MeasurementText().File(120));
    EXPECT_EQ(Draw(120, 50, true).firstRecord.number, 101);
    EXPECT_EQ(Drawn().labels.at(1), "101");
    EXPECT_EQ(Drawn().Values(1), 20);
    EXPECT_EQ(Drawn().NumPoints(), 50);
    EXPECT_EQ(Draw(100, 50, true).firstRecord.number, 51);
    EXPECT_EQ(Drawn().Values(1), 50);
    EXPECT_EQ(Draw(101, 50, true).firstRecord.number, 101);
}

TEST_F(Graph, A_live_block_that_began_on_the_page_before_leaves_its_points_open) {
    View(MeasurementText().File(10, 4087));
    EXPECT_EQ(Draw(10, 50, true).firstRecord.number, 4051);
    EXPECT_EQ(Drawn().sets.at(1).extra.at(36), 1);
    EXPECT_EQ(Drawn().sets.at(1).data.at(37), 4087.0);
    EXPECT_EQ(Drawn().Values(1), 10);
}

TEST_F(Graph, Another_graph_takes_series_and_title_from_the_viewers_own) {
    View(MeasurementText().File(300));
    view.graph.SetNumSets(3);
    RecordingGraph printed;
    Mreport::DrawSpan(printed, view.graph, viewed, shown, {0, {300}, 200});
    EXPECT_EQ(printed.NumSets(), 3);
    EXPECT_EQ(printed.Values(1), 200);
    EXPECT_EQ(printed.labels.at(1), "101");
}

TEST(PointText, Numbers_stand_behind_a_blank) {
    EXPECT_EQ(Mreport::PointText(Quantity::mV, 3, 120, 12.345),
              "Chan. 3, Record 120, Value =12.35");
    EXPECT_EQ(Mreport::PointText(Quantity::celsius, 2, 7, -0.5), "Temp. 2, Record 7, Value =-0.50");
}

TEST_F(Graph, An_idle_channel_leaves_the_sensor_to_the_next_one_that_has_it) {
    MeasurementText text;
    text.electrodes = {"None", "Ca", "Cl", "K"};
    text.sensors = {"1", "1", "1", "1"};
    text.cell = [](int record, const std::string&, int channel) -> std::string {
        if (channel == 0)
            return "99";
        return channel == record ? std::to_string(20 + channel) : "NA";
    };
    View(text.File(3));
    shown.unitCode = Quantity::celsius;
    Draw(3, 3);
    EXPECT_EQ(Drawn().sets.at(1).data.at(1), 21);
    EXPECT_EQ(Drawn().sets.at(1).data.at(2), 22);
    EXPECT_EQ(Drawn().sets.at(1).data.at(3), 23);
}

TEST_F(Graph, A_channel_keeps_its_look_whatever_is_selected_beside_it) {
    View(MeasurementText().File(3));
    Draw(3, 3);
    EXPECT_EQ(Drawn().sets.at(3).legend, "Ch. 3");
    EXPECT_EQ(Drawn().sets.at(3).style, 2);
    shown.channelInUse[0] = false;
    Draw(3, 3);
    EXPECT_EQ(Drawn().sets.at(2).legend, "Ch. 3");
    EXPECT_EQ(Drawn().sets.at(2).style, 2);
}

TEST_F(Graph, An_empty_graph_says_why) {
    View(MeasurementText().Header());
    EXPECT_EQ(Mreport::EmptyGraphText(viewed, shown), "There is no record to show yet.");
    MeasurementText text;
    text.electrodes = {"Ca", "Redox"};
    text.sensors = {"1", "N/A"};
    View(text.File(3));
    shown.unitCode = Quantity::pH;
    EXPECT_EQ(Mreport::EmptyGraphText(viewed, shown), "No channel of this file gives pH.");
    shown.unitCode = Quantity::ppm;
    shown.channelInUse.fill(false);
    EXPECT_EQ(Mreport::EmptyGraphText(viewed, shown), "No channel is selected.");
    shown.unitCode = Quantity::celsius;
    shown.sensorInUse.fill(false);
    EXPECT_EQ(Mreport::EmptyGraphText(viewed, shown), "No temperature sensor is selected.");
    shown.sensorInUse.fill(true);
    EXPECT_EQ(Mreport::EmptyGraphText(viewed, shown), "These records hold no value in \xB0"
                                                      "C of what is selected.");
}

TEST(PointInfo, A_small_concentration_stays_readable) {
    EXPECT_EQ(Mreport::PointInfo(Quantity::mol_l, 1, 4, 0.000123),
              "Chan. 1, Record 4, Value =1.23E-04");
    EXPECT_EQ(Mreport::PointText(Quantity::mol_l, 1, 4, 0.000123),
              "Chan. 1, Record 4, Value =0.00");
    EXPECT_EQ(Mreport::PointInfo(Quantity::mV, 1, 4, 1.5), "Chan. 1, Record 4, Value =1.50");
}
