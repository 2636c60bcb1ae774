#pragma once

#include "support/FakeLink.h"
#include "support/FakePlatform.h"

#include <QAbstractButton>
#include <QAction>
#include <QColor>
#include <QString>
#include <QWidget>
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

/// Failures show a text, not its bytes.
inline void PrintTo(const QString& text, std::ostream* stream) {
    *stream << '"' << text.toStdString() << '"';
}

/// A test of real forms: scripted boxes, a link under the test's hand, and an event queue that runs
/// wherever the core lets events run. Timers tick when the test says so.
class ScreenTest : public ::testing::Test {
protected:
    ScreenTest();
    ~ScreenTest() override;

    fake::Platform platform;
    std::unique_ptr<fake::Link> link = std::make_unique<fake::Link>();

    /// Whatever this machine has at COM1 is not touched; a port is a file on POSIX alone.
    void LeadFirstPortNowhere() const;

    /// The control of a form with this name; a missing one fails the test.
    template <class Control>
    static Control& Find(const QWidget& form, const QString& name) {
        auto* control = form.findChild<Control*>(name);
        if (control == nullptr)
            throw std::runtime_error("no control " + name.toStdString());
        return *control;
    }

    /// The element of a control array.
    template <class Control>
    static Control& Element(const QWidget& form, const QString& name, std::size_t index) {
        return Find<Control>(form, name + "_" + QString::number(index));
    }

    /// The indices that a form's control array has.
    static std::vector<int> IndicesOf(const QObject& form, const QString& name);

    /// A click of the user: the button must be one that he could reach.
    static void Click(const QWidget& form, const QString& name);
    static void Click(const QWidget& form, const QString& name, std::size_t index) {
        Click(form, name + "_" + QString::number(index));
    }

    /// A menu entry chosen by the user: it must be enabled.
    static void Choose(const QWidget& form, const QString& name);

    /// The user picks an entry of a combo box.
    static void Pick(const QWidget& form, const QString& name, const QString& text);

    /// The user replaces the text of a line edit by typing.
    static void Type(const QWidget& form, const QString& name, const QString& text);

    /// A tick of a form's timer, whether or not its time has come.
    static void Tick(const QObject& form, const QString& timerName);

    /// Runs what waits in the event queue.
    static void Settle();

    /// Shows the form and makes it the active window.
    static void Show(QWidget& form);

    /// A whole frame arrives: values in tenths.
    void Arrive(const std::array<int, 8>& tenths);

    /// No byte has arrived in time.
    void TimeOut();

    /// The sum of a message box's style parts, as scripts expect it.
    static constexpr int Style(int buttons, int icon, int defaultButton = 0) {
        return buttons + icon + defaultButton;
    }
    static constexpr int information = platform::style::okOnly + platform::style::information;
    static constexpr int exclamation = platform::style::okOnly + platform::style::exclamation;
    static constexpr int critical = platform::style::okOnly + platform::style::critical;
};

/// Names of controls that a user reaches and that have no accessible name.
std::vector<std::string> ControlsWithoutName(const QWidget& form);

/// Mnemonics ("Alt+X") that several visible controls, tabs and menus of the bar share.
std::vector<std::string> SharedMnemonics(const QWidget& form);

/// Controls that are seen and whose text is wider or higher than they are; a label whose text may
/// be longer than its room (by its size policy) is left out.
std::vector<std::string> CutTexts(const QWidget& form);

/// Fails where the form cannot be made small enough for a screen of 1024x768 at a scale of 200 %.
void ExpectFitsAtDoubleScale(const QWidget& form);

/// Fails where the form does not come to rest in some size: a scroll bar that comes and goes calls
/// for one layout after the other.
void ExpectRestsInEverySize(QWidget& form);

/// How well two colours are told apart, from 1 to 21 (WCAG 2.1, contrast ratio).
double Contrast(const QColor& one, const QColor& other);
