#include "program/DarkPaletteStyle.h"

#include "screens/controls/Colours.h"

#include <QApplication>
#include <QEvent>
#include <QStyle>
#include <QTimer>

DarkPaletteStyle::DarkPaletteStyle(const QString& staysLight) : staysLight_(staysLight) {
    if (QApplication::style()->name() != staysLight_)
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
    const QString style = dark ? QStringLiteral("fusion") : staysLight_;
    if (QApplication::style()->name() != style)
        QApplication::setStyle(style);
}
