#include "screens/controls/LineListAccessible.h"

#include "screens/controls/LineListView.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace {

class LineListAccessible : public QAccessibleWidget {
public:
    explicit LineListAccessible(LineListView* list)
        : QAccessibleWidget(list, QAccessible::List), list_(list) {}

    QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Value)
            return list_->LineText(list_->CurrentLine());
        return QAccessibleWidget::text(kind);
    }

private:
    LineListView* list_;
};

QAccessibleInterface* MakeInterface(const QString& /*className*/, QObject* object) {
    if (auto* list = qobject_cast<LineListView*>(object))
        return new LineListAccessible(list); // owned by Qt's accessibility cache
    return nullptr;
}

} // namespace

void InstallLineListAccessible() {
    static const bool installed = [] {
        QAccessible::installFactory(MakeInterface);
        return true;
    }();
    (void)installed;
}
