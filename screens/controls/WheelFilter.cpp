#include "screens/controls/WheelFilter.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>

namespace {

class WheelFilter : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::Wheel || static_cast<QWidget*>(watched)->hasFocus())
            return false;
        event->ignore();
        return true;
    }
};

} // namespace

void TakeWheelOnlyWithFocus(QWidget& page) {
    auto* filter = new WheelFilter(&page);
    const auto take = [filter](QWidget* control) {
        control->setFocusPolicy(Qt::StrongFocus); // the wheel does not give the focus either
        control->installEventFilter(filter);
    };
    for (QComboBox* list : page.findChildren<QComboBox*>())
        take(list);
    for (QAbstractSpinBox* box : page.findChildren<QAbstractSpinBox*>())
        take(box);
}
