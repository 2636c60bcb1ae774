#include "screens/controls/StatusLine.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr int besideMessage_px = 6;

} // namespace

void StatusLine::ShowText(const QString& text) {
    showMessage(text);
    setToolTip(text);
}

/// What the permanent widgets and the size grip leave.
QRect StatusLine::MessagePlace() const {
    int end = width();
    for (const QObject* child : children())
        if (const auto* widget = qobject_cast<const QWidget*>(child); widget && widget->isVisible())
            end = std::min(end, widget->x());
    return rect().adjusted(besideMessage_px, 0, end - width() - besideMessage_px, 0);
}

QString StatusLine::ElidedIn(const QRect& place) const {
    return fontMetrics().elidedText(currentMessage(), Qt::ElideRight, place.width());
}

void StatusLine::paintEvent(QPaintEvent* event) {
    if (currentMessage().isEmpty())
        return QStatusBar::paintEvent(event);
    QPainter painter(this);
    painter.setPen(palette().windowText().color());
    const QRect place = MessagePlace();
    painter.drawText(place, Qt::AlignVCenter | Qt::TextSingleLine, ElidedIn(place));
}
