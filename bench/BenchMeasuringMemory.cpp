// Measures whether memory grows while the measuring page reads, shows and records: prints the
// resident memory after a warm-up and after 100,000 ticks, and fails when it has grown by more
// than a MiB.

#include "bench/ResidentMemory.h"
#include "files/MeasuringRun.h"
#include "link/CommPort.h"
#include "screens/frmMain/frmMain.h"
#include "settings/mWinInit.h"
#include "support/FakeLink.h"
#include "support/FakePlatform.h"

#include <QApplication>
#include <QComboBox>
#include <QPushButton>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <string>

namespace {

constexpr int warmUpTicks = 2000;
constexpr int ticks = 100000;
constexpr long allowedGrowth_KiB = 1024;

void PrepareProject() {
    mWinInit::LoadSettings();
    mWinInit::ProjectInfo.ProjectName = "Memory";
    mWinInit::ProjectInfo.Experimentator = "A. Analyst";
    for (std::size_t i = 0; i < 4; ++i) {
        mWinInit::ChannelSetup[i] = {"Ca", "CA-1",  "",
                                     "",   40.078F, static_cast<std::int16_t>(i + 1)};
        mWinInit::Calibration[i].PointCount = 2;
        mWinInit::Calibration[i].CaliData = {0.0F, 200.0F};
        mWinInit::Calibration[i].Standard = {0.1F, 10000.0F};
    }
    CommPort::fncInitializeComPort();
}

/// The measuring page with an instrument whose values change with every frame.
class Run {
public:
    Run() {
        platform_.desktop.onEvents = [] { QCoreApplication::processEvents(); };
        PrepareProject();
        form_ = std::make_unique<frmMain>(run_);
        form_->show();
        Press(frmMain::switchPage);
        ReadFrame(0);
        StartAutomatic();
    }

    void Tick(int number) {
        platform_.clock.monotonic += std::chrono::milliseconds(500);
        ReadFrame(number);
        Fire("tmrTime");
        QCoreApplication::processEvents();
    }

private:
    void Press(frmMain::PageButton button) {
        form_->findChild<QPushButton*>(QString("cmdPage_%1").arg(button))->click();
    }

    void ReadFrame(int number) {
        const int mV_tenths = number % 2000;
        link_.serial.Arrive(
            FrameOf({mV_tenths, 7458, -mV_tenths, 7996, mV_tenths / 2, 6000, 1700, 5000}));
        link_.serial.written.clear();
        link_.IntervalTicks();
        Fire("tmrRead");
    }

    void StartAutomatic() {
        form_->findChild<QComboBox*>("cboAcqr")->setCurrentIndex(1);
        platform_.dialogs.ExpectFileDialog([this](const platform::FileDialogRequest&) {
            return platform_.folder.Path() / "memory.4ch";
        });
        Press(frmMain::run);
    }

    void Fire(const char* timer) {
        QMetaObject::invokeMethod(form_->findChild<QTimer*>(timer), "timeout");
    }

    fake::Platform platform_;
    fake::Link link_;
    FileOpr::MeasuringRun run_;
    std::unique_ptr<frmMain> form_;
};

} // namespace

int main(int argc, char* argv[]) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    Run run;
    for (int i = 0; i < warmUpTicks; ++i)
        run.Tick(i);
    const long before = ResidentMemory_KiB();
    for (int i = 0; i < ticks; ++i)
        run.Tick(i);
    const long after = ResidentMemory_KiB();
    std::printf(
        "resident memory after %d ticks: %ld KiB, after %d more: %ld KiB, grown by %ld KiB\n",
        warmUpTicks, before, ticks, after, after - before);
    return after - before <= allowedGrowth_KiB ? 0 : 1;
}
