#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// What the link last had to say, and who wants to know when anything about the link changes.
class LinkStatus {
public:
    /// The text of txtStatus; told to the screen that shows it and to the observers.
    void Set(const std::string& text);
    const std::string& Text() const { return text_; }

    /// Shows the text, where a screen is attached.
    std::function<void(const std::string&)> Show;

    /// Calls `changed` at every change as long as the returned handle lives.
    [[nodiscard]] std::shared_ptr<void> Observe(std::function<void()> changed);
    void TellObservers();

private:
    std::string text_;
    std::vector<std::weak_ptr<std::function<void()>>> observers_;
};
