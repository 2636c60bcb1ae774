#include "screens/calibration/CalibrationChoices.h"

#include "ui_CalibrationChoices.h"

#include <QSignalBlocker>

namespace {

void Select(QComboBox& list, int value) {
    const QSignalBlocker quiet(list);
    list.setCurrentIndex(list.findData(value));
}

} // namespace

CalibrationChoices::CalibrationChoices(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::CalibrationChoices>()) {
    ui_->setupUi(this);
    for (std::size_t count = CalibrationSession::minPoints; count <= CalibrationSession::maxPoints;
         ++count)
        ui_->cboCalibPtrs->addItem(QString::number(count), static_cast<int>(count));
    ui_->cboUnits->addItem("Concentration (ppm)", static_cast<int>(StandardUnit::ppm));
    ui_->cboUnits->addItem("Concentration (mol/l)", static_cast<int>(StandardUnit::mol_per_litre));
    connect(ui_->cboCalibPtrs, &QComboBox::currentIndexChanged, this,
            &CalibrationChoices::PointCountChosen);
    connect(ui_->cboUnits, &QComboBox::currentIndexChanged, this, &CalibrationChoices::UnitChosen);
}

CalibrationChoices::~CalibrationChoices() = default;

std::size_t CalibrationChoices::PointCount() const {
    return ui_->cboCalibPtrs->currentData().toUInt();
}

StandardUnit CalibrationChoices::Unit() const {
    return static_cast<StandardUnit>(ui_->cboUnits->currentData().toInt());
}

void CalibrationChoices::ShowChoices(const CalibrationSession& session) {
    Select(*ui_->cboCalibPtrs, static_cast<int>(session.PointCount()));
    Select(*ui_->cboUnits, static_cast<int>(session.Unit()));
    ui_->cboCalibPtrs->setEnabled(!session.IsReading());
    ui_->cboUnits->setEnabled(!session.IsReading());
    ui_->cboUnits->setVisible(!session.IsPH());
    ui_->lblUnits->setVisible(!session.IsPH());
}
