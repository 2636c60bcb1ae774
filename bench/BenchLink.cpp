#include "link/CommPort.h"
#include "link/DataAcq.h"
#include "platform/System.h"
#include "support/FakeLink.h"
#include "support/FakePlatform.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>

namespace {

const std::array<int, 8> tenths = {123, -456, 30, -40, 500, -600, 7000, -9999};

void DecodeFrame(benchmark::State& state) {
    Frame::Bytes frame{};
    const auto bytes = FrameOf(tenths);
    std::copy(bytes.begin(), bytes.end(), frame.begin());
    for (auto _ : state) {
        benchmark::DoNotOptimize(frame);
        benchmark::DoNotOptimize(Frame::Decode(frame));
    }
}
BENCHMARK(DecodeFrame);

/// Request, arrival, decoding and the texts of txtStatus, without the line's time.
void PolledTransfer(benchmark::State& state) {
    const fake::Platform platform;
    fake::Link link;
    CommPort::fncInitializeComPort();
    const auto frame = FrameOf(tenths);
    for (auto _ : state) {
        CommPort::TransferOnce();
        link.serial.Arrive(frame);
        link.serial.written.clear();
    }
    if (CommPort::State() != CommPort::LinkState::answered)
        state.SkipWithError("no answer");
}
BENCHMARK(PolledTransfer);

/// One tick of a screen after the history was filled: its cost must not grow with the averaging
/// number. The clock is the system's, since each value looks at it.
void ReadChannels(benchmark::State& state) {
    fake::Platform fakes;
    const auto clock = platform::MakeClock();
    const platform::Services services{fakes.dialogs,   fakes.desktop, *clock,       *fakes.profile,
                                      fakes.userStore, fakes.places,  *fakes.files, fakes.printing};
    platform::Install(&services);
    DataAcq::StartSeries(static_cast<int>(state.range(0)));
    std::array<float, cyclePositions> averages{};
    DataAcq::ReadChannels(averages);
    for (auto _ : state) {
        DataAcq::ReadChannels(averages);
        benchmark::DoNotOptimize(averages);
    }
}
BENCHMARK(ReadChannels)->Arg(1)->Arg(10)->Arg(1000);

} // namespace
