#include "chem/Measure.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace {

CalibrationRecord Calibration(std::initializer_list<std::array<float, 2>> readingAndStandard) {
    CalibrationRecord record;
    for (const auto& [reading, standard] : readingAndStandard) {
        const std::size_t point = record.Points();
        ++record.PointCount;
        record.CaliData[point] = reading;
        record.Standard[point] = standard;
    }
    return record;
}

TempSensorCalibration SensorTable(std::initializer_list<std::array<float, 2>> readingAndCelsius) {
    TempSensorCalibration sensor;
    for (const auto& [reading, celsius] : readingAndCelsius) {
        const std::size_t row = sensor.Rows();
        ++sensor.PointCount;
        sensor.Reading[row] = reading;
        sensor.Temperature[row] = celsius;
    }
    return sensor;
}

const CalibrationRecord pHCalibration = Calibration({{177.5F, 4.0F}, {0.0F, 7.0F}});
const CalibrationRecord ionCalibration = Calibration({{100, 1}, {159, 10}, {218, 100}});
const TempSensorCalibration twoRows = SensorTable({{100, 10}, {200, 40}});

/// The geometric mean of 10 and 40, what the logarithmic scale gives midway.
constexpr float logarithmicMiddle_celsius = 20.0F;
constexpr float linearMiddle_celsius = 25.0F;

class ConvertReadings : public testing::Test {
protected:
    void SetUp() override {
        Measure::Reset();
        converted.fill(untouched);
        sensors.fill(twoRows);
    }
    void TearDown() override { Measure::Reset(); }

    void Connect(std::size_t channel, std::string_view electrode, const CalibrationRecord& record,
                 float reading) {
        electrodes[channel] = electrode;
        calibrations[channel] = record;
        readings[channel] = reading;
        selected[channel] = -1;
    }

    void ConnectSensor(std::size_t sensor, float reading) {
        readings[maxChannels + sensor] = reading;
        selected[maxChannels + sensor] = -1;
    }

    Measure::ConversionFailures Convert() {
        return Measure::ConvertReadings({electrodes, calibrations, sensors}, selected, readings,
                                        converted);
    }

    static constexpr float untouched = -99.0F;
    std::array<std::string_view, maxChannels> electrodes{};
    std::array<CalibrationRecord, maxChannels> calibrations{};
    std::array<TempSensorCalibration, tempSensorCount> sensors{};
    std::array<std::int16_t, cyclePositions> selected{};
    std::array<float, cyclePositions> readings{};
    std::array<float, cyclePositions> converted{};
};

TEST_F(ConvertReadings, Unselected_positions_keep_their_value) {
    Connect(0, "H (pH)", pHCalibration, 59.0F);
    Connect(1, "Ca", ionCalibration, 188.5F);
    selected[0] = 0;
    Convert();
    EXPECT_EQ(converted[0], untouched);
    EXPECT_NEAR(converted[1], 31.622776F, 1e-5F);
    for (std::size_t i = 2; i < cyclePositions; ++i)
        EXPECT_EQ(converted[i], untouched);
}

TEST_F(ConvertReadings, A_Redox_channel_gives_one_whatever_its_reading_and_leaves_the_scale) {
    Measure::IsPHMode = true;
    Connect(0, "Redox", {}, -412.0F);
    Connect(1, "my Redox ring", ionCalibration, 5.0F);
    const auto failures = Convert();
    EXPECT_EQ(converted[0], 1.0F);
    EXPECT_EQ(converted[1], 1.0F);
    EXPECT_FALSE(failures[0]);
    EXPECT_TRUE(Measure::IsPHMode);
}

TEST_F(ConvertReadings, The_kind_is_told_by_letter_case_too) {
    Connect(0, "redox", ionCalibration, 188.5F); // no Redox electrode: converted as an ion
    Connect(1, "H (PH)", ionCalibration, 188.5F);
    Convert();
    EXPECT_NEAR(converted[0], 31.622776F, 1e-5F);
    EXPECT_NEAR(converted[1], 31.622776F, 1e-5F);
}

TEST_F(ConvertReadings, Temperatures_after_a_pH_channel_are_linear) {
    Connect(0, "Ca", ionCalibration, 188.5F);
    Connect(1, "H (pH)", pHCalibration, 59.0F);
    Connect(2, "Redox", {}, 3.0F);
    ConnectSensor(0, 150);
    Convert();
    EXPECT_NEAR(converted[8], linearMiddle_celsius, 1e-5F);
}

TEST_F(ConvertReadings, Temperatures_after_an_ion_channel_are_logarithmic) {
    Connect(0, "H (pH)", pHCalibration, 59.0F);
    Connect(1, "Ca", ionCalibration, 188.5F);
    ConnectSensor(3, 150);
    Convert();
    EXPECT_NEAR(converted[11], logarithmicMiddle_celsius, 1e-5F);
}

TEST_F(ConvertReadings, Temperatures_after_a_pH_channel_without_points_are_linear_too) {
    Connect(0, "H (pH)", {}, 59.0F);
    ConnectSensor(0, 150);
    EXPECT_EQ(Convert()[0], "Subscript out of range");
    EXPECT_NEAR(converted[8], linearMiddle_celsius, 1e-5F);
}

