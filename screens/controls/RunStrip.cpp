#include "screens/controls/RunStrip.h"

#include "screens/controls/SeriesStyle.h"

#include <QPainter>
#include <QPainterPath>
#include <QPalette>

#include <algorithm>
#include <cmath>

namespace {

using Mreport::RunScale;

constexpr double flagHeight_px = 9;
constexpr double flagWidth_px = 6;
constexpr double margin_px = 4; // above and below the curves
constexpr double curveWidth_px = 1.2;
constexpr double thinnestRecord_px = 2; // that a line is drawn through

} // namespace

void RunStrip::SetRun(const Mreport::RunOverview* run, std::vector<int> styles) {
    run_ = run;
    styles_ = std::move(styles);
}

double RunStrip::XOf(std::int64_t place) const {
    return static_cast<double>(place) * size_.width() / static_cast<double>(Records());
}

/// From the pixel of a record to the middle of its room: in a short run that has many pixels.
double RunStrip::HalfRecord() const {
    return std::max(0.5, size_.width() / (2 * static_cast<double>(Records())));
}

std::int64_t RunStrip::PlaceAt(double x) const {
    const double share = x / std::max(size_.width(), 1);
    return std::llround(share * static_cast<double>(Records()));
}

RunScale RunStrip::ScaleOf(std::size_t series) const {
    RunScale scale(log_);
    scale.Take(*run_, series, run_->Span());
    return scale;
}

void RunStrip::Draw(QPainter& painter, const QPalette& palette) const {
    RunScale common(log_);
    for (std::size_t s = 0; s < run_->SeriesCount(); ++s)
        common.Take(ScaleOf(s));
    for (std::size_t s = 0; s < run_->SeriesCount(); ++s) {
        const QColor colour = SeriesStyle::Colour(styles_.at(s), palette);
        const auto bars = BarsOf(s, ownScales_ ? ScaleOf(s) : common);
        if (HalfRecord() < thinnestRecord_px / 2)
            DrawColumns(painter, bars, colour);
        else
            DrawLine(painter, bars, colour);
    }
    DrawFlags(painter, palette);
}

/// A bar for each column of pixels with records; one that is not `any` interrupts the line.
std::vector<RunStrip::Bar> RunStrip::BarsOf(std::size_t series, const RunScale& scale) const {
    std::vector<Bar> bars;
    if (!scale.Any())
        return bars;
    const std::int64_t columns = std::max(size_.width(), 1);
    const double top = flagHeight_px + margin_px;
    const double room = size_.height() - top - margin_px;
    const auto y = [&](double value) { return top + room * (1 - scale.ShareOf(value)); };
    for (const auto& [column, values] : run_->Columns(series, run_->Span(), columns)) {
        Bar bar;
        bar.x = static_cast<double>(column) + HalfRecord();
        bar.top = y(values.high);
        bar.bottom = std::isnan(y(values.low)) ? top + room : y(values.low);
        bar.any = values.Any() && !std::isnan(bar.top); // else the scale has no place for it
        bars.push_back(bar);
    }
    return bars;
}

/// A line through the records of a short run.
void RunStrip::DrawLine(QPainter& painter, const std::vector<Bar>& bars, const QColor& colour) {
    QPainterPath path;
    bool drawing = false;
    for (const Bar& bar : bars) {
        if (bar.any && drawing)
            path.lineTo(bar.x, bar.bottom);
        if (bar.any && !drawing)
            path.moveTo(bar.x, bar.bottom);
        if (bar.any)
            path.lineTo(bar.x, bar.top - (drawing ? 0 : 0.5)); // a value alone is a dot
        drawing = bar.any;
    }
    painter.setPen(QPen(colour, curveWidth_px));
    painter.drawPath(path);
}

/// Upright strokes that reach to one another: a line through thousands of values up and down takes
/// a hundred times as long to paint, and looks no better.
void RunStrip::DrawColumns(QPainter& painter, const std::vector<Bar>& bars, const QColor& colour) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    const Bar* before = nullptr;
    for (const Bar& bar : bars) {
        double top = bar.top;
        double bottom = bar.bottom;
        if (before != nullptr && bar.any) {
            top = std::min(top, before->bottom);
            bottom = std::max(bottom, before->top);
        }
        if (bar.any)
            painter.fillRect(
                QRectF(bar.x - 0.5, top - curveWidth_px / 2, 1, bottom - top + curveWidth_px),
                colour);
        before = bar.any ? &bar : nullptr;
    }
    painter.restore();
}

void RunStrip::DrawFlags(QPainter& painter, const QPalette& palette) const {
    const QColor colour = palette.color(QPalette::Text);
    painter.setPen(colour);
    painter.setBrush(colour);
    for (std::size_t i = 0; i < run_->GroupCount(); ++i) {
        const Group& group = run_->At(i);
        if (group.comment < 0)
            continue;
        const double x = XOf(group.comment) + HalfRecord();
        painter.drawLine(QPointF(x, 1), QPointF(x, flagHeight_px + margin_px));
        painter.drawPolygon(
            QPolygonF{{x, 1}, {x + flagWidth_px, flagHeight_px / 2}, {x, flagHeight_px}});
    }
}

const RunStrip::Group* RunStrip::FlagAt(const QPointF& position) const {
    if (!HasRun() || position.y() > flagHeight_px + margin_px)
        return nullptr;
    const Group* nearest = nullptr;
    double least = flagWidth_px + 1;
    for (std::size_t i = 0; i < run_->GroupCount(); ++i) {
        const Group& group = run_->At(i);
        const double distance =
            std::abs(XOf(group.comment) + HalfRecord() + flagWidth_px / 2 - position.x());
        if (group.comment < 0 || distance >= least)
            continue;
        least = distance;
        nearest = &group;
    }
    return nearest;
}
