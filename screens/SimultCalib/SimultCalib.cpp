#include "screens/SimultCalib/SimultCalib.h"

#include "ui_SimultCalib.h"

SimultCalib::SimultCalib(QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::SimultCalib>()) {
    ui_->setupUi(this);
}

SimultCalib::~SimultCalib() = default;