TEST_F(ConvertReadings, Temperatures_alone_take_the_scale_that_was_left) {
    ConnectSensor(0, 150);
    Measure::IsPHMode = true;
    Convert();
    EXPECT_NEAR(converted[8], linearMiddle_celsius, 1e-5F);
    Measure::IsPHMode = false;
    Convert();
    EXPECT_NEAR(converted[8], logarithmicMiddle_celsius, 1e-5F);
}

TEST_F(ConvertReadings, A_sensor_of_one_row_uses_the_spare_row_of_zeros) {
    Measure::IsPHMode = true;
    sensors[0] = SensorTable({{-100, 25}}); // rising towards the spare row (0, 0)
    ConnectSensor(0, -120);
    EXPECT_FALSE(Convert()[8]);
    EXPECT_NEAR(converted[8], 30.0F, 1e-5F); // 25 + (-20) * -25 / 100

    sensors[0] = SensorTable({{100, 25}}); // falling towards it
    ConnectSensor(0, 120);
    EXPECT_FALSE(Convert()[8]);
    EXPECT_NEAR(converted[8], 30.0F, 1e-5F);
}

TEST_F(ConvertReadings, A_sensor_of_one_row_has_no_segment_behind_the_row) {
    Measure::IsPHMode = true;
    sensors[0] = SensorTable({{100, 25}});
    ConnectSensor(0, 80);
    EXPECT_EQ(Convert()[8], "Subscript out of range");
}

TEST_F(ConvertReadings, A_sensor_without_rows_is_out_of_range) {
    sensors[2] = {};
    ConnectSensor(2, 80);
    EXPECT_EQ(Convert()[10], "Subscript out of range");
}

TEST_F(ConvertReadings, A_failing_position_keeps_its_value_and_the_others_are_converted) {
    Connect(0, "Ca", {}, 188.5F); // not calibrated
    Connect(1, "H (pH)", pHCalibration, 0.0F);
    Connect(2, "NO3", Calibration({{100, 0}, {200, 10}}), 150.0F);
    Connect(3, "Ca", ionCalibration, 159.0F);
    sensors[1] = SensorTable({{100, 10}, {200, 0}});
    ConnectSensor(1, 150);
    ConnectSensor(2, 150);
    const auto failures = Convert();
    EXPECT_EQ(failures[0], "Subscript out of range");
    EXPECT_EQ(converted[0], untouched);
    EXPECT_EQ(converted[1], 7.0F);
    EXPECT_EQ(failures[2], "Logarithm of a number that is not above 0");
    EXPECT_EQ(converted[2], untouched);
    EXPECT_EQ(converted[3], 10.0F);
    EXPECT_EQ(failures[9], "Logarithm of a number that is not above 0"); // the logarithm of 0 °C
    EXPECT_EQ(converted[9], untouched);
    EXPECT_FALSE(failures[10]);
    EXPECT_NEAR(converted[10], logarithmicMiddle_celsius, 1e-5F);
}

TEST_F(ConvertReadings, A_count_beyond_the_tables_is_out_of_range_and_reads_nothing) {
    auto record = ionCalibration;
    record.PointCount = 7;
    Connect(0, "Ca", record, 1.0F);
    record.PointCount = -1;
    Connect(1, "Ca", record, 1.0F);
    sensors[0].PointCount = 17;
    ConnectSensor(0, 1);
    const auto failures = Convert();
    EXPECT_EQ(failures[0], "Subscript out of range");
    EXPECT_EQ(failures[1], "Subscript out of range");
    EXPECT_EQ(failures[8], "Subscript out of range");
}

TEST(Measure, A_calibration_of_2_to_6_points_is_usable) {
    CalibrationRecord record;
    for (const auto& [points, usable] :
         {std::pair(-1, false), std::pair(0, false), std::pair(1, false), std::pair(2, true),
          std::pair(6, true), std::pair(7, false)}) {
        record.PointCount = static_cast<std::int16_t>(points);
        EXPECT_EQ(Measure::IsUsable(record), usable) << points;
    }
}

TEST(Measure, At_the_programs_start_the_scale_is_logarithmic) {
    Measure::IsPHMode = true;
    Measure::Reset();
    EXPECT_FALSE(Measure::IsPHMode);
}

TEST_F(ConvertReadings, Only_channels_that_can_be_converted_and_their_sensors_are_selected) {
    const std::array<std::int16_t, maxChannels> channels{-1, -1, -1, -1, -1, 0, -1, -1};
    const std::array<int, maxChannels> sensorOf{0, 1, 0, 4, 0, 3, 9, -1};
    electrodes = {"Ca", "Ca", "Redox", "None", "H (pH)", "Ca", "", "F"};
    calibrations[1] = ionCalibration;
    calibrations[3] = ionCalibration; // left over from an earlier electrode
    calibrations[4] = pHCalibration;
    calibrations[5] = ionCalibration;
    calibrations[7] = Calibration({{100, 1}});
    const auto positions =
        Measure::SelectPositions({electrodes, calibrations, sensors}, channels, sensorOf);
    const std::array<std::int16_t, cyclePositions> expected{0, -1, -1, 0, -1, 0,
                                                            0, 0,  -1, 0, 0,  -1};
    EXPECT_EQ(positions, expected);
}

} // namespace
