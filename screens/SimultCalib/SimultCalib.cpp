#include "screens/SimultCalib/SimultCalib.h"

#include "app/Mcommon.h"
#include "base/DateText.h"
#include "base/Electrode.h"
#include "chem/Measure.h"
#include "platform/Platform.h"
#include "platform/qt/Text.h"
#include "screens/calibration/CalibrationChoices.h"
#include "screens/calibration/CalibrationSteps.h"
#include "screens/calibration/CalibrationTexts.h"
#include "screens/calibration/ChannelRecords.h"
#include "screens/calibration/StandardFields.h"
#include "screens/controls/Placement.h"
#include "screens/controls/Wiring.h"
#include "settings/mWinInit.h"
#include "ui_SimultCalib.h"

namespace {

constexpr std::string_view differentElectrode =
    "This electrode is different to others, it cannot be used during this simultaneous "
    "calibration.";
constexpr std::string_view tooFewChannels =
    "At least two channels are needed for simultaneous calibration.";
constexpr std::string_view noStandard = "Manual data entry required";
constexpr std::string_view quitQuestion = "Calibration is not completed, quit anyway?";
constexpr std::size_t fewestChannels = 2;

std::string Now() {
    return DateText::Record(platform::Current().clock.Now());
}

} // namespace

SimultCalib::SimultCalib(QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::SimultCalib>()) {
    ui_->setupUi(this);
    cmdSys = ControlArray<QPushButton>(*this, "cmdSys");
    buttons_ = std::make_unique<StepButtons>(cmdSys, session_, *ui_->fraSummary);
    Mcommon::FitOntoScreen(*this);
    entry_ = std::make_unique<PointEntry>(
        session_, reading_,
        PointEntry::Screen{"SimultCalib", "txtDat", Standards(), ui_->fraPoints->Choices(),
                           noStandard, false, [this] { ShowState(); }, [this] { reject(); }});
    guard_("SimultCalib - Form_Load", [this] { Form_Load(); });
    WireControls(); // comes last, so that loading calls no handler
}

SimultCalib::~SimultCalib() = default;

void SimultCalib::WireControls() {
    const Wiring wire(*this, guard_, "SimultCalib");
    wire(cmdSys, &QPushButton::clicked, "cmdSys_Click", &SimultCalib::cmdSys_Click);
    wire(ui_->fraChoice, &ChannelChoicePage::Toggled, "chkSimult_Click",
         &SimultCalib::chkSimult_Click);
    wire(&ui_->fraPoints->Choices(), &CalibrationChoices::UnitChosen, "cboUnits_Click",
         &SimultCalib::cboUnits_Click);
    wire(ui_->fraSummary, &SimultSummaryPage::ChannelChosen, "tabChannel_Click",
         &SimultCalib::tabChannel_Click);
    wire(&reading_.tmrElapsed, &QTimer::timeout, "tmrElapsed_Timer",
         &SimultCalib::tmrElapsed_Timer);
    entry_->Wire(guard_);
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
        ui_->fraPoints->WidenWindow();
    buttons_->NextOf(step_).setDefault(true);
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

void SimultCalib::ShowState() {
    ui_->fraPoints->ShowSession(session_, reading_);
    buttons_->Show(step_);
}

// ---- Handlers --------------------------------------------------------------------------------

void SimultCalib::chkSimult_Click(std::size_t Index) {
    if (step_ != Step::channels) // by a tool: the choice is made anew
        GoBackToChannels();
    if (!ui_->fraChoice->IsTicked(Index))
        return;
    if (!ui_->fraChoice->DiffersFromOthers(Index))
        return;
    Mcommon::Warn(differentElectrode);
    ui_->fraChoice->Untick(Index);
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

void SimultCalib::tmrElapsed_Timer() {
    ui_->fraPoints->ShowElapsed(reading_);
}

void SimultCalib::cmdSys_Click(std::size_t Index) {
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
    const std::vector<std::size_t> chosen = ui_->fraChoice->Ticked();
    if (chosen.size() < fewestChannels) {
        Mcommon::Inform(tooFewChannels);
        return;
    }
    const std::string& electrode = SetupOf(chosen.front()).Electrode;
    if (electrode != electrode_)
        StartSession(electrode, chosen.front());
    session_.SetChannels(chosen);
    ShowStep(Step::points);
    Standards().Focus(session_.CurrentPoint());
}

void SimultCalib::StartSession(const std::string& electrode, std::size_t firstChannel) {
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
    if (step_ == Step::summary)
        ui_->fraSummary->Print(Now());
    else
        entry_->Act([this] { RecordPoint(); }, [this] { ShowSummary(); });
}

void SimultCalib::RecordPoint() {
    if (!reading_.HasValues()) // the hourglass stands until the average is complete
        return;
    entry_->Record([this] { ShowSummary(); });
}

void SimultCalib::StopButton() {
    reading_.Stop();
    ShowState();
    Standards().Focus(session_.CurrentPoint());
}

void SimultCalib::AskAveraging() {
    const auto held = reading_.HoldForBox();
    if (AskAveragingForCalibration())
        reading_.RestartAveraging();
}

// ---- Summary, closing ------------------------------------------------------------------------

void SimultCalib::ShowSummary() {
    if (!entry_->TakeAll())
        return;
    std::vector<CalibrationSession::Outcome> outcomes;
    for (const std::size_t channel : session_.Channels())
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
    buttons_->Show(step_);
    QPushButton& next = buttons_->NextOf(step_);
    next.setDefault(true);
    if (cmdSys(nextButton).hasFocus())
        next.setFocus();
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
        const std::size_t channel = session_.Channels()[i];
        StoreCalibration(channel, outcomes[i].record, now, reading_.LastTemperature(channel));
        Q_EMIT CalibrationStored(channel);
    }
    return true;
}
