#include "screens/frmCalib/frmCalib.h"

#include "app/Mcommon.h"
#include "base/DateText.h"
#include "base/Electrode.h"
#include "base/NumberText.h"
#include "chem/CalibrationSummary.h"
#include "chem/Measure.h"
#include "platform/Platform.h"
#include "platform/qt/Text.h"
#include "screens/controls/CalibrationTexts.h"
#include "settings/mWinInit.h"
#include "ui_frmCalib.h"

#include <QEvent>
#include <QSignalBlocker>

namespace {

constexpr auto notANumber = "Input not correct.";
constexpr auto quitQuestion = "The calibration process has not been achieved yet.\n"
                              "Would you like to quit the process?";
constexpr auto firstReading = "0.0"; // stands until the first value has arrived

enum Button { mainButton, secondButton, helpButton, finishButton, closeButton };
enum Info { channelInfo, electrodeInfo, dateInfo, standardsHeading };

} // namespace

frmCalib::frmCalib(QWidget* parent)
    : CalibrationForm("frmCalib", notANumber, parent), ui_(std::make_unique<Ui::frmCalib>()),
      channel_(Measure::ChannelToCalibrate), before_(Record()) {
    ui_->setupUi(this);
    txtEntry = ControlArray<QLineEdit>(*this, "txtEntry");
    lblReading = ControlArray<QLabel>(*this, "lblReading");
    TakeControls(txtEntry);
    Guarded("Form_Load", [this] { Form_Load(); });
    ConnectControls();
}

frmCalib::~frmCalib() = default;

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
    Select(*cboCalibPtrs, cboCalibPtrs->findData(session_.PointCount()));
    Select(*cboUnits, cboUnits->findData(static_cast<int>(session_.Unit())));
    cboUnits->setVisible(!isPH);
    ui_->lblUnits->setVisible(!isPH);

    lblInfo(channelInfo).setText(QString("Channel %1").arg(channel_ + 1));
    lblInfo(electrodeInfo).setText(Text::ToQt(ElectrodeName()));
    lblInfo(dateInfo).setText(Measure::IsUsable(Record()) ? Text::ToQt(Record().CalibrationDate)
                                                          : QString("None"));
    lblInfo(standardsHeading).setText(Text::ToQt(StandardEntry::ColumnHeading(isPH)));
    FillStoredPoints();
    ShowEntryPage();
}

void frmCalib::FillStoredPoints() {
    for (const auto& [point, entry] : txtEntry)
        if (const auto standard = session_.Standard(point))
            entry->setText(Text::ToQt(NumberText::Plain(*standard)));
    ShowPrompts();
}

/// Every field without a standard asks for one in the unit in force.
void frmCalib::ShowPrompts() {
    const QString prompt = Text::ToQt(StandardEntry::Prompt(session_.IsPH(), session_.Unit()));
    for (const auto& [point, entry] : txtEntry) {
        const QSignalBlocker quiet(entry); // a prompt is no change of a standard
        if (StandardEntry::IsBlank(entry->text().toStdString()))
            entry->setText(prompt);
    }
}

// ---- What the session says, shown ------------------------------------------------------------

bool frmCalib::OnSummaryPage() const {
    return ui_->stkPages->currentWidget() == ui_->picPage;
}

void frmCalib::ShowState() {
    for (int point = 0; point < CalibrationSession::maxPoints; ++point)
        ShowPoint(point);
    cboCalibPtrs->setEnabled(!session_.IsReading());
    cboUnits->setEnabled(!session_.IsReading());
    ShowButtons();
}

void frmCalib::ShowPoint(int point) {
    const bool chosen = point < session_.PointCount();
    lblPoint(point).setVisible(chosen);
    ShowEntryState(point, chosen);
    lblReading(point).setVisible(chosen);
    lblReading(point).setText(ReadingText(point));
    lblMark(point).setVisible(chosen);
    ShowMark(lblMark(point), PointMark(point));
}

QString frmCalib::ReadingText(int point) const {
    const bool beingRead = session_.IsReading() && point == session_.CurrentPoint();
    const auto reading = beingRead ? session_.Live(channel_) : session_.Reading(channel_, point);
    if (reading)
        return Text::ToQt(Mcommon::FormatReading(*reading));
    return beingRead ? QString(firstReading) : QString();
}

