#include "app/Mcommon.h"
#include "base/NumberText.h"

#include <benchmark/benchmark.h>

#include <array>

namespace {

/// Readings as a frame brings them: mV of electrodes, units of sensors, small concentrations.
constexpr std::array<float, 12> readings = {-55.3F, 177.25F,  2.1F,  745.8F,  0.0F,    -123.45F,
                                            899.6F, 12345.0F, 1e-5F, 0.0523F, 1023.9F, 255.25F};

void FormatReadings(benchmark::State& state) {
    for (auto _ : state)
        for (const float reading : readings)
            benchmark::DoNotOptimize(Mcommon::FormatReading(reading));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(readings.size()));
}
BENCHMARK(FormatReadings);

void PlainNumbers(benchmark::State& state) {
    for (auto _ : state)
        for (const float reading : readings)
            benchmark::DoNotOptimize(NumberText::Plain(reading));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(readings.size()));
}
BENCHMARK(PlainNumbers);

void LeadingNumbers(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(NumberText::LeadingSingle("-123.45;7"));
}
BENCHMARK(LeadingNumbers);

} // namespace
