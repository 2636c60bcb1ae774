#include "screens/controls/LineListView.h"

#include "screens/controls/LineListAccessible.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStringTokenizer>

#include <algorithm>

namespace {
constexpr int margin = 4;
constexpr int longestCopy = 1'000'000; // lines; more is a file, not a text to paste
} // namespace

LineListView::LineListView(QWidget* parent) : QAbstractScrollArea(parent) {
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setBackgroundRole(QPalette::Base);
    viewport()->setCursor(Qt::ArrowCursor);
    InstallLineListAccessible();
    UpdateMetrics();
}

void LineListView::SetSource(std::function<int()> lineCount, std::function<QString(int)> line) {
    lineCount_ = std::move(lineCount);
    line_ = std::move(line);
    current_ = anchor_ = -1;
    widest_ = 0;
    verticalScrollBar()->setValue(0);
    horizontalScrollBar()->setValue(0);
    LinesChanged();
}

void LineListView::LinesChanged() {
    const QScrollBar& bar = *verticalScrollBar();
    const bool atEnd = bar.maximum() > 0 && bar.value() == bar.maximum();
    UpdateScrollBars();
    if (atEnd)
        verticalScrollBar()->setValue(bar.maximum());
    viewport()->update();
}

void LineListView::SetTabStops(const QString& firstColumn, const QString& furtherColumns) {
    firstColumn_ = firstColumn;
    furtherColumns_ = furtherColumns;
    UpdateMetrics();
}

QString LineListView::LineText(int line) const {
    return line_ && line >= 0 && line < LineCount() ? line_(line) : QString();
}

void LineListView::SetCurrentLine(int line, int linesBelow) {
    MoveCurrent(line, false);
    const int last = current_ + std::min(linesBelow, VisibleLines() - 1);
    if (last >= verticalScrollBar()->value() + VisibleLines())
        verticalScrollBar()->setValue(last - VisibleLines() + 1);
}

void LineListView::SelectAll() {
    if (LineCount() == 0)
        return;
    anchor_ = 0;
    current_ = LineCount() - 1;
    viewport()->update();
}

int LineListView::SelectedFirst() const {
    return std::min(anchor_, current_);
}

int LineListView::SelectedLast() const {
    return std::max(anchor_, current_);
}

QString LineListView::SelectedText() const {
    QString text;
    if (!HasSelection())
        return text;
    const int last = std::min({SelectedLast(), LineCount() - 1, SelectedFirst() + longestCopy});
    for (int line = SelectedFirst(); line <= last; ++line)
        text += LineText(line) + '\n';
    return text;
}

void LineListView::CopySelection() const {
    if (HasSelection())
        QApplication::clipboard()->setText(SelectedText());
}

QSize LineListView::sizeHint() const {
    return {600, 20 * lineHeight_};
}

void LineListView::UpdateMetrics() {
    const QFontMetrics metrics(font());
    lineHeight_ = std::max(1, metrics.lineSpacing());
    firstTab_ = std::max(1, metrics.horizontalAdvance(firstColumn_));
    furtherTab_ = std::max(1, metrics.horizontalAdvance(furtherColumns_));
    widest_ = 0;
    LinesChanged();
}

int LineListView::VisibleLines() const {
    return std::max(1, viewport()->height() / lineHeight_);
}

void LineListView::UpdateScrollBars() {
    verticalScrollBar()->setRange(0, std::max(0, LineCount() - VisibleLines()));
    verticalScrollBar()->setPageStep(VisibleLines());
    horizontalScrollBar()->setRange(0, std::max(0, widest_ + 2 * margin - viewport()->width()));
    horizontalScrollBar()->setPageStep(viewport()->width());
    horizontalScrollBar()->setSingleStep(furtherTab_);
}

int LineListView::NextTabStop(int x) const {
    if (x < firstTab_)
        return firstTab_;
    return firstTab_ + ((x - firstTab_) / furtherTab_ + 1) * furtherTab_;
}

int LineListView::TextWidth(const QString& text) const {
    return QFontMetrics(font()).horizontalAdvance(text);
}

