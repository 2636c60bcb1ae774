#include "screens/controls/ListLabels.h"

#include <QComboBox>
#include <QLabel>

#include <algorithm>

namespace {

/// Without the mnemonic's mark and the colon.
QString SpokenText(const QLabel& label) {
    QString text = label.text();
    return text.remove('&').remove(':');
}

bool IsNamedByLabel(const QComboBox& list) {
    const auto labels = list.parentWidget()->findChildren<QLabel*>(Qt::FindDirectChildrenOnly);
    return std::any_of(labels.begin(), labels.end(), [&list](const QLabel* label) {
        return label->buddy() == &list && SpokenText(*label) == list.accessibleName();
    });
}

} // namespace

void LabelLists(const QWidget& form) {
    for (QComboBox* list : form.findChildren<QComboBox*>()) {
        if (list->accessibleName().isEmpty() || IsNamedByLabel(*list))
            continue;
        auto* label = new QLabel(list->accessibleName(), list->parentWidget());
        label->setBuddy(list);
        label->hide();
    }
}
