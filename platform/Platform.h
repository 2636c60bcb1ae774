#pragma once

#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "platform/Dialogs.h"
#include "platform/FileStore.h"
#include "platform/Places.h"
#include "platform/Printer.h"
#include "platform/ProfileFile.h"
#include "platform/UserStore.h"

namespace platform {

/// Everything that the core needs from below. Installed once at start by the program, by each
/// test for itself.
struct Services {
    Dialogs& dialogs;
    Desktop& desktop;
    Clock& clock;
    ProfileFile& profile;
    UserStore& userStore;
    Places& places;
    FileStore& files;
    Printing& printing;
};

/// Installs the services; they must outlive every use. A null pointer removes them.
void Install(const Services* services);

/// The installed services. Throws std::logic_error before Install.
const Services& Current();

/// Lets pending events run, at most once a millisecond; otherwise costs a clock read.
void LetEventsRun();

} // namespace platform
