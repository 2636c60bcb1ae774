#pragma once

#include "report/RunCurve.h"

#include <array>
#include <optional>

class QCPItemLine;
class QCustomPlot;
class QPalette;

/// The two cursors of the graph of a span: places of the run, each shown as a line. One of them is
/// held and moved by the keys.
class SpanCursors {
public:
    explicit SpanCursors(QCustomPlot& plot);

    /// The run that is shown, which must outlive its being shown, and the span of it. A cursor
    /// outside goes.
    void SetRun(const Mreport::RunOverview* run, const Mreport::RecordSpan& span,
                Mreport::RunAxis axis);

    void Dress(const QPalette& palette);

    /// Moves the lines to where their records are on the axis now.
    void Draw();

    /// The group of the run that a cursor (0, 1) stands at.
    std::optional<std::size_t> Group(std::size_t cursor) const;

    /// The group nearest to a place of the axis; the cursor is then held. False where there is
    /// none.
    bool Set(std::size_t cursor, double x);

    void Hold(std::size_t cursor) { held_ = cursor; }
    /// Moves the held one; one that is not shown yet is taken up in the middle of the span.
    bool Move(int groups);

private:
    std::size_t GroupOf(std::int64_t place) const;

    std::array<QCPItemLine*, 2> lines_{};
    std::array<std::optional<std::int64_t>, 2> places_{};
    std::size_t held_ = 0;
    const Mreport::RunOverview* run_ = nullptr;
    Mreport::RecordSpan span_;
    Mreport::RunAxis axis_ = Mreport::RunAxis::record;
};
