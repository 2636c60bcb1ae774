#include "screens/SimultCalib/SimultCalib.h"

#include "app/Mcommon.h"
#include "base/DateText.h"
#include "base/Electrode.h"
#include "base/NumberText.h"
#include "chem/Measure.h"
#include "platform/Platform.h"
#include "platform/qt/Text.h"
#include "report/PrintCalibSummary.h"
#include "screens/calibration/CalibrationChoices.h"
#include "screens/calibration/CalibrationSteps.h"
#include "screens/calibration/CalibrationTexts.h"
#include "screens/calibration/StandardFields.h"
#include "screens/controls/Placement.h"
#include "screens/controls/Wiring.h"
#include "settings/SetupChecks.h"
#include "settings/mWinInit.h"
#include "ui_SimultCalib.h"

#include <QScreen>

#include <algorithm>

namespace {

constexpr std::string_view differentElectrode =
    "This electrode is different to others, it cannot be used during this simultaneous "
    "calibration.";
constexpr std::string_view tooFewChannels =
    "At least two channels are needed for simultaneous calibration.";
constexpr std::string_view noStandard = "Manual data entry required";
constexpr std::string_view quitQuestion = "Calibration is not completed, quit anyway?";
constexpr auto averagingPrompt = "Input new averaging number for the calibration.";
constexpr std::size_t fewestChannels = 2;

const mWinInit::ChannelSetupRecord& SetupOf(int channel) {
    return mWinInit::ChannelSetup.at(static_cast<std::size_t>(channel));
}

const CalibrationRecord& StoredOf(int channel) {
    return mWinInit::Calibration.at(static_cast<std::size_t>(channel));
}

std::string Now() {
    return DateText::Record(platform::Current().clock.Now());
}

} // namespace

SimultCalib::SimultCalib(QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::SimultCalib>()) {
    ui_->setupUi(this);
    cmdSys = ControlArray<QPushButton>(*this, "cmdSys");
    Mcommon::FitOntoScreen(*this);
    guard_("SimultCalib - Form_Load", [this] { Form_Load(); });
    WireControls(); // comes last, so that loading calls no handler
}

SimultCalib::~SimultCalib() {
    // A field still loses the cursor while the window goes, behind the members of this class.
    Standards().disconnect(this);
}

void SimultCalib::WireControls() {
    const Wiring wire(*this, guard_, "SimultCalib");
    wire(cmdSys, &QPushButton::clicked, "cmdSys_Click", &SimultCalib::cmdSys_Click);
    wire(ui_->fraChoice, &ChannelChoicePage::Toggled, "chkSimult_Click",
         &SimultCalib::chkSimult_Click);
    CalibrationChoices* choices = &ui_->fraPoints->Choices();
    wire(choices, &CalibrationChoices::PointCountChosen, "cboCalibPtrs_Click",
         &SimultCalib::cboCalibPtrs_Click);
    wire(choices, &CalibrationChoices::UnitChosen, "cboUnits_Click", &SimultCalib::cboUnits_Click);
    wire(&Standards(), &StandardFields::Entered, "txtDat_GotFocus", &SimultCalib::txtDat_GotFocus);
    wire(&Standards(), &StandardFields::Changed, "txtDat_Change", &SimultCalib::txtDat_Change);
    wire(ui_->fraSummary, &SimultSummaryPage::ChannelChosen, "tabChannel_Click",
         &SimultCalib::tabChannel_Click);
    wire(&reading_.tmrRead, &QTimer::timeout, "tmrRead_Timer", &SimultCalib::tmrRead_Timer);
    wire(&reading_.tmrElapsed, &QTimer::timeout, "tmrElapsed_Timer",
         &SimultCalib::tmrElapsed_Timer);
}

StandardFields& SimultCalib::Standards() const {
    return ui_->fraPoints->Standards();
}

