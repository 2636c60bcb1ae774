// Conversion, and the whole live cycle from the frame's bytes to the texts that are shown.

#include "chem/Measure.h"
#include "chem/MeasuringCycle.h"
#include "link/CommPort.h"
#include "link/DataAcq.h"
#include "link/Frame.h"
#include "settings/mWinInit.h"
#include "support/FakePlatform.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>

namespace {

/// Eight channels, the larger cycle: pH and ion electrodes in turn, each with a sensor.
void SetUpEightChannels() {
    mWinInit::Reset(8);
    for (std::size_t i = 0; i < maxChannels; ++i) {
        const bool pH = i % 2 == 0;
        const auto sensor = static_cast<std::int16_t>(i % tempSensorCount + 1);
        mWinInit::ChannelSetup[i] = {pH ? "H (pH)" : "Ca", "S-1", "Double", "R-1", 40.078F, sensor};
        mWinInit::Calibration[i] =
            pH ? CalibrationRecord{"", 3, 0, {4, 7, 10}, {177.5F, 0, -177.5F}, {}}
               : CalibrationRecord{
                     "", 6, 0, {0.1F, 1, 10, 100, 1000, 1E4F}, {-100, -41, 18, 77, 136, 195}, {}};
    }
    for (std::size_t sensor = 0; sensor < tempSensorCount; ++sensor)
        mWinInit::LoadTempSensorMatrix(sensor, "");
}

std::array<std::int16_t, cyclePositions> AllPositions() {
    std::array<std::int16_t, cyclePositions> selected{};
    selected.fill(-1);
    return selected;
}

void ConvertCycle(benchmark::State& state) {
    fake::Platform platform;
    SetUpEightChannels();
    const auto selected = AllPositions();
    const std::array<float, cyclePositions> readings{59,  11, -59, 60,  100, 120,
                                                     -12, 30, 150, 140, 130, 120};
    std::array<float, cyclePositions> converted{};
    const auto tables = mWinInit::ConversionTables();
    for (auto _ : state) {
        const auto failures = Measure::ConvertReadings(tables, selected, readings, converted);
        if (std::ranges::any_of(failures, [](const auto& failure) { return failure.has_value(); }))
            state.SkipWithError("a position was not converted");
        benchmark::DoNotOptimize(converted);
    }
}
BENCHMARK(ConvertCycle);

/// The whole cycle of the measuring page: decode, average over 10 readings, convert, format.
void LiveCycle(benchmark::State& state) {
    const fake::Platform platform;
    SetUpEightChannels();
    MeasuringCycle::Source source{mWinInit::ConversionTables(), {}, {}, {}};
    source.selected.fill(-1);
    source.molarMass_g_per_mol.fill(40.078F);
    for (std::size_t i = 0; i < maxChannels; ++i)
        source.tempSensor[i] = mWinInit::ChannelSetup[i].TempSensor;
    Frame::Bytes frame{};
    std::memcpy(frame.data(), "+0590\t+1500\t+0110\t+1400\t-0590\t+1300\t+0600\t+1200\x04",
                Frame::length);
    DataAcq::StartSeries(10);
    std::array<float, cyclePositions> averages{};
    for (auto _ : state) {
        const auto values = Frame::Decode(frame);
        std::ranges::copy(values, CommPort::Readings().begin());
        DataAcq::ReadChannels(averages);
        const auto outcome = MeasuringCycle::Run(source, averages);
        if (!outcome.problem.empty())
            state.SkipWithError("a position was not converted");
        benchmark::DoNotOptimize(outcome);
    }
}
BENCHMARK(LiveCycle);

} // namespace
