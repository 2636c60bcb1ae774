#include "screens/calibration/ReadingTrend.h"

#include "app/Mcommon.h"
#include "platform/qt/Text.h"
#include "screens/calibration/PlotStyle.h"
#include "screens/controls/SeriesStyle.h"

#include <QEvent>

#include <algorithm>

namespace {

constexpr double leastTime_s = 60;  ///< on the axis: the first readings do not jump about
constexpr double leastRange_mV = 2; ///< on the axis: the last digit's noise does not fill it
constexpr int legendColumns = 4;

double Seconds(std::chrono::milliseconds time) {
    return std::chrono::duration<double>(time).count();
}

QCPRange AroundReadings(const QCPRange& range) {
    const double half =
        std::max(range.size() * (1 + 2 * PlotStyle::marginOfRange), leastRange_mV) / 2;
    return {range.center() - half, range.center() + half};
}

} // namespace

ReadingTrend::ReadingTrend(QWidget* parent) : QCustomPlot(parent) {
    axisRect()->setupFullAxesBox(true);
    const auto time = QSharedPointer<QCPAxisTickerTime>::create();
    time->setTimeFormat("%m:%s");
    xAxis->setTicker(time);
    xAxis->setLabel("Time since Read");
    yAxis->setLabel("mV");
    yAxis->ticker()->setTickCount(3); // it is low
    int channel = 0;
    for (QCPGraph*& line : lines_) {
        line = addGraph();
        line->setName(QString("Channel %1").arg(++channel));
    }
    legend->setFillOrder(QCPLegend::foColumnsFirst);
    legend->setWrap(legendColumns);
    setMinimumSize(170, least_px);
    setFocusPolicy(Qt::NoFocus);
    TakeColours();
}

void ReadingTrend::ShowTrace(const PointReading::Trace& trace,
                             const std::vector<std::size_t>& channels) {
    for (QCPGraph* line : lines_) {
        line->data()->clear();
        line->removeFromLegend();
    }
    legend->setVisible(channels.size() > 1);
    for (const std::size_t channel : channels) {
        lines_.at(channel)->addToLegend();
        for (const PointReading::Sample& sample : trace)
            lines_.at(channel)->addData(Seconds(sample.sinceRead), sample.potential_mV.at(channel));
    }
    FitAxes(trace);
    Describe(trace, channels);
    replot(QCustomPlot::rpQueuedReplot);
}

void ReadingTrend::FitAxes(const PointReading::Trace& trace) {
    if (trace.empty())
        return;
    const double first_s = Seconds(trace.front().sinceRead);
    const double last_s = Seconds(trace.back().sinceRead);
    xAxis->setRange(first_s, std::max(last_s, first_s + leastTime_s));
    bool found = false;
    QCPRange range;
    for (const QCPGraph* line : lines_) {
        bool has = false;
        const QCPRange own = line->getValueRange(has);
        if (has)
            range = found ? range.expanded(own) : own;
        found = found || has;
    }
    if (found)
        yAxis->setRange(AroundReadings(range));
}

void ReadingTrend::Describe(const PointReading::Trace& trace,
                            const std::vector<std::size_t>& channels) {
    QStringList texts;
    for (const std::size_t channel : channels)
        if (!trace.empty()) {
            const auto mV = [channel](const PointReading::Sample& sample) {
                return Text::ToQt(Mcommon::FormatReading(sample.potential_mV.at(channel)));
            };
            texts += QString("channel %1 from %2 to %3 mV")
                         .arg(channel + 1)
                         .arg(mV(trace.front()), mV(trace.back()));
        }
    setAccessibleDescription(texts.join(", "));
}

void ReadingTrend::TakeColours() {
    PlotStyle::For(palette()).Dress(*this);
    // The series' colours stand out from the lists' background, not from a grey.
    axisRect()->setBackground(palette().color(QPalette::Base));
    const QColor grid = palette().color(QPalette::Mid);
    for (QCPAxis* axis : {xAxis, yAxis})
        axis->grid()->setPen(QPen(grid, 1, Qt::DotLine));
    legend->setBrush(palette().color(QPalette::Base));
    legend->setBorderPen(Qt::NoPen);
    legend->setTextColor(palette().color(QPalette::Text));
    legend->setFont(font());
    int series = 0;
    for (QCPGraph* line : lines_)
        line->setPen(QPen(SeriesStyle::Colour(series++, palette()), PlotStyle::lineWidth));
}

void ReadingTrend::changeEvent(QEvent* event) {
    QCustomPlot::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
        TakeColours();
        replot(QCustomPlot::rpQueuedReplot);
    }
}
