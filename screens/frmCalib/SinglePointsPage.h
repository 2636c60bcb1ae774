#pragma once

#include "screens/calibration/StandardFields.h"
#include "screens/calibration/TrendRoom.h"

#include <QScrollArea>

#include <memory>

class MarkLabel;
class PointReading;
class QLabel;

namespace Ui {
class SinglePointsPage;
}

/// The points of one electrode's calibration: a row for each with its standard, its reading in mV
/// and how far it is.
class SinglePointsPage : public QScrollArea {
    Q_OBJECT

public:
    explicit SinglePointsPage(QWidget* parent = nullptr);
    ~SinglePointsPage() override;

    CalibrationChoices& Choices() const;
    StandardFields& Standards() const { return *txtEntry; }

    /// Shows the points as the session stands; it has one channel.
    void ShowSession(const CalibrationSession& session, const PointReading& reading);

    /// Shows the time since "&Read".
    void ShowElapsed(const PointReading& reading);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Row {
        QLabel* lblPoint = nullptr;
        QLabel* lblReading = nullptr;
        MarkLabel* lblMark = nullptr;
    };

    Row BuildRow(std::size_t point);
    void ShowReading(const CalibrationSession& session, const PointReading& reading);
    static void ShowMark(MarkLabel& label, std::size_t point, const CalibrationSession& session,
                         const PointReading& reading);

    std::unique_ptr<Ui::SinglePointsPage> ui_;
    StandardFields* txtEntry = nullptr;
    std::array<Row, CalibrationSession::maxPoints> rows_;
    TrendRoom room_;
};
