#include "walk/FormHand.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QInputDialog>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QRegularExpression>
#include <QTest>
#include <QWheelEvent>

namespace {

QPoint PairIn(const QString& text) {
    return {text.section(' ', 0, 0).toInt(), text.section(' ', 1, 1).toInt()};
}

/// ".4ch" of "Measurement files (*.4ch)".
QString SuffixOf(const QString& nameFilter) {
    return QRegularExpression("\\*(\\.\\w+)").match(nameFilter).captured(1);
}

void AnswerMessage(const QMessageBox& box, const Step& step) {
    const auto buttons = box.buttons();
    for (QAbstractButton* button : buttons)
        if (button->text() == step.control)
            return button->click();
}

void AnswerInput(QInputDialog& input, const Step& step) {
    input.setTextValue(step.argument);
    input.done(step.control == "OK" ? QDialog::Accepted : QDialog::Rejected);
}

void AnswerFileDialog(QFileDialog& dialog, const Step& step, const QString& files) {
    if (step.argument.isEmpty())
        return dialog.reject();
    const QString name = files + "/" + step.argument + SuffixOf(dialog.selectedNameFilter());
    dialog.findChild<QLineEdit*>("fileNameEdit")->setText(name);
    static_cast<QDialog&>(dialog).accept();
    if (dialog.isVisible() && QApplication::activeModalWidget() == &dialog)
        dialog.reject(); // it does not take the name, as of a file to open that is not there
}

void Answer(const Step& step, const QString& files) {
    QWidget* const window = FormHand::Foremost();
    if (window == nullptr || FormHand::QuestionOf(*window) != step.window)
        return;
    if (const auto* const box = qobject_cast<QMessageBox*>(window))
        AnswerMessage(*box, step);
    else if (auto* const input = qobject_cast<QInputDialog*>(window))
        AnswerInput(*input, step);
    else if (auto* const dialog = qobject_cast<QFileDialog*>(window))
        AnswerFileDialog(*dialog, step, files);
}

/// A user reaches no other window while one waits for an answer.
QWidget* FindWindow(const QString& name) {
    QWidget* const foremost = FormHand::Foremost();
    if (foremost != nullptr)
        return FormHand::NameOf(*foremost) == name ? foremost : nullptr;
    for (QWidget* window : FormHand::ShownWindows())
        if (FormHand::NameOf(*window) == name)
            return window;
    return nullptr;
}

QWidget* FindControl(const QWidget& window, const QString& name) {
    for (QWidget* control : FormHand::ControlsIn(window))
        if (FormHand::NameOf(window, *control) == name)
            return control;
    return nullptr;
}

void WriteInto(QWidget& control, const Step& step) {
    auto* const edit = qobject_cast<QLineEdit*>(&control);
    if (edit == nullptr)
        return;
    const QPointer<QLineEdit> still = edit;
    edit->setFocus();
    edit->selectAll();
    QInputMethodEvent typed;
    typed.setCommitString(step.argument);
    QApplication::sendEvent(edit, &typed);
    if (still && step.action == "enter")
        QTest::keyClick(still, Qt::Key_Return);
}

void TurnWheel(QWidget& under, int delta) {
    const QPointF centre = under.rect().center();
    QWheelEvent event(centre, under.mapToGlobal(centre), {}, {0, delta}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&under, &event);
}

void ChooseFrom(const QWidget& window, const QString& text) {
    for (QAction* entry : FormHand::EntriesOf(window))
        if (entry->text() == text)
            return entry->trigger();
}

void DoWithWindow(const Step& step, QWidget& window) {
    if (step.action == "size")
        window.resize(PairIn(step.argument).x(), PairIn(step.argument).y());
    else if (step.action == "close")
        window.close();
    else if (step.action == "menu")
        ChooseFrom(window, step.argument);
    else if (step.action == "key") {
        QWidget* const focus = window.focusWidget();
        QTest::keyClick(focus != nullptr && focus->isVisible() ? focus : &window,
                        static_cast<Qt::Key>(step.argument.toInt()));
    }
}

void DoWithControl(const Step& step, QWidget& control) {
    if (step.action == "write" || step.action == "enter")
        WriteInto(control, step);
    else if (step.action == "wheel")
        TurnWheel(control, step.argument.toInt());
    else if (step.action == "click")
        QTest::mouseClick(&control, Qt::LeftButton, {}, PairIn(step.argument));
    else if (auto* const list = qobject_cast<QComboBox*>(&control); list && step.action == "choose")
        list->setCurrentIndex(list->findText(step.argument));
    else if (auto* const button = qobject_cast<QAbstractButton*>(&control);
             button && step.action == "press")
        button->click();
}

} // namespace

QString FormHand::NameOf(const QWidget& window) {
    return window.objectName().isEmpty() ? window.metaObject()->className() : window.objectName();
}

QString FormHand::NameOf(const QWidget& window, const QWidget& control) {
    if (!control.objectName().isEmpty() && !control.objectName().startsWith("qt_"))
        return control.objectName();
    const QString like = control.metaObject()->className();
    int place = 0;
    for (const QWidget* each : ControlsIn(window)) {
        if (each == &control)
            break;
        place += each->parent() == control.parent() && each->metaObject()->className() == like;
    }
    const QWidget* const parent = control.parentWidget();
    return (parent != nullptr && parent != &window ? NameOf(*parent) + "/" : QString()) + like +
           (place > 0 ? " " + QString::number(place + 1) : QString());
}

std::vector<QWidget*> FormHand::ControlsIn(const QWidget& window) {
    std::vector<QWidget*> found;
    const auto all = window.findChildren<QWidget*>();
    for (QWidget* each : all)
        if (each->window() == &window && each->isVisible() && each->isEnabled())
            found.push_back(each);
    return found;
}

/// Not the one that would leave the walk's instrument.
std::vector<QAction*> FormHand::EntriesOf(const QWidget& window) {
    std::vector<QAction*> found;
    const auto all = window.findChildren<QAction*>();
    for (QAction* each : all)
        if (each->isEnabled() && each->isVisible() && each->menu() == nullptr &&
            !each->text().isEmpty() && !each->text().contains("simulated", Qt::CaseInsensitive))
            found.push_back(each);
    return found;
}

std::vector<QWidget*> FormHand::ShownWindows() {
    std::vector<QWidget*> shown;
    const auto all = QApplication::topLevelWidgets();
    for (QWidget* window : all)
        if (window->isVisible() && window->isEnabled() && window->isWindow())
            shown.push_back(window);
    return shown;
}

QWidget* FormHand::Foremost() {
    QWidget* const popup = QApplication::activePopupWidget();
    return popup != nullptr ? popup : QApplication::activeModalWidget();
}

std::optional<QString> FormHand::QuestionOf(const QWidget& window) {
    if (const auto* const box = qobject_cast<const QMessageBox*>(&window))
        return box->text();
    if (const auto* const input = qobject_cast<const QInputDialog*>(&window))
        return input->labelText();
    if (qobject_cast<const QFileDialog*>(&window) != nullptr)
        return window.windowTitle();
    return std::nullopt;
}

void FormHand::Do(const Step& step, const QString& files) {
    if (step.action == "answer")
        return Answer(step, files);
    QWidget* const window = FindWindow(step.window);
    if (window == nullptr)
        return;
    if (step.control.isEmpty())
        return DoWithWindow(step, *window);
    if (QWidget* const control = FindControl(*window, step.control))
        DoWithControl(step, *control);
}
