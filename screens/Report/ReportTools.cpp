#include "screens/Report/ReportTools.h"

#include "platform/Platform.h"
#include "screens/Report/ReportMenus.h"

namespace {
constexpr std::string_view helpFile = "ViewHlp.txt";
}

void ReportTools::Run(std::size_t toolItem) {
    platform::Desktop& desktop = platform::Current().desktop;
    if (toolItem == ReportMenus::calculator)
        desktop.ShowCalculator();
    else
        desktop.ShowNotepad();
}

void ReportTools::ShowHelp() {
    platform::Current().desktop.ShowHelpText(platform::Current().places.ProgramFolder() / helpFile);
}
