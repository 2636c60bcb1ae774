#include "walk/RandomAnalyst.h"

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
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <gtest/gtest.h>

#include <array>

namespace {

constexpr std::size_t stepsKept = 60;

QString NameOf(const QWidget& widget) {
    return widget.objectName().isEmpty() ? widget.metaObject()->className() : widget.objectName();
}

/// A dialog that the walk must not open: it would leave the walk's folder, or the walk itself.
bool IsOutOfBounds(const QString& action) {
    return action.contains("simulated", Qt::CaseInsensitive);
}

/// The buttons of a day's work, the splash's among them; he takes to them more than to others.
bool LeadsOn(const QString& caption) {
    static const QStringList captions = {"&OK",   "&Measure >", "&Record", "&Start", "Re&port",
                                         "&Read", "Continue",   "&Next >", "&Finish"};
    return captions.contains(caption);
}

/// ".4ch" of "Measurement files (*.4ch)".
QString SuffixOf(const QString& nameFilter) {
    return QRegularExpression("\\*(\\.\\w+)").match(nameFilter).captured(1);
}

std::vector<QWidget*> ShownWindows() {
    std::vector<QWidget*> shown;
    const auto all = QApplication::topLevelWidgets();
    for (QWidget* window : all)
        if (window->isVisible() && window->isEnabled() && window->isWindow())
            shown.push_back(window);
    return shown;
}

/// He leaves the program when it is time for it, not before.
QAbstractButton* AnswerButton(QMessageBox& box, bool leaving, std::size_t which) {
    const bool leavesAll = box.text() == "Are you sure you want to exit?";
    if (leaving && box.button(QMessageBox::Yes) != nullptr)
        return box.button(QMessageBox::Yes);
    if (leavesAll && box.button(QMessageBox::No) != nullptr)
        return box.button(QMessageBox::No);
    const auto buttons = box.buttons();
    return buttons.at(static_cast<int>(which % static_cast<std::size_t>(buttons.size())));
}

} // namespace

RandomAnalyst::RandomAnalyst(std::uint64_t seed, QString files)
    : random_(seed), files_(std::move(files)) {}

void RandomAnalyst::Begin(int straightSteps, const std::function<void()>& disturb) {
    straightUntil_ = steps_ + straightSteps;
    disturb_ = disturb;
    leaving_ = false;
    ended_ = false;
    Next();
}

std::string RandomAnalyst::LastSteps() const {
    std::string text;
    for (const QString& step : lastSteps_)
        text += "\n  " + step.toStdString();
    return text;
}

void RandomAnalyst::Note(const QString& step) {
    lastSteps_.push_back(QString::number(steps_) + ": " + step);
    if (lastSteps_.size() > stepsKept)
        lastSteps_.pop_front();
}

/// The next step is due before this one is taken: one that opens a box returns when it is answered.
void RandomAnalyst::Next() {
    if (ended_)
        return;
    QTimer::singleShot(static_cast<int>(Below(12)), this, [this] {
        Next();
        if (!ended_)
            Act();
    });
}

void RandomAnalyst::Act() {
    QPointer<QWidget> window = Reached();
    if (window && Answer(*window))
        return;
    ++steps_;
    if (leaving_)
        LeaveStep();
    else if (IsStraight() && window)
        PressButton(*window);
    else if (Below(5) == 0)
        disturb_();
    else if (window)
        ActIn(*window);
}

QWidget* RandomAnalyst::Reached() {
    if (QWidget* const popup = QApplication::activePopupWidget())
        return popup;
    if (QWidget* const modal = QApplication::activeModalWidget())
        return modal;
    const auto windows = ShownWindows();
    return windows.empty() ? nullptr : windows[Below(windows.size())];
}

/// Boxes and dialogs of the toolkit's own; false where the window is another one.
bool RandomAnalyst::Answer(QWidget& window) {
    if (qobject_cast<QMessageBox*>(&window) != nullptr)
        AnswerMessage(window);
    else if (qobject_cast<QFileDialog*>(&window) != nullptr)
        AnswerFileDialog(window);
    else if (auto* const input = qobject_cast<QInputDialog*>(&window)) {
        Note("writes into " + input->labelText());
        input->setTextValue(QString::number(Below(2000)));
        input->done(Below(2) == 0 ? QDialog::Accepted : QDialog::Rejected);
    } else
        return false;
    return true;
}

