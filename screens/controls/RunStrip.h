#pragma once

#include "report/RunScale.h"

#include <QSize>

#include <vector>

class QColor;
class QPainter;
class QPalette;
class QPointF;

/// A whole run as a strip: each series between the smallest and the largest value of every column
/// of pixels, and flags where records have a comment.
class RunStrip {
public:
    using Group = Mreport::RunOverview::Group;

    /// The run must outlive its being drawn or be taken away by nullptr; `styles` are the series'
    /// numbers of SeriesStyle, from 0.
    void SetRun(const Mreport::RunOverview* run, std::vector<int> styles);
    void SetSize(const QSize& size) { size_ = size; }

    /// Each series over the whole height, or all on one scale.
    void SetOwnScales(bool own) { ownScales_ = own; }
    void SetLog(bool log) { log_ = log; }
    bool IsLog() const { return log_; }

    bool HasRun() const { return run_ != nullptr && run_->Span().Count() > 0; }
    std::int64_t Records() const { return run_->Span().Count(); }

    /// The pixel of a record by its place in the run, and the place at a pixel.
    double XOf(std::int64_t place) const;
    std::int64_t PlaceAt(double x) const;

    /// The group whose comment has its flag here; none where there is no flag.
    const Group* FlagAt(const QPointF& position) const;

    void Draw(QPainter& painter, const QPalette& palette) const;

private:
    /// The values of a column of pixels, in pixels.
    struct Bar {
        double x = 0;
        double top = 0;
        double bottom = 0;
        bool any = false;
    };

    double HalfRecord() const;
    std::vector<Bar> BarsOf(std::size_t series, const Mreport::RunScale& scale) const;
    static void DrawLine(QPainter& painter, const std::vector<Bar>& bars, const QColor& colour);
    static void DrawColumns(QPainter& painter, const std::vector<Bar>& bars, const QColor& colour);
    void DrawFlags(QPainter& painter, const QPalette& palette) const;
    Mreport::RunScale ScaleOf(std::size_t series) const;

    const Mreport::RunOverview* run_ = nullptr;
    std::vector<int> styles_;
    QSize size_{1, 1};
    bool ownScales_ = false;
    bool log_ = false;
};
