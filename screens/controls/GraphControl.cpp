#include "screens/controls/GraphControl.h"

#include "platform/qt/Text.h"
#include "screens/controls/RecordTicker.h"
#include "screens/controls/SeriesStyle.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPicture>
#include <QScopedValueRollback>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace {

constexpr double noValue = std::numeric_limits<double>::quiet_NaN();
constexpr double spaceBesideSpan = 0.5; // points
constexpr double spaceAboveValues = 0.06;
constexpr double hitDistance_px = 12;
constexpr double markDistance_px = 14; // marks nearer than this would run into one another
constexpr double markSize_px = 7;
constexpr double zoomStep = 1.25;
constexpr int paperHeight_px = 560;
constexpr int paperFont_px = 13;
constexpr int densePoints = 200; // beyond these, thin lines are clearer and faster

constexpr std::array<QCPScatterStyle::ScatterShape, SeriesStyle::count> marks = {
    QCPScatterStyle::ssDisc,    QCPScatterStyle::ssSquare, QCPScatterStyle::ssTriangle,
    QCPScatterStyle::ssDiamond, QCPScatterStyle::ssCross,  QCPScatterStyle::ssTriangleInverted,
    QCPScatterStyle::ssPlus,    QCPScatterStyle::ssStar};

bool IsFilled(QCPScatterStyle::ScatterShape shape) {
    return shape != QCPScatterStyle::ssCross && shape != QCPScatterStyle::ssPlus &&
           shape != QCPScatterStyle::ssStar;
}

QPalette PaperPalette() {
    QPalette palette;
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, Qt::black);
    return palette;
}

} // namespace

