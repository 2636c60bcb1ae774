#include "screens/controls/SpanCursors.h"

#include <qcustomplot.h>

#include <algorithm>

SpanCursors::SpanCursors(QCustomPlot& plot) {
    for (QCPItemLine*& line : lines_) {
        line = new QCPItemLine(&plot);
        line->start->setTypeX(QCPItemPosition::ptPlotCoords);
        line->end->setTypeX(QCPItemPosition::ptPlotCoords);
        line->start->setTypeY(QCPItemPosition::ptAxisRectRatio);
        line->end->setTypeY(QCPItemPosition::ptAxisRectRatio);
        line->setVisible(false);
    }
}

void SpanCursors::SetRun(const Mreport::RunOverview* run, const Mreport::RecordSpan& span,
                         Mreport::RunAxis axis) {
    run_ = run;
    span_ = span;
    axis_ = axis;
    for (auto& place : places_)
        if (place && (*place < span.first || *place >= span.end))
            place.reset();
}

void SpanCursors::Dress(const QPalette& palette) {
    constexpr double width_px = 1.5;
    const QColor text = palette.color(QPalette::Text);
    lines_[0]->setPen(QPen(text, width_px, Qt::SolidLine));
    lines_[1]->setPen(QPen(text, width_px, Qt::DashLine));
}

void SpanCursors::Draw() {
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        const auto group = Group(i);
        const auto x = group ? PlaceOnAxis(run_->At(*group), axis_) : std::nullopt;
        lines_[i]->setVisible(x.has_value());
        if (!x)
            continue;
        lines_[i]->start->setCoords(*x, 0);
        lines_[i]->end->setCoords(*x, 1);
    }
}

std::size_t SpanCursors::GroupOf(std::int64_t place) const {
    return static_cast<std::size_t>((place - run_->Span().first) / run_->RecordsPerGroup());
}

std::optional<std::size_t> SpanCursors::Group(std::size_t cursor) const {
    const auto& place = places_.at(cursor);
    if (!place || run_ == nullptr)
        return std::nullopt;
    const std::size_t group = GroupOf(*place);
    return group < run_->GroupCount() ? std::optional(group) : std::nullopt;
}

bool SpanCursors::Set(std::size_t cursor, double x) {
    const auto group = NearestGroup(*run_, axis_, x);
    if (!group)
        return false;
    held_ = cursor;
    places_.at(cursor) =
        run_->Span().first + static_cast<std::int64_t>(*group) * run_->RecordsPerGroup();
    Draw();
    return true;
}

bool SpanCursors::Move(int groups) {
    if (span_.Count() <= 0)
        return false;
    auto& place = places_.at(held_);
    const std::int64_t wanted =
        place ? *place + groups * run_->RecordsPerGroup() : (span_.first + span_.end) / 2;
    place = std::clamp(wanted, span_.first, span_.end - 1);
    Draw();
    return true;
}
