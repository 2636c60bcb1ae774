// The whole run: what the overview, the search and the statistics cost. Files of a day come from
// the program's own writer's layout; viewer-figures.sh shows the same for a week.

#include "files/MeasurementReader.h"
#include "report/RecordScan.h"
#include "report/RunOverview.h"
#include "report/Verify.h"
#include "report/support/MeasuredRun.h"
#include "report/support/MeasurementText.h"

#include <benchmark/benchmark.h>

namespace {

const std::vector<Mreport::SeriesColumns> channels = {{0}, {1}, {2}, {3}};
constexpr std::uint64_t wholeFile = ~std::uint64_t{0};

void Scan(benchmark::State& state) {
    const std::string text = MeasurementText().File(static_cast<int>(state.range(0)));
    Mreport::MemorySource source(text);
    Mreport::FoundRecord record;
    for (auto _ : state) {
        Mreport::RecordScan scan(source, {0, text.size()}, {Quantity::mV, false});
        while (scan.Next(record))
            benchmark::DoNotOptimize(record.values);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
    state.SetItemsProcessed(state.range(0) * state.iterations());
}
BENCHMARK(Scan)->Arg(1 << 16)->Unit(benchmark::kMillisecond);

void Overview(benchmark::State& state) {
    const std::string text = MeasurementText().File(static_cast<int>(state.range(0)));
    Mreport::MemorySource source(text);
    Mreport::RunOverview overview;
    for (auto _ : state) {
        overview.Start(source, {{{0, text.size()}, state.range(0)}},
                       {{Quantity::mV, false}, channels, {0, state.range(0)}, false, 0});
        overview.Step(wholeFile);
        benchmark::DoNotOptimize(overview.Columns(0, overview.Span(), 1000));
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
    state.SetItemsProcessed(state.range(0) * state.iterations());
    state.SetComplexityN(state.range(0));
}
BENCHMARK(Overview)->Range(1 << 10, 1 << 18)->Unit(benchmark::kMillisecond)->Complexity();

/// Every potential of every record differs: what was computed for one serves few others.
void Verify(benchmark::State& state) {
    constexpr std::uint32_t seed = 1;
    const std::string text = MeasuredRun(seed, static_cast<int>(state.range(0))).Text();
    const FileOpr::MeasurementReader reader(text);
    Mreport::MemorySource source(text);
    for (auto _ : state) {
        Mreport::Verification verification(source, text.size(), reader.Header());
        verification.Step(wholeFile);
        if (verification.Result().diverged > 0)
            state.SkipWithError("a run as it was measured diverged");
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
    state.SetItemsProcessed(state.range(0) * state.iterations());
}
BENCHMARK(Verify)->Arg(1 << 16)->Unit(benchmark::kMillisecond);

/// What finding the line ends alone costs, as `wc -l` does.
void CountLines(benchmark::State& state) {
    const std::string text = MeasurementText().File(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        std::int64_t lines = 0;
        for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos; ++at)
            ++lines;
        benchmark::DoNotOptimize(lines);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
}
BENCHMARK(CountLines)->Arg(1 << 16)->Unit(benchmark::kMillisecond);

} // namespace
