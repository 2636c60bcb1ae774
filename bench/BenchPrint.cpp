#include "platform/qt/QtPrinter.h"
#include "platform/qt/QtPrinting.h"
#include "report/PrintLayout.h"
#include "report/PrintedLines.h"
#include "support/FakePlatform.h"

#include <QApplication>
#include <QFileInfo>
#include <QPrinter>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

/// A printed table of so many pages as a PDF file. The target is 10 s for 1,000 pages.
void PrintTablePages(benchmark::State& state) {
    constexpr int recordsAPage = 12;
    fake::Platform platform;
    platform.clock.step = std::chrono::milliseconds(1); // events run at every line
    PrintedLines page;
    const auto records = static_cast<int>(state.range(0)) * recordsAPage;
    for (int record = 1; record <= records; ++record)
        page.AddRecord(record, "sample from the river");
    const Mreport::TableReport report{page, 1, 5, 4, "Well 7", "07-Mar-2003"};
    const QTemporaryDir folder;
    const QString file = folder.filePath("table.pdf");
    int pages = 0;
    for (auto _ : state) {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(file);
        platform::SetMargins(printer);
        platform::PrintOn(printer, "Table", [&](platform::Printer& paper) {
            Mreport::PrintTable(paper, report, {1, records}, [](const auto&) {});
            pages = paper.PageNumber();
        });
    }
    state.counters["pages"] = pages;
    state.counters["bytes"] = static_cast<double>(QFileInfo(file).size());
}
BENCHMARK(PrintTablePages)->Arg(100)->Arg(1000)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
