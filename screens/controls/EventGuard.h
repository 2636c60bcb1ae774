#pragma once

#include <QObject>

#include <functional>
#include <string>

/// Runs the event handlers of a form: names the routine at work in errorLocation and turns what is
/// thrown into the error message box, since an exception must not reach the event loop.
class EventGuard {
public:
    /// "Unexpected Error - " on the data acquisition screens, "Unexpected error - " in the viewer.
    explicit EventGuard(std::string messagePrefix) : messagePrefix_(std::move(messagePrefix)) {}

    void operator()(const std::string& location, const std::function<void()>& handler) const;

    /// The same for what runs within another handler that must not wait for an answer: the box
    /// comes when that handler has ended, on behalf of `form`, and one at a time.
    void Within(QObject& form, const std::string& location, const std::function<void()>& handler);

private:
    void Tell(const std::string& description, const std::string& location) const;

    bool telling_ = false;
    std::string messagePrefix_;
};
