#pragma once

#include "screens/controls/RunStrip.h"

#include <QPixmap>
#include <QWidget>

#include <functional>
#include <vector>

/// A whole run as a strip: each series between the smallest and the largest value of every column
/// of pixels, flags where records have a comment, and the span that the graph shows as a frame. The
/// mouse drags the frame and its edges, a click beside it brings it there, the wheel makes the span
/// shorter or longer. From the keyboard the arrow keys move the frame, with Shift its end, Page Up
/// and Page Down go on by a span, Home and End to the run's ends, + and - make it shorter or
/// longer.
class OverviewGraph : public QWidget {
    Q_OBJECT

public:
    explicit OverviewGraph(QWidget* parent = nullptr);

    /// What is painted from now on; it must outlive the widget or be taken away by nullptr.
    /// `styles` are the series' numbers of SeriesStyle, from 0.
    void SetRun(const Mreport::RunOverview* run, std::vector<int> styles);

    /// The run has changed.
    void RunChanged();

    /// Each series over the whole height, or all on one scale; that linear or logarithmic.
    void SetScales(bool own, bool log);

    const Mreport::RecordSpan& Span() const { return span_; }
    void SetSpan(const Mreport::RecordSpan& span); ///< emits nothing

    /// The comment of a group of records, for its flag; an empty text where it cannot be read.
    std::function<QString(const Mreport::RunOverview::Group&)> CommentText;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The user wants the graph to show these records.
    void SpanChosen(const Mreport::RecordSpan& span);
    void FlagClicked(std::int64_t place, std::uint64_t offset);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool event(QEvent* event) override;

private:
    enum class Grip { none, frame, begin, end };

    void TellSpan();
    QRectF Frame() const;
    Grip GripAt(const QPointF& position) const;
    void ShowPointer(const QPointF& position);
    void Drag(const QPointF& position);
    void Choose(const Mreport::RecordSpan& span);
    void Zoom(double factor, double x);
    void DrawFrame(QPainter& painter) const;

    RunStrip strip_;
    Mreport::RecordSpan span_;
    QPixmap picture_; ///< everything but the frame; null when it has to be drawn anew
    Grip grip_ = Grip::none;
    std::int64_t grabbed_ = 0;        ///< place under the mouse when the grip was taken
    Mreport::RecordSpan grabbedSpan_; ///< and the span then
};
