#include "link/LinkStatus.h"

#include <utility>

void LinkStatus::Set(const std::string& text) {
    text_ = text;
    if (Show)
        Show(text_);
    TellObservers();
}

std::shared_ptr<void> LinkStatus::Observe(std::function<void()> changed) {
    auto observer = std::make_shared<std::function<void()>>(std::move(changed));
    observers_.push_back(observer);
    return observer;
}

void LinkStatus::TellObservers() {
    std::erase_if(observers_, [](const auto& observer) { return observer.expired(); });
    const auto present = observers_; // an observer may come or go while one is called
    for (const auto& observer : present) {
        if (const auto changed = observer.lock())
            (*changed)();
    }
}
