#include "screens/controls/EventGuard.h"

#include "app/Mcommon.h"
#include "platform/Dialogs.h"

#include <QTimer>

#include <exception>
#include <utility>

namespace {

/// errorLocation for the time of a handler. One that runs in the middle of another leaves that
/// one's name behind.
class Location {
public:
    explicit Location(const std::string& name)
        : outer_(std::exchange(Mcommon::errorLocation, name)), nested_(depth_++ > 0) {}
    ~Location() {
        --depth_;
        if (nested_)
            Mcommon::errorLocation = outer_;
    }
    Location(const Location&) = delete;
    Location& operator=(const Location&) = delete;

private:
    static inline int depth_ = 0;
    std::string outer_;
    bool nested_;
};

} // namespace

void EventGuard::operator()(const std::string& location,
                            const std::function<void()>& handler) const {
    const Location named(location);
    try {
        handler();
    } catch (const std::exception& error) {
        Tell(error.what(), Mcommon::errorLocation);
    }
}

void EventGuard::Within(QObject& form, const std::string& location,
                        const std::function<void()>& handler) {
    const Location named(location);
    try {
        handler();
    } catch (const std::exception& error) {
        if (std::exchange(telling_, true))
            return;
        const auto tell = [this, what = std::string(error.what()), where = Mcommon::errorLocation] {
            Tell(what, where);
            telling_ = false;
        };
        QTimer::singleShot(0, &form, tell);
    }
}

void EventGuard::Tell(const std::string& description, const std::string& location) const {
    Mcommon::MessageBoxEx(messagePrefix_ + description + "\nError location - " + location,
                          platform::style::okOnly, platform::style::critical);
}