void SimultCalib::Form_Load() {
    ui_->fraChoice->ShowChannels();
    ShowStep(Step::channels);
}

void SimultCalib::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    reading_.EndBusyPointer();
}

// ---- What the session says, shown ------------------------------------------------------------

void SimultCalib::ShowStep(Step step) {
    step_ = step;
    QWidget* page = step == Step::channels ? static_cast<QWidget*>(ui_->fraChoice)
                    : step == Step::points ? static_cast<QWidget*>(ui_->fraPoints)
                                           : ui_->fraSummary;
    ShowTitles();
    ui_->picPage->setCurrentWidget(page);
    ShowState();
    if (step == Step::points)
        WidenForChannels();
    cmdSys(NextStepsButton()).setDefault(true);
}

void SimultCalib::ShowTitles() {
    ui_->lblTitle->setText(Text::ToQt(step_ == Step::summary
                                          ? CalibrationTexts::summaryTitle
                                          : CalibrationTexts::simultaneousTitle));
    ui_->lblInfo_0->setText(
        step_ == Step::channels
            ? QString("Choose the channels whose electrodes stand in the same solutions.")
            : QString("Electrode: %1").arg(Text::ToQt(electrode_)));
}

/// The button that takes the user on from this step, and that Enter presses.
SimultCalib::SysButton SimultCalib::NextStepsButton() const {
    switch (step_) {
    case Step::channels:
        return nextButton;
    case Step::points:
        return mainButton;
    case Step::summary:
        break;
    }
    return session_.IsFinished() ? finishButton : nextButton;
}

/// Eight channels need more room than two; the screen's width is the limit.
void SimultCalib::WidenForChannels() {
    const int missing_px = ui_->fraPoints->MissingWidth_px();
    if (missing_px > 0)
        resize(std::min(width() + missing_px, screen()->availableGeometry().width()), height());
}

void SimultCalib::ShowState() {
    ui_->fraPoints->ShowSession(session_, reading_);
    ShowButtons();
}

void SimultCalib::ShowButtons() {
    const bool onSummary = step_ == Step::summary;
    const bool forward =
        step_ == Step::channels || (onSummary && !ui_->fraSummary->IsLastChannel());
    const bool finished = session_.IsFinished();
    cmdSys(nextButton).setText(forward ? "&Next >" : "< &Back");
    cmdSys(mainButton)
        .setText(Text::ToQt(onSummary ? CalibrationTexts::print
                                      : CalibrationTexts::MainCaption(session_.MainAction())));
    cmdSys(mainButton)
        .setEnabled(step_ == Step::points || (onSummary && ui_->fraSummary->IsUsable()));
    cmdSys(stopButton).setEnabled(session_.IsReading());
    cmdSys(averagingButton).setEnabled(!onSummary);
    OfferFinish(onSummary && finished, cmdSys(finishButton), cmdSys(closeButton));
}

// ---- Handlers --------------------------------------------------------------------------------

void SimultCalib::txtDat_GotFocus(int Index) {
    session_.SetCurrentPoint(Index);
    ShowState();
}

void SimultCalib::txtDat_Change(int Index) {
    session_.Touch();
    session_.SetCurrentPoint(Index); // a tool sets a text without bringing the cursor there
    ShowState();
}

void SimultCalib::chkSimult_Click(int Index) {
    if (step_ != Step::channels) // by a tool: the choice is made anew
        GoBackToChannels();
    if (!ui_->fraChoice->IsTicked(Index))
        return;
    const std::string& electrode = SetupOf(Index).Electrode;
    const auto differs = [&](int channel) { return SetupOf(channel).Electrode != electrode; };
    if (std::ranges::none_of(ui_->fraChoice->Ticked(), differs))
        return;
    Mcommon::Warn(differentElectrode);
    ui_->fraChoice->Untick(Index);
}

