#include "screens/frmSrch/frmSrch.h"

#include "ui_frmSrch.h"

frmSrch::frmSrch(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmSrch>()) {
    ui_->setupUi(this);
}

frmSrch::~frmSrch() = default;
