#include "screens/controls/ValueLabel.h"

#include <QLabel>
#include <QVariant>

void ShowValue(QLabel& label, const QString& value) {
    constexpr const char* captionProperty = "spokenCaption";
    if (!label.property(captionProperty).isValid())
        label.setProperty(captionProperty, label.accessibleName());
    const QString caption = label.property(captionProperty).toString();
    QString spoken = caption + ": " + (value.isEmpty() ? "blank" : value);
    spoken.replace('\n', ' '); // a line's end is there for the eye alone
    if (label.text() != value)
        label.setText(value);
    if (label.accessibleName() != spoken)
        label.setAccessibleName(spoken);
}
