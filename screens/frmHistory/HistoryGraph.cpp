#include "screens/frmHistory/HistoryGraph.h"

#include "chem/TheoreticalSlope.h"
#include "screens/controls/Colours.h"
#include "screens/controls/PlotLook.h"
#include "screens/controls/SeriesStyle.h"

#include <QDateTime>
#include <QEvent>

#include <algorithm>
#include <utility>

namespace {

constexpr double lineWidth_px = 1.5;
constexpr double spaceAround = 0.08; ///< of the range of the values, on either side
constexpr int heightHint_px = 220;
constexpr int ticks = 6;
constexpr double shortestTime_s = ticks * 86400.0; ///< below, several ticks would have one date
constexpr int slopeSeries = 0;
constexpr int offsetSeries = 1;

/// The moment as the axis counts, in the user's own time.
double Seconds(const LocalTime& time) {
    return static_cast<double>(QDateTime(QDate(time.year, time.month, time.day),
                                         QTime(time.hour, time.minute, time.second), Qt::UTC)
                                   .toSecsSinceEpoch());
}

QCPRange RangeOf(const QCPGraph& graph) {
    bool found = false;
    const QCPRange range = graph.getValueRange(found);
    return found ? range : QCPRange(0, 0);
}

} // namespace

HistoryGraph::HistoryGraph(QWidget* parent) : QCustomPlot(parent) {
    setFocusPolicy(Qt::NoFocus);
    setLocale(QLocale::c());
    const auto ticker = QSharedPointer<QCPAxisTickerDateTime>::create();
    ticker->setDateTimeSpec(Qt::UTC);
    ticker->setDateTimeFormat("dd.MMM\nyyyy");
    ticker->setTickCount(ticks);
    xAxis->setTicker(ticker);
    yAxis->setLabel("Slope, % of theory");
    yAxis2->setLabel("Offset, mV");
    yAxis2->setVisible(true);
    yAxis2->setTickLabels(true);
    slope_ = addGraph(xAxis, yAxis);
    slope_->setName("Slope");
    offset_ = addGraph(xAxis, yAxis2);
    offset_->setName("Offset");
    MakeBound(TheoreticalSlope::lowest_percent);
    MakeBound(TheoreticalSlope::highest_percent);
    title_ = PlotLook::AddHead(*this);
    title_->setText("Slope and offset of the calibrations");
    TakeColours();
}

void HistoryGraph::MakeBound(double percent) {
    auto* line = new QCPItemStraightLine(this); // the plot owns it
    line->point1->setCoords(0, percent);
    line->point2->setCoords(1, percent);
    bounds_.push_back(line);
}

QSize HistoryGraph::sizeHint() const {
    return {0, heightHint_px};
}

void HistoryGraph::ShowCalibrations(const std::vector<History::PastCalibration>& calibrations,
                                    const QString& whyNone) {
    slope_->data()->clear();
    offset_->data()->clear();
    for (const History::PastCalibration& past : calibrations) {
        if (past.slope_percent)
            slope_->addData(Seconds(past.at), static_cast<double>(*past.slope_percent));
        if (past.offset_mV)
            offset_->addData(Seconds(past.at), static_cast<double>(*past.offset_mV));
    }
    setAccessibleDescription(
        QString("%1 calibrations, slope in %% of theory and offset in mV over time")
            .arg(calibrations.size()));
    const bool isEmpty = slope_->data()->isEmpty() && offset_->data()->isEmpty();
    if (!isEmpty)
        ShowEmpty({});
    else if (calibrations.empty())
        ShowEmpty(whyNone);
    else
        ShowEmpty("The calibrations of this electrode give no slope and no offset.");
    FitAxes();
    replot();
}

QString HistoryGraph::EmptyText() const {
    return emptyText_ == nullptr ? QString() : emptyText_->text();
}

/// Axes without values would show a time that nobody asked for.
void HistoryGraph::ShowEmpty(const QString& why) {
    const bool isEmpty = !why.isEmpty();
    for (QCPAxis* axis : {xAxis, yAxis, yAxis2})
        axis->setVisible(!isEmpty);
    for (QCPItemStraightLine* bound : bounds_)
        bound->setVisible(!isEmpty);
    legend->setVisible(!isEmpty);
    if (isEmpty && emptyText_ == nullptr) {
        emptyText_ = new QCPItemText(this); // the plot owns it
        emptyText_->position->setType(QCPItemPosition::ptAxisRectRatio);
        emptyText_->position->setCoords(0.5, 0.5);
        DressEmptyText();
    } else if (!isEmpty && emptyText_ != nullptr) {
        removeItem(std::exchange(emptyText_, nullptr));
    }
    if (!isEmpty)
        return;
    emptyText_->setText(why);
    setAccessibleDescription(why);
}

void HistoryGraph::DressEmptyText() {
    if (emptyText_ == nullptr)
        return;
    emptyText_->setColor(palette().color(QPalette::Text));
    emptyText_->setFont(font());
}

/// The bounds stay in sight, so that a sound electrode is seen to be one.
void HistoryGraph::FitAxes() {
    bool found = false;
    const QCPRange times = offset_->getKeyRange(found);
    if (!found)
        return;
    xAxis->setRange(
        times.size() < shortestTime_s
            ? QCPRange(times.center() - shortestTime_s / 2, times.center() + shortestTime_s / 2)
            : PlotLook::WithSpace(times.lower, times.upper, 0.04));
    QCPRange slopes(TheoreticalSlope::lowest_percent, TheoreticalSlope::highest_percent);
    if (slope_->dataCount() > 0)
        slopes.expand(RangeOf(*slope_));
    yAxis->setRange(PlotLook::WithSpace(slopes.lower, slopes.upper, spaceAround));
    const QCPRange offsets = RangeOf(*offset_);
    yAxis2->setRange(PlotLook::WithSpace(offsets.lower, offsets.upper, spaceAround));
}

void HistoryGraph::TakeColours() {
    PlotLook::Dress(*this, palette(), font());
    PlotLook::DressTitle(*title_, palette(), font());
    PlotLook::DressAxis(*yAxis2, palette().color(QPalette::Text), font());
    const auto dress = [this](QCPGraph& graph, int series) {
        graph.setPen(QPen(SeriesStyle::Colour(series, palette()), lineWidth_px));
        graph.setScatterStyle(SeriesStyle::Mark(series, palette()));
    };
    dress(*slope_, slopeSeries);
    dress(*offset_, offsetSeries);
    DressEmptyText();
    for (QCPItemStraightLine* bound : bounds_)
        bound->setPen(QPen(Colours::Caution(palette()), lineWidth_px, Qt::DashLine));
}

void HistoryGraph::changeEvent(QEvent* event) {
    QCustomPlot::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
        TakeColours();
        replot(QCustomPlot::rpQueuedReplot);
    }
}
