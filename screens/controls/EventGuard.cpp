#include "screens/controls/EventGuard.h"

#include "app/Mcommon.h"
#include "platform/Dialogs.h"

#include <exception>

void EventGuard::operator()(const std::string& location,
                            const std::function<void()>& handler) const {
    Mcommon::errorLocation = location;
    try {
        handler();
    } catch (const std::exception& error) {
        Mcommon::MessageBoxEx(messagePrefix_ + error.what() + "\nError location - " +
                                  Mcommon::errorLocation,
                              platform::style::okOnly, platform::style::critical);
    }
}
