#pragma once

#include "report/RunCurve.h"
#include "report/RunScale.h"
#include "screens/controls/PaperGraph.h"

#include <QPalette>
#include <QWidget>

#include <memory>
#include <optional>
#include <vector>

class QCPItemText;
class QCPTextElement;
class QCustomPlot;
class SpanCursors;

/// The graph of a span of any length: each series between its smallest and its largest value in
/// every column of pixels, along the record numbers or along the time. A click sets the first
/// cursor, with Shift the second; the keys 1 and 2 take a cursor up, the arrow keys move it.
class SpanPlot : public QWidget, public PaperGraph {
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
        QString emptyText; ///< says why, where the records hold no value
        Mreport::RunAxis axis = Mreport::RunAxis::record;
        bool log = false;
        bool ownScales = false;
    };

    explicit SpanPlot(QWidget* parent = nullptr);
    ~SpanPlot() override;

    void Show(Picture picture);
    const Picture& Shown() const { return picture_; }

    void PaintOnPaper(QPainter& painter, const QRectF& place) override;

    /// The group of the run that a cursor (0, 1) stands at.
    std::optional<std::size_t> Cursor(std::size_t cursor) const;

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
    void Refresh();
    void ApplyLook(const QPalette& palette, const QFont& font);
    void DrawCurves(int width_px);
    void DrawCurve(const Series& series, const Mreport::RunScale& scale, int width_px);
    void ShowWhyEmpty(const Mreport::RunScale& scale);
    void FitRecordsOrTime();
    void FitValues(const Mreport::RunScale& scale);
    void MoveCursor(int groups);
    void TellCursors();
    bool Clicked(const QPointF& position, bool second);
    void Turned(const QWheelEvent& wheel);

    QCustomPlot* plot_ = nullptr;
    QCPTextElement* title_ = nullptr;
    QCPItemText* emptyText_ = nullptr;
    std::unique_ptr<SpanCursors> cursors_;
    QPalette look_; ///< of the screen, or of the paper while it is painted
    Picture picture_;
    QPointF pressed_;
};
