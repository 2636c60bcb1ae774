#include "screens/Report/ReportTools.h"

#include "platform/Platform.h"
#include "screens/Report/ReportLists.h"
#include "screens/Report/ReportMenus.h"
#include "screens/controls/LineListView.h"

namespace {
constexpr auto helpFile = "ViewHlp.txt";
}

void ReportTools::Run(std::size_t toolItem, const ReportLists& lists) {
    switch (toolItem) {
    case ReportMenus::calculator:
        return platform::Current().desktop.ShowCalculator();
    case ReportMenus::notepad:
        return platform::Current().desktop.ShowNotepad();
    case ReportMenus::copyLines:
        return lists.InFront().CopySelection();
    default:
        lists.InFront().SelectAll();
    }
}

void ReportTools::ShowHelp() {
    platform::Current().desktop.ShowHelpText(platform::Current().places.ProgramFolder() / helpFile);
}
