#include "screens/Report/ReportPlace.h"

#include "base/NumberText.h"
#include "platform/Platform.h"
#include "screens/controls/Placement.h"

#include <QWidget>

#include <string>

namespace {
const std::string application = "Report";
const std::string windowSection = "Window";
} // namespace

void ReportPlace::Restore(QWidget& form) {
    const platform::UserStore& store = platform::Current().userStore;
    const std::string left = store.GetSetting(application, windowSection, "Left", "");
    const std::string top = store.GetSetting(application, windowSection, "Top", "");
    if (!left.empty() && !top.empty())
        Mcommon::MoveOntoScreen(form, NumberText::LeadingInteger(left),
                                NumberText::LeadingInteger(top));
}

void ReportPlace::Remember(const QWidget& form) {
    platform::UserStore& store = platform::Current().userStore;
    store.SaveSetting(application, windowSection, "Left", std::to_string(form.pos().x()));
    store.SaveSetting(application, windowSection, "Top", std::to_string(form.pos().y()));
}
