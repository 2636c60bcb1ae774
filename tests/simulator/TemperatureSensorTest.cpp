#include "simulator/TemperatureSensor.h"

#include <cmath>
#include <gtest/gtest.h>
#include <utility>

using namespace simulator;

// The table that the program uses for a sensor until it has another one.
TEST(SensorReading, Is_the_tables_at_its_rows) {
    constexpr std::pair<double, double> rows[] = {
        {80, 205.5}, {70, 271.9}, {60, 355.9}, {50, 456.9}, {40, 570.8},
        {30, 688.7}, {25, 745.8}, {20, 799.6}, {10, 894.0}, {0, 966.8}};
    for (const auto& [temperature_C, reading] : rows)
        EXPECT_DOUBLE_EQ(SensorReading(temperature_C), reading) << temperature_C;
}

// Between 20 (799.6) and 25 (745.8): 799.6 - 53.8 * 2 / 5 = 778.08.
TEST(SensorReading, Runs_straight_between_two_rows) {
    EXPECT_NEAR(SensorReading(22), 778.08, 1e-9);
}

// Above 80: 205.5 - 66.4 / 10 a degree, so 139.1 at 90; below 0 at most the four digits.
TEST(SensorReading, Is_extended_beyond_the_table_and_stays_within_the_frame) {
    EXPECT_NEAR(SensorReading(90), 139.1, 1e-9);
    EXPECT_NEAR(SensorReading(-2), 966.8 + 2 * 7.28, 1e-9);
    EXPECT_DOUBLE_EQ(SensorReading(-10), 999.9);
    EXPECT_DOUBLE_EQ(SensorReading(500), 0);
}

TEST(TemperatureSensor, Follows_a_change_exponentially) {
    TemperatureSensor sensor(20, Seconds(4), Seconds(0));
    sensor.SetTemperature(30, Seconds(10));
    EXPECT_DOUBLE_EQ(sensor.Reading(Seconds(10)), SensorReading(20));
    EXPECT_DOUBLE_EQ(sensor.Reading(Seconds(14)), SensorReading(30 - 10 * std::exp(-1.0)));
    EXPECT_NEAR(sensor.Reading(Seconds(100)), 688.7, 1e-6);
    EXPECT_DOUBLE_EQ(sensor.Temperature(), 30);
}
