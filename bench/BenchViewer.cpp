// bench_viewer FILE: opens a measurement file in the real viewer and prints what it took. Run under
// any Qt platform; without a display, QT_QPA_PLATFORM=offscreen. Each figure is one line, name and
// number, for viewer-figures.sh.

#include "bench/EventGaps.h"
#include "bench/ResidentMemory.h"
#include "platform/Platform.h"
#include "platform/System.h"
#include "platform/qt/QtDesktop.h"
#include "platform/qt/QtPrinting.h"
#include "report/PrintJob.h"
#include "report/RecordSearch.h"
#include "screens/Report/Report.h"
#include "screens/Report/WholeRunPanel.h"
#include "screens/controls/GraphControl.h"
#include "support/FakePlatform.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QElapsedTimer>
#include <qcustomplot.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>

namespace {

double Elapsed_ms(const QElapsedTimer& timer) {
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

/// Notes when the graph has been drawn with points in it for the first time.
class FirstDrawing {
public:
    FirstDrawing(QCustomPlot& plot, const QElapsedTimer& clock) {
        QObject::connect(&plot, &QCustomPlot::afterReplot, &plot, [this, &plot, &clock] {
            const bool points =
                plot.graphCount() > 0 && plot.graph(0)->visible() && plot.graph(0)->dataCount() > 0;
            if (points && at_ms < 0)
                at_ms = Elapsed_ms(clock);
        });
    }
    double at_ms = -1;
};

template <class Step>
double Best_ms(int times, const Step& step) {
    double best = 1e9;
    for (int i = 0; i < times; ++i) {
        QElapsedTimer timer;
        timer.start();
        step();
        best = std::min(best, Elapsed_ms(timer));
    }
    return best;
}

void Print(const std::string& name, double value) {
    std::cout << name << ' ' << value << '\n';
}

void MeasureSearch(const Mreport::ViewedFile& file) {
    Mreport::RecordSearch search(file);
    double worst = 0;
    const std::int32_t last =
        Mreport::PageRecordRange(file.pages, file.LastPageIndex()).lastRecord.number;
    for (int tenth = 0; tenth <= 10; ++tenth) {
        const auto number =
            static_cast<std::int32_t>(std::max<std::int64_t>(1, std::int64_t{last} * tenth / 10));
        QElapsedTimer timer;
        timer.start();
        if (!search.Find({number}))
            Print("search_missed", number);
        worst = std::max(worst, Elapsed_ms(timer));
    }
    Print("search_worst_ms", worst);
}

void MeasureRedraw(GraphControl& graph) {
    constexpr int points = 1500;
    constexpr int series = 8;
    graph.SetNumSets(series);
    graph.SetNumPoints(points);
    graph.SetDataReset(Mreport::graph::resetAllData);
    for (int set = 1; set <= series; ++set) {
        graph.SetThisSet(set);
        graph.SetLegend(set, "Ch. " + std::to_string(set));
        for (int point = 1; point <= points; ++point)
            graph.SetData(point, set * 20 + 10 * std::sin(point / (20.0 + set)) +
                                     (point * 7919 % 13) * 0.1);
    }
    for (int point = 1; point <= points; ++point) {
        graph.SetXAxisMinorTicks(point % 30 == 0 ? 0 : 1);
        graph.SetLabel(point, std::to_string(point));
    }
    Print("redraw_1500x8_ms", Best_ms(20, [&graph] {
              graph.SetDrawMode(Mreport::graph::draw);
              graph.findChild<QCustomPlot*>()->replot(QCustomPlot::rpImmediateRefresh);
          }));
}

/// Until the overview holds the whole run.
void Fill(const WholeRunPanel& run) {
    while (!run.Complete())
        QApplication::processEvents();
}

/// Another quantity, from its choice until its overview holds the whole run.
void MeasureQuantity(Report& form, const WholeRunPanel& run) {
    auto& quantities = *form.findChild<QComboBox*>("cboQuantity");
    QElapsedTimer timer;
    timer.start();
    quantities.setCurrentIndex(quantities.count() - 1);
    Fill(run);
    Print("quantity_ms", Elapsed_ms(timer));
}

/// The preview of the first list page's table, closed again once it is shown.
void MeasurePreview(const Report& form) {
    QTimer close;
    QObject::connect(&close, &QTimer::timeout, &close, [] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog != nullptr && QApplication::overrideCursor() == nullptr)
            dialog->reject();
    });
    close.start(500);
    QElapsedTimer timer;
    timer.start();
    Mreport::PrintPageTable(form.File(), 0, Mreport::RecordsOfPage(form.File(), 0), {},
                            [](const Mreport::TableProgress&) {});
    Print("preview_ms", Elapsed_ms(timer));
}

} // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    if (argc < 2) {
        std::cerr << "usage: bench_viewer FILE\n";
        return 2;
    }
    fake::Platform fakes;
    platform::QtDesktop desktop;
    platform::QtPrinting printing;
    const auto clock = platform::MakeClock();
    const platform::Services services{fakes.dialogs,   desktop,      *clock,       *fakes.profile,
                                      fakes.userStore, fakes.places, *fakes.files, printing};
    platform::Install(&services);

    FileOpr::MeasuringRun run;
    Report form(run);
    form.show();
    QApplication::processEvents();
    const long idle_KiB = ResidentMemory_KiB();

    auto& graph = *form.findChild<GraphControl*>("graReport");
    QElapsedTimer timer;
    const FirstDrawing firstDrawing(*graph.findChild<QCustomPlot*>(), timer);
    timer.start();
    EventGaps gaps;
    form.ViewFile(argv[1]);
    Print("ready_ms", Elapsed_ms(timer));
    Print("graph_ms", firstDrawing.at_ms);
    Print("longest_gap_ms", gaps.Take_ms());
    Print("memory_KiB", static_cast<double>(ResidentMemory_KiB() - idle_KiB));
    Print("index_KiB", static_cast<double>(form.File().pages.IndexBytes() / 1024));
    Print("pages", form.File().pages.Count());
    const auto& wholeRun = *form.findChild<WholeRunPanel*>();
    Fill(wholeRun);
    Print("overview_ms", Elapsed_ms(timer));
    Print("overview_gap_ms", gaps.Take_ms());
    MeasureQuantity(form, wholeRun);
    Print("quantity_gap_ms", gaps.Take_ms());
    MeasurePreview(form);
    Print("preview_gap_ms", gaps.Take_ms());
    MeasureSearch(form.File());
    MeasureRedraw(graph);
    form.close();
}