GraphControl::GraphControl(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Graph of the records"));
    MakePlot();
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

    title_ = new QCPTextElement(plot_);
    plot_->plotLayout()->insertRow(0);
    plot_->plotLayout()->addElement(0, 0, title_);

    ticker_ = std::make_shared<RecordTicker>();
    // The plot keeps its ticker in a pointer type of its own; this one shares the same object.
    plot_->xAxis->setTicker(QSharedPointer<QCPAxisTicker>(
        ticker_.get(), [keep = ticker_](QCPAxisTicker*) { (void)keep; }));
    plot_->xAxis->setLabel(tr("Record"));
    plot_->yAxis->setNumberPrecision(6);
    MakeLegend();

    tracer_ = new QCPItemTracer(plot_);
    tracer_->setStyle(QCPItemTracer::tsCircle);
    tracer_->setSize(2 * markSize_px);
    tracer_->setVisible(false);
    emptyText_ = new QCPItemText(plot_);
    emptyText_->position->setType(QCPItemPosition::ptAxisRectRatio);
    emptyText_->position->setCoords(0.5, 0.5);
    emptyText_->setVisible(false);
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

/// A row between title and axes, where it never covers a point.
void GraphControl::MakeLegend() {
    auto* row = new QCPLayoutGrid; // the plot's layout owns it
    plot_->plotLayout()->insertRow(1);
    plot_->plotLayout()->addElement(1, 0, row);
    plot_->plotLayout()->setRowStretchFactor(1, 0.001);
    row->setMargins(QMargins(0, 0, 0, 0));
    row->addElement(0, 0, new QCPLayoutElement);
    row->addElement(0, 1, plot_->legend);
    row->addElement(0, 2, new QCPLayoutElement);
    plot_->legend->setFillOrder(QCPLegend::foColumnsFirst);
    plot_->legend->setColumnSpacing(12);
    plot_->legend->setVisible(true);
}

void GraphControl::SetNumSets(int sets) {
    numSets_ = std::clamp(sets, 0, SeriesStyle::count);
    if (sets_.size() < static_cast<std::size_t>(numSets_))
        sets_.resize(static_cast<std::size_t>(numSets_));
}

void GraphControl::SetNumPoints(int points) {
    numPoints_ = std::max(points, 0);
}

void GraphControl::SetThisSet(int set) {
    thisSet_ = std::clamp(set, 1, SeriesStyle::count);
    if (sets_.size() < static_cast<std::size_t>(thisSet_))
        sets_.resize(static_cast<std::size_t>(thisSet_));
}

void GraphControl::SetLegend(int set, const std::string& text) {
    SetThisSet(set);
    sets_[static_cast<std::size_t>(thisSet_ - 1)].legend = Text::ToQt(text);
}

void GraphControl::SetStyle(int set, int style) {
    SetThisSet(set);
    sets_[static_cast<std::size_t>(thisSet_ - 1)].style = std::max<int>(style, 0);
}

void GraphControl::SetEmptyText(const QString& text) {
    emptyText_->setText(text);
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

void GraphControl::SetData(int point, double value) {
    if (point < 1)
        return;
    SetThisSet(thisSet_);
    auto& values = sets_[static_cast<std::size_t>(thisSet_ - 1)].data;
    if (values.size() < static_cast<std::size_t>(point))
        values.resize(static_cast<std::size_t>(point), noValue);
    values[static_cast<std::size_t>(point - 1)] = value;
}

void GraphControl::SetExtra(int point, int mark) {
    if (mark == Mreport::graph::fillerPoint)
        SetData(point, noValue);
}

void GraphControl::SetLabel(int point, const std::string& text) {
    if (point < 1)
        return;
    auto& labels = ticker_->labels;
    if (labels.size() < static_cast<std::size_t>(point))
        labels.resize(static_cast<std::size_t>(point));
    labels[static_cast<std::size_t>(point - 1)] = minorTicks_ == 0 ? Text::ToQt(text) : QString();
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
    for (Set& set : sets_)
        set.data.clear();
    ticker_->labels.clear();
    zoomed_ = false;
    MarkPoint({});
}

void GraphControl::SetDrawMode(int mode) {
    if (mode != Mreport::graph::draw)
        return;
    ShowSets();
    if (!zoomed_)
        FitAxes();
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

double GraphControl::ValueAt(int set, int point) const {
    if (set < 1 || set > numSets_ || static_cast<std::size_t>(set) > sets_.size())
        return noValue;
    const auto& values = sets_[static_cast<std::size_t>(set - 1)].data;
    if (point < 1 || point > numPoints_ || static_cast<std::size_t>(point) > values.size())
        return noValue;
    return values[static_cast<std::size_t>(point - 1)];
}

double GraphControl::DataGetAmp(int set, int point) const {
    const double value = ValueAt(set, point);
    return std::isnan(value) ? 0 : value;
}

/// One plot series per set that has values; the others leave no trace in the legend.
void GraphControl::ShowSets() {
    while (graphs_.size() < static_cast<std::size_t>(SeriesStyle::count)) {
        graphs_.push_back(plot_->addGraph());
        graphs_.back()->setAdaptiveSampling(true);
    }
    emptyText_->setVisible(FirstSetWithValues() == 0);
    for (int set = 1; set <= SeriesStyle::count; ++set) {
        QCPGraph* graph = graphs_[static_cast<std::size_t>(set - 1)];
        QVector<QCPGraphData> points;
        bool values = false;
        for (int point = 1; point <= numPoints_; ++point) {
            const double value = ValueAt(set, point);
            values = values || !std::isnan(value);
            points.append(QCPGraphData(point, value));
        }
        graph->data()->set(points, true);
        graph->setVisible(values);
        graph->removeFromLegend();
        if (!values)
            continue;
        graph->setName(sets_[static_cast<std::size_t>(set - 1)].legend);
        graph->addToLegend();
    }
    ApplyPens(palette());
}

/// 0 where no set has a value.
int GraphControl::FirstSetWithValues() const {
    for (int set = 1; set <= numSets_; ++set)
        for (int point = 1; point <= numPoints_; ++point)
            if (!std::isnan(ValueAt(set, point)))
                return set;
    return 0;
}

void GraphControl::FitAxes() {
    const QScopedValueRollback fitting(fitting_, true);
    plot_->xAxis->setRange(1 - spaceBesideSpan, std::max<double>(numPoints_, 1) + spaceBesideSpan);
    double low = std::numeric_limits<double>::max();
    double high = std::numeric_limits<double>::lowest();
    for (int set = 1; set <= numSets_; ++set)
        for (int point = 1; point <= numPoints_; ++point)
            if (const double value = ValueAt(set, point); std::isfinite(value)) {
                low = std::min(low, value);
                high = std::max(high, value);
            }
    if (low > high) {
        low = 0;
        high = 1;
    }
    const double height = high - low;
    const double space =
        height > 0 ? height * spaceAboveValues : std::max(std::abs(low) / 10, 1e-9);
    plot_->yAxis->setRange(low - space, high + space);
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
    const double pointsPerMark = markDistance_px * std::max<double>(numPoints_, 1) / width_px;
    const int skip = std::max(0, static_cast<int>(std::ceil(pointsPerMark)) - 1);
    const bool dense = numPoints_ > densePoints;
    for (std::size_t i = 0; i < graphs_.size(); ++i) {
        const bool told = i < sets_.size() && sets_[i].style >= 0;
        const int number = told ? sets_[i].style : static_cast<int>(i);
        const QColor colour = SeriesStyle::Colour(number, palette);
        graphs_[i]->setPen(QPen(colour, dense ? 1 : 2));
        graphs_[i]->setAntialiased(!dense);
        const auto shape = marks.at(static_cast<std::size_t>(number % SeriesStyle::count));
        QCPScatterStyle style(shape, colour, IsFilled(shape) ? colour : QColor(Qt::transparent),
                              markSize_px);
        style.setPen(QPen(colour, 1.5));
        graphs_[i]->setScatterStyle(style);
        graphs_[i]->setScatterSkip(skip);
    }
}

void GraphControl::ApplyLook(const QPalette& palette, const QFont& font) {
    const QColor background = palette.color(QPalette::Base);
    const QColor text = palette.color(QPalette::Text);
    QColor grid = text;
    grid.setAlpha(50);
    plot_->setBackground(background);
    title_->setTextColor(text);
    QFont titleFont = font;
    titleFont.setBold(true);
    title_->setFont(titleFont);
    for (QCPAxis* axis : {plot_->xAxis, plot_->yAxis}) {
        axis->setBasePen(text);
        axis->setTickPen(text);
        axis->setSubTickPen(text);
        axis->setLabelColor(text);
        axis->setTickLabelColor(text);
        axis->setLabelFont(font);
        axis->setTickLabelFont(font);
        axis->grid()->setPen(QPen(grid, 0, Qt::DotLine));
        axis->grid()->setZeroLinePen(QPen(grid, 0, Qt::SolidLine));
    }
    plot_->legend->setBrush(Qt::NoBrush);
    plot_->legend->setBorderPen(Qt::NoPen);
    plot_->legend->setTextColor(text);
    plot_->legend->setFont(font);
    emptyText_->setColor(text);
    emptyText_->setFont(font);
    tracer_->setPen(QPen(text, 2));
    tracer_->setBrush(Qt::NoBrush);
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
    // Laid out once on a sheet of a fixed height in plot pixels, then scaled to the place; fonts in
    // pixels scale with it on every device.
    const QSize sheet(qRound(paperHeight_px * place.width() / std::max(place.height(), 1.0)),
                      paperHeight_px);
    QFont paperFont = font();
    paperFont.setPixelSize(paperFont_px);
    const bool marked = tracer_->visible();
    tracer_->setVisible(false);
    sheetWidth_ = sheet.width();
    ApplyLook(PaperPalette(), paperFont);
    FitLabels();
    QPicture picture;
    {
        QCPPainter plotPainter(&picture);
        plotPainter.setMode(QCPPainter::pmVectorized);
        plotPainter.setMode(QCPPainter::pmNoCaching);
        plot_->toPainter(&plotPainter, sheet.width(), sheet.height());
    }
    painter.save();
    painter.translate(place.topLeft());
    // Playing enlarges a picture by the resolution of its device; the place says all of it.
    const double enlarged = 1.0 * painter.device()->logicalDpiX() / picture.logicalDpiX();
    painter.scale(place.width() / sheet.width() / enlarged,
                  place.height() / sheet.height() / enlarged);
    painter.setRenderHint(QPainter::Antialiasing);
    picture.play(&painter);
    painter.restore();
    sheetWidth_ = 0;
    tracer_->setVisible(marked);
    ApplyLook(palette(), font());
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

GraphControl::Hit GraphControl::HitAt(const QPointF& position) const {
    Hit hit;
    double nearest = hitDistance_px * hitDistance_px;
    const double x = plot_->xAxis->pixelToCoord(position.x());
    const double reach = plot_->xAxis->pixelToCoord(position.x() + hitDistance_px) - x; // in points
    const int first = std::max(1, static_cast<int>(std::floor(x - reach)));
    const int last = std::min<int>(numPoints_, static_cast<int>(std::ceil(x + reach)));
    for (int set = 1; set <= numSets_; ++set)
        for (int point = first; point <= last; ++point) {
            const double value = ValueAt(set, point);
            if (std::isnan(value))
                continue;
            const double dx = plot_->xAxis->coordToPixel(point) - position.x();
            const double dy = plot_->yAxis->coordToPixel(value) - position.y();
            if (dx * dx + dy * dy > nearest)
                continue;
            nearest = dx * dx + dy * dy;
            hit = {set, point};
        }
    return hit;
}

/// Rings the point, or takes the ring away.
void GraphControl::MarkPoint(const Hit& hit) {
    if (hit.set == marked_.set && hit.point == marked_.point)
        return;
    marked_ = hit;
    tracer_->setVisible(hit.set != 0);
    if (hit.set != 0)
        tracer_->position->setCoords(hit.point, ValueAt(hit.set, hit.point));
    plot_->replot(QCustomPlot::rpQueuedReplot);
    Q_EMIT PointHovered(hit.set, hit.point);
}

void GraphControl::StepPoint(int points) {
    const int set = marked_.set == 0 ? std::max(FirstSetWithValues(), 1) : marked_.set;
    int point = marked_.set == 0 ? (points > 0 ? 0 : numPoints_ + 1) : marked_.point;
    do
        point += points;
    while (point >= 1 && point <= numPoints_ && std::isnan(ValueAt(set, point)));
    if (point >= 1 && point <= numPoints_)
        MarkPoint({set, point});
}

void GraphControl::StepSet(int sets) {
    const int point = std::max(marked_.point, 1);
    int set = marked_.set == 0 ? 0 : marked_.set;
    do
        set += sets;
    while (set >= 1 && set <= numSets_ && std::isnan(ValueAt(set, point)));
    if (set >= 1 && set <= numSets_)
        MarkPoint({set, point});
}

/// The wheel zooms the axis below it, and both within the axes.
void GraphControl::ZoomAxesAt(const QPointF& position) {
    const QRectF inside = plot_->axisRect()->rect();
    Qt::Orientations axes = Qt::Horizontal | Qt::Vertical;
    if (position.y() > inside.bottom())
        axes = Qt::Horizontal;
    else if (position.x() < inside.left())
        axes = Qt::Vertical;
    plot_->axisRect()->setRangeZoom(axes);
}

void GraphControl::Clicked(const QPointF& position) {
    const Hit hit = HitAt(position);
    if (hit.set != 0)
        Q_EMIT PointClicked(hit.set, hit.point);
}

void GraphControl::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    if (event->reason() == Qt::TabFocusReason && marked_.set == 0)
        StepPoint(1);
}

void GraphControl::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Left:
        return StepPoint(-1);
    case Qt::Key_Right:
        return StepPoint(1);
    case Qt::Key_Up:
        return StepSet(1);
    case Qt::Key_Down:
        return StepSet(-1);
    case Qt::Key_Plus:
        return Zoom(zoomStep);
    case Qt::Key_Minus:
        return Zoom(1 / zoomStep);
    case Qt::Key_0:
        return ResetZoom();
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (marked_.set != 0)
            Q_EMIT PointClicked(marked_.set, marked_.point);
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

/// The plot drags and zooms by itself; clicks and the value under the mouse are found here.
bool GraphControl::eventFilter(QObject* watched, QEvent* event) {
    if (watched != plot_)
        return QWidget::eventFilter(watched, event);
    const auto* mouse = dynamic_cast<QMouseEvent*>(event);
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        setFocus(Qt::MouseFocusReason);
        pressed_ = mouse->position();
        break;
    case QEvent::MouseButtonRelease:
        if (mouse->button() == Qt::LeftButton &&
            (mouse->position() - pressed_).manhattanLength() < QApplication::startDragDistance())
            Clicked(mouse->position());
        break;
    case QEvent::MouseButtonDblClick:
        ResetZoom();
        break;
    case QEvent::Wheel:
        ZoomAxesAt(static_cast<QWheelEvent*>(event)->position());
        break;
    case QEvent::MouseMove:
        if (mouse->buttons() == Qt::NoButton)
            MarkPoint(HitAt(mouse->position()));
        break;
    case QEvent::Resize:
        ApplyPens(palette());
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}
