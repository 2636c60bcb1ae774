// An entry of the history beside a record of a measurement file, on the disk of the current folder:
// each is one flush. Both are written where the program waits for them.

#include "history/Histories.h"
#include "platform/System.h"

#include <benchmark/benchmark.h>

#include <filesystem>

namespace {

constexpr std::size_t recordLength = 550; ///< of four channels

/// A file of the current folder, gone with its companions at the end.
class OnDisk {
public:
    explicit OnDisk(const char* name) : file(std::filesystem::current_path() / name) {}
    ~OnDisk() {
        for (const char* end : {"", "-wal", "-shm"}) {
            std::error_code missing;
            std::filesystem::remove(file.string() + end, missing);
        }
    }
    OnDisk(const OnDisk&) = delete;
    OnDisk& operator=(const OnDisk&) = delete;

    const std::filesystem::path file;
};

void BM_RecordWithFlush(benchmark::State& state) {
    const OnDisk disk("bench-record");
    const auto files = platform::MakeFileStore();
    const std::string record(recordLength, 'x');
    for (auto _ : state)
        files->OpenForAppend(disk.file)->Append(record, true);
}
BENCHMARK(BM_RecordWithFlush)->UseRealTime()->Unit(benchmark::kMicrosecond);

void BM_HistoryEntry(benchmark::State& state) {
    const OnDisk disk("bench-history");
    const auto store = History::OpenStore(disk.file);
    const std::string text(100, 'x');
    for (auto _ : state)
        Say(*store, text);
}
BENCHMARK(BM_HistoryEntry)->UseRealTime()->Unit(benchmark::kMicrosecond);

/// What a start of the program waits for: ten years of twenty entries a day.
void BM_OpenLongHistory(benchmark::State& state) {
    const OnDisk disk("bench-history");
    const std::vector<History::Row::Fields> rows(73000, Saying(std::string(300, 'x')));
    History::OpenStore(disk.file)->Append(rows);
    for (auto _ : state)
        History::OpenStore(disk.file);
}
BENCHMARK(BM_OpenLongHistory)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace
