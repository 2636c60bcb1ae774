#include "screens/SimultCalib/SimultCalib.h"

#include "app/Mcommon.h"
#include "base/DateText.h"
#include "base/Electrode.h"
#include "base/NumberText.h"
#include "chem/CalibrationInstructions.h"
#include "chem/CalibrationSummary.h"
#include "chem/Measure.h"
#include "platform/Platform.h"
#include "platform/qt/Text.h"
#include "screens/controls/CalibrationTexts.h"
#include "settings/SetupChecks.h"
#include "settings/mWinInit.h"
#include "ui_SimultCalib.h"

#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QTextBlock>
#include <QTextCursor>

#include <algorithm>

namespace {

using platform::style::exclamation;
using platform::style::information;
using platform::style::okOnly;

constexpr auto differentElectrode = "This electrode is different to others, it cannot be used "
                                    "during this simultaneous calibration.";
constexpr auto tooFewChannels = "At least two channels are needed for simultaneous calibration.";
constexpr auto noStandard = "Manual data entry required";
constexpr auto quitQuestion = "Calibration is not completed, quit anyway?";
constexpr auto averagingPrompt = "Input new averaging number for the calibration.";
constexpr std::size_t fewestChannels = 2;

enum Button {
    nextButton,
    mainButton,
    stopButton,
    averagingButton,
    helpButton,
    finishButton,
    closeButton
};
enum Info { calibrationInfo, standardsHeading };

const mWinInit::ChannelSetupRecord& SetupOf(int channel) {
    return mWinInit::ChannelSetup.at(static_cast<std::size_t>(channel));
}

int SignalIndex(int channel, int point) {
    return point * maxChannels + channel;
}

bool CanBeCalibrated(const std::string& electrode) {
    return Electrode::KindOf(electrode) != Electrode::Kind::none &&
           electrode.find("mV") == std::string::npos;
}

} // namespace

SimultCalib::SimultCalib(QWidget* parent)
    : CalibrationForm("SimultCalib", noStandard, parent), ui_(std::make_unique<Ui::SimultCalib>()) {
    ui_->setupUi(this);
    chkSimult = ControlArray<QCheckBox>(*this, "chkSimult");
    lblHead = ControlArray<QLabel>(*this, "lblHead");
    lblDat = ControlArray<QLabel>(*this, "lblDat");
    txtDat = ControlArray<QLineEdit>(*this, "txtDat");
    lblSig = ControlArray<QLabel>(*this, "lblSig");
    TakeControls(txtDat);
    Guarded("Form_Load", [this] { Form_Load(); });
    ConnectControls();
    ConnectEvents();
}

SimultCalib::~SimultCalib() = default;

void SimultCalib::ConnectEvents() {
    // However a box is changed (mouse, keys, an assistive tool), the rules must hold.
    chkSimult.Connect(*this, &QCheckBox::toggled, [this](int Index) {
        Guarded("chkSimult_Click", [&] { chkSimult_Click(Index); });
    });
    connect(ui_->tabChannel, &QTabBar::currentChanged, this,
            [this] { Guarded("tabChannel_Click", [this] { tabChannel_Click(); }); });
}

void SimultCalib::Form_Load() {
    for (const auto& [channel, box] : chkSimult) {
        const std::string& electrode = SetupOf(channel).Electrode;
        box->setText(Text::ToQt("Channel " + std::to_string(channel + 1) + ": " + electrode));
        box->setVisible(channel < mWinInit::HardwareSettings.ChannelCount);
        box->setEnabled(CanBeCalibrated(electrode));
    }
    ShowInstructions();
    ShowStep(Step::channels);
}

void SimultCalib::ShowInstructions() {
    ui_->RTXSimult->setPlainText(Text::ToQt(CalibrationInstructions::Text()));
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    for (const std::string_view phrase : CalibrationInstructions::boldPhrases)
        ui_->RTXSimult->document()->find(Text::ToQt(phrase)).mergeCharFormat(bold);
}

