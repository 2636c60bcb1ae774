#include "screens/Report/ReportVerify.h"

#include "screens/frmVerify/frmVerify.h"

ReportVerify::ReportVerify(const Mreport::ViewedFile& file, QWidget& form)
    : file_(file), form_(form) {}

void ReportVerify::Show() {
    Close();
    window_ = new frmVerify(file_, &form_);
    connect(window_.data(), &frmVerify::RecordWanted, this, &ReportVerify::RecordWanted);
    window_->show();
}

void ReportVerify::Stop() {
    if (window_)
        window_->Stop();
}

void ReportVerify::Close() {
    delete window_;
}
