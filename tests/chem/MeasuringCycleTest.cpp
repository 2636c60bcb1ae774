#include "chem/MeasuringCycle.h"

#include <gtest/gtest.h>

namespace {

class MeasuringCycleTest : public ::testing::Test {
protected:
    std::array<CalibrationRecord, maxChannels> calibration;
    std::array<TempSensorCalibration, tempSensorCount> sensor;
    std::array<float, cyclePositions> averages{};

    MeasuringCycleTest() {
        Measure::Reset();
        calibration[0].PointCount = 2;
        calibration[0].CaliData = {100.0F, 159.0F};
        calibration[0].Standard = {1.0F, 10.0F};
        calibration[1].PointCount = 2;
        calibration[1].CaliData = {177.5F, 0.0F};
        calibration[1].Standard = {4.0F, 7.0F};
        sensor[0].PointCount = 2;
        sensor[0].Reading = {700.0F, 900.0F};
        sensor[0].Temperature = {30.0F, 10.0F};
        averages[0] = 129.5F;
        averages[1] = 59.0F;
        averages[8] = 800.0F;
    }

    MeasuringCycle::Source Source() const {
        MeasuringCycle::Source source{{{"Ca", "H (pH)"}, calibration, sensor}, {}, {}, {}};
        source.selected = {-1, -1};
        source.tempSensor = {1, 0};
        source.molarMass_g_per_mol = {40.078F};
        return source;
    }
};

} // namespace

TEST_F(MeasuringCycleTest, Composes_what_each_selected_channel_shows) {
    const auto outcome = MeasuringCycle::Run(Source(), averages);
    // 10^0.5 ppm; 3.162 / 40078 mol/l; linear scale after the pH channel: 20 degrees.
    const ChannelDisplay::Cells ion = {{{{"129.5"}, {""}, {"3.2"}, {"7.89E-05"}, {"20.0"}}}};
    EXPECT_EQ(outcome.cells[0], ion);
    EXPECT_EQ(outcome.cells[1][Quantity::pH].text, "6.00");
    EXPECT_EQ(outcome.cells[1][Quantity::celsius].text, "");
    EXPECT_EQ(outcome.problem, "");
}

TEST_F(MeasuringCycleTest, A_channel_that_is_not_selected_is_blank_throughout) {
    auto source = Source();
    source.selected[0] = 0;
    const auto outcome = MeasuringCycle::Run(source, averages);
    EXPECT_EQ(outcome.cells[0], ChannelDisplay::Cells());
    EXPECT_EQ(outcome.cells[1][Quantity::mV].text, "59.0");
}

TEST_F(MeasuringCycleTest, A_channel_without_usable_calibration_shows_its_potential_alone) {
    calibration[0].PointCount = 1;
    const auto outcome = MeasuringCycle::Run(Source(), averages);
    EXPECT_EQ(outcome.cells[0][Quantity::mV].text, "129.5");
    EXPECT_EQ(outcome.cells[0][Quantity::ppm].text, "");
    EXPECT_EQ(outcome.problem, "");
}

TEST_F(MeasuringCycleTest, A_failed_channel_is_named_and_leaves_the_others) {
    calibration[0].Standard = {0.0F, 10.0F};
    const auto outcome = MeasuringCycle::Run(Source(), averages);
    EXPECT_EQ(outcome.cells[0][Quantity::mV].text, "129.5");
    EXPECT_EQ(outcome.cells[0][Quantity::ppm], (ChannelDisplay::Cell{"Error", true}));
    EXPECT_EQ(outcome.cells[1][Quantity::pH].text, "6.00");
    EXPECT_TRUE(outcome.problem.starts_with("Converting channel 1: ")) << outcome.problem;
}

TEST_F(MeasuringCycleTest, A_failed_sensor_is_named_by_its_own_number) {
    sensor[0].Temperature = {30.0F, 0.0F};
    auto source = Source();
    source.selected[1] = 0; // an ion channel is the last converted: logarithmic scale
    const auto outcome = MeasuringCycle::Run(source, averages);
    EXPECT_EQ(outcome.cells[0][Quantity::celsius], (ChannelDisplay::Cell{"Error", true}));
    EXPECT_EQ(outcome.cells[0][Quantity::ppm].text, "3.2");
    EXPECT_TRUE(outcome.problem.starts_with("Converting temperature sensor 1: "))
        << outcome.problem;
}

TEST_F(MeasuringCycleTest, The_numbers_behind_the_cells_come_with_them) {
    const auto outcome = MeasuringCycle::Run(Source(), averages);
    const auto& ion = outcome.values[0];
    EXPECT_FLOAT_EQ(*ion[Quantity::mV], 129.5F);
    EXPECT_NEAR(*ion[Quantity::ppm], 3.1623F, 1E-4F);           // 10^0.5
    EXPECT_NEAR(*ion[Quantity::mol_l], 3.1623F / 40078, 1E-9F); // 40.078 g/mol
    EXPECT_FLOAT_EQ(*ion[Quantity::celsius], 20.0F);
    EXPECT_FALSE(ion[Quantity::pH]);
    EXPECT_NEAR(*outcome.values[1][Quantity::pH], 6.0F, 0.01F);
    EXPECT_FALSE(outcome.values[1][Quantity::celsius]);
    EXPECT_EQ(outcome.values[2], ChannelDisplay::Values());
}

TEST_F(MeasuringCycleTest, A_cell_that_says_Error_has_no_number) {
    calibration[0].Standard = {0.0F, 10.0F};
    const auto outcome = MeasuringCycle::Run(Source(), averages);
    EXPECT_FLOAT_EQ(*outcome.values[0][Quantity::mV], 129.5F);
    EXPECT_FALSE(outcome.values[0][Quantity::ppm]);
    auto source = Source();
    source.molarMass_g_per_mol = {};
    calibration[0].Standard = {1.0F, 10.0F};
    const auto unknownMass = MeasuringCycle::Run(source, averages);
    EXPECT_TRUE(unknownMass.values[0][Quantity::ppm]);
    EXPECT_FALSE(unknownMass.values[0][Quantity::mol_l]);
}