// ---- What the session says, shown ------------------------------------------------------------

void SimultCalib::ShowStep(Step step) {
    step_ = step;
    QWidget* page = step == Step::channels ? ui_->fraChoice
                    : step == Step::points ? static_cast<QWidget*>(ui_->fraPoints)
                                           : ui_->fraSummary;
    ui_->lblTitle->setText(step == Step::summary ? Text::ToQt(CalibrationTexts::summaryTitle)
                                                 : QString("Simultaneous Calibration"));
    lblInfo(calibrationInfo)
        .setText(step == Step::channels
                     ? QString("Choose the channels whose electrodes stand in the same solutions.")
                     : QString("Electrode: %1").arg(Text::ToQt(electrode_)));
    ui_->picPage->setCurrentWidget(page);
    ShowState();
    if (step == Step::points)
        WidenForChannels();
    const Button next = step == Step::channels  ? nextButton
                        : step == Step::points  ? mainButton
                        : session_.IsFinished() ? finishButton
                                                : nextButton;
    cmdSys(next).setDefault(true);
}

/// Eight channels need more room than two; the screen's width is the limit.
void SimultCalib::WidenForChannels() {
    const int missing =
        ui_->fraPointsContents->minimumSizeHint().width() - ui_->fraPoints->viewport()->width();
    const int most = screen()->availableGeometry().width();
    if (missing > 0)
        resize(std::min(width() + missing, most), height());
}

void SimultCalib::ShowState() {
    for (int point = 0; point < CalibrationSession::maxPoints; ++point)
        ShowPoint(point);
    for (int channel = 0; channel < maxChannels; ++channel)
        ShowChannel(channel);
    cboCalibPtrs->setEnabled(!session_.IsReading());
    cboUnits->setEnabled(!session_.IsReading());
    ShowButtons();
}

void SimultCalib::ShowPoint(int point) {
    const bool chosen = point < session_.PointCount();
    const bool beingRead = session_.IsReading() && point == session_.CurrentPoint();
    lblPoint(point).setVisible(chosen);
    lblDat(point).setVisible(chosen);
    lblDat(point).setText(Text::ToQt(StandardEntry::PointLabel(session_.IsPH(), session_.Unit())));
    ShowEntryState(point, chosen);
    for (int channel = 0; channel < maxChannels; ++channel) {
        QLabel& reading = lblSig(SignalIndex(channel, point));
        reading.setVisible(chosen && TakesPart(channel));
        reading.setText(ReadingText(channel, point));
        QFont font = reading.font();
        font.setBold(beingRead);
        reading.setFont(font);
    }
}

void SimultCalib::ShowChannel(int channel) {
    lblHead(channel).setVisible(TakesPart(channel));
    lblMark(channel).setVisible(TakesPart(channel));
    ShowMark(lblMark(channel), MarkText(channel));
}

QString SimultCalib::ReadingText(int channel, int point) const {
    const bool beingRead = session_.IsReading() && point == session_.CurrentPoint();
    const auto reading = beingRead ? session_.Live(channel) : session_.Reading(channel, point);
    return reading ? Text::ToQt(Mcommon::FormatReading(*reading)) : QString();
}

bool SimultCalib::TakesPart(int channel) const {
    return std::ranges::count(session_.Channels(), channel) > 0;
}

bool SimultCalib::IsLastSummary() const {
    return ui_->tabChannel->currentIndex() >= ui_->tabChannel->count() - 1;
}

void SimultCalib::ShowButtons() {
    const bool forward = step_ == Step::channels || (step_ == Step::summary && !IsLastSummary());
    cmdSys(nextButton).setText(forward ? "&Next >" : "< &Back");
    const bool finished = session_.IsFinished();
    cmdSys(mainButton).setText(Text::ToQt(MainCaption(step_ == Step::summary)));
    cmdSys(mainButton).setEnabled(step_ == Step::points || (step_ == Step::summary && finished));
    cmdSys(stopButton).setEnabled(session_.IsReading());
    cmdSys(averagingButton).setEnabled(step_ != Step::summary);
    OfferFinish(step_ == Step::summary && finished, cmdSys(finishButton), cmdSys(closeButton));
}

