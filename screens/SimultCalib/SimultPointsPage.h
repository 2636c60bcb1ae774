#pragma once

#include "screens/calibration/StandardFields.h"
#include "screens/calibration/TrendRoom.h"

#include <QScrollArea>

#include <memory>
#include <vector>

class MarkLabel;
class PointReading;
class QLabel;

namespace Ui {
class SimultPointsPage;
}

/// The points of a simultaneous calibration: a row for each with its standard and the reading of
/// each channel that takes part, in a column of its own.
class SimultPointsPage : public QScrollArea {
    Q_OBJECT

public:
    explicit SimultPointsPage(QWidget* parent = nullptr);
    ~SimultPointsPage() override;

    CalibrationChoices& Choices() const;
    StandardFields& Standards() const { return *txtDat; }

    /// Shows the points as the session stands.
    void ShowSession(const CalibrationSession& session, const PointReading& reading);

    /// Shows the time since "&Read".
    void ShowElapsed(const PointReading& reading);

    /// Eight channels need more room than two; the screen's width is the limit.
    void WidenWindow();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Row {
        QLabel* lblPoint = nullptr;
        QLabel* lblDat = nullptr;
    };
    struct Column {
        QLabel* lblHead = nullptr;
        std::array<QLabel*, CalibrationSession::maxPoints> lblSig{};
        MarkLabel* lblMark = nullptr;
        QLabel* lblTemp = nullptr;
    };

    Row BuildRow(std::size_t point);
    Column BuildColumn(std::size_t channel);
    void ShowReading(const CalibrationSession& session, const PointReading& reading);
    void ShowRow(std::size_t point, const CalibrationSession& session);
    void ShowColumn(std::size_t channel, const CalibrationSession& session,
                    const PointReading& reading);

    std::unique_ptr<Ui::SimultPointsPage> ui_;
    StandardFields* txtDat = nullptr;
    std::array<Row, CalibrationSession::maxPoints> rows_;
    std::array<Column, maxChannels> columns_;
    TrendRoom room_;
};
