#include "program/ModalGate.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

namespace {

bool StandsOver(const QWidget& owner, const QWidget* window) {
    while (window != nullptr && window != &owner)
        window = window->parentWidget();
    return window == &owner;
}

bool IsKeptWaiting(const QWidget& window) {
    const QWidget* const asking = QApplication::activeModalWidget();
    if (asking == nullptr || StandsOver(*asking, &window))
        return false;
    return asking->windowModality() == Qt::ApplicationModal || StandsOver(window, asking);
}

} // namespace

ModalGate::ModalGate() {
    qApp->installEventFilter(this);
}

bool ModalGate::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::Close)
        return false;
    const auto* const window = qobject_cast<QWidget*>(watched);
    if (window == nullptr || !IsKeptWaiting(*window))
        return false;
    event->ignore();
    return true;
}