void RandomAnalyst::AnswerMessage(QWidget& window) {
    auto& box = static_cast<QMessageBox&>(window);
    EXPECT_FALSE(box.text() == lastBox_ && steps_ == stepOfLastBox_)
        << "comes a second time, and nothing was done: " << lastBox_.toStdString() << LastSteps();
    ++boxesSeen_;
    QAbstractButton* const button = AnswerButton(box, leaving_, Below(8));
    Note("answers \"" + box.text() + "\" by " + button->text());
    lastBox_ = box.text();
    stepOfLastBox_ = steps_;
    button->click();
}

void RandomAnalyst::AnswerFileDialog(QWidget& window) {
    auto& dialog = static_cast<QFileDialog&>(window);
    lastBox_.clear(); // what it asks next is about another name
    if (leaving_ || Below(3) == 0 || dialog.fileMode() == QFileDialog::Directory) {
        Note("leaves the dialog " + dialog.windowTitle());
        dialog.reject();
        return;
    }
    const QString name =
        files_ + "/walk" + QString::number(Below(3)) + SuffixOf(dialog.selectedNameFilter());
    Note(dialog.windowTitle() + " " + name);
    dialog.findChild<QLineEdit*>("fileNameEdit")->setText(name);
    static_cast<QDialog&>(dialog).accept();
    if (dialog.isVisible() && QApplication::activeModalWidget() == &dialog)
        dialog.reject(); // it does not take the name, as of a file to open that is not there
}

void RandomAnalyst::LeaveStep() {
    const auto windows = ShownWindows();
    if (QWidget* const popup = QApplication::activePopupWidget()) {
        popup->close();
    } else if (QWidget* const modal = QApplication::activeModalWidget()) {
        Note("closes " + NameOf(*modal));
        modal->close();
    } else if (!windows.empty()) {
        QWidget& window = *windows[Below(windows.size())];
        Note("closes " + NameOf(window));
        if (auto* const button = window.findChild<QAbstractButton*>("cmdCommand1"))
            button->click(); // the splash's
        else
            window.close();
    }
}

void RandomAnalyst::ActIn(QWidget& window) {
    // What an analyst does often stands more than once.
    static constexpr std::array<Action, 20> actions = {
        &RandomAnalyst::PressButton,   &RandomAnalyst::PressButton, &RandomAnalyst::PressButton,
        &RandomAnalyst::PressButton,   &RandomAnalyst::PressButton, &RandomAnalyst::PressButton,
        &RandomAnalyst::ChooseEntry,   &RandomAnalyst::ChooseEntry, &RandomAnalyst::ChooseEntry,
        &RandomAnalyst::WriteText,     &RandomAnalyst::WriteText,   &RandomAnalyst::WriteText,
        &RandomAnalyst::PressKey,      &RandomAnalyst::PressKey,    &RandomAnalyst::TriggerAction,
        &RandomAnalyst::TriggerAction, &RandomAnalyst::TurnWheel,   &RandomAnalyst::ClickAnywhere,
        &RandomAnalyst::Resize,        &RandomAnalyst::Close};
    (this->*actions[Below(actions.size())])(window);
}

QWidget* RandomAnalyst::AnyControl(QWidget& window, const std::function<bool(QWidget&)>& fits) {
    std::vector<QWidget*> found;
    const auto all = window.findChildren<QWidget*>();
    for (QWidget* each : all)
        if (each->window() == &window && each->isVisible() && each->isEnabled() && fits(*each))
            found.push_back(each);
    return found.empty() ? nullptr : found[Below(found.size())];
}

void RandomAnalyst::PressButton(QWidget& window) {
    const bool goesOn = IsStraight() || Below(3) > 0;
    auto* button = qobject_cast<QAbstractButton*>(AnyControl(window, [goesOn](QWidget& each) {
        const auto* const found = qobject_cast<QAbstractButton*>(&each);
        return found != nullptr && (!goesOn || LeadsOn(found->text()));
    }));
    if (button == nullptr)
        return;
    Note("presses " + NameOf(*button) + " \"" + button->text() + "\" in " + NameOf(window));
    button->click();
}

void RandomAnalyst::ChooseEntry(QWidget& window) {
    auto* const box = qobject_cast<QComboBox*>(AnyControl(
        window, [](QWidget& each) { return qobject_cast<QComboBox*>(&each) != nullptr; }));
    if (box == nullptr || box->count() == 0)
        return;
    const int entry = static_cast<int>(Below(static_cast<std::size_t>(box->count())));
    Note("chooses \"" + box->itemText(entry) + "\" in " + NameOf(*box));
    box->setCurrentIndex(entry);
}

