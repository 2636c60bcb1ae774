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
#include "screens/calibration/ChannelRecords.h"
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

frmCalib::frmCalib(std::size_t channel, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmCalib>()), ChannelToCalibrate(channel),
      before_(Record()) {
    ui_->setupUi(this);
    lblInfo = ControlArray<QLabel>(*this, "lblInfo");
    cmdSys = ControlArray<QPushButton>(*this, "cmdSys");
    Mcommon::FitOntoScreen(*this);
    entry_ = std::make_unique<PointEntry>(
        session_, reading_,
        PointEntry::Screen{"frmCalib", "txtEntry", Standards(), ui_->fraEntry->Choices(),
                           notANumber, true, [this] { ShowState(); }, [this] { reject(); }});
    guard_("frmCalib - Form_Load", [this] { Form_Load(); });
    WireControls(); // comes last, so that loading calls no handler
}

frmCalib::~frmCalib() = default;

void frmCalib::WireControls() {
    const Wiring wire(*this, guard_, "frmCalib");
    wire(cmdSys, &QPushButton::clicked, "cmdSys_Click", &frmCalib::cmdSys_Click);
    wire(&ui_->fraEntry->Choices(), &CalibrationChoices::UnitChosen, "cboUnits_Click",
         &frmCalib::cboUnits_Click);
    entry_->Wire(guard_);
    wire(&reading_.tmrElapsed, &QTimer::timeout, "tmrElapsed_Timer", &frmCalib::tmrElapsed_Timer);
}

StandardFields& frmCalib::Standards() const {
    return ui_->fraEntry->Standards();
}

CalibrationRecord& frmCalib::Record() const {
    return StoredOf(ChannelToCalibrate);
}

std::string frmCalib::ElectrodeName() const {
    return SetupOf(ChannelToCalibrate).Electrode;
}

void frmCalib::Form_Load() {
    const bool isPH = Electrode::KindOf(ElectrodeName()) == Electrode::Kind::pH;
    Measure::IsPHMode = isPH;
    session_.Start(isPH, UnitOf(Record().StdUnit));
    session_.SetChannels({ChannelToCalibrate});
    session_.Load(ChannelToCalibrate, Record());

    lblInfo(channelInfo).setText(QString("Channel %1").arg(ChannelToCalibrate + 1));
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

void frmCalib::cboUnits_Click() {
    const auto& setup = SetupOf(ChannelToCalibrate);
    Standards().ChangeUnit(session_, ui_->fraEntry->Choices(), setup.Electrode, setup.MolarMass);
    if (!session_.IsPH())
        Record().StdUnit = static_cast<float>(session_.Unit());
    Standards().ShowPrompts(session_);
    ShowState();
}

void frmCalib::tmrElapsed_Timer() {
    ui_->fraEntry->ShowElapsed(reading_);
}

void frmCalib::cmdSys_Click(std::size_t Index) {
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
    entry_->Act([this] { RecordPoint(); }, [this] { ShowSummary(); });
}

void frmCalib::SecondButton() {
    if (OnSummaryPage())
        ShowEntryPage();
    else
        ClearPoint();
}

void frmCalib::RecordPoint() {
    entry_->Record([this] { cmdSys(mainButton).setFocus(); });
}

void frmCalib::ClearPoint() {
    reading_.Stop();
    session_.ClearPoint(session_.CurrentPoint());
    ShowState();
    Standards().Focus(session_.CurrentPoint());
}

void frmCalib::ShowSummary() {
    if (!entry_->TakeAll())
        return;
    outcome_ = session_.OutcomeOf(ChannelToCalibrate, Record());
    Record().Slope = outcome_.record.Slope;
    if (outcome_.usable)
        session_.SetFinished();
    ui_->lblTitle->setText(Text::ToQt(CalibrationTexts::summaryTitle));
    ui_->picPage->ShowCalibration(outcome_.record, ElectrodeName(), outcome_.usable);
    ui_->picPage->ShowStanding(outcome_.usable
                                   ? History::StandingOf(ChannelToCalibrate, outcome_.record)
                                   : History::Standing{});
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
    Measure::PrintCalibSummary(ElectrodeName(), ChannelToCalibrate, record);
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
        StoreCalibration(ChannelToCalibrate, outcome_.record, Now(),
                         reading_.LastTemperature(ChannelToCalibrate));
        Q_EMIT CalibrationStored(ChannelToCalibrate);
        return true;
    }
    const auto held = reading_.HoldForBox();
    if (!Mcommon::Ask(quitQuestion, Mcommon::EnterMeans::no, Mcommon::Tone::exclamation))
        return false;
    Record() = before_;
    return true;
}
