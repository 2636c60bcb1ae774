#include "app/Mcommon.h"
#include "base/DateText.h"
#include "base/RunTimeError.h"
#include "files/FileOpr.h"
#include "link/CommPort.h"
#include "platform/Platform.h"
#include "platform/qt/Text.h"
#include "screens/Report/Report.h"
#include "screens/frmMain/frmMain.h"
#include "ui_frmMain.h"

#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QTimer>

namespace {

using FileOpr::Recording;

constexpr int switchButton = 0;
constexpr int runButton = 1;

} // namespace

void frmMain::tmrTime_Timer() {
    if (std::exchange(timeTickAtWork_, true))
        return;
    const auto done = qScopeGuard([this] { timeTickAtWork_ = false; });
    const QString clock = Text::ToQt(DateText::Clock(platform::Current().clock.Now()));
    if (ui_->panTime->text() != clock)
        ui_->panTime->setText(clock);
    if (!recording_.IsAutomaticOn())
        return;
    const auto ended = qScopeGuard([this] { ShowRunState(); });
    const bool connected = reading_ && valuesShown_ && !CommPort::HasFailed() &&
                           CommPort::State() == CommPort::LinkState::answered;
    ShowOutcome(recording_.Tick(connected, [this] { return EntryToRecord(); }));
}

/// The texts as they are shown at this moment.
Recording::Entry frmMain::EntryToRecord() const {
    Recording::Entry entry;
    entry.comment = Text::FromQt(ui_->txtComment->text());
    entry.displayed = displayed_;
    return entry;
}

void frmMain::RunButtonPressed() {
    if (!reading_)
        StartReading();
    else if (recording_.IsAutomaticOn())
        StopPressed();
    else
        RecordPressed();
}

void frmMain::RecordPressed() {
    const auto shown = qScopeGuard([this] {
        ShowCaption();
        ShowRunState();
    });
    const auto mode = static_cast<Recording::Mode>(ui_->cboAcqr->currentIndex());
    const auto outcome = recording_.Record(mode, Text::FromQt(ui_->txtTimer->text()),
                                           [this] { return EntryToRecord(); });
    if (!reading_) // the link failed while the save dialog was open
        recording_.Stop();
    ShowOutcome(outcome);
}

void frmMain::StopPressed() {
    recording_.Stop();
    ShowRunState();
}

void frmMain::ShowOutcome(const Recording::Outcome& outcome) {
    if (outcome.status == Recording::Status::periodTooShort) {
        Mcommon::MessageBoxEx(std::string(Recording::periodMessage), platform::style::okOnly,
                              platform::style::information);
        ui_->txtTimer->setFocus(Qt::OtherFocusReason);
        ui_->txtTimer->selectAll();
    }
    if (outcome.status == Recording::Status::recorded) {
        ui_->lblRec->setText(QString::number(recording_.Counter()));
        ui_->txtComment->clear();
    }
    // After the tick that recorded: the run must not wait for the answer.
    if (!outcome.warning.empty())
        QTimer::singleShot(0, this, [warning = outcome.warning] {
            Mcommon::MessageBoxEx(warning, platform::style::okOnly, platform::style::exclamation);
        });
}

/// Brings the run button, and what must not be touched during an automatic run, to the state of
/// reading and recording.
void frmMain::ShowRunState() {
    const bool automatic = recording_.IsAutomaticOn();
    cmdPage(runButton).setText(!reading_ ? "&Start" : automatic ? "&Stop" : "&Record");
    cmdPage(switchButton).setEnabled(!automatic);
    ui_->txtTimer->setEnabled(!automatic);
    ui_->cboAcqr->setEnabled(!automatic);
    if (report_)
        report_->SetUpdateEnabled(automatic);
}

void frmMain::ShowLiveReport() {
    if (!report_) {
        report_ = new Report;
        connect(report_, &Report::FileShown, this, [this](const std::filesystem::path& file) {
            guard_("frmMain - FileShown", [this, &file] { ReportShows(file); });
        });
        connect(report_, &Report::Closed, this,
                [this] { guard_("frmMain - Closed", [this] { ReportShows({}); }); });
    }
    report_->show();
    report_->raise();
    report_->activateWindow();
    report_->SetUpdateEnabled(recording_.IsAutomaticOn());
    const std::filesystem::path target = FileOpr::targetFile;
    if (target.empty() || (reportFile_ == target && !FileOpr::HasWaitingRecords()))
        return;
    // A target that cannot be completed now is shown as it is, after the reason.
    guard_("frmMain - ShowLiveReport", [this] { recording_.ReportOpened(); });
    const QScopedValueRollback opening(openingReport_, true);
    report_->ViewFile(target);
}

void frmMain::ReportShows(const std::filesystem::path& file) {
    reportFile_ = file;
    if (file.empty() || file != FileOpr::targetFile)
        recording_.ReportClosed();
    else if (!openingReport_) // else that has been tried already
        recording_.ReportOpened();
}
