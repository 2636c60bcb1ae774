#include "screens/controls/MarkLabel.h"

#include "screens/controls/Colours.h"

void MarkLabel::ShowMark(const QString& shown, bool steady) {
    if (text() == shown)
        return;
    QPalette colours = palette();
    const QPalette around = parentWidget()->palette();
    colours.setColor(QPalette::WindowText,
                     steady ? Colours::Good(around) : around.color(QPalette::WindowText));
    setPalette(colours);
    QFont weight = font();
    weight.setBold(steady);
    setFont(weight);
    setText(shown);
}
