#include "screens/frmMain/MeasuringPage.h"

#include "app/Mcommon.h"
#include "base/DateText.h"
#include "files/MeasuringRun.h"
#include "link/CommPort.h"
#include "link/DataAcq.h"
#include "platform/Platform.h"
#include "platform/qt/Text.h"
#include "screens/controls/BusyPointer.h"
#include "screens/controls/ValueLabel.h"
#include "screens/controls/Wiring.h"
#include "screens/frmMain/ReadingsTable.h"
#include "settings/SetupChecks.h"
#include "settings/mWinInit.h"
#include "ui_MeasuringPage.h"

#include <QEvent>
#include <QScopeGuard>

namespace {

constexpr int timeInterval_ms = 250;

int ChannelCount() {
    return mWinInit::HardwareSettings.ChannelCount;
}

} // namespace

MeasuringPage::MeasuringPage(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::MeasuringPage>()), tmrRead(this), tmrTime(this) {
    ui_->setupUi(this);
    table_ = new ReadingsTable(*this);
    ConnectEvents();
}

MeasuringPage::~MeasuringPage() = default;

void MeasuringPage::ConnectEvents() {
    const Wiring wire(*this, guard_, "frmMain");
    wire(&tmrRead, &QTimer::timeout, "tmrRead", &MeasuringPage::tmrRead_Timer);
    wire(&tmrTime, &QTimer::timeout, "tmrTime", &MeasuringPage::tmrTime_Timer);
    connect(ui_->fraRecording, &RecordingGroup::RunChanged, this, &MeasuringPage::RunChanged);
}

void MeasuringPage::Load(FileOpr::MeasuringRun& run) {
    run_ = &run;
    tmrRead.setObjectName("tmrRead");
    tmrTime.setObjectName("tmrTime");
    tmrTime.setInterval(timeInterval_ms);
    ui_->fraRecording->Load(run);
    table_->Prepare();
}

void MeasuringPage::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) // the controls take the palette after their page
        QTimer::singleShot(0, this, [this] { table_->ShowColours(); });
}

MeasuringPage::RunState MeasuringPage::State() const {
    if (!series_.IsRunning())
        return RunState::start;
    return ui_->fraRecording->IsAutomaticOn() ? RunState::stop : RunState::record;
}

bool MeasuringPage::IsBusy() const {
    // The pointer may have been taken away meanwhile, by a report that was loaded.
    return series_.IsAwaiting() ||
           platform::Current().desktop.GetMousePointer() == platform::MousePointer::hourglass;
}

void MeasuringPage::Enter(const Selection& selected) {
    MeasuringCycle::Source cycle{mWinInit::ConversionTables(), {}, {}, {}};
    for (int i = 0; i < ChannelCount(); ++i) {
        const auto position = static_cast<std::size_t>(i);
        cycle.selected[position] = selected[position] ? -1 : 0;
        cycle.tempSensor[position] = mWinInit::ChannelSetup[position].TempSensor;
        cycle.molarMass_g_per_mol[position] = mWinInit::ChannelSetup[position].MolarMass;
        table_->Show(i, {});
        table_->ShowSetup(i, selected[position]);
    }
    cycle_ = cycle;
    ui_->fraRecording->Reset();
    ui_->fraRecording->ShowAveraging(
        QString::number(mWinInit::HardwareSettings.AveragingForMeasurement));
    run_->measuring = true;
    tmrTime_Timer();
    tmrTime.start();
    StartReading();
}

void MeasuringPage::Leave() {
    StopReading();
    run_->measuring = false;
    tmrTime.stop();
    // Records that cannot be moved now stay in the temporary file; the next move takes them along.
    guard_("frmMain - FlushTempFile", [this] {
        const BusyPointer busy;
        run_->FlushTempFile();
    });
}

void MeasuringPage::StartReading() {
    lessMotion_ = platform::Current().desktop.WantsLessMotion();
    series_.Start(mWinInit::HardwareSettings.AveragingForMeasurement);
    Q_EMIT RunChanged();
}

void MeasuringPage::StopReading() {
    series_.Stop();
    table_->BlinkTitle(false);
    ShowProblem({}); // it is about readings that no longer come
}

void MeasuringPage::tmrRead_Timer() {
    if (!series_.IsRunning() || series_.IsAtWork())
        return;
    table_->BlinkTitle(lessMotion_ || !table_->IsTitleRed());
    std::array<float, cyclePositions> averages{};
    switch (series_.OnTimer(averages)) {
    case ReadingSeries::Tick::nothing:
        break;
    case ReadingSeries::Tick::values:
        ShowAverages(averages);
        break;
    case ReadingSeries::Tick::failed:
        ReadingFailed();
        break;
    }
}

void MeasuringPage::ShowAverages(std::span<const float, cyclePositions> averages) {
    const MeasuringCycle::Outcome outcome = MeasuringCycle::Run(*cycle_, averages);
    for (int i = 0; i < ChannelCount(); ++i)
        table_->Show(i, outcome.cells[static_cast<std::size_t>(i)]);
    ShowProblem(Text::ToQt(outcome.problem));
}

void MeasuringPage::ShowProblem(const QString& problem) {
    if (std::exchange(problemShown_, problem) != problem)
        Q_EMIT StatusChanged(problem);
}

void MeasuringPage::ReadingFailed() {
    StopReading();
    ui_->fraRecording->Stop();
    Mcommon::Warn(DataAcq::connectionMessage);
}

void MeasuringPage::tmrTime_Timer() {
    if (std::exchange(timeTickAtWork_, true))
        return;
    const auto done = qScopeGuard([this] { timeTickAtWork_ = false; });
    ShowValue(*ui_->panTime, Text::ToQt(DateText::Clock(platform::Current().clock.Now())));
    ui_->fraRecording->Tick([this] { return DisplayedNow(); });
}

std::optional<FileOpr::DisplayedChannels> MeasuringPage::DisplayedNow() const {
    return series_.HasValues() ? std::optional(table_->Displayed()) : std::nullopt;
}

void MeasuringPage::RunPressed() {
    switch (State()) {
    case RunState::start:
        StartReading();
        break;
    case RunState::record:
        ui_->fraRecording->Record([this] { return DisplayedNow(); });
        break;
    case RunState::stop:
        ui_->fraRecording->Stop();
        break;
    }
}

void MeasuringPage::ReportPressed() {
    ui_->fraRecording->ShowReport();
}

void MeasuringPage::AveragingPressed() {
    const std::string answer = Mcommon::TrimControl(platform::Current().dialogs.AskText(
        "Input new averaging number for the measuring.", std::string(Mcommon::applicationTitle),
        Text::FromQt(ui_->fraRecording->AveragingText())));
    if (answer.empty())
        return;
    const auto averaging = SetupChecks::Averaging(answer);
    if (!averaging) {
        Mcommon::Inform(SetupChecks::averagingRange);
        return;
    }
    mWinInit::HardwareSettings.AveragingForMeasurement = *averaging;
    series_.RestartAveraging(*averaging);
    ui_->fraRecording->ShowAveraging(Text::ToQt(answer));
    Q_EMIT AveragingChanged(Text::ToQt(answer));
}

bool MeasuringPage::CloseReport() {
    return ui_->fraRecording->CloseReport();
}

bool MeasuringPage::EndWork() {
    const bool wasReading = series_.IsRunning();
    StopReading();
    ui_->fraRecording->Stop();
    return wasReading;
}

void MeasuringPage::ResumeReading() {
    StartReading();
}
