#include "screens/frmCommon/frmCommon.h"

#include "ui_frmCommon.h"

frmCommon::frmCommon(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmCommon>()) {
    ui_->setupUi(this);
}

frmCommon::~frmCommon() = default;
