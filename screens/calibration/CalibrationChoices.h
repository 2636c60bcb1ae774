#pragma once

#include "chem/CalibrationSession.h"

#include <QWidget>

#include <memory>

namespace Ui {
class CalibrationChoices;
}

/// How many points a calibration has and, for an ion electrode, the unit of its standards.
class CalibrationChoices : public QWidget {
    Q_OBJECT

public:
    explicit CalibrationChoices(QWidget* parent = nullptr);
    ~CalibrationChoices() override;

    std::size_t PointCount() const;
    StandardUnit Unit() const;

    /// Shows the session's choices without telling the handlers. They wait while a point is read;
    /// a pH electrode has no unit.
    void ShowChoices(const CalibrationSession& session);

Q_SIGNALS:
    /// A list has been changed, in whatever way: mouse, wheel, keys, an assistive tool.
    void PointCountChosen();
    void UnitChosen();

private:
    std::unique_ptr<Ui::CalibrationChoices> ui_;
};
