#include "program/OutlinedFusion.h"

#include "screens/controls/Colours.h"

#include <QStyleOptionButton>

OutlinedFusion::OutlinedFusion() : QProxyStyle(QStringLiteral("fusion")) {}

void OutlinedFusion::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                   QPainter* painter, const QWidget* widget) const {
    const auto* const button = qstyleoption_cast<const QStyleOptionButton*>(option);
    const bool isMark = element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton;
    if (!isMark || button == nullptr || !Colours::IsDark(button->palette))
        return QProxyStyle::drawPrimitive(element, option, painter, widget);
    // Of a mark Fusion draws the outline alone in a shade of the window's colour.
    QStyleOptionButton outlined = *button;
    outlined.palette.setColor(QPalette::Window, button->palette.color(QPalette::WindowText));
    QProxyStyle::drawPrimitive(element, &outlined, painter, widget);
}
