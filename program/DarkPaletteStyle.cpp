#include "program/DarkPaletteStyle.h"

#include "program/OutlinedFusion.h"
#include "screens/controls/Colours.h"

#include <QApplication>
#include <QEvent>
#include <QStyle>
#include <QTimer>

DarkPaletteStyle::DarkPaletteStyle(const QString& staysLight) : staysLight_(staysLight) {
    const QString style = QApplication::style()->name();
    if (style == QLatin1String("fusion"))
        QApplication::setStyle(new OutlinedFusion);
    if (style != staysLight_)
        return;
    Choose();
    qApp->installEventFilter(this);
}

bool DarkPaletteStyle::eventFilter(QObject* watched, QEvent* event) {
    // Not within the event: all controls are taking up the palette.
    if (event->type() == QEvent::ApplicationPaletteChange && watched == qApp)
        QTimer::singleShot(0, this, [this] { Choose(); });
    return false;
}

void DarkPaletteStyle::Choose() const {
    const bool dark = Colours::IsDark(QApplication::palette());
    const bool drawnLight = QApplication::style()->name() == staysLight_;
    if (dark && drawnLight)
        QApplication::setStyle(new OutlinedFusion);
    if (!dark && !drawnLight)
        QApplication::setStyle(staysLight_);
}
