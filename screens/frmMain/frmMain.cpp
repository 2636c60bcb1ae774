#include "screens/frmMain/frmMain.h"

#include "ui_frmMain.h"

frmMain::frmMain(QWidget* parent) : QMainWindow(parent), ui_(std::make_unique<Ui::frmMain>()) {
    ui_->setupUi(this);
}

frmMain::~frmMain() = default;