void RandomAnalyst::WriteText(QWidget& window) {
    static const QStringList texts = {
        "",      "1",      "10",
        "100",   "4.01",   "7.00",
        "10.01", "0,5",    "-3",
        "1e9",   "abc",    "\xC3\xA4 \xCE\xA9",
        "2",     "0",      "60",
        "9999",  "0.001",  "7 b",
        "=1+",   "sample", "a very long comment of no use, on and on"};
    auto* const edit = qobject_cast<QLineEdit*>(AnyControl(
        window, [](QWidget& each) { return qobject_cast<QLineEdit*>(&each) != nullptr; }));
    if (edit == nullptr || edit->isReadOnly())
        return;
    const QString text = texts.at(static_cast<int>(Below(static_cast<std::size_t>(texts.size()))));
    Note("writes \"" + text + "\" into " + NameOf(*edit));
    const QPointer<QLineEdit> still = edit;
    edit->setFocus();
    edit->selectAll();
    QInputMethodEvent typed;
    typed.setCommitString(text);
    QApplication::sendEvent(edit, &typed);
    if (still && Below(2) == 0)
        QTest::keyClick(still, Qt::Key_Return);
}

void RandomAnalyst::PressKey(QWidget& window) {
    static constexpr std::array<Qt::Key, 14> keys = {
        Qt::Key_Tab,    Qt::Key_Return,   Qt::Key_Escape, Qt::Key_Space, Qt::Key_Up,
        Qt::Key_Down,   Qt::Key_Left,     Qt::Key_Right,  Qt::Key_Home,  Qt::Key_End,
        Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Delete, Qt::Key_F3};
    const Qt::Key key = keys[Below(keys.size())];
    QWidget* const focus = window.focusWidget();
    QWidget& target = focus != nullptr && focus->isVisible() ? *focus : window;
    Note(QString("presses key %1 in %2").arg(static_cast<int>(key), 0, 16).arg(NameOf(target)));
    QTest::keyClick(&target, key);
}

void RandomAnalyst::TriggerAction(QWidget& window) {
    std::vector<QAction*> found;
    const auto all = window.findChildren<QAction*>();
    for (QAction* each : all)
        if (each->isEnabled() && each->isVisible() && each->menu() == nullptr &&
            !each->text().isEmpty() && !IsOutOfBounds(each->text()))
            found.push_back(each);
    if (found.empty())
        return;
    QAction& action = *found[Below(found.size())];
    Note("chooses the entry \"" + action.text() + "\" of " + NameOf(window));
    action.trigger();
}

void RandomAnalyst::TurnWheel(QWidget& window) {
    QWidget* const under = AnyControl(window, [](QWidget&) { return true; });
    if (under == nullptr)
        return;
    const QPointF centre = under->rect().center();
    QWheelEvent event(centre, under->mapToGlobal(centre), {}, {0, Below(2) == 0 ? 120 : -120},
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    Note("turns the wheel over " + NameOf(*under));
    QApplication::sendEvent(under, &event);
}

void RandomAnalyst::ClickAnywhere(QWidget& window) {
    QWidget* const under = AnyControl(window, [](QWidget&) { return true; });
    if (under == nullptr || under->width() < 1 || under->height() < 1)
        return;
    const QPoint place(static_cast<int>(Below(static_cast<std::size_t>(under->width()))),
                       static_cast<int>(Below(static_cast<std::size_t>(under->height()))));
    Note("clicks at " + NameOf(*under));
    QTest::mouseClick(under, Qt::LeftButton, {}, place);
}

void RandomAnalyst::Resize(QWidget& window) {
    const QSize most = window.screen()->availableSize() * 0.9;
    const QSize size(300 + static_cast<int>(Below(static_cast<std::size_t>(most.width() - 300))),
                     300 + static_cast<int>(Below(static_cast<std::size_t>(most.height() - 300))));
    Note(QString("sizes %1 to %2x%3").arg(NameOf(window)).arg(size.width()).arg(size.height()));
    window.resize(size);
}

void RandomAnalyst::Close(QWidget& window) {
    if (Below(4) != 0)
        return;
    Note("closes " + NameOf(window));
    window.close();
}
