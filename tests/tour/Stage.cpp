#include "tour/Stage.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QPixmap>
#include <QTest>

namespace stage {

namespace {

int picturesTaken = 0;

template <class Control>
Control& Reachable(const QWidget& form, const QString& name) {
    auto& control = Find<Control>(form, name);
    if (!control.isVisible() || !control.isEnabled())
        throw std::runtime_error(name.toStdString() + " cannot be reached");
    return control;
}

} // namespace

QString Folder() {
    // Asked before the program starts, which makes another folder the current one.
    static const QString folder =
        QDir().absoluteFilePath(qEnvironmentVariable("VANTREL_TOUR_FOLDER", QDir::currentPath()));
    QDir().mkpath(folder);
    return folder;
}

void Picture(QWidget& window, const QString& name) {
    Watch(std::chrono::milliseconds(50));
    const QString file =
        QString("%1/%2-%3.png").arg(Folder()).arg(++picturesTaken, 2, 10, QChar('0')).arg(name);
    if (!window.grab().save(file))
        throw std::runtime_error("cannot save " + file.toStdString());
}

void Click(const QWidget& form, const QString& button) {
    auto& target = Reachable<QAbstractButton>(form, button);
    // A press in the middle of a wide option button may miss its short caption.
    if (target.isCheckable())
        target.click();
    else
        QTest::mouseClick(&target, Qt::LeftButton);
}

void Choose(const QWidget& form, const QString& menuEntry) {
    auto& action = Find<QAction>(form, menuEntry);
    if (!action.isEnabled())
        throw std::runtime_error(menuEntry.toStdString() + " is disabled");
    action.trigger();
}

void Type(const QWidget& form, const QString& box, const QString& text) {
    auto& edit = Reachable<QLineEdit>(form, box);
    edit.setFocus();
    edit.selectAll();
    QTest::keyClicks(&edit, text);
}

void Pick(const QWidget& form, const QString& comboBox, const QString& text) {
    auto& box = Reachable<QComboBox>(form, comboBox);
    const int index = box.findText(text);
    if (index < 0)
        throw std::runtime_error(comboBox.toStdString() + " does not offer " + text.toStdString());
    box.setFocus();
    box.setCurrentIndex(index);
    Q_EMIT box.activated(index); // what a choice with the mouse sends
}

void PressEnter(const QWidget& form, const QString& control) {
    QTest::keyClick(&Reachable<QWidget>(form, control), Qt::Key_Return);
}

QString TextOf(const QWidget& form, const QString& control) {
    const auto& widget = Find<QWidget>(form, control);
    QString text;
    if (const auto* label = qobject_cast<const QLabel*>(&widget))
        text = label->text();
    else if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
        text = button->text();
    else if (const auto* edit = qobject_cast<const QLineEdit*>(&widget))
        text = edit->text();
    return text.remove('&').trimmed();
}

QWidget& Window(const char* className) {
    QWidget* found = nullptr;
    WaitFor(std::string("a window ") + className, [&] {
        const auto windows = QApplication::topLevelWidgets();
        for (QWidget* window : windows)
            if (window->isVisible() && window->inherits(className))
                found = window;
        return found != nullptr;
    });
    return *found;
}

void WaitFor(const std::string& what, const std::function<bool()>& condition,
             std::chrono::seconds timeout) {
    if (!QTest::qWaitFor(condition, static_cast<int>(std::chrono::milliseconds(timeout).count())))
        throw std::runtime_error("waited in vain for " + what);
}

void Watch(std::chrono::milliseconds time) {
    QTest::qWait(static_cast<int>(time.count()));
}

} // namespace stage
