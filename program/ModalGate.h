#pragma once

#include <QObject>

/// A window that another one keeps waiting does not close. Clicks and keys do not reach it; what an
/// assistive tool presses there does, and the window would go under the question that stands before
/// it, with the handler that asked.
class ModalGate final : public QObject {
public:
    ModalGate();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};
