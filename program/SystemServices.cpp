#include "program/SystemServices.h"

#include "platform/System.h"

namespace theMain {

SystemServices::SystemServices(platform::Places& places)
    : clock_(platform::MakeClock()), files_(platform::MakeFileStore()),
      profile_(platform::MakeProfileFile(places.ConfigurationFolder() / "Vantrel.ini")),
      services_{dialogs_, desktop_, *clock_, *profile_, userStore_, places, *files_, printing_} {
    platform::Install(&services_);
}

SystemServices::~SystemServices() {
    platform::Install(nullptr);
}

} // namespace theMain
