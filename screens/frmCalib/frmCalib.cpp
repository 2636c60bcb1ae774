#include "screens/frmCalib/frmCalib.h"

#include "app/Mcommon.h"
#include "base/DateText.h"
#include "base/Electrode.h"
#include "chem/Measure.h"
#include "platform/Platform.h"
#include "platform/qt/Text.h"
#include "report/PrintCalibSummary.h"
#include "screens/calibration/CalibrationChoices.h"
#include "screens/calibration/CalibrationSteps.h"
#include "screens/calibration/CalibrationTexts.h"
#include "screens/calibration/StandardFields.h"
#include "screens/controls/Placement.h"
#include "screens/controls/ValueLabel.h"
#include "screens/controls/Wiring.h"
#include "settings/mWinInit.h"
#include "ui_frmCalib.h"

namespace {

constexpr std::string_view notANumber = "Input not correct.";
constexpr std::string_view quitQuestion = "The calibration process has not been achieved yet.\n"
                                          "Would you like to quit the process?";

/// Indices of lblInfo; the headings of the points belong to their page.
enum Info { channelInfo, electrodeInfo, dateInfo };

std::string Now() {
    return DateText::SingleCalibration(platform::Current().clock.Now());
}

} // namespace

frmCalib::frmCalib(QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmCalib>()), channel_(Measure::ChannelToCalibrate),
      before_(Record()) {
    ui_->setupUi(this);
    lblInfo = ControlArray<QLabel>(*this, "lblInfo");
    cmdSys = ControlArray<QPushButton>(*this, "cmdSys");
    Mcommon::FitOntoScreen(*this);
    guard_("frmCalib - Form_Load", [this] { Form_Load(); });
    WireControls(); // comes last, so that loading calls no handler
}

frmCalib::~frmCalib() {
    // A field still loses the cursor while the window goes, behind the members of this class.
    Standards().disconnect(this);
}

void frmCalib::WireControls() {
    const Wiring wire(*this, guard_, "frmCalib");
    wire(cmdSys, &QPushButton::clicked, "cmdSys_Click", &frmCalib::cmdSys_Click);
    CalibrationChoices* choices = &ui_->fraEntry->Choices();
    wire(choices, &CalibrationChoices::PointCountChosen, "cboCalibPtrs_Click",
         &frmCalib::cboCalibPtrs_Click);
    wire(choices, &CalibrationChoices::UnitChosen, "cboUnits_Click", &frmCalib::cboUnits_Click);
    wire(&Standards(), &StandardFields::Entered, "txtEntry_GotFocus", &frmCalib::txtEntry_GotFocus);
    wire(&Standards(), &StandardFields::Left, "txtEntry_LostFocus", &frmCalib::txtEntry_LostFocus);
    wire(&Standards(), &StandardFields::Changed, "txtEntry_Change", &frmCalib::txtEntry_Change);
    wire(&reading_.tmrRead, &QTimer::timeout, "tmrRead_Timer", &frmCalib::tmrRead_Timer);
    wire(&reading_.tmrElapsed, &QTimer::timeout, "tmrElapsed_Timer", &frmCalib::tmrElapsed_Timer);
}

StandardFields& frmCalib::Standards() const {
    return ui_->fraEntry->Standards();
}

CalibrationRecord& frmCalib::Record() const {
    return mWinInit::Calibration.at(static_cast<std::size_t>(channel_));
}

std::string frmCalib::ElectrodeName() const {
    return mWinInit::ChannelSetup.at(static_cast<std::size_t>(channel_)).Electrode;
}

void frmCalib::Form_Load() {
    const bool isPH = Electrode::KindOf(ElectrodeName()) == Electrode::Kind::pH;
    Measure::IsPHMode = isPH;
    session_.Start(isPH, UnitOf(Record().StdUnit));
    session_.SetChannels({channel_});
    session_.Load(channel_, Record());

    lblInfo(channelInfo).setText(QString("Channel %1").arg(channel_ + 1));
    ShowValue(lblInfo(electrodeInfo), Text::ToQt(ElectrodeName()));
    ShowValue(lblInfo(dateInfo),
              Measure::IsUsable(Record()) ? Text::ToQt(Record().CalibrationDate) : QString("None"));
    Standards().ShowStandards(session_);
    Standards().ShowPrompts(session_);
    ShowEntryPage();
}

void frmCalib::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    reading_.EndBusyPointer();
}

// ---- What the session says, shown ------------------------------------------------------------

bool frmCalib::OnSummaryPage() const {
    return ui_->stkPages->currentWidget() == ui_->picPage;
}

void frmCalib::ShowState() {
    ui_->fraEntry->ShowSession(session_, reading_);
    ShowButtons();
}

void frmCalib::ShowButtons() {
    const bool summary = OnSummaryPage();
    cmdSys(mainButton)
        .setText(Text::ToQt(summary ? CalibrationTexts::print
                                    : CalibrationTexts::MainCaption(session_.MainAction())));
    cmdSys(mainButton).setEnabled(!summary || outcome_.usable);
    cmdSys(secondButton).setText(summary ? "&Back" : "&Clear");
    OfferFinish(summary && session_.IsFinished(), cmdSys(finishButton), cmdSys(closeButton));
}

// ---- Handlers --------------------------------------------------------------------------------

