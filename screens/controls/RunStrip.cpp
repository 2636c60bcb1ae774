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
constexpr double lineWidth_px = 1.2;

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
        painter.setPen(QPen(SeriesStyle::Colour(styles_.at(s), palette), lineWidth_px));
        DrawSeries(painter, s, ownScales_ ? ScaleOf(s) : common);
    }
    DrawFlags(painter, palette);
}

void RunStrip::DrawSeries(QPainter& painter, std::size_t series, const RunScale& scale) const {
    if (!scale.Any())
        return;
    const auto columns = static_cast<std::size_t>(std::max(size_.width(), 1));
    const double top = flagHeight_px + margin_px;
    const double room = size_.height() - top - margin_px;
    const auto y = [&](double value) { return top + room * (1 - scale.ShareOf(value)); };
    QPainterPath path;
    bool drawing = false;
    for (const auto& [column, values] : run_->Columns(series, run_->Span(), columns)) {
        const double high = y(values.high);
        if (!values.Any() || std::isnan(high)) { // no value, or none that the scale has a place for
            drawing = false;
            continue;
        }
        const double low = std::isnan(y(values.low)) ? top + room : y(values.low);
        const double x = static_cast<double>(column) + HalfRecord();
        if (drawing)
            path.lineTo(x, low);
        else
            path.moveTo(x, low);
        path.lineTo(x, high - (drawing ? 0 : 0.5)); // a value alone is a dot
        drawing = true;
    }
    painter.drawPath(path);
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