QString frmCalib::PointMark(int point) const {
    if (session_.IsReading() && point == session_.CurrentPoint())
        return MarkText(channel_);
    if (session_.IsRecordedHere(point))
        return "recorded";
    return session_.IsRecorded(point) ? QString("last calibration") : QString();
}

void frmCalib::ShowButtons() {
    const bool summary = OnSummaryPage();
    cmdSys(mainButton).setText(Text::ToQt(MainCaption(summary)));
    cmdSys(mainButton).setEnabled(!summary || outcome_.usable);
    cmdSys(secondButton).setText(summary ? "&Back" : "&Clear");
    OfferFinish(summary && session_.IsFinished(), cmdSys(finishButton), cmdSys(closeButton));
}

// ---- Handlers --------------------------------------------------------------------------------

void frmCalib::EntryEntered(int point) {
    session_.SetCurrentPoint(point);
    ShowState();
}

void frmCalib::EntryChanged() {
    session_.Touch();
}

bool frmCalib::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut)
        ShowPrompts();
    return CalibrationForm::eventFilter(watched, event);
}

void frmCalib::cboCalibPtrs_Click() {
    session_.SetPointCount(cboCalibPtrs->currentData().toInt());
    ShowState();
}

void frmCalib::cboUnits_Click() {
    const auto& setup = mWinInit::ChannelSetup.at(static_cast<std::size_t>(channel_));
    ChangeUnit(setup.Electrode, setup.MolarMass);
    Record().StdUnit = static_cast<float>(session_.Unit());
    ShowPrompts();
    ShowState();
}

void frmCalib::cmdSys_Click(int Index) {
    switch (Index) {
    case mainButton:
        MainButton(OnSummaryPage());
        break;
    case secondButton:
        SecondButton();
        break;
    case helpButton:
        ShowHelp();
        break;
    default:
        close();
    }
}

void frmCalib::SecondButton() {
    if (OnSummaryPage())
        ShowEntryPage();
    else
        ClearPoint();
}

void frmCalib::RecordPoint() {
    const auto recorded = session_.Record();
    if (recorded == CalibrationSession::Recorded::nothing)
        return;
    StopReading();
    ShowState();
    if (recorded == CalibrationSession::Recorded::allPoints)
        cmdSys(mainButton).setFocus();
    else
        FocusEntry(session_.CurrentPoint());
}

void frmCalib::ClearPoint() {
    StopReading();
    session_.ClearPoint(session_.CurrentPoint());
    ShowState();
    FocusEntry(session_.CurrentPoint());
}

void frmCalib::ShowSummary() {
    if (!TakeAllStandards())
        return;
    outcome_ = session_.OutcomeOf(channel_);
    Record().Slope = outcome_.record.Slope;
    if (outcome_.usable)
        session_.SetFinished();
    ui_->lblTitle->setText(Text::ToQt(CalibrationTexts::summaryTitle));
    ui_->picPage->ShowCalibration(outcome_.record, ElectrodeName(), outcome_.usable);
    session_.SetCurrentPoint(0);
    txtEntry(0).setFocus(); // where the cursor stands after "Back"
    ui_->stkPages->setCurrentWidget(ui_->picPage);
    ShowState();
    QPushButton& next = cmdSys(outcome_.usable ? finishButton : secondButton);
    next.setDefault(true);
    next.setFocus();
    if (!outcome_.usable)
        Mcommon::MessageBoxEx(std::string(CalibrationSummary::invalidDataMessage),
                              platform::style::okOnly, platform::style::exclamation);
}

void frmCalib::ShowEntryPage() {
    ui_->lblTitle->setText(Text::ToQt(CalibrationTexts::entryTitle));
    ui_->stkPages->setCurrentWidget(ui_->fraEntry);
    cmdSys(mainButton).setDefault(true);
    ShowState();
    FocusEntry(session_.CurrentPoint());
}

void frmCalib::PrintSummary() {
    CalibrationRecord record = outcome_.record;
    record.CalibrationDate = DateText::SingleCalibration(platform::Current().clock.Now());
    Measure::PrintCalibSummary(ElectrodeName(), static_cast<std::int16_t>(channel_), record);
}

bool frmCalib::Form_QueryUnload() {
    if (session_.IsFinished()) {
        StopReading();
        Store(channel_, outcome_.record,
              DateText::SingleCalibration(platform::Current().clock.Now()));
        return true;
    }
    if (Ask(quitQuestion) != platform::button::yes)
        return false;
    Record() = before_;
    return true;
}