void frmCalib::txtEntry_GotFocus(int Index) {
    session_.SetCurrentPoint(Index);
    ShowState();
}

void frmCalib::txtEntry_LostFocus() {
    Standards().ShowPrompts(session_);
}

void frmCalib::txtEntry_Change(int Index) {
    session_.Touch();
    session_.SetCurrentPoint(Index); // a tool sets a text without bringing the cursor there
    if (!Standards()(Index).hasFocus())
        Standards().ShowPrompts(session_);
    ShowState();
}

void frmCalib::cboCalibPtrs_Click() {
    if (!session_.IsReading())
        session_.SetPointCount(ui_->fraEntry->Choices().PointCount());
    ShowState(); // also puts back what a tool has changed meanwhile
}

void frmCalib::cboUnits_Click() {
    const auto& setup = mWinInit::ChannelSetup.at(static_cast<std::size_t>(channel_));
    Standards().ChangeUnit(session_, ui_->fraEntry->Choices(), setup.Electrode, setup.MolarMass);
    if (!session_.IsPH())
        Record().StdUnit = static_cast<float>(session_.Unit());
    Standards().ShowPrompts(session_);
    ShowState();
}

void frmCalib::tmrRead_Timer() {
    reading_.OnTimer([this] { ShowState(); });
    if (reading_.CloseWaits())
        reject();
}

void frmCalib::tmrElapsed_Timer() {
    ui_->fraEntry->ShowElapsed(reading_);
}

void frmCalib::cmdSys_Click(int Index) {
    switch (Index) {
    case mainButton:
        MainButton();
        break;
    case secondButton:
        SecondButton();
        break;
    case helpButton:
        ShowCalibrationHelp();
        break;
    default:
        close();
    }
}

void frmCalib::MainButton() {
    if (OnSummaryPage()) {
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

void frmCalib::SecondButton() {
    if (OnSummaryPage())
        ShowEntryPage();
    else
        ClearPoint();
}

void frmCalib::ReadPoint() {
    const int point = session_.CurrentPoint();
    if (!Standards().Take(session_, point)) {
        Refuse(point);
        return;
    }
    reading_.Begin();
    ShowState();
}

/// Says that the standard of a point is no number.
void frmCalib::Refuse(int point) {
    const auto held = reading_.HoldForBox();
    Mcommon::Warn(notANumber);
    Standards().Focus(point);
}

void frmCalib::RecordPoint() {
    const auto recorded = session_.Record();
    if (recorded == CalibrationSession::Recorded::nothing)
        return;
    reading_.Stop();
    ShowState();
    if (recorded == CalibrationSession::Recorded::allPoints)
        cmdSys(mainButton).setFocus();
    else
        Standards().Focus(session_.CurrentPoint());
}

void frmCalib::ClearPoint() {
    reading_.Stop();
    session_.ClearPoint(session_.CurrentPoint());
    ShowState();
    Standards().Focus(session_.CurrentPoint());
}

void frmCalib::ShowSummary() {
    if (const auto refused = Standards().TakeAll(session_)) {
        Refuse(*refused);
        return;
    }
    outcome_ = session_.OutcomeOf(channel_, Record());
    Record().Slope = outcome_.record.Slope;
    if (outcome_.usable)
        session_.SetFinished();
    ui_->lblTitle->setText(Text::ToQt(CalibrationTexts::summaryTitle));
    ui_->picPage->ShowCalibration(outcome_.record, ElectrodeName(), outcome_.usable);
    session_.SetCurrentPoint(0);
    Standards()(0).setFocus(); // where the cursor stands after "Back"
    ui_->stkPages->setCurrentWidget(ui_->picPage);
    ShowState();
    QPushButton& next = cmdSys(outcome_.usable ? finishButton : secondButton);
    next.setDefault(true);
    next.setFocus();
    if (!outcome_.usable)
        Mcommon::Warn(CalibrationTexts::invalidData);
}

void frmCalib::ShowEntryPage() {
    ui_->lblTitle->setText(Text::ToQt(CalibrationTexts::entryTitle));
    ui_->stkPages->setCurrentWidget(ui_->fraEntry);
    cmdSys(mainButton).setDefault(true);
    ShowState();
    Standards().Focus(session_.CurrentPoint());
}

void frmCalib::PrintSummary() {
    CalibrationRecord record = outcome_.record;
    record.CalibrationDate = Now();
    Measure::PrintCalibSummary(ElectrodeName(), static_cast<std::int16_t>(channel_), record);
}

// ---- Closing ---------------------------------------------------------------------------------

void frmCalib::reject() {
    guard_("frmCalib - Form_QueryUnload", [this] {
        if (!reading_.MayClose() || !Form_QueryUnload())
            return;
        reading_.Stop();
        QDialog::reject();
    });
}

bool frmCalib::Form_QueryUnload() {
    if (session_.IsFinished()) {
        reading_.Stop();
        StoreCalibration(channel_, outcome_.record, Now());
        Q_EMIT CalibrationStored(channel_);
        return true;
    }
    const auto held = reading_.HoldForBox();
    if (!Mcommon::Ask(quitQuestion, Mcommon::EnterMeans::no, Mcommon::Tone::exclamation))
        return false;
    Record() = before_;
    return true;
}
