#include "files/LiveReport.h"

#include "files/SetUpRun.h"
#include "report/support/LoadedReport.h"
#include "settings/mWinInit.h"

namespace {

/// A viewer that follows the records which the recording itself writes.
class LiveRecord : public LoadedReport {
protected:
    LiveRecord() { SetUpRun(); }

    void Follow(Quantity unit) {
        run.CreateHeadLines(File());
        run.targetFile = File();
        run.measuring = true;
        loader.ViewFile(File());
        loader.SetAutoUpdate(true);
        shown.unitCode = unit;
    }
    void Save(std::int32_t number, const std::string& comment = "") {
        run.SaveMeasure(File(), number, comment, displayed);
    }
    /// The value of each set at a point.
    std::vector<double> Values(int point) const {
        std::vector<double> values;
        for (const auto& [number, set] : view.graph.sets)
            if (set.data.contains(point))
                values.push_back(set.data.at(point));
        return values;
    }

    FileOpr::DisplayedChannels displayed = DisplayedRun();
    FileOpr::LiveReport live{run, [this] { loader.LiveRecord(); }};
};

TEST_F(LiveRecord, The_list_receives_each_line_and_a_wider_separator) {
    Follow(Quantity::mV);
    const std::size_t before = viewed.pages.LineCount(0);
    Save(1, "first look");
    ASSERT_EQ(viewed.pages.LineCount(0), before + 8);
    EXPECT_EQ(viewed.pages.Shown(0, before), "Record 1\tAt\t14:05:33 07.Mar.2003");
    EXPECT_EQ(viewed.pages.Shown(0, before + 1), "Comment:\tfirst look");
    EXPECT_EQ(viewed.pages.Shown(0, before + 2),
              "mV             \t59.0        \t-12.3       \t-412.0      \tNA          ");
    EXPECT_EQ(viewed.pages.Shown(0, before + 7), std::string(200, '-'));
}

TEST_F(LiveRecord, The_graph_receives_the_leading_number_of_each_used_channel) {
    Follow(Quantity::mV);
    displayed[0][Quantity::mV] = "  59.5 mV";
    displayed[1][Quantity::mV] = "Error";
    displayed[3] = {" ", "", "", "", "9"}; // idle
    Save(1);
    EXPECT_EQ(Values(1), (std::vector<double>{59.5, 0, -412}));
}

TEST_F(LiveRecord, The_graph_receives_concentrations_in_the_chosen_unit) {
    Follow(Quantity::mol_l);
    shown.channelInUse = {false, true};
    Save(1);
    Save(2);
    Save(3);
    EXPECT_EQ(Values(3), std::vector<double>{0.001});
    EXPECT_EQ(view.graph.labels.at(3), "3");
}

TEST_F(LiveRecord, The_graph_receives_temperatures_by_sensor) {
    mWinInit::ChannelSetup[0].TempSensor = 4;
    mWinInit::ChannelSetup[2].TempSensor = 0;
    Follow(Quantity::celsius);
    displayed[2][Quantity::celsius] = "77";
    Save(1);
    EXPECT_EQ(view.graph.sets.at(1).legend, "Temp. 2");
    EXPECT_EQ(view.graph.sets.at(2).legend, "Temp. 4");
    EXPECT_EQ(Values(1), (std::vector<double>{22, 21.5}));
}

} // namespace
