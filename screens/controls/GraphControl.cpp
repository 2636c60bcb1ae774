#include "screens/controls/GraphControl.h"

#include "platform/qt/Text.h"
#include "screens/controls/GraphMouse.h"
#include "screens/controls/PaperSheet.h"
#include "screens/controls/PlotLook.h"
#include "screens/controls/PointMarker.h"
#include "screens/controls/RecordTicker.h"
#include "screens/controls/SeriesStyle.h"
#include "screens/controls/WheelZoom.h"

#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace {

constexpr double spaceBesideSpan = 0.5; // points
constexpr double markDistance_px = 14;  // marks nearer than this would run into one another
constexpr int densePoints = 200;        // beyond these, thin lines are clearer and faster

} // namespace

GraphControl::GraphControl(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName("Graph of the records");
    MakePlot();
    MakeItems();
    ApplyLook(palette(), font());
}

GraphControl::~GraphControl() = default;

void GraphControl::MakePlot() {
    plot_ = new QCustomPlot(this);
    plot_->setFocusPolicy(Qt::NoFocus);
    plot_->setLocale(QLocale::c());
    plot_->setMouseTracking(true);
    plot_->setInteractions(QCP::iRangeDrag | QCP::iRangeZoom);
    plot_->setNoAntialiasingOnDrag(true);
    plot_->axisRect()->setRangeDrag(Qt::Horizontal | Qt::Vertical);
    plot_->axisRect()->setRangeZoom(Qt::Horizontal | Qt::Vertical);
    plot_->installEventFilter(this);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(plot_);

    title_ = PlotLook::AddHead(*plot_);
    ticker_ = std::make_shared<RecordTicker>();
    // The plot keeps its ticker in a pointer type of its own; this one shares the same object.
    plot_->xAxis->setTicker(QSharedPointer<QCPAxisTicker>(
        ticker_.get(), [keep = ticker_](QCPAxisTicker*) { (void)keep; }));
    plot_->xAxis->setLabel("Record");
    plot_->yAxis->setNumberPrecision(6);
}

void GraphControl::MakeItems() {
    for (int set = 1; set <= SeriesStyle::count; ++set) {
        graphs_.push_back(plot_->addGraph());
        graphs_.back()->setAdaptiveSampling(true);
        graphs_.back()->setVisible(false);
        graphs_.back()->removeFromLegend();
    }
    marker_ = std::make_unique<PointMarker>(*plot_, points_);
    connect(marker_.get(), &PointMarker::Moved, this, &GraphControl::PointHovered);
    mouse_ = std::make_unique<GraphMouse>(*plot_, *marker_);
    connect(mouse_.get(), &GraphMouse::Pressed, this, [this] { setFocus(Qt::MouseFocusReason); });
    connect(mouse_.get(), &GraphMouse::PointClicked, this, &GraphControl::PointClicked);
    connect(mouse_.get(), &GraphMouse::WholeSpanWanted, this, &GraphControl::ResetZoom);
    connect(mouse_.get(), &GraphMouse::SpanZoomWanted, this, &GraphControl::SpanZoomWanted);
    emptyText_ = PlotLook::AddEmptyText(*plot_);
    connect(plot_, &QCustomPlot::beforeReplot, this, &GraphControl::FitLabels);
    for (const QCPAxis* axis : {plot_->xAxis, plot_->yAxis})
        connect(axis, qOverload<const QCPRange&>(&QCPAxis::rangeChanged), this,
                &GraphControl::NoteZoom);
}

void GraphControl::NoteZoom() {
    zoomed_ = zoomed_ || !fitting_;
}

int GraphControl::AxisWidth() const {
    return sheetWidth_ > 0 ? sheetWidth_ : plot_->axisRect()->width();
}

void GraphControl::FitLabels() {
    const QFontMetrics metrics(plot_->xAxis->tickLabelFont());
    const int widest = metrics.horizontalAdvance(QStringLiteral("0000000"));
    ticker_->SetRoom(AxisWidth() / std::max(widest, 1));
}

void GraphControl::SetLegend(int set, const std::string& text) {
    points_.Select(set);
    points_.Selected().legend = Text::ToQt(text);
}

void GraphControl::SetStyle(int set, int style) {
    points_.Select(set);
    points_.Selected().style = std::max(style, 0);
}

