#pragma once

#include "chem/CalibrationRecord.h"
#include "history/Standing.h"

#include <QWidget>

#include <memory>
#include <string>

namespace Ui {
class SummaryPage;
}

/// The calibration summary: the plot of the points and the "Slopes" list with what there is to say
/// about them.
class SummaryPage : public QWidget {
    Q_OBJECT

public:
    explicit SummaryPage(QWidget* parent = nullptr);
    ~SummaryPage() override;

    /// `usable` false shows that the data is bad, in place of the slopes.
    void ShowCalibration(const CalibrationRecord& record, const std::string& electrode,
                         bool usable);

    /// How it stands against the one before; nothing where the history tells nothing.
    void ShowStanding(const History::Standing& standing);

private:
    void ShowSlopes(const CalibrationRecord& record, const std::string& electrode);

    std::unique_ptr<Ui::SummaryPage> ui_;
};