// ---- Handlers --------------------------------------------------------------------------------

void SimultCalib::EntryEntered(int point) {
    session_.SetCurrentPoint(point);
    ShowState();
}

void SimultCalib::EntryChanged() {
    session_.Touch();
}

std::vector<int> SimultCalib::TickedChannels() const {
    std::vector<int> ticked;
    for (const auto& [channel, box] : chkSimult)
        if (channel < mWinInit::HardwareSettings.ChannelCount && box->isChecked())
            ticked.push_back(channel);
    return ticked;
}

void SimultCalib::chkSimult_Click(int Index) {
    if (!chkSimult(Index).isChecked())
        return;
    const std::string& electrode = SetupOf(Index).Electrode;
    const auto differs = [&](int channel) { return SetupOf(channel).Electrode != electrode; };
    if (std::ranges::none_of(TickedChannels(), differs))
        return;
    Mcommon::MessageBoxEx(differentElectrode, okOnly, exclamation);
    const QSignalBlocker quiet(chkSimult(Index));
    chkSimult(Index).setChecked(false);
}

void SimultCalib::cboCalibPtrs_Click() {
    session_.SetPointCount(cboCalibPtrs->currentData().toInt());
    ShowState();
}

void SimultCalib::cboUnits_Click() {
    ChangeUnit(electrode_, SetupOf(session_.Channels().front()).MolarMass);
    ShowState();
}

void SimultCalib::tabChannel_Click() {
    const int tab = ui_->tabChannel->currentIndex();
    if (tab < 0 || static_cast<std::size_t>(tab) >= outcomes_.size())
        return;
    const CalibrationSession::Outcome& outcome = outcomes_[static_cast<std::size_t>(tab)];
    ui_->pagSummary->ShowCalibration(outcome.record, electrode_, outcome.usable);
    ShowButtons();
}

void SimultCalib::cmdSys_Click(int Index) {
    switch (Index) {
    case nextButton:
        NextOrBack();
        break;
    case mainButton:
        MainButton(step_ == Step::summary);
        break;
    case stopButton:
        StopButton();
        break;
    case averagingButton:
        AskAveraging();
        break;
    case helpButton:
        ShowHelp();
        break;
    default:
        close();
    }
}

void SimultCalib::NextOrBack() {
    switch (step_) {
    case Step::channels:
        ChooseChannels();
        break;
    case Step::points:
        StopReading();
        ShowStep(Step::channels);
        break;
    case Step::summary:
        if (!IsLastSummary()) {
            ui_->tabChannel->setCurrentIndex(ui_->tabChannel->currentIndex() + 1);
            break;
        }
        ShowStep(Step::points);
        FocusEntry(session_.CurrentPoint());
    }
}

void SimultCalib::ChooseChannels() {
    const std::vector<int> chosen = TickedChannels();
    if (chosen.size() < fewestChannels) {
        Mcommon::MessageBoxEx(tooFewChannels, okOnly, information);
        return;
    }
    const std::string& electrode = SetupOf(chosen.front()).Electrode;
    if (electrode != electrode_)
        StartSession(electrode, chosen.front());
    session_.SetChannels(chosen);
    ShowStep(Step::points);
    FocusEntry(session_.CurrentPoint());
}

