#include "screens/frmMain/LiveReport.h"

#include "files/MeasuringRun.h"
#include "screens/Report/Report.h"
#include "screens/controls/Wiring.h"

#include <QScopedValueRollback>

LiveReport::LiveReport(FileOpr::Recording& recording, QObject* parent)
    : QObject(parent), recording_(recording) {}

LiveReport::~LiveReport() {
    delete report_; // tells this object of its end, so it must go while this one is whole
}

void LiveReport::BringToFront() {
    if (!report_)
        Create();
    report_->show();
    report_->raise();
    report_->activateWindow();
    ShowRun();
}

void LiveReport::Open(const std::filesystem::path& file) {
    if (file == recording_.Run().targetFile) // with all records so far
        return Show();
    BringToFront();
    report_->ViewFile(file);
}

void LiveReport::Show() {
    BringToFront();
    const std::filesystem::path target = recording_.Run().targetFile;
    if (target.empty() || (shown_ == target && !recording_.Run().HasWaitingRecords()))
        return;
    // A target that cannot be completed now is shown as it is, after the reason.
    guard_("frmMain - ShowLiveReport", [this] { recording_.ReportOpened(); });
    const QScopedValueRollback opening(opening_, true);
    report_->ViewFile(target);
}

void LiveReport::Create() {
    report_ = new Report(recording_.Run());
    const Wiring wire(*this, guard_, "frmMain");
    wire(report_.data(), &Report::FileShown, "FileShown", &LiveReport::ReportShows);
    wire(report_.data(), &Report::Closed, "Closed", &LiveReport::ReportClosed);
}

bool LiveReport::Close() {
    return !report_ || report_->close();
}

void LiveReport::ShowRun() {
    if (report_)
        report_->SetUpdateEnabled(recording_.IsAutomaticOn());
}

void LiveReport::ReportShows(const std::filesystem::path& file) {
    shown_ = file;
    if (file.empty() || file != recording_.Run().targetFile)
        recording_.ReportClosed();
    else if (!opening_) // else that has been tried already
        recording_.ReportOpened();
}

void LiveReport::ReportClosed() {
    ReportShows({});
}
