#pragma once

#include <QComboBox>
#include <QLineEdit>
#include <QString>
#include <QWidget>

#include <chrono>
#include <functional>
#include <stdexcept>

/// What the tour does with hands and eyes: clicks, types, waits for what it sees, takes pictures.
/// A control that is missing, hidden or disabled is thrown as std::runtime_error.
namespace stage {

/// Folder for the pictures and the measurement file.
QString Folder();

/// Saves what the window shows as NN-name.png, numbered in the order of the tour.
void Picture(QWidget& window, const QString& name);

template <class Control>
Control& Find(const QWidget& form, const QString& name) {
    auto* control = form.findChild<Control*>(name);
    if (control == nullptr)
        throw std::runtime_error("no control " + name.toStdString());
    return *control;
}

void Click(const QWidget& form, const QString& button);
void Choose(const QWidget& form, const QString& menuEntry);
void Type(const QWidget& form, const QString& box, const QString& text);
void Pick(const QWidget& form, const QString& comboBox, const QString& text);
void PressEnter(const QWidget& form, const QString& control);

/// The caption or text of a label, button or box, without mnemonic marks.
QString TextOf(const QWidget& form, const QString& control);

/// The visible window of this class; waits for it.
QWidget& Window(const char* className);

/// Lets events run until the condition holds; throws, naming `what`, after the time-out.
void WaitFor(const std::string& what, const std::function<bool()>& condition,
             std::chrono::seconds timeout = std::chrono::seconds(15));

/// Lets events run for the time.
void Watch(std::chrono::milliseconds time);

} // namespace stage
