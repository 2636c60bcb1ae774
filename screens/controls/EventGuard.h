#pragma once

#include <functional>
#include <string>

/// Runs the event handlers of a form: names the routine at work in errorLocation and turns what is
/// thrown into the error message box, since an exception must not reach the event loop.
class EventGuard {
public:
    /// "Unexpected Error - " on the data acquisition screens, "Unexpected error - " in the viewer.
    explicit EventGuard(std::string messagePrefix) : messagePrefix_(std::move(messagePrefix)) {}

    void operator()(const std::string& location, const std::function<void()>& handler) const;

private:
    std::string messagePrefix_;
};
