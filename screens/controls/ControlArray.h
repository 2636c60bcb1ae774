#pragma once

#include <QRegularExpression>
#include <QWidget>

#include <cstddef>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

/// The controls of a form named `name_0`, `name_1` and so on (indices may have gaps), gathered once
/// and addressed by index.
template <class Control>
class ControlArray {
public:
    ControlArray() = default;

    ControlArray(const QWidget& form, const QString& name) : name_(name) {
        const QRegularExpression pattern("^" + name + "_(\\d+)$");
        for (Control* control : form.findChildren<Control*>(pattern))
            controls_[control->objectName().mid(name.size() + 1).toULong()] = control;
    }

    /// The control with this index. Throws std::out_of_range naming it where the form has none.
    Control& operator()(std::size_t index) const {
        const auto found = controls_.find(index);
        if (found == controls_.end())
            throw std::out_of_range(name_.toStdString() + "_" + std::to_string(index));
        return *found->second;
    }

    std::size_t Count() const { return controls_.size(); }

    std::vector<std::size_t> Indices() const {
        std::vector<std::size_t> indices;
        for (const auto& [index, control] : controls_)
            indices.push_back(index);
        return indices;
    }

    /// Connects one handler, called with the index, to a signal of every control.
    template <class Signal, class Handler>
    void Connect(QObject& receiver, Signal signal, Handler handler) const {
        for (const auto& [index, control] : controls_)
            QObject::connect(control, signal, &receiver,
                             [handler, index = index]() { handler(index); });
    }

    auto begin() const { return controls_.begin(); }
    auto end() const { return controls_.end(); }

private:
    QString name_;
    std::map<std::size_t, Control*> controls_;
};
