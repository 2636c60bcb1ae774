// Writing records and reading measurement files. The reader's figure stands beside
//   wc -l FILE
// on the file that this program leaves when the variable VANTREL_BENCH_FILE names one.

#include "files/MeasurementReader.h"
#include "files/MeasuringRun.h"
#include "settings/mWinInit.h"
#include "support/FakePlatform.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <fstream>

namespace {

void SetUpRun() {
    mWinInit::Reset(4);
    mWinInit::ProjectInfo.ProjectName = "Benchmark";
    for (std::size_t i = 0; i < 4; ++i) {
        mWinInit::ChannelSetup[i] = {"Ca", "S-1", "Double", "R-1", 40.078F, 1};
        mWinInit::Calibration[i].PointCount = 2;
    }
}

FileOpr::DisplayedChannels Displayed() {
    FileOpr::DisplayedChannels displayed;
    for (auto& channel : displayed)
        channel = {"-123.4", "", "40.1", "1.00E-03", "21.5"};
    return displayed;
}

MeasurementFormat::Channels FourChannels() {
    return MeasurementFormat::Channels(mWinInit::ChannelSetup).first(4);
}

std::string RecordText(std::int32_t number) {
    const auto rows = MeasurementFormat::RowsOf(FourChannels());
    const auto record =
        MeasurementFormat::BuildRecord(number, {2003, 3, 7, 14, 5, 33}, "", Displayed(), 4);
    return MeasurementFormat::RecordText(record, rows, 4);
}

void FormatRecord(benchmark::State& state) {
    SetUpRun();
    for (auto _ : state)
        benchmark::DoNotOptimize(RecordText(1));
}
BENCHMARK(FormatRecord);

/// On the disk of the temporary folder, not in memory.
std::filesystem::path FileOnDisk() {
    return std::filesystem::temp_directory_path() / "vantrel-bench.4ch";
}

void WriteRecord(benchmark::State& state, bool durable) {
    fake::Platform platform;
    FileOpr::MeasuringRun run;
    SetUpRun();
    const auto file = FileOnDisk();
    std::int32_t number = 0;
    for (auto _ : state)
        platform.files->OpenForAppend(file)->Append(RecordText(++number), durable);
    std::filesystem::remove(file);
}
BENCHMARK_CAPTURE(WriteRecord, to_the_system, false);
BENCHMARK_CAPTURE(WriteRecord, to_the_disk, true);

void ReadFile(benchmark::State& state) {
    fake::Platform platform;
    FileOpr::MeasuringRun run;
    SetUpRun();
    const auto* kept = std::getenv("VANTREL_BENCH_FILE");
    const auto file = kept != nullptr ? std::filesystem::path(kept) : FileOnDisk();
    constexpr std::int32_t records = 100000;
    run.CreateHeadLines(file);
    {
        std::ofstream stream(file, std::ios::binary | std::ios::app);
        for (std::int32_t number = 1; number <= records; ++number)
            stream << RecordText(number);
    }
    const std::string text = ReadBytes(file);
    for (auto _ : state) {
        FileOpr::MeasurementReader reader(text);
        FileOpr::MeasurementRecord record;
        std::int32_t count = 0;
        while (reader.Next(record))
            ++count;
        if (count != records)
            state.SkipWithError("records are missing");
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(text.size()));
    if (kept == nullptr)
        std::filesystem::remove(file);
}
BENCHMARK(ReadFile)->Unit(benchmark::kMillisecond);

} // namespace
