#include "screens/frmMain/MainScreenTest.h"

#include "link/CommPort.h"
#include "settings/mWinInit.h"

namespace {

void PrepareChannel(std::size_t channel, const mWinInit::ChannelSetupRecord& setup,
                    const std::vector<std::pair<float, float>>& points) {
    mWinInit::ChannelSetup[channel] = setup;
    CalibrationRecord& record = mWinInit::Calibration[channel];
    record.CalibrationDate = "10:12:40 07.Mar.2003";
    record.PointCount = static_cast<std::int16_t>(points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        record.CaliData[i] = points[i].first;
        record.Standard[i] = points[i].second;
    }
}

} // namespace

MainScreenTest::MainScreenTest() {
    mWinInit::LoadSettings();
    mWinInit::ProjectInfo.ProjectName = "River water";
    mWinInit::ProjectInfo.Experimentator = "A. Analyst";
    mWinInit::ProjectInfo.ExperimentDate = "14:05:33 07.Mar.2003";
    mWinInit::HardwareSettings.AveragingForMeasurement = 1;
    PrepareChannel(0, {"Ca", "CA-1", "Ag/AgCl", "R-1", 40.078F, 1},
                   {{100.0F, 1.0F}, {159.0F, 10.0F}, {218.0F, 100.0F}});
    PrepareChannel(1, {"H (pH)", "PH-2", "Ag/AgCl", "R-2", 0, 2}, {{177.5F, 4.0F}, {0.0F, 7.0F}});
    PrepareChannel(2, {"Redox", "RX-3", "None", "", 0, 0}, {{100.0F, 1.0F}, {200.0F, 2.0F}});
    PrepareChannel(3, {"None", "", "None", "", 0, 0}, {});
    CommPort::fncInitializeComPort();
}

void MainScreenTest::Open() {
    run.emplace();
    form = std::make_unique<frmMain>(*run);
    Show(*form);
}

void MainScreenTest::OpenMeasuring() {
    Open();
    Click(*form, "cmdPage", frmMain::switchPage);
    ASSERT_EQ(form->ShownPage(), frmMain::Page::measuring);
}

void MainScreenTest::OpenReading() {
    OpenMeasuring();
    ReadFrame(frame);
    ASSERT_EQ(platform.desktop.pointer, platform::MousePointer::normal);
}

void MainScreenTest::ReadFrame(const std::array<int, 8>& tenths) {
    Arrive(tenths);
    Tick(*form, "tmrRead");
}

std::filesystem::path MainScreenTest::AnswerSaveDialog(const std::string& name) {
    const auto file = platform.folder.Path() / name;
    platform.dialogs.ExpectFileDialog([file](const platform::FileDialogRequest&) { return file; });
    return file;
}

void MainScreenTest::TimePasses(std::chrono::milliseconds time) {
    platform.clock.monotonic += time;
    Tick(*form, "tmrTime");
}
