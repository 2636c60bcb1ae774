#include "screens/frmMain/MeasuringPage.h"

#include "app/Mcommon.h"
#include "base/DateText.h"
#include "files/MeasuringRun.h"
#include "link/CommPort.h"
#include "link/DataAcq.h"
#include "platform/Platform.h"
#include "platform/qt/Text.h"
#include "screens/controls/BusyPointer.h"
#include "screens/controls/Colours.h"
#include "screens/controls/ValueLabel.h"
#include "screens/controls/Wiring.h"
#include "screens/frmCheck/frmCheck.h"
#include "screens/frmMain/ReadingsTable.h"
#include "settings/MeasuringChoices.h"
#include "settings/mWinInit.h"
#include "ui_MeasuringPage.h"

#include <QEvent>
#include <QScopeGuard>

namespace {

constexpr int timeInterval_ms = 250;

} // namespace

MeasuringPage::MeasuringPage(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::MeasuringPage>()), tmrRead(this), tmrTime(this) {
    ui_->setupUi(this);
    table_ = new ReadingsTable(*this);
    readings_.emplace(*table_);
    ConnectEvents();
}

MeasuringPage::~MeasuringPage() = default;

void MeasuringPage::ConnectEvents() {
    const Wiring wire(*this, guard_, "frmMain");
    wire(&tmrRead, &QTimer::timeout, "tmrRead", &MeasuringPage::tmrRead_Timer);
    wire(&tmrTime, &QTimer::timeout, "tmrTime", &MeasuringPage::tmrTime_Timer);
    wire(table_, &ReadingsTable::AlarmClicked, "AlarmClicked", &MeasuringPage::TakeNoteOfAlarm);
    wire(ui_->fraRecording, &RecordingGroup::Remarked, "Remarked", &MeasuringPage::TakeRemark);
    wire(ui_->fraRecording, &RecordingGroup::ResumeChosen, "chkResume",
         &MeasuringPage::chkResume_Click);
    wire(ui_->cmdLimits, &QPushButton::clicked, "cmdLimits", &MeasuringPage::cmdLimits_Click);
    wire(ui_->cmdCheck, &QPushButton::clicked, "cmdCheck", &MeasuringPage::cmdCheck_Click);
    wire(ui_->cmdAcknowledge, &QPushButton::clicked, "cmdAcknowledge",
         &MeasuringPage::cmdAcknowledge_Click);
    wire(ui_->cmdNewFile, &QPushButton::clicked, "cmdNewFile", &MeasuringPage::cmdNewFile_Click);
    wire(ui_->fraRecording, &RecordingGroup::RunChanged, "RunChanged", &MeasuringPage::ShowNotice);
}

void MeasuringPage::Load(FileOpr::MeasuringRun& run) {
    run_ = &run;
    tmrRead.setObjectName("tmrRead");
    tmrTime.setObjectName("tmrTime");
    tmrTime.setInterval(timeInterval_ms);
    const auto choices = mWinInit::LoadMeasuringChoices();
    ui_->fraRecording->Load(run, choices);
    ui_->panTrend->SetChoice({choices.trendShown, choices.trendMinutes, choices.trendQuantity});
    readings_->LoadLimits();
    table_->Prepare();
    ui_->cmdAcknowledge->hide();
    TakeUpPalette();
}

void MeasuringPage::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) // the controls take the palette after their page
        QTimer::singleShot(0, this, [this] { TakeUpPalette(); });
}

void MeasuringPage::TakeUpPalette() {
    table_->ShowColours();
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, Colours::Caution(colours));
    ui_->lblNotice->setPalette(colours);
}

std::vector<std::string> MeasuringPage::SaveChoices() const {
    auto choices = ui_->fraRecording->Choices();
    const TrendPanel::Choice trend = ui_->panTrend->Chosen();
    choices.trendShown = trend.shown;
    choices.trendMinutes = trend.minutes;
    choices.trendQuantity = trend.quantity;
    return mWinInit::SaveMeasuringChoices(choices);
}

QSize MeasuringPage::WholeSize() const {
    return ui_->picMeasure->minimumSizeHint();
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
    cycle_ = readings_->Begin(selected);
    table_->ShowStale(false);
    remark_.clear();
    ui_->panTrend->Clear();
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
    ui_->fraRecording->Leave();
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
    series_.GoOnAfterFailure(ui_->fraRecording->IsToResume());
    supply_ = Supply::current;
    readings_->ForgetSeries();
    series_.Start(mWinInit::HardwareSettings.AveragingForMeasurement);
    ShowNotice();
}

void MeasuringPage::StopReading() {
    series_.Stop();
    ui_->fraRecording->ReadingsEnded();
    ui_->panTrend->EndReadings();
    table_->BlinkTitle(false);
    supply_ = Supply::current;
    ShowStatus(); // what is told of readings goes with them
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
    case ReadingSeries::Tick::lost:
        ReadingsLost();
        break;
    case ReadingSeries::Tick::failed:
        ReadingFailed();
        break;
    }
}

/// The instrument has fallen silent and is asked on. Nothing from before the gap goes into what
/// comes after it.
void MeasuringPage::ReadingsLost() {
    supply_ = Supply::lost;
    ui_->fraRecording->ReadingsLost(
        CommPort::LastReadingBeforeLoss().value_or(platform::Current().clock.Now()));
    ui_->panTrend->EndReadings();
    readings_->ForgetSeries();
    table_->ShowStale(true);
    ShowStatus();
}

