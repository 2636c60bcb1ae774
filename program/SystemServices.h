#pragma once

#include "platform/Platform.h"
#include "platform/qt/QtDesktop.h"
#include "platform/qt/QtDialogs.h"
#include "platform/qt/QtPrinting.h"
#include "platform/qt/QtUserStore.h"

#include <memory>

namespace theMain {

/// The real platform around the given folders: the user's desktop, clock and files. Installed while
/// it lives; needs a QApplication.
class SystemServices {
public:
    explicit SystemServices(platform::Places& places);
    ~SystemServices();
    SystemServices(const SystemServices&) = delete;
    SystemServices& operator=(const SystemServices&) = delete;

private:
    platform::QtDialogs dialogs_;
    platform::QtDesktop desktop_;
    platform::QtUserStore userStore_;
    platform::QtPrinting printing_;
    std::unique_ptr<platform::Clock> clock_;
    std::unique_ptr<platform::FileStore> files_;
    std::unique_ptr<platform::ProfileFile> profile_;
    platform::Services services_;
};

} // namespace theMain
