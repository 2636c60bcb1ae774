#include "screens/controls/TrendPanel.h"

#include "platform/Platform.h"
#include "platform/qt/Text.h"
#include "screens/controls/ListLabels.h"
#include "screens/controls/Wiring.h"
#include "ui_TrendPanel.h"

#include <QEvent>
#include <QLayout>
#include <QSignalBlocker>

#include <algorithm>

namespace {

constexpr int spans_min[] = {1, 10, 60};
constexpr int leastGraphHeight_px = 80; ///< lower, the lines tell nothing

} // namespace

TrendPanel::TrendPanel(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui::TrendPanel>()) {
    ui_->setupUi(this);
    LabelLists(*this);
    if (parent != nullptr)
        parent->installEventFilter(this);
    FillLists();
    SetChoice({});
    ConnectEvents();
}

TrendPanel::~TrendPanel() = default;

void TrendPanel::FillLists() {
    for (const int minutes : spans_min)
        ui_->cboTrend->addItem(QString("%1 min").arg(minutes), minutes);
    for (const auto& row : Quantities::table)
        ui_->cboTrendUnit->addItem(Text::ToQt(std::string(row.label)),
                                   static_cast<int>(row.quantity));
}

void TrendPanel::ConnectEvents() {
    const Wiring wire(*this, guard_, "TrendPanel");
    wire(ui_->chkTrend, &QCheckBox::toggled, "chkTrend", &TrendPanel::chkTrend_Click);
    wire(ui_->cboTrend, &QComboBox::currentIndexChanged, "cboTrend", &TrendPanel::cboTrend_Click);
    wire(ui_->cboTrendUnit, &QComboBox::currentIndexChanged, "cboTrendUnit",
         &TrendPanel::cboTrend_Click);
}

TrendPanel::Choice TrendPanel::Chosen() const {
    return {ui_->chkTrend->isChecked(), ui_->cboTrend->currentData().toInt(),
            static_cast<Quantity>(ui_->cboTrendUnit->currentData().toInt())};
}

void TrendPanel::SetChoice(const Choice& choice) {
    const QSignalBlocker shown(ui_->chkTrend);
    const QSignalBlocker minutes(ui_->cboTrend);
    const QSignalBlocker unit(ui_->cboTrendUnit);
    ui_->chkTrend->setChecked(choice.shown);
    ui_->cboTrend->setCurrentIndex(ui_->cboTrend->findData(choice.minutes));
    ui_->cboTrendUnit->setCurrentIndex(
        ui_->cboTrendUnit->findData(static_cast<int>(choice.quantity)));
    Choose();
}

void TrendPanel::chkTrend_Click(bool /*checked*/) {
    Choose();
    Q_EMIT ChoiceChanged();
}

void TrendPanel::cboTrend_Click(int /*index*/) {
    Draw();
    Q_EMIT ChoiceChanged();
}

void TrendPanel::Choose() {
    const bool shown = ui_->chkTrend->isChecked();
    ui_->cboTrend->setVisible(shown);
    ui_->cboTrendUnit->setVisible(shown);
    if (shown)
        Unfold();
    else
        Fold();
}

void TrendPanel::AddReading(const TrendHistory::Reading& reading) {
    const auto now = platform::Current().clock.Monotonic();
    history_.Add(now, reading);
    if (now - drawn_ >= DrawInterval())
        Draw();
}

/// At most once a second, and not before the lines have moved on by a pixel.
std::chrono::milliseconds TrendPanel::DrawInterval() const {
    constexpr std::chrono::milliseconds shortest{900}; // a timer of 1 s is never exact
    const std::chrono::milliseconds span = std::chrono::minutes(Chosen().minutes);
    return std::max(shortest, span / std::max(ui_->graTrend->width(), 1));
}

void TrendPanel::Clear() {
    history_.Clear();
    Draw();
}

void TrendPanel::Draw() {
    if (!ui_->graTrend->isVisible())
        return;
    const platform::Clock& clock = platform::Current().clock;
    const Choice choice = Chosen();
    drawn_ = clock.Monotonic();
    ui_->graTrend->ShowTrend(
        history_, {choice.quantity, std::chrono::minutes(choice.minutes), drawn_, clock.Now()});
}

int TrendPanel::FoldedHeight() const {
    return ui_->layTrendChoice->minimumSize().height();
}

/// The graph asks for its room also while it is folded away for want of it.
QSize TrendPanel::sizeHint() const {
    const int graph =
        ui_->chkTrend->isChecked() ? layout()->spacing() + ui_->graTrend->sizeHint().height() : 0;
    return {QWidget::sizeHint().width(), FoldedHeight() + graph};
}

QSize TrendPanel::minimumSizeHint() const {
    return {QWidget::minimumSizeHint().width(), FoldedHeight()};
}

/// Whether the page has room for the graph when everything else in it is as low as it may be. One
/// that is not shown has not yet its size.
bool TrendPanel::HasRoom() const {
    const QWidget* page = parentWidget();
    if (page == nullptr || !page->isVisible() || page->layout() == nullptr)
        return true;
    const int room = page->height() - page->layout()->minimumSize().height() + FoldedHeight();
    return room >= FoldedHeight() + leastGraphHeight_px;
}

void TrendPanel::Unfold() {
    if (!HasRoom())
        return Fold();
    setMaximumHeight(QWIDGETSIZE_MAX);
    ShowGraph();
}

/// The layout may give the panel more than its choices need; how much decides what is shown.
void TrendPanel::ShowGraph() {
    const bool fits = height() >= FoldedHeight() + leastGraphHeight_px;
    ui_->graTrend->setVisible(ui_->chkTrend->isChecked() && fits);
    Draw();
}

/// The room goes to what stands above.
void TrendPanel::Fold() {
    ui_->graTrend->hide();
    setMaximumHeight(FoldedHeight());
}

void TrendPanel::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    ShowGraph();
}

bool TrendPanel::event(QEvent* event) {
    if (event->type() == QEvent::ParentChange && parentWidget() != nullptr)
        parentWidget()->installEventFilter(this);
    return QWidget::event(event);
}

/// A page of another size, or with something more or less in it, may have room again.
bool TrendPanel::eventFilter(QObject* watched, QEvent* event) {
    const bool changed = event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest;
    if (changed && watched == parentWidget() && ui_->chkTrend->isChecked())
        Unfold();
    return QWidget::eventFilter(watched, event);
}