void SimultCalib::StartSession(const std::string& electrode, int firstChannel) {
    electrode_ = electrode;
    const bool isPH = Electrode::KindOf(electrode) == Electrode::Kind::pH;
    const auto& stored = mWinInit::Calibration.at(static_cast<std::size_t>(firstChannel));
    session_.Start(isPH, UnitOf(stored.StdUnit));
    session_.SetPointCount(cboCalibPtrs->currentData().toInt());
    Select(*cboUnits, cboUnits->findData(static_cast<int>(session_.Unit())));
    cboUnits->setVisible(!isPH);
    ui_->lblUnits->setVisible(!isPH);
    Measure::IsPHMode = isPH;
    lblInfo(standardsHeading).setText(Text::ToQt(StandardEntry::ColumnHeading(isPH)));
    for (const auto& [point, entry] : txtDat)
        entry->clear();
}

void SimultCalib::RecordPoint() {
    // The hourglass stands until the first average is complete.
    const bool waiting =
        platform::Current().desktop.GetMousePointer() == platform::MousePointer::hourglass;
    if (waiting)
        return;
    const auto recorded = session_.Record();
    if (recorded == CalibrationSession::Recorded::nothing)
        return;
    StopReading();
    ShowState();
    if (recorded == CalibrationSession::Recorded::allPoints)
        ShowSummary();
    else
        FocusEntry(session_.CurrentPoint());
}

void SimultCalib::StopButton() {
    StopReading();
    ShowState();
    FocusEntry(session_.CurrentPoint());
}

void SimultCalib::AskAveraging() {
    const QScopedValueRollback open(boxOpen_, true);
    std::int16_t& averaging = mWinInit::HardwareSettings.AveragingForCalibration;
    const std::string answer = platform::Current().dialogs.AskText(
        averagingPrompt, std::string(Mcommon::applicationTitle), NumberText::Plain(averaging));
    if (Mcommon::TrimControl(answer).empty())
        return;
    const auto number = SetupChecks::Averaging(answer);
    if (!number) {
        Mcommon::MessageBoxEx(std::string(SetupChecks::averagingRange), okOnly, exclamation);
        return;
    }
    averaging = *number;
    RestartAveraging();
}

void SimultCalib::ShowSummary() {
    if (!TakeAllStandards())
        return;
    outcomes_.clear();
    for (const int channel : session_.Channels())
        outcomes_.push_back(session_.OutcomeOf(channel));
    const bool usable = std::ranges::all_of(outcomes_, &CalibrationSession::Outcome::usable);
    if (usable)
        session_.SetFinished();
    {
        const QSignalBlocker quiet(ui_->tabChannel);
        while (ui_->tabChannel->count() > 0)
            ui_->tabChannel->removeTab(0);
        for (const int channel : session_.Channels())
            ui_->tabChannel->addTab(QString("Channel %1").arg(channel + 1));
        ui_->tabChannel->setCurrentIndex(0);
        ui_->tabChannel->updateGeometry(); // filled while hidden, it has claimed no room yet
    }
    tabChannel_Click();
    ShowStep(Step::summary);
    cmdSys(usable ? finishButton : nextButton).setFocus();
    if (!usable)
        Mcommon::MessageBoxEx(std::string(CalibrationSummary::invalidDataMessage), okOnly,
                              exclamation);
}

void SimultCalib::PrintSummary() {
    const std::string now = DateText::Record(platform::Current().clock.Now());
    std::vector<CalibrationSummary::Summary> summaries;
    for (std::size_t i = 0; i < outcomes_.size(); ++i) {
        CalibrationRecord record = outcomes_[i].record;
        record.CalibrationDate = now;
        summaries.push_back(
            CalibrationSummary::Compose(electrode_, session_.Channels()[i], record));
    }
    Measure::PrintCalibSummaries(summaries);
}

bool SimultCalib::Form_QueryUnload() {
    if (!session_.IsFinished())
        return Ask(quitQuestion) == platform::button::yes;
    StopReading();
    const std::string now = DateText::Record(platform::Current().clock.Now());
    for (std::size_t i = 0; i < outcomes_.size(); ++i)
        Store(session_.Channels()[i], outcomes_[i].record, now);
    return true;
}
