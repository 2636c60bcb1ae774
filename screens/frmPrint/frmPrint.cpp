#include "screens/frmPrint/frmPrint.h"

#include "ui_frmPrint.h"

frmPrint::frmPrint(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmPrint>()) {
    ui_->setupUi(this);
}

frmPrint::~frmPrint() = default;