void SimultCalib::cboCalibPtrs_Click() {
    if (!session_.IsReading())
        session_.SetPointCount(ui_->fraPoints->Choices().PointCount());
    ShowState(); // also puts back what a tool has changed meanwhile
}

void SimultCalib::cboUnits_Click() {
    if (electrode_.empty()) {
        unitBefore_ = ui_->fraPoints->Choices().Unit();
        return;
    }
    Standards().ChangeUnit(session_, ui_->fraPoints->Choices(), electrode_,
                           SetupOf(session_.Channels().front()).MolarMass);
    ShowState();
}

void SimultCalib::tabChannel_Click() {
    ui_->fraSummary->ShowChosenChannel();
    FinishWhenAllShown();
}

void SimultCalib::tmrRead_Timer() {
    reading_.OnTimer([this] { ShowState(); });
    if (reading_.CloseWaits())
        reject();
}

void SimultCalib::tmrElapsed_Timer() {
    ui_->fraPoints->ShowElapsed(reading_);
}

void SimultCalib::cmdSys_Click(int Index) {
    switch (Index) {
    case nextButton:
        NextOrBack();
        break;
    case mainButton:
        MainButton();
        break;
    case stopButton:
        StopButton();
        break;
    case averagingButton:
        AskAveraging();
        break;
    case helpButton:
        ShowCalibrationHelp();
        break;
    default:
        close();
    }
}

// ---- Step by step ----------------------------------------------------------------------------

void SimultCalib::NextOrBack() {
    switch (step_) {
    case Step::channels:
        ChooseChannels();
        break;
    case Step::points:
        GoBackToChannels();
        break;
    case Step::summary:
        if (!ui_->fraSummary->IsLastChannel()) {
            ui_->fraSummary->ShowNextChannel();
            break;
        }
        ShowStep(Step::points);
        Standards().Focus(session_.CurrentPoint());
    }
}

/// The channels may become others; what has been shown of these is no summary of those.
void SimultCalib::GoBackToChannels() {
    reading_.Stop();
    session_.Touch();
    ShowStep(Step::channels);
}

void SimultCalib::ChooseChannels() {
    const std::vector<int> chosen = ui_->fraChoice->Ticked();
    if (chosen.size() < fewestChannels) {
        Mcommon::MessageBoxEx(std::string(tooFewChannels), platform::style::okOnly,
                              platform::style::information);
        return;
    }
    const std::string& electrode = SetupOf(chosen.front()).Electrode;
    if (electrode != electrode_)
        StartSession(electrode, chosen.front());
    session_.SetChannels(chosen);
    ShowStep(Step::points);
    Standards().Focus(session_.CurrentPoint());
}

void SimultCalib::StartSession(const std::string& electrode, int firstChannel) {
    electrode_ = electrode;
    const bool isPH = Electrode::KindOf(electrode) == Electrode::Kind::pH;
    session_.Start(isPH, isPH ? StandardUnit::ppm
                              : unitBefore_.value_or(UnitOf(StoredOf(firstChannel).StdUnit)));
    unitBefore_.reset();
    reading_.ForgetReadings();
    session_.SetPointCount(ui_->fraPoints->Choices().PointCount());
    Measure::IsPHMode = isPH;
    Standards().ShowStandards(session_);
}

void SimultCalib::MainButton() {
    if (step_ == Step::summary) {
        PrintSummary();
        return;
    }
    switch (session_.MainAction()) {
    case CalibrationSession::Action::read:
        ReadPoint();
        break;
    case CalibrationSession::Action::record:
        RecordPoint();
        break;
    case CalibrationSession::Action::showSummary:
        ShowSummary();
        break;
    }
}

void SimultCalib::ReadPoint() {
    const int point = session_.CurrentPoint();
    if (!Standards().Take(session_, point)) {
        Refuse(point);
        return;
    }
    reading_.Begin();
    ShowState();
}

/// Says that the standard of a point is no number.
void SimultCalib::Refuse(int point) {
    const auto held = reading_.HoldForBox();
    Mcommon::Warn(noStandard);
    Standards().Focus(point);
}

