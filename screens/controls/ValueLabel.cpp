#include "screens/controls/ValueLabel.h"

#include <QLabel>
#include <QVariant>

void ShowValue(QLabel& label, const QString& value) {
    constexpr const char* captionProperty = "spokenCaption";
    if (!label.property(captionProperty).isValid())
        label.setProperty(captionProperty, label.accessibleName());
    const QString caption = label.property(captionProperty).toString();
    const QString spoken = value.isEmpty() ? caption + ": blank" : caption + ": " + value;
    if (label.text() != value)
        label.setText(value);
    if (label.accessibleName() != spoken)
        label.setAccessibleName(spoken);
}
