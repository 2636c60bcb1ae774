#pragma once

#include "report/RunCurve.h"

#include <QWidget>

#include <array>
#include <optional>
#include <vector>

class QCPItemLine;
class QCPTextElement;
class QCustomPlot;

/// The graph of a span of any length: each series between its smallest and its largest value in
/// every column of pixels, along the record numbers or along the time. A click sets the first
/// cursor, with Shift the second; the keys 1 and 2 take a cursor up, the arrow keys move it.
class SpanPlot : public QWidget {
    Q_OBJECT

public:
    struct Series {
        QString name;
        std::size_t index = 0; ///< in the run
        int style = 0;         ///< number of SeriesStyle
    };
    struct Picture {
        const Mreport::RunOverview* run = nullptr; ///< must outlive its being shown
        Mreport::RecordSpan span;
        std::vector<Series> series;
        QString unit;
        QString title;
        Mreport::RunAxis axis = Mreport::RunAxis::record;
        bool log = false;
        bool ownScales = false;
    };

    explicit SpanPlot(QWidget* parent = nullptr);

    void Show(Picture picture);
    const Picture& Shown() const { return picture_; }

    /// The run that is shown has got more values.
    void Refresh();

    /// The group of the run that a cursor (0, 1) stands at.
    std::optional<std::size_t> Cursor(int cursor) const;

    QCustomPlot& Plot() { return *plot_; }

Q_SIGNALS:
    void CursorsMoved();
    /// The user wants a span so many times as long; the record at this share of it stays in place.
    void ZoomWanted(double factor, double share);
    /// The user wants a span so many of its lengths further on.
    void MoveWanted(double lengths);

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void MakePlot();
    void ApplyLook();
    void DrawCurves();
    void FitAxes(const Mreport::RunOverview::Range& scale);
    void DrawCursors();
    void DrawCurve(const Series& series, const Mreport::RunOverview::Range& scale);
    void FitRecordsOrTime();
    void SetCursor(int cursor, std::size_t group);
    void MoveCursor(int groups);
    std::optional<std::size_t> GroupAt(double x) const;
    std::int64_t PlaceOf(std::size_t group) const;
    double XOf(std::size_t group) const;
    Mreport::RunOverview::Range ScaleOf(std::size_t series) const;
    bool Clicked(const QPointF& position, bool second);
    void Turned(const QWheelEvent& wheel);

    QCustomPlot* plot_ = nullptr;
    QCPTextElement* title_ = nullptr;
    std::array<QCPItemLine*, 2> lines_{};
    std::array<std::optional<std::int64_t>, 2> cursors_{}; ///< places in the run
    int heldCursor_ = 0;
    Picture picture_;
    QPointF pressed_;
};