void MeasuringPage::ShowAverages(std::span<const float, cyclePositions> averages) {
    const MeasuringCycle::Outcome outcome = MeasuringCycle::Run(*cycle_, averages);
    if (std::exchange(supply_, Supply::current) == Supply::lost)
        ui_->fraRecording->ReadingsReturned(platform::Current().clock.Now());
    table_->ShowStale(false);
    values_ = outcome.values;
    if (readings_->Show(outcome))
        platform::Current().dialogs.Beep();
    ui_->panTrend->AddReading(outcome.values);
    problem_ = Text::ToQt(outcome.problem);
    ShowStatus();
    if (readings_->AllSteady())
        ui_->fraRecording->ReadingsAreSteady([this] { return DisplayedNow(); });
}

QStringList MeasuringPage::StatusParts() const {
    QStringList parts;
    if (supply_ == Supply::lost || supply_ == Supply::ended) {
        if (const auto last = CommPort::LastReading())
            parts << "last reading " + Text::ToQt(DateText::TimeOfDay(*last));
        if (!CommPort::PortOK()) // who holds the port, say
            parts << Text::ToQt(CommPort::StatusText());
    }
    parts << Text::ToQt(ui_->fraRecording->GapText()) << readings_->Remarks();
    if (supply_ == Supply::current)
        parts << problem_;
    parts << remark_; // last, since the line may be too short for all
    parts.removeAll(QString());
    return parts;
}

/// What is told of values is told while they are read, or when reading has ended at a failure.
void MeasuringPage::ShowStatus() {
    ui_->cmdAcknowledge->setVisible(readings_->HasAlarm());
    const bool told = series_.IsRunning() || supply_ == Supply::ended;
    const QString status = told ? StatusParts().join("; ") : QString();
    if (std::exchange(statusShown_, status) != status)
        Q_EMIT StatusChanged(status);
}

void MeasuringPage::ReadingFailed() {
    StopReading();
    supply_ = Supply::ended;
    readings_->ForgetSeries();
    table_->ShowStale(true);
    ShowStatus();
    ui_->fraRecording->LinkFailed();
    Mcommon::Warn(DataAcq::connectionMessage);
}

void MeasuringPage::TakeNoteOfAlarm(std::size_t channel) {
    readings_->Acknowledge(channel);
    ShowStatus();
}

void MeasuringPage::cmdAcknowledge_Click() {
    readings_->AcknowledgeAll();
    ShowStatus();
}

void MeasuringPage::TakeRemark(const QString& text) {
    remark_ = text;
    ShowStatus();
}

void MeasuringPage::chkResume_Click(bool checked) {
    series_.GoOnAfterFailure(checked);
}

void MeasuringPage::cmdLimits_Click() {
    if (readings_->ChooseLimits(*this))
        ShowStatus();
}

void MeasuringPage::cmdCheck_Click() {
    const auto channels = readings_->ChannelsToCheck();
    if (channels.empty()) {
        Mcommon::Inform("No channel with an electrode is measured.");
        return;
    }
    const auto read = [this](int channel) {
        const auto index = static_cast<std::size_t>(channel);
        frmCheck::Reading reading;
        reading.quantity = CalibratedQuantity(mWinInit::ChannelSetup.at(index).Electrode,
                                              mWinInit::Calibration.at(index).StdUnit);
        if (!series_.HasValues() || supply_ != Supply::current)
            return reading;
        reading.value = values_.at(index)[reading.quantity];
        reading.steady = readings_->IsSteady(channel);
        return reading;
    };
    auto* form = new frmCheck(channels, read, this);
    form->setAttribute(Qt::WA_DeleteOnClose);
    form->open();
}

void MeasuringPage::cmdNewFile_Click() {
    ui_->fraRecording->NewFile();
}

/// Says where setup or calibration are no longer what the target's header tells.
void MeasuringPage::ShowNotice() {
    const QString notice = Text::ToQt(ui_->fraRecording->Notice());
    ShowValue(*ui_->lblNotice, notice);
    ui_->lblNotice->setToolTip(notice); // where the line is too long for its room
    ui_->lblNotice->setVisible(!notice.isEmpty());
    ui_->cmdNewFile->setVisible(!notice.isEmpty());
    ui_->cmdNewFile->setEnabled(!ui_->fraRecording->IsAutomaticOn());
    Q_EMIT RunChanged();
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
        ui_->fraRecording->Press([this] { return DisplayedNow(); }, readings_->AllSteady());
        break;
    case RunState::stop:
        ui_->fraRecording->Stop();
        break;
    }
}

void MeasuringPage::AveragingPressed() {
    const QString answer = ui_->fraRecording->AskAveraging();
    if (answer.isEmpty())
        return;
    series_.RestartAveraging(mWinInit::HardwareSettings.AveragingForMeasurement);
    Q_EMIT AveragingChanged(answer);
}

RecordingGroup& MeasuringPage::RecordingControls() const {
    return *ui_->fraRecording;
}

bool MeasuringPage::EndWork() {
    const bool wasReading = series_.IsRunning();
    StopReading();
    ui_->fraRecording->Stop();
    return wasReading;
}