void LineListView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    const int first = verticalScrollBar()->value() + event->rect().top() / lineHeight_;
    const int last = verticalScrollBar()->value() + event->rect().bottom() / lineHeight_;
    for (int line = first; line <= std::min(last, LineCount() - 1); ++line)
        PaintLine(painter, line, (line - verticalScrollBar()->value()) * lineHeight_);
    if (horizontalScrollBar()->maximum() < widest_ + 2 * margin - viewport()->width())
        UpdateScrollBars();
}

void LineListView::PaintLine(QPainter& painter, int line, int top) {
    const bool selected = HasSelection() && line >= SelectedFirst() && line <= SelectedLast();
    const QRect place(0, top, viewport()->width(), lineHeight_);
    const auto group = hasFocus() ? QPalette::Active : QPalette::Inactive;
    if (selected)
        painter.fillRect(place, palette().brush(group, QPalette::Highlight));
    painter.setPen(palette().color(group, selected ? QPalette::HighlightedText : QPalette::Text));
    const int left = margin - horizontalScrollBar()->value();
    const int baseline = top + QFontMetrics(font()).ascent();
    int x = 0;
    bool firstPart = true;
    const QString text = LineText(line);
    for (const auto part : QStringTokenizer(text, u'\t')) {
        if (!firstPart)
            x = NextTabStop(x);
        firstPart = false;
        const QString shown = part.toString();
        painter.drawText(left + x, baseline, shown);
        x += TextWidth(shown);
    }
    widest_ = std::max(widest_, x);
    if (line == current_ && hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Text), 1, Qt::DotLine));
        painter.drawRect(place.adjusted(0, 0, -1, -1));
    }
}

int LineListView::LineAt(const QPointF& position) const {
    const int line =
        verticalScrollBar()->value() + static_cast<int>(std::floor(position.y() / lineHeight_));
    return std::clamp(line, 0, std::max(0, LineCount() - 1));
}

void LineListView::MoveCurrent(int line, bool extend) {
    if (LineCount() == 0)
        return;
    current_ = std::clamp(line, 0, LineCount() - 1);
    if (!extend || anchor_ < 0)
        anchor_ = current_;
    const int top = verticalScrollBar()->value();
    if (current_ < top)
        verticalScrollBar()->setValue(current_);
    else if (current_ >= top + VisibleLines())
        verticalScrollBar()->setValue(current_ - VisibleLines() + 1);
    viewport()->update();
    if (QAccessible::isActive()) {
        QAccessibleValueChangeEvent changed(this, LineText(current_));
        QAccessible::updateAccessibility(&changed);
    }
    Q_EMIT CurrentLineChanged(current_);
}

void LineListView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        MoveCurrent(LineAt(event->position()), event->modifiers() & Qt::ShiftModifier);
}

void LineListView::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() & Qt::LeftButton)
        MoveCurrent(LineAt(event->position()), true);
}

void LineListView::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy))
        return CopySelection();
    if (event->matches(QKeySequence::SelectAll))
        return SelectAll();
    const bool extend = event->modifiers() & Qt::ShiftModifier;
    const int current = std::max(current_, verticalScrollBar()->value());
    switch (event->key()) {
    case Qt::Key_Up:
        return MoveCurrent(current - 1, extend);
    case Qt::Key_Down:
        return MoveCurrent(current_ < 0 ? current : current + 1, extend);
    case Qt::Key_PageUp:
        return MoveCurrent(current - VisibleLines(), extend);
    case Qt::Key_PageDown:
        return MoveCurrent(current + VisibleLines(), extend);
    case Qt::Key_Home:
        return MoveCurrent(0, extend);
    case Qt::Key_End:
        return MoveCurrent(LineCount() - 1, extend);
    case Qt::Key_Left:
        return horizontalScrollBar()->triggerAction(QScrollBar::SliderSingleStepSub);
    case Qt::Key_Right:
        return horizontalScrollBar()->triggerAction(QScrollBar::SliderSingleStepAdd);
    default:
        QAbstractScrollArea::keyPressEvent(event);
    }
}

void LineListView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    UpdateScrollBars();
}

void LineListView::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
}

void LineListView::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}

void LineListView::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        UpdateMetrics();
}

void LineListView::scrollContentsBy(int /*dx*/, int /*dy*/) {
    viewport()->update();
}
