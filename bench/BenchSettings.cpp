#include "platform/System.h"
#include "settings/mWinInit.h"
#include "support/DamagedSettings.h"
#include "support/FakePlatform.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

/// A file as it is after years of use: four channels and every electrode in the library.
void FillFile() {
    mWinInit::LoadSettings();
    for (std::size_t channel = 0; channel < 4; ++channel) {
        auto& record = mWinInit::Calibration[channel];
        record.CalibrationDate = "10:12:40 07.Mar.2003";
        record.PointCount = 3;
        record.Standard = {10, 100, 1000};
        record.CaliData = {-55.3F, 2.1F, 58.4F};
        for (const char* electrode : {"Ca", "NO3", "K", "Na", "Cl", "NH4", "H (pH)", "F"}) {
            mWinInit::ChannelSetup[channel].Electrode = electrode;
            mWinInit::SaveCalibrationInfo(electrode, channel);
        }
    }
    mWinInit::SaveSettings();
}

void LoadSettings(benchmark::State& state) {
    fake::Platform platform;
    FillFile();
    for (auto _ : state)
        mWinInit::LoadSettings();
}
BENCHMARK(LoadSettings)->Unit(benchmark::kMicrosecond);

/// One key changes between two saves, as after a session at the bench.
void SaveSettings(benchmark::State& state) {
    fake::Platform platform;
    FillFile();
    for (auto _ : state) {
        ++mWinInit::WindowX;
        benchmark::DoNotOptimize(mWinInit::SaveSettings());
    }
}
BENCHMARK(SaveSettings)->Unit(benchmark::kMicrosecond);

/// A file that is seen for the first time: 10 MB of what a damaged one may hold.
void LoadDamagedSettings(benchmark::State& state) {
    const damaged::Shape& shape = damaged::shapes.at(static_cast<std::size_t>(state.range(0)));
    fake::Platform platform;
    const std::string bytes = damaged::File(shape, 10'000'000);
    WriteBytes(platform.SettingsFile(), bytes);
    for (auto _ : state) {
        const auto profile = platform::MakeProfileFile(platform.SettingsFile());
        benchmark::DoNotOptimize(profile->GetString("Hardware", "Port Number", "", 130));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
    state.SetLabel(shape.name);
}
BENCHMARK(LoadDamagedSettings)->DenseRange(0, 5)->Unit(benchmark::kMillisecond);

} // namespace
