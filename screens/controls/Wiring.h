#pragma once

#include "screens/controls/ControlArray.h"
#include "screens/controls/EventGuard.h"

#include <QObject>

#include <cstddef>
#include <string>
#include <utility>

/// The one way to connect signals to a form's handlers: each runs in the form's guard, under the
/// name "form - control" as its location. A form wires its controls in one block after setupUi:
///
///     const Wiring wire(*this, guard_, "frmMain");
///     wire(cmdPage, &QPushButton::clicked, "cmdPage", &frmMain::cmdPage_Click);
///     wire(ui_->cmdSimult, &QPushButton::clicked, "cmdSimult", &frmMain::cmdSimult_Click);
///
/// Form and guard must outlive the connections: the guard is the form's own.
template <class Form>
class Wiring {
public:
    Wiring(Form& form, EventGuard& guard, std::string name)
        : form_(form), guard_(guard), name_(std::move(name)) {}

    /// The handler takes the signal's leading arguments, as many as it has.
    template <class Sender, class Signal, class... Arguments>
    void operator()(Sender* sender, Signal signal, const char* control,
                    void (Form::*handler)(Arguments...)) const {
        QObject::connect(sender, signal, &form_,
                         [run = Runner(control), handler](Arguments... arguments) {
                             run([&](Form& form) { (form.*handler)(arguments...); });
                         });
    }

    /// The handler takes the index within the control array.
    template <class Control, class Signal>
    void operator()(const ControlArray<Control>& controls, Signal signal, const char* name,
                    void (Form::*handler)(std::size_t Index)) const {
        controls.Connect(form_, signal, [run = Runner(name), handler](std::size_t Index) {
            run([&](Form& form) { (form.*handler)(Index); });
        });
    }

private:
    /// Runs a step with the form as long as it is whole: a control that goes with its form may send
    /// a signal while only the form's base is left.
    auto Runner(const char* control) const {
        return [object = static_cast<QObject*>(&form_), &guard = guard_,
                location = name_ + " - " + control](const auto& step) {
            if (Form* const form = qobject_cast<Form*>(object))
                guard(location, [&] { step(*form); });
        };
    }

    Form& form_;
    EventGuard& guard_;
    std::string name_;
};
