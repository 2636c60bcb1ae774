#include "platform/qt/HelpWindow.h"

#include <QFontDatabase>
#include <QPlainTextEdit>

namespace platform {

void ShowHelpWindow(const QString& title, const QString& text) {
    auto* window = new QPlainTextEdit(text);
    window->setObjectName("HelpWindow");
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setAttribute(Qt::WA_QuitOnClose, false);
    window->setReadOnly(true);
    window->setWindowTitle(title);
    window->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    window->resize(window->fontMetrics().horizontalAdvance(QString(84, 'x')),
                   window->fontMetrics().lineSpacing() * 36);
    window->show();
    window->activateWindow();
}

} // namespace platform
