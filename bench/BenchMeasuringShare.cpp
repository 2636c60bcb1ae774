// What the whole program takes of the machine while it measures at one frame a second against the
// simulated instrument: its share of a core and its resident memory, first with the measuring page
// alone, then recording every second with the live report open. Under a display:
// bench_measuring_share [SECONDS of each]. Fails when the measuring page is above its bounds.

#include "bench/ResidentMemory.h"
#include "program/SystemServices.h"
#include "program/theMain.h"
#include "screens/Report/ReportMenus.h"
#include "screens/frmMain/frmMain.h"
#include "support/InstrumentProcess.h"
#include "tour/DialogAnswers.h"
#include "tour/Stage.h"
#include "tour/TourPlaces.h"

#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace {

using namespace std::chrono_literals;

constexpr double shareBound_percent = 2;
constexpr double memoryBound_MiB = 90;

struct Figures {
    double share_percent;
    double memory_MiB;
};

double ProcessorTime_s() {
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

/// Lets the program alone for the time; nothing here wakes up meanwhile.
Figures Observe(const char* what, std::chrono::seconds time) {
    stage::Watch(3s); // the work of opening is over
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    const double begin_s = ProcessorTime_s();
    loop.exec();
    const double taken_s = ProcessorTime_s() - begin_s;
    const Figures figures = {100 * taken_s / static_cast<double>(time.count()),
                             static_cast<double>(ResidentMemory_KiB()) / 1024};
    std::printf("%s: %.2f %% of a core, %.1f MiB resident\n", what, figures.share_percent,
                figures.memory_MiB);
    return figures;
}

void Press(QWidget& main, frmMain::PageButton button) {
    stage::Click(main, QString("cmdPage_%1").arg(button));
}

void BeginMeasuring(QWidget& main) {
    Press(main, frmMain::switchPage);
    stage::WaitFor("readings", [&] {
        bool isNumber = false;
        stage::TextOf(main, "lblEntry_32").toDouble(&isNumber);
        return isNumber;
    });
}

void BeginRecording(QWidget& main, const QTemporaryDir& home) {
    DialogAnswers answers;
    answers.File("Save File As", home.filePath("measurement.4ch"));
    stage::Pick(main, "cboAcqr", "Automatic");
    stage::Type(main, "txtTimer", "1");
    Press(main, frmMain::run);
    stage::WaitFor("the first record", [&] { return stage::TextOf(main, "lblRec") == "1"; });
    Press(main, frmMain::report);
    QWidget& report = stage::Window("Report");
    stage::WaitFor("the report", [&] { return stage::TextOf(report, "lblStatus") == "Ready"; });
    stage::Choose(report, QString("mnuUpdateItem_%1").arg(ReportMenus::automaticUpdate));
}

/// Desktop folders of its own with the demonstration's project, which is calibrated.
void PrepareFolders(const QTemporaryDir& home) {
    for (const char* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"}) {
        const QString folder = home.filePath(QString(variable).toLower());
        QDir().mkpath(folder + "/Vantrel/Data");
        qputenv(variable, folder.toLocal8Bit());
    }
    QFile::copy(VANTREL_DEMO_SETTINGS, home.filePath("xdg_config_home/Vantrel/Vantrel.ini"));
}

} // namespace

int main(int argc, char* argv[]) {
    const std::chrono::seconds time(argc > 1 ? std::atoi(argv[1]) : 60);
    const QTemporaryDir home;
    PrepareFolders(home);
    QApplication application(argc, argv);
    TourPlaces places;
    const InstrumentProcess instrument(places.ConfigurationFolder().parent_path());
    const theMain::SystemServices services(places);
    theMain::Program program;
    program.Main();
    stage::Click(stage::Window("frmSplash"), "cmdCommand1");
    QWidget& main = stage::Window("frmMain");
    BeginMeasuring(main);
    const Figures measuring = Observe("measuring page", time);
    BeginRecording(main, home);
    Observe("recording with the live report", time);
    const bool held =
        measuring.share_percent <= shareBound_percent && measuring.memory_MiB <= memoryBound_MiB;
    std::fflush(stdout);
    std::_Exit(held ? 0 : 1); // leaves the questions of a regular exit out
}
