#include "chem/MeasuringCycle.h"
#include "link/DataAcq.h"
#include "link/Frame.h"
#include "settings/mWinInit.h"
#include "support/FakeLink.h"
#include "support/FakePlatform.h"

#include <benchmark/benchmark.h>

#include <algorithm>

namespace {

/// Four ion channels of six points, each with a sensor: every position is converted and shown.
MeasuringCycle::Source PrepareSource() {
    mWinInit::LoadSettings();
    for (std::size_t i = 0; i < 4; ++i) {
        mWinInit::ChannelSetup[i] = {"Ca", "CA-1",  "",
                                     "",   40.078F, static_cast<std::int16_t>(i + 1)};
        mWinInit::Calibration[i].PointCount = maxCalibrationPoints;
        mWinInit::Calibration[i].CaliData = {0.0F, 40.0F, 80.0F, 120.0F, 160.0F, 200.0F};
        mWinInit::Calibration[i].Standard = {0.1F, 1.0F, 10.0F, 100.0F, 1000.0F, 10000.0F};
    }
    MeasuringCycle::Source source{mWinInit::ConversionTables(), {-1, -1, -1, -1}, {1, 2, 3, 4}, {}};
    source.molarMass_g_per_mol.fill(40.078F);
    return source;
}

/// Decode, average over 10 readings, convert and format one cycle.
void LiveCycle(benchmark::State& state) {
    const fake::Platform platform;
    const auto source = PrepareSource();
    const auto bytes = FrameOf({1885, 7458, 590, 7996, 1300, 6000, 1700, 5000});
    Frame::Bytes frame{};
    std::copy(bytes.begin(), bytes.end(), frame.begin());
    DataAcq::StartSeries(10);
    std::array<float, cyclePositions> averages{};
    for (auto _ : state) {
        const auto values = Frame::Decode(frame);
        std::copy(values.begin(), values.end(), CommPort::Readings.begin());
        DataAcq::ReadChannels(averages);
        auto outcome = MeasuringCycle::Run(source, averages);
        benchmark::DoNotOptimize(outcome);
    }
}
BENCHMARK(LiveCycle);

} // namespace
