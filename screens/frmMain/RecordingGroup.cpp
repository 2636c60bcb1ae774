#include "screens/frmMain/RecordingGroup.h"

#include "app/Mcommon.h"
#include "base/CodePage.h"
#include "files/MeasuringRun.h"
#include "history/Notes.h"
#include "platform/qt/EntryText.h"
#include "platform/qt/Text.h"
#include "screens/controls/ValueLabel.h"
#include "screens/controls/Wiring.h"
#include "settings/SetupChecks.h"
#include "settings/mWinInit.h"
#include "ui_RecordingGroup.h"

#include <QCompleter>
#include <QScopeGuard>
#include <QTimer>

using FileOpr::Recording;

namespace {

constexpr int manualMode = static_cast<int>(Recording::Mode::manual);
constexpr int automaticMode = static_cast<int>(Recording::Mode::automatic);
constexpr const char* linkFailure = "the instrument does not answer";

} // namespace

RecordingGroup::RecordingGroup(QWidget* parent)
    : QGroupBox(parent), ui_(std::make_unique<Ui::RecordingGroup>()) {
    ui_->setupUi(this);
    connect(ui_->chkResume, &QCheckBox::toggled, this, &RecordingGroup::ResumeChosen);
}

RecordingGroup::~RecordingGroup() = default;

void RecordingGroup::Load(FileOpr::MeasuringRun& run, const mWinInit::MeasuringChoices& choices) {
    recording_.emplace(run);
    report_.emplace(*recording_);
    choices_ = choices;
    ui_->cboAcqr->addItems({"Manual", "Automatic"});
    ui_->cboAcqr->setCurrentIndex(choices.automatic ? automaticMode : manualMode);
    if (choices.period.empty())
        choices_.period = Text::FromQt(ui_->txtTimer->text());
    else
        ui_->txtTimer->setText(Text::ToQt(choices.period));
    ui_->chkSteady->setChecked(choices.whenSteady);
    ui_->chkResume->setChecked(choices.resume);
    AcceptCodePageOnly(*ui_->txtTimer);
    AcceptCodePageOnly(*ui_->txtComment);
    auto* completer = new QCompleter(&comments_, this);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    ui_->txtComment->setCompleter(completer);
    OfferComments();
    const Wiring wire(*this, guard_, "frmMain");
    wire(ui_->cboAcqr, &QComboBox::currentIndexChanged, "cboAcqr", &RecordingGroup::TakePressBack);
    wire(ui_->chkSteady, &QCheckBox::toggled, "chkSteady", &RecordingGroup::TakePressBack);
}

mWinInit::MeasuringChoices RecordingGroup::Choices() const {
    mWinInit::MeasuringChoices choices = choices_;
    choices.automatic = ui_->cboAcqr->currentIndex() == automaticMode;
    if (!ui_->txtTimer->text().isEmpty()) // an emptied box is no choice: the one before it stays
        choices.period = Text::FromQt(ui_->txtTimer->text());
    choices.whenSteady = ui_->chkSteady->isChecked();
    choices.resume = ui_->chkResume->isChecked();
    return choices;
}

void RecordingGroup::OfferComments() {
    QStringList comments;
    for (const std::string& comment : choices_.comments)
        comments << Text::ToQt(comment);
    comments_.setStringList(comments);
}

void RecordingGroup::Reset() {
    ShowValue(*ui_->lblRec, "0");
    ui_->txtComment->clear();
    awaitsSteady_ = false;
    gaps_.Clear();
}

void RecordingGroup::ShowAveraging(const QString& text) {
    ShowValue(*ui_->lblAverage, text);
}

QString RecordingGroup::AskAveraging() {
    const std::string answer = Mcommon::TrimControl(platform::Current().dialogs.AskText(
        "Input new averaging number for the measuring.", std::string(Mcommon::applicationTitle),
        Text::FromQt(ui_->lblAverage->text())));
    if (answer.empty())
        return {};
    const auto averaging = SetupChecks::Averaging(answer);
    if (!averaging) {
        Mcommon::Inform(SetupChecks::averagingRange);
        return {};
    }
    mWinInit::HardwareSettings.AveragingForMeasurement = *averaging;
    History::NoteSettings();
    ShowAveraging(Text::ToQt(answer));
    return Text::ToQt(answer);
}

bool RecordingGroup::IsToResume() const {
    return ui_->chkResume->isChecked();
}

Recording::TakeEntry RecordingGroup::Taking(const TakeDisplayed& takeDisplayed) const {
    return [this, &takeDisplayed]() -> std::optional<Recording::Entry> {
        const auto displayed = takeDisplayed();
        if (!displayed)
            return std::nullopt;
        return Recording::Entry{gaps_.InComment(Text::FromQt(ui_->txtComment->text())), *displayed};
    };
}

void RecordingGroup::Press(const TakeDisplayed& takeDisplayed, bool steady) {
    const bool byHand = ui_->cboAcqr->currentIndex() == manualMode;
    const bool waits = byHand && ui_->chkSteady->isChecked() && !steady;
    if (waits && !awaitsSteady_)
        AwaitSteady(takeDisplayed);
    else
        Record(takeDisplayed);
}

