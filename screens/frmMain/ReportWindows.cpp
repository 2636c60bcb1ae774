#include "screens/frmMain/ReportWindows.h"

#include "files/MeasuringRun.h"
#include "screens/Report/Report.h"
#include "screens/controls/Placement.h"
#include "screens/controls/Wiring.h"

#include <QScopedValueRollback>
#include <QTimer>

#include <algorithm>

namespace {
constexpr int step_px = 32; // from one window to the one beside it
}

ReportWindows::ReportWindows(FileOpr::Recording& recording, QObject* parent)
    : QObject(parent), recording_(recording) {}

ReportWindows::~ReportWindows() {
    for (const auto& window : std::exchange(windows_, {}))
        delete window; // tells this object of its end, so it must go while this one is whole
}

Report& ReportWindows::Make() {
    std::erase_if(windows_, [](const auto& window) { return window.isNull(); });
    auto* report = new Report(recording_.Run());
    windows_.emplace_back(report);
    const Wiring wire(*this, guard_, "frmMain");
    wire(report, &Report::FileShown, "FileShown", &ReportWindows::ReportShows);
    wire(report, &Report::Closed, "Closed", &ReportWindows::ReportClosed);
    connect(report, &Report::NewWindowWanted, this,
            [this, report](const auto& file) { OpenBeside(*report, file); });
    return *report;
}

Report& ReportWindows::BringToFront() {
    if (!first_)
        first_ = &Make();
    if (!first_->isVisible()) // once the desktop has placed it, which may be too low
        QTimer::singleShot(0, first_.data(), [first = first_] { Mcommon::KeepOnScreen(*first); });
    first_->show();
    first_->raise();
    first_->activateWindow();
    ShowRun();
    return *first_;
}

void ReportWindows::Open(const std::filesystem::path& file) {
    if (file == recording_.Run().targetFile) // with all records so far
        return Show();
    BringToFront().ViewFile(file);
}

void ReportWindows::Show() {
    Report& report = BringToFront();
    const std::filesystem::path target = recording_.Run().targetFile;
    if (target.empty() || (report.File().path == target && !recording_.Run().HasWaitingRecords()))
        return;
    // A target that cannot be completed now is shown as it is, after the reason.
    guard_("frmMain - ShowLiveReport", [this] { recording_.ReportOpened(); });
    const QScopedValueRollback opening(opening_, true);
    report.ViewFile(target);
}

void ReportWindows::OpenBeside(Report& origin, const std::filesystem::path& file) {
    Report& report = Make();
    report.setAttribute(Qt::WA_DeleteOnClose);
    Mcommon::MoveOntoScreen(report, origin.pos().x() + step_px, origin.pos().y() + step_px);
    report.show();
    ShowRun();
    report.ViewFile(file);
}

bool ReportWindows::Close() {
    const auto windows = windows_; // those beside the first leave as they close
    for (const auto& window : windows)
        if (window && !window->IsIdle())
            return window->close();
    return std::ranges::all_of(windows,
                               [](const auto& window) { return !window || window->close(); });
}

void ReportWindows::ShowRun() {
    for (const auto& window : windows_)
        if (window)
            window->SetUpdateEnabled(recording_.IsAutomaticOn());
}

bool ReportWindows::AnyShowsTarget() const {
    const std::filesystem::path& target = recording_.Run().targetFile;
    return !target.empty() && std::ranges::any_of(windows_, [&target](const auto& window) {
        return window && window->File().path == target;
    });
}

void ReportWindows::ReportShows(const std::filesystem::path& file) {
    if (!AnyShowsTarget())
        recording_.ReportClosed();
    else if (file == recording_.Run().targetFile && !opening_) // else that has been tried already
        recording_.ReportOpened();
}

void ReportWindows::ReportClosed() {
    ReportShows({});
}