void GraphControl::SetEmptyText(const QString& text) {
    emptyText_->setText(text);
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

void GraphControl::SetExtra(int point, int mark) {
    if (mark == Mreport::graph::fillerPoint)
        points_.SetValue(point, GraphPoints::noValue);
}

void GraphControl::SetLabel(int point, const std::string& text) {
    ticker_->SetLabel(point, minorTicks_ == 0 ? Text::ToQt(text) : QString());
}

std::string GraphControl::LeftTitle() const {
    return Text::FromQt(plot_->yAxis->label());
}

void GraphControl::SetLeftTitle(const std::string& text) {
    plot_->yAxis->setLabel(Text::ToQt(text));
}

void GraphControl::SetGraphTitle(const std::string& text) {
    title_->setText(Text::ToQt(text));
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

void GraphControl::SetDataReset(int what) {
    if (what != Mreport::graph::resetAllData)
        return;
    points_.ClearValues();
    ticker_->Clear();
    zoomed_ = false;
    marker_->Mark({});
}

void GraphControl::SetDrawMode(int mode) {
    if (mode != Mreport::graph::draw)
        return;
    ShowSets();
    if (!zoomed_)
        FitAxes();
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

double GraphControl::DataGetAmp(int set, int point) const {
    const double value = points_.At(set, point);
    return std::isnan(value) ? 0 : value;
}

/// One plot series per set that has values; the others leave no trace in the legend.
void GraphControl::ShowSets() {
    emptyText_->setVisible(points_.FirstSetWithValues() == 0);
    for (int set = 1; set <= SeriesStyle::count; ++set)
        ShowSet(set);
    ApplyPens(palette());
}

void GraphControl::ShowSet(int set) {
    QCPGraph* graph = graphs_[static_cast<std::size_t>(set) - 1];
    QVector<QCPGraphData> points;
    bool values = false;
    for (int point = 1; point <= points_.Points(); ++point) {
        const double value = points_.At(set, point);
        values = values || !std::isnan(value);
        points.append(QCPGraphData(point, value));
    }
    graph->data()->set(points, true);
    graph->setVisible(values);
    graph->removeFromLegend();
    if (!values)
        return;
    graph->setName(points_.Legend(set));
    graph->addToLegend();
}

void GraphControl::FitAxes() {
    const QScopedValueRollback fitting(fitting_, true);
    const double last = std::max(points_.Points(), 1);
    plot_->xAxis->setRange(1 - spaceBesideSpan, last + spaceBesideSpan);
    GraphPoints::Range values = points_.Values();
    if (!values.Any())
        values = {0, 1};
    plot_->yAxis->setRange(
        PlotLook::WithSpace(values.low, values.high, PlotLook::spaceAboveValues));
}

void GraphControl::ResetZoom() {
    zoomed_ = false;
    FitAxes();
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

void GraphControl::Zoom(double factor) {
    plot_->xAxis->scaleRange(1 / factor);
    plot_->yAxis->scaleRange(1 / factor);
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

void GraphControl::ApplyPens(const QPalette& palette) {
    const double width_px = std::max(AxisWidth(), 1); // not laid out yet: 0
    const double pointsPerMark = markDistance_px * std::max(points_.Points(), 1) / width_px;
    const int skip = std::max(0, static_cast<int>(std::ceil(pointsPerMark)) - 1);
    const bool dense = points_.Points() > densePoints;
    for (int set = 1; QCPGraph * graph : graphs_) {
        const int style = points_.StyleOf(set++);
        graph->setPen(QPen(SeriesStyle::Colour(style, palette), dense ? 1 : 2));
        graph->setAntialiased(!dense);
        graph->setScatterStyle(SeriesStyle::Mark(style, palette));
        graph->setScatterSkip(skip);
    }
}

void GraphControl::ApplyLook(const QPalette& palette, const QFont& font) {
    PlotLook::Dress(*plot_, palette, font);
    PlotLook::DressTitle(*title_, palette, font);
    PlotLook::DressText(*emptyText_, palette, font);
    marker_->Dress(palette.color(QPalette::Text));
    ApplyPens(palette);
}

void GraphControl::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::PaletteChange && event->type() != QEvent::FontChange)
        return;
    ApplyLook(palette(), font());
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

void GraphControl::PaintOnPaper(QPainter& painter, const QRectF& place) {
    const PaperSheet sheet(place);
    marker_->Show(false);
    sheetWidth_ = sheet.Width_px();
    ApplyLook(PlotLook::Paper(), sheet.Font(font()));
    FitLabels();
    PlotLook::FitHead(*plot_, sheet.Height_px());
    sheet.Paint(*plot_, painter);
    PlotLook::FitHead(*plot_, plot_->height());
    sheetWidth_ = 0;
    marker_->Show(true);
    ApplyLook(palette(), font());
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

void GraphControl::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    if (event->reason() == Qt::TabFocusReason && marker_->Marked().set == 0)
        marker_->StepPoint(1);
}

void GraphControl::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Left:
        return marker_->StepPoint(-1);
    case Qt::Key_Right:
        return marker_->StepPoint(1);
    case Qt::Key_Up:
        return marker_->StepSet(1);
    case Qt::Key_Down:
        return marker_->StepSet(-1);
    case Qt::Key_Plus:
        return Zoom(zoomStep);
    case Qt::Key_Minus:
        return Zoom(1 / zoomStep);
    case Qt::Key_0:
        return ResetZoom();
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (marker_->Marked().set != 0)
            Q_EMIT PointClicked(marker_->Marked().set, marker_->Marked().point);
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

/// The marks keep their distance on the screen.
bool GraphControl::eventFilter(QObject* watched, QEvent* event) {
    if (watched == plot_ && event->type() == QEvent::Resize) {
        PlotLook::FitHead(*plot_, plot_->height());
        ApplyPens(palette());
    }
    return QWidget::eventFilter(watched, event);
}