/// The file is asked for at once, while the analyst is there; reading may end meanwhile.
void RecordingGroup::AwaitSteady(const TakeDisplayed& takeDisplayed) {
    const auto shown = qScopeGuard([this] { ShowRun(); });
    awaitsSteady_ = recording_->PrepareTarget() && takeDisplayed();
}

/// What it waited for is no longer chosen.
void RecordingGroup::TakePressBack() {
    if (std::exchange(awaitsSteady_, false))
        ShowProgress();
}

void RecordingGroup::ReadingsAreSteady(const TakeDisplayed& takeDisplayed) {
    if (awaitsSteady_)
        Record(takeDisplayed);
}

void RecordingGroup::Record(const TakeDisplayed& takeDisplayed) {
    const auto shown = qScopeGuard([this] { ShowRun(); });
    awaitsSteady_ = false;
    const auto mode = static_cast<Recording::Mode>(ui_->cboAcqr->currentIndex());
    ShowOutcome(
        recording_->Record(mode, Text::FromQt(ui_->txtTimer->text()), Taking(takeDisplayed)));
}

void RecordingGroup::Tick(const TakeDisplayed& takeDisplayed) {
    const auto told = qScopeGuard([this] { ShowProgress(); });
    if (!recording_->IsAutomaticOn())
        return;
    const auto ended = qScopeGuard([this] { ShowRun(); });
    ShowOutcome(recording_->Tick(Taking(takeDisplayed)));
}

void RecordingGroup::Stop() {
    recording_->Stop();
    awaitsSteady_ = false;
    ShowRun();
}

void RecordingGroup::LinkFailed() {
    if (recording_->IsAutomaticOn())
        recording_->Fail(linkFailure);
    Stop();
}

void RecordingGroup::ReadingsLost(const LocalTime& since) {
    gaps_.Lost(since);
    ShowProgress();
}

void RecordingGroup::ReadingsReturned(const LocalTime& now) {
    gaps_.Answered(now);
    ShowProgress();
}

void RecordingGroup::ReadingsEnded() {
    gaps_.GiveUp();
    ShowProgress();
}

void RecordingGroup::ShowOutcome(const Recording::Outcome& outcome) {
    if (outcome.status == Recording::Status::periodTooShort) {
        Mcommon::Inform(Recording::periodMessage);
        ui_->txtTimer->setFocus(Qt::OtherFocusReason);
        ui_->txtTimer->selectAll();
    }
    if (outcome.status == Recording::Status::recorded)
        ShowRecorded();
    if (!outcome.remark.empty())
        Q_EMIT Remarked(Text::ToQt(outcome.remark));
    // After the tick that recorded: the run must not wait for the answer.
    if (!outcome.warning.empty())
        QTimer::singleShot(0, this, [warning = outcome.warning] { Mcommon::Warn(warning); });
}

void RecordingGroup::ShowRecorded() {
    ShowValue(*ui_->lblRec, QString::number(recording_->Counter()));
    mWinInit::RememberComment(choices_, Text::FromQt(ui_->txtComment->text()));
    OfferComments();
    ui_->txtComment->clear();
    gaps_.Noted();
}

/// What must not be touched during an automatic run is locked.
void RecordingGroup::ShowRun() {
    const bool automatic = recording_->IsAutomaticOn();
    ui_->txtTimer->setEnabled(!automatic);
    ui_->cboAcqr->setEnabled(!automatic);
    report_->ShowRun();
    ShowProgress();
    Q_EMIT RunChanged();
}

const std::filesystem::path& RecordingGroup::Target() const {
    return recording_->Run().targetFile;
}

std::string RecordingGroup::TargetName() const {
    return Target().empty() ? "" : CodePage::NameOf(Target().filename());
}

QString RecordingGroup::ProgressText() const {
    if (awaitsSteady_)
        return "Waiting until all channels are steady; press Record again to record now";
    if (Target().empty())
        return {};
    FileOpr::RecordingProgress progress = recording_->Progress();
    progress.noReadingsSince = gaps_.Since();
    return Text::ToQt(FileOpr::RecordingText(progress, TargetName()));
}

void RecordingGroup::ShowProgress() {
    ShowValue(*ui_->lblRecording, ProgressText());
    if (ui_->lblRecording->text().isEmpty())
        ui_->lblRecording->setToolTip({});
    else if (!Target().empty() && ui_->lblRecording->underMouse())
        ui_->lblRecording->setToolTip(
            Text::ToQt(FileOpr::TargetToolTip(Target(), recording_->Room())));
}

std::string RecordingGroup::Notice() const {
    return FileOpr::HeaderNotice(recording_->ChangesSinceHeader(), TargetName());
}

void RecordingGroup::NewFile() {
    if (recording_->IsAutomaticOn())
        return;
    awaitsSteady_ = false;
    recording_->Leave();
    recording_->Run().FlushTempFile();
    recording_->Run().targetFile.clear();
    ShowValue(*ui_->lblRec, "0");
    ShowRun();
}
