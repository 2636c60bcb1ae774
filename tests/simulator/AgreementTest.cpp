#include "link/Frame.h"
#include "settings/mWinInit.h"
#include "simulator/FrameEncoder.h"
#include "simulator/Instrument.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

/// The instrument and the program against each other: what the one encodes the other reads.
using namespace simulator;

TEST(Agreement, The_program_reads_every_value_that_a_frame_can_hold) {
    for (int tenths = -9999; tenths <= 9999; ++tenths) {
        Values values{};
        values.fill(tenths / 10.0);
        const simulator::Frame frame = EncodeFrame(values);
        ASSERT_TRUE(::Frame::IsComplete(frame));
        for (float read : ::Frame::Decode(frame))
            ASSERT_FLOAT_EQ(read, static_cast<float>(tenths) / 10);
    }
}

// Each reading is rounded to a tenth, so a difference of two is off by a tenth at most.
TEST(Agreement, A_calibration_over_the_line_finds_the_slope_that_the_electrode_was_given) {
    Instrument instrument(Instrument::Nature::ideal, 1, Seconds(0));
    ElectrodeTraits traits = IdealTraits("Ca");
    traits.efficiency = 0.95;
    instrument.SetElectrode(0, traits, Seconds(0));
    const auto reading = [&](double amount_ppm) {
        instrument.SetSolution(0, Solution{{{"Ca", amount_ppm, Unit::ppm}}}, Seconds(0));
        return ::Frame::Decode(EncodeFrame(instrument.Sample(Seconds(0))))[0];
    };
    EXPECT_NEAR(reading(10) - reading(1), 0.95 * 29.580, 0.1001);
    EXPECT_NEAR(reading(100) - reading(10), 0.95 * 29.580, 0.1001);
}

TEST(Agreement, Electrodes_and_sensors_alternate_in_the_frame) {
    Instrument instrument(Instrument::Nature::ideal, 1, Seconds(0));
    for (int channel = 0; channel < channelCount; ++channel) {
        instrument.SetElectrode(channel, IdealTraits("Redox"), Seconds(0));
        const double potential = 100.0 * (channel + 1);
        instrument.SetSolution(channel, Solution{{{"Redox", potential, Unit::mV}}}, Seconds(0));
        instrument.SetTemperature(channel, 10.0 * (channel + 1), Seconds(0));
    }
    const ::Frame::Values expected = {100, 894.0F, 200, 799.6F, 300, 688.7F, 400, 570.8F};
    EXPECT_EQ(::Frame::Decode(EncodeFrame(instrument.Sample(Seconds(0)))), expected);
}

TEST(Agreement, The_sensors_are_those_of_the_programs_default_table) {
    fake::Platform platform;
    mWinInit::LoadTempSensorMatrix(0, "");
    const TempSensorCalibration& table = mWinInit::TempSensor[0];
    ASSERT_EQ(table.PointCount, 10);
    for (std::size_t row = 0; row < 10; ++row)
        EXPECT_FLOAT_EQ(static_cast<float>(SensorReading(double{table.Temperature[row]})),
                        table.Reading[row]);
}