void SimultCalib::RecordPoint() {
    if (!reading_.HasValues()) // the hourglass stands until the average is complete
        return;
    const auto recorded = session_.Record();
    if (recorded == CalibrationSession::Recorded::nothing)
        return;
    reading_.Stop();
    ShowState();
    if (recorded == CalibrationSession::Recorded::allPoints)
        ShowSummary();
    else
        Standards().Focus(session_.CurrentPoint());
}

void SimultCalib::StopButton() {
    reading_.Stop();
    ShowState();
    Standards().Focus(session_.CurrentPoint());
}

void SimultCalib::AskAveraging() {
    const auto held = reading_.HoldForBox();
    std::int16_t& averaging = mWinInit::HardwareSettings.AveragingForCalibration;
    const std::string answer = platform::Current().dialogs.AskText(
        averagingPrompt, std::string(Mcommon::applicationTitle), NumberText::Plain(averaging));
    if (Mcommon::TrimControl(answer).empty())
        return;
    const auto number = SetupChecks::Averaging(answer);
    if (!number) {
        Mcommon::Warn(SetupChecks::averagingRange);
        return;
    }
    averaging = *number;
    reading_.RestartAveraging();
}

// ---- Summary, closing ------------------------------------------------------------------------

void SimultCalib::ShowSummary() {
    if (const auto refused = Standards().TakeAll(session_)) {
        Refuse(*refused);
        return;
    }
    std::vector<CalibrationSession::Outcome> outcomes;
    for (const int channel : session_.Channels())
        outcomes.push_back(session_.OutcomeOf(channel, StoredOf(channel)));
    ui_->fraSummary->ShowOutcomes(electrode_, session_.Channels(), std::move(outcomes));
    ShowStep(Step::summary);
    cmdSys(nextButton).setFocus();
    if (!ui_->fraSummary->IsUsable())
        Mcommon::Warn(CalibrationTexts::invalidData);
}

/// "&Finish" waits until the summary of each channel has been shown, and is then what Enter does.
void SimultCalib::FinishWhenAllShown() {
    if (!session_.IsFinished() && ui_->fraSummary->IsUsable() && ui_->fraSummary->AllShown())
        session_.SetFinished();
    ShowButtons();
    QPushButton& next = cmdSys(NextStepsButton());
    next.setDefault(true);
    if (cmdSys(nextButton).hasFocus())
        next.setFocus();
}

void SimultCalib::PrintSummary() {
    std::vector<CalibrationSummary::Summary> summaries;
    const auto& outcomes = ui_->fraSummary->Outcomes();
    for (std::size_t i = 0; i < outcomes.size(); ++i) {
        CalibrationRecord record = outcomes[i].record;
        record.CalibrationDate = Now();
        summaries.push_back(
            CalibrationSummary::Compose(electrode_, session_.Channels()[i], record));
    }
    Measure::PrintCalibSummaries(summaries);
}

void SimultCalib::reject() {
    guard_("SimultCalib - Form_QueryUnload", [this] {
        if (!reading_.MayClose() || !Form_QueryUnload())
            return;
        reading_.Stop();
        QDialog::reject();
    });
}

bool SimultCalib::Form_QueryUnload() {
    if (!session_.IsFinished()) {
        const auto held = reading_.HoldForBox();
        return Mcommon::Ask(quitQuestion, Mcommon::EnterMeans::no, Mcommon::Tone::exclamation);
    }
    reading_.Stop();
    const std::string now = Now();
    const auto& outcomes = ui_->fraSummary->Outcomes();
    for (std::size_t i = 0; i < outcomes.size(); ++i) {
        const int channel = session_.Channels()[i];
        StoreCalibration(channel, outcomes[i].record, now);
        Q_EMIT CalibrationStored(channel);
    }
    return true;
}
