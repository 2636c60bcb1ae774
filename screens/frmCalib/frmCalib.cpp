#include "screens/frmCalib/frmCalib.h"

#include "ui_frmCalib.h"

frmCalib::frmCalib(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmCalib>()) {
    ui_->setupUi(this);
}

frmCalib::~frmCalib() = default;
