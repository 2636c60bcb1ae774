#include "screens/controls/MarkLabel.h"

#include "screens/controls/Colours.h"
#include "screens/controls/ValueLabel.h"

void MarkLabel::ShowMark(const QString& mark, bool steady) {
    if (text() != mark) {
        QPalette colours = palette();
        const QPalette around = parentWidget()->palette();
        colours.setColor(QPalette::WindowText,
                         steady ? Colours::Good(around) : around.color(QPalette::WindowText));
        setPalette(colours);
        QFont weight = font();
        weight.setBold(steady);
        setFont(weight);
    }
    ShowValue(*this, mark);
}
