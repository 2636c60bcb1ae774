#include "screens/controls/TrendGraph.h"

#include "platform/qt/Text.h"
#include "screens/controls/PlotLook.h"
#include "screens/controls/SeriesStyle.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int heightHint_px = 170;
constexpr double lineWidth_px = 1.5;
constexpr double markSize_px = 6;
constexpr double spaceAround = 0.08; ///< of the range of the values, on either side

double Seconds(std::chrono::milliseconds time) {
    return std::chrono::duration<double>(time).count();
}

double SecondOfDay(const LocalTime& time) {
    return (time.hour * 60 + time.minute) * 60 + time.second;
}

} // namespace

TrendGraph::TrendGraph(QWidget* parent)
    : QCustomPlot(parent), ticker_(QSharedPointer<TimeTicker>::create()) {
    setFocusPolicy(Qt::NoFocus);
    setLocale(QLocale::c());
    setNotAntialiasedElements(QCP::aeAll); // twice the work, and not seen on lines that wander
    xAxis->setTicker(ticker_);
    yAxis->setNumberFormat("gb");
    yAxis->ticker()->setTickCount(4);
    axisRect()->setMinimumMargins(QMargins(0, 4, 8, 0));
    setAutoAddPlottableToLegend(false); // only those that have values
    for (std::size_t channel = 0; channel < lines_.size(); ++channel) {
        lines_[channel] = addGraph();
        lines_[channel]->setName(QString("Ch. %1").arg(channel + 1));
    }
    MakeLegend();
    TakeColours();
}

QSize TrendGraph::sizeHint() const {
    return {0, heightHint_px};
}

/// Beside the lines, where it never covers one.
void TrendGraph::MakeLegend() {
    auto* column = new QCPLayoutGrid; // the plot's layout owns it
    plotLayout()->addElement(0, 1, column);
    plotLayout()->setColumnStretchFactor(1, 0.001);
    column->setMargins(QMargins(0, 0, 0, 0));
    column->addElement(0, 0, legend);
    column->addElement(1, 0, new QCPLayoutElement);
    legend->setVisible(true);
    legend->setRowSpacing(0);
    legend->setMargins(QMargins(0, 0, 4, 0));
    constexpr int swatch_px = 14;
    legend->setIconSize(swatch_px, swatch_px);
}

void TrendGraph::ShowTrend(const TrendHistory& history, const View& view) {
    for (std::size_t channel = 0; channel < lines_.size(); ++channel)
        ShowLine(channel, history, view);
    const double end = SecondOfDay(view.now);
    xAxis->setRange(end - Seconds(view.span), end);
    yAxis->setLabel(Text::ToQt(std::string(Quantities::Label(view.quantity))));
    FitValues(view.quantity);
    replot(rpQueuedReplot);
}

void TrendGraph::ShowLine(std::size_t channel, const TrendHistory& history, const View& view) {
    const TrendHistory::Window window{view.monotonic - view.span, view.monotonic,
                                      static_cast<std::size_t>(std::max(axisRect()->width(), 1))};
    const auto line = history.Reduced(channel, view.quantity, window);
    const double end = SecondOfDay(view.now);
    QVector<QCPGraphData> points;
    points.reserve(static_cast<int>(line.size()));
    for (const auto& point : line)
        points.append(
            {end + Seconds(point.time - view.monotonic), static_cast<double>(point.value)});
    QCPGraph& graph = *lines_.at(channel);
    graph.data()->set(points, true);
    graph.setScatterSkip(std::max(static_cast<int>(points.size()) - 2, 0)); // a mark at either end
    if (line.empty())
        graph.removeFromLegend();
    else
        graph.addToLegend();
}

void TrendGraph::FitValues(Quantity quantity) {
    QCPRange range;
    bool found = false;
    for (const QCPGraph* line : lines_) {
        bool has = false;
        const QCPRange values = line->getValueRange(has, QCP::sdBoth, xAxis->range());
        if (!has)
            continue;
        range = found ? range.expanded(values) : values;
        found = true;
    }
    if (!found)
        return;
    const double wanted = std::max(range.size() * (1 + 2 * spaceAround),
                                   Quantities::LeastRangeAt(quantity, range.center()));
    const double least = std::max(std::abs(range.center()) * 1e-6, 1e-12); // flat, and near 0
    const double half = std::max(wanted, least) / 2;
    yAxis->setRange(range.center() - half, range.center() + half);
}

void TrendGraph::FitLabels() {
    const QFontMetrics metrics(xAxis->tickLabelFont());
    const int widest = metrics.horizontalAdvance(QStringLiteral("00:00:00  "));
    ticker_->SetRoom(axisRect()->width() / std::max(widest, 1));
}

void TrendGraph::TakeColours() {
    PlotLook::Dress(*this, palette(), font());
    for (int channel = 0; QCPGraph * line : lines_) {
        line->setPen(QPen(SeriesStyle::Colour(channel, palette()), lineWidth_px));
        line->setScatterStyle(SeriesStyle::Mark(channel, palette(), markSize_px));
        ++channel;
    }
}

void TrendGraph::changeEvent(QEvent* event) {
    QCustomPlot::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
        TakeColours();
        FitLabels();
        replot(rpQueuedReplot);
    }
}

void TrendGraph::resizeEvent(QResizeEvent* event) {
    QCustomPlot::resizeEvent(event);
    FitLabels();
}
