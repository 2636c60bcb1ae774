#include "screens/frmMain/RecordingGroup.h"

#include "app/Mcommon.h"
#include "platform/qt/EntryText.h"
#include "platform/qt/Text.h"
#include "screens/controls/ValueLabel.h"
#include "ui_RecordingGroup.h"

#include <QScopeGuard>
#include <QTimer>

using FileOpr::Recording;

RecordingGroup::RecordingGroup(QWidget* parent)
    : QGroupBox(parent), ui_(std::make_unique<Ui::RecordingGroup>()) {
    ui_->setupUi(this);
}

RecordingGroup::~RecordingGroup() = default;

void RecordingGroup::Load(FileOpr::MeasuringRun& run) {
    recording_.emplace(run);
    report_.emplace(*recording_);
    ui_->cboAcqr->addItems({"Manual", "Automatic"});
    AcceptCodePageOnly(*ui_->txtTimer);
    AcceptCodePageOnly(*ui_->txtComment);
}

void RecordingGroup::Reset() {
    ShowValue(*ui_->lblRec, "0");
    ui_->txtComment->clear();
}

void RecordingGroup::ShowAveraging(const QString& text) {
    ShowValue(*ui_->lblAverage, text);
}

QString RecordingGroup::AveragingText() const {
    return ui_->lblAverage->text();
}

Recording::TakeEntry RecordingGroup::Taking(const TakeDisplayed& takeDisplayed) const {
    return [this, &takeDisplayed]() -> std::optional<Recording::Entry> {
        const auto displayed = takeDisplayed();
        if (!displayed)
            return std::nullopt;
        return Recording::Entry{Text::FromQt(ui_->txtComment->text()), *displayed};
    };
}

void RecordingGroup::Record(const TakeDisplayed& takeDisplayed) {
    const auto shown = qScopeGuard([this] { ShowRun(); });
    const auto mode = static_cast<Recording::Mode>(ui_->cboAcqr->currentIndex());
    ShowOutcome(
        recording_->Record(mode, Text::FromQt(ui_->txtTimer->text()), Taking(takeDisplayed)));
}

void RecordingGroup::Tick(const TakeDisplayed& takeDisplayed) {
    if (!recording_->IsAutomaticOn())
        return;
    const auto ended = qScopeGuard([this] { ShowRun(); });
    ShowOutcome(recording_->Tick(Taking(takeDisplayed)));
}

void RecordingGroup::Stop() {
    recording_->Stop();
    ShowRun();
}

void RecordingGroup::ShowOutcome(const Recording::Outcome& outcome) {
    if (outcome.status == Recording::Status::periodTooShort) {
        Mcommon::Inform(Recording::periodMessage);
        ui_->txtTimer->setFocus(Qt::OtherFocusReason);
        ui_->txtTimer->selectAll();
    }
    if (outcome.status == Recording::Status::recorded) {
        ShowValue(*ui_->lblRec, QString::number(recording_->Counter()));
        ui_->txtComment->clear();
    }
    // After the tick that recorded: the run must not wait for the answer.
    if (!outcome.warning.empty())
        QTimer::singleShot(0, this, [warning = outcome.warning] { Mcommon::Warn(warning); });
}

/// What must not be touched during an automatic run is locked.
void RecordingGroup::ShowRun() {
    const bool automatic = recording_->IsAutomaticOn();
    ui_->txtTimer->setEnabled(!automatic);
    ui_->cboAcqr->setEnabled(!automatic);
    report_->ShowRun();
    Q_EMIT RunChanged();
}
