#include "report/Selection.h"

#include "report/support/LoadedReport.h"

namespace {

class SelectionOf : public LoadedReport {
protected:
    static std::vector<int> Enabled(const Mreport::Selection& selection) {
        std::vector<int> boxes;
        for (std::size_t i = 0; i < 8; ++i)
            if (selection.BoxAt(i).enabled)
                boxes.push_back(static_cast<int>(i));
        return boxes;
    }
};

} // namespace

TEST_F(SelectionOf, Each_unit_enables_the_channels_that_can_give_it) {
    View(MeasurementText().File(1)); // Ca, H (pH), Redox, None
    Mreport::Selection selection(viewed, shown);
    EXPECT_EQ(Enabled(selection), (std::vector<int>{0, 1, 2}));
    selection.ChooseUnit(Quantity::pH);
    EXPECT_EQ(Enabled(selection), std::vector<int>{1});
    selection.ChooseUnit(Quantity::ppm);
    EXPECT_EQ(Enabled(selection), std::vector<int>{0});
    selection.ChooseUnit(Quantity::mol_l);
    EXPECT_EQ(Enabled(selection), std::vector<int>{0});
    EXPECT_EQ(selection.UnitName(), "mol/l");
    EXPECT_EQ(selection.Heading(), "Channels");
}

TEST_F(SelectionOf, Degrees_enable_the_sensors_that_channels_have) {
    View(MeasurementText().File(1));
    Mreport::Selection selection(viewed, shown);
    selection.ChooseUnit(Quantity::celsius);
    EXPECT_EQ(Enabled(selection), (std::vector<int>{0, 1}));
    EXPECT_EQ(selection.Heading(), "Temp. Sensors");
    EXPECT_TRUE(selection.BoxAt(3).visible);
    EXPECT_FALSE(selection.BoxAt(4).visible);
}

TEST_F(SelectionOf, A_file_without_sensors_leaves_all_sensor_boxes_disabled) {
    MeasurementText text;
    text.sensors = {"N/A", "N/A", "N/A", "N/A"};
    View(text.File(1));
    Mreport::Selection selection(viewed, shown);
    selection.ChooseUnit(Quantity::celsius);
    EXPECT_EQ(Enabled(selection), std::vector<int>{});
    EXPECT_EQ(selection.CheckedCount(), 0);
}

TEST_F(SelectionOf, Eight_channels_have_eight_boxes) {
    MeasurementText text;
    text.electrodes = {"Ca", "Cl", "K", "Na", "F", "I", "Br", "Ag"};
    text.sensors = {"1", "2", "3", "4", "1", "2", "3", "4"};
    View(text.File(1));
    Mreport::Selection selection(viewed, shown);
    EXPECT_EQ(selection.CheckedCount(), 8);
    selection.ChooseUnit(Quantity::celsius);
    EXPECT_EQ(selection.CheckedCount(), 4);
}

TEST_F(SelectionOf, The_unit_in_force_keeps_its_check_marks) {
    View(MeasurementText().File(1));
    Mreport::Selection selection(viewed, shown);
    selection.Check(0, false);
    selection.ChooseUnit(Quantity::mV);
    EXPECT_FALSE(selection.BoxAt(0).checked);
}

TEST_F(SelectionOf, Fifteen_hundred_points_are_refused_and_less_is_accepted) {
    MeasurementText text;
    text.electrodes = {"Ca", "Cl", "K", "None"};
    View(text.File(1));
    const Mreport::Selection selection(viewed, shown);
    ASSERT_EQ(selection.CheckedCount(), 3);
    EXPECT_TRUE(selection.Fits(499));
    EXPECT_FALSE(selection.Fits(500));
    EXPECT_TRUE(selection.Fits(50));
}

TEST_F(SelectionOf, Accepting_writes_unit_and_channels) {
    View(MeasurementText().File(1));
    Mreport::Selection selection(viewed, shown);
    selection.Check(1, false);
    selection.Accept(shown);
    EXPECT_EQ(Mreport::Series(viewed, shown, Quantity::mV), (std::vector<int>{1, 3}));
    EXPECT_EQ(shown.unitCode, Quantity::mV);
}

TEST_F(SelectionOf, Accepting_sensors_keeps_the_choice_of_channels) {
    View(MeasurementText().File(1));
    Mreport::Selection selection(viewed, shown);
    selection.ChooseUnit(Quantity::celsius);
    selection.Check(0, false);
    selection.Accept(shown);
    EXPECT_EQ(Mreport::Series(viewed, shown, Quantity::celsius), std::vector<int>{2});
    EXPECT_EQ(Mreport::Series(viewed, shown, Quantity::mV), (std::vector<int>{1, 2, 3}));
    EXPECT_FALSE(Mreport::Selection(viewed, shown).BoxAt(0).checked);
    EXPECT_TRUE(Mreport::Selection(viewed, shown).BoxAt(1).checked);
}

TEST_F(SelectionOf, A_disabled_box_cannot_be_checked) {
    View(MeasurementText().File(1));
    Mreport::Selection selection(viewed, shown);
    selection.Check(3, true);
    EXPECT_FALSE(selection.BoxAt(3).checked);
}

TEST_F(SelectionOf, A_unit_that_nothing_selected_gives_selects_all_that_give_it) {
    View(MeasurementText().File(1)); // Ca, H (pH), Redox, None
    Mreport::Selection ppm(viewed, shown);
    ppm.ChooseUnit(Quantity::ppm);
    ppm.Accept(shown);
    Mreport::Selection deselected(viewed, shown);
    deselected.ChooseUnit(Quantity::mV);
    deselected.Check(1, false);
    deselected.Accept(shown);
    Mreport::Selection pH(viewed, shown);
    pH.ChooseUnit(Quantity::pH);
    EXPECT_TRUE(pH.BoxAt(1).checked);
    EXPECT_FALSE(pH.BoxAt(0).checked);
    EXPECT_FALSE(pH.BoxAt(3).checked);
}

TEST_F(SelectionOf, Channels_that_a_unit_left_out_come_back_with_the_next) {
    View(MeasurementText().File(1));
    Mreport::Selection ppm(viewed, shown);
    ppm.ChooseUnit(Quantity::ppm);
    ppm.Accept(shown);
    EXPECT_EQ(Mreport::Series(viewed, shown), std::vector<int>{1});
    Mreport::Selection potentials(viewed, shown);
    potentials.ChooseUnit(Quantity::mV);
    EXPECT_EQ(potentials.CheckedCount(), 3);
    potentials.Check(2, false);
    potentials.Accept(shown);
    Mreport::Selection again(viewed, shown);
    again.ChooseUnit(Quantity::ppm);
    again.Accept(shown);
    Mreport::Selection last(viewed, shown);
    last.ChooseUnit(Quantity::mV);
    EXPECT_EQ(last.CheckedCount(), 2) << "what the user has left out stays out";
}
