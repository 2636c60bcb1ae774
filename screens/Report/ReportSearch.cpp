#include "screens/Report/ReportSearch.h"

#include "report/ReportPages.h"
#include "screens/frmSrch/frmSrch.h"

ReportSearch::ReportSearch(const Mreport::ViewedFile& file, QWidget& form)
    : file_(file), form_(form) {}

void ReportSearch::Show() {
    if (!window_) {
        window_ = new frmSrch(file_, &form_);
        connect(window_.data(), &frmSrch::RecordFound, this, &ReportSearch::RecordFound);
    }
    window_->show();
    window_->raise();
    window_->activateWindow();
}

void ReportSearch::FindNext() {
    if (window_ && window_->isVisible())
        window_->FindNext();
    else
        Show();
}

void ReportSearch::Stop() {
    if (window_)
        window_->StopSearch();
}

void ReportSearch::Forget() {
    if (window_)
        window_->Forget();
}

void ReportSearch::Close() {
    delete window_;
}
