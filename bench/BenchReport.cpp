// The viewer's work without a window: indexing and splitting into pages, search, graph spans.

#include "files/MeasuringRun.h"
#include "report/GraphSpan.h"
#include "report/RecordSearch.h"
#include "report/ReportLoader.h"
#include "report/SilentView.h"
#include "report/support/MeasurementText.h"
#include "support/FakePlatform.h"

#include <benchmark/benchmark.h>

namespace {

class NoGraph : public Mreport::SilentGraph {
public:
    int NumSets() const override { return 4; }
    int NumPoints() const override { return 50; }
    void SetData(int, double value) override { benchmark::DoNotOptimize(value); }
};

/// A file of the given number of records on the disk, and a viewer for it. The clock jumps, so that
/// the pause at a load's end does not count.
struct Viewer {
    explicit Viewer(int records) {
        platform.clock.step = std::chrono::milliseconds(100);
        WriteBytes(file, MeasurementText().File(records));
    }
    fake::Platform platform;
    FileOpr::MeasuringRun run;
    std::filesystem::path file = platform.folder.Path() / "run.4ch";
    Mreport::SilentView<NoGraph> view{50};
    Mreport::ViewedFile viewed;
    Mreport::ShownGraph shown;
    Mreport::ReportLoader loader{run, viewed, shown, view};
};

void Load(benchmark::State& state) {
    Viewer viewer(static_cast<int>(state.range(0)));
    for (auto _ : state)
        viewer.loader.ViewFile(viewer.file);
    state.SetBytesProcessed(static_cast<std::int64_t>(std::filesystem::file_size(viewer.file)) *
                            state.iterations());
    state.SetComplexityN(state.range(0));
}
BENCHMARK(Load)->Range(1 << 10, 1 << 17)->Unit(benchmark::kMillisecond)->Complexity();

void Search(benchmark::State& state) {
    Viewer viewer(1 << 16);
    viewer.loader.ViewFile(viewer.file);
    Mreport::RecordSearch search(viewer.viewed);
    std::int32_t number = 1;
    for (auto _ : state) {
        benchmark::DoNotOptimize(search.Find({number}));
        number = number * 31 % (1 << 16) + 1;
    }
}
BENCHMARK(Search)->Unit(benchmark::kMicrosecond);

void DrawSpan(benchmark::State& state) {
    Viewer viewer(4000);
    viewer.loader.ViewFile(viewer.file);
    for (auto _ : state)
        Mreport::UpdateGraph(viewer.view.graph, viewer.viewed, viewer.shown,
                             {0, {3000}, static_cast<std::int32_t>(state.range(0))});
}
BENCHMARK(DrawSpan)->Arg(50)->Arg(1500)->Unit(benchmark::kMicrosecond);

} // namespace
