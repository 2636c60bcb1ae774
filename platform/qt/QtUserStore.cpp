#include "platform/qt/QtUserStore.h"

#include "base/RunTimeError.h"
#include "platform/qt/Text.h"

#include <QSettings>

namespace platform {

namespace {
constexpr const char* organisation = "Vantrel";

QString KeyOf(const std::string& section, const std::string& key) {
    return Text::ToQt(section) + "/" + Text::ToQt(key);
}
} // namespace

std::string QtUserStore::GetSetting(const std::string& application, const std::string& section,
                                    const std::string& key, const std::string& fallback) const {
    const QSettings settings(organisation, Text::ToQt(application));
    return Text::FromQt(settings.value(KeyOf(section, key), Text::ToQt(fallback)).toString());
}

void QtUserStore::SaveSetting(const std::string& application, const std::string& section,
                              const std::string& key, const std::string& value) {
    QSettings settings(organisation, Text::ToQt(application));
    settings.setValue(KeyOf(section, key), Text::ToQt(value));
    settings.sync();
    if (settings.status() != QSettings::NoError)
        throw RunTimeError("Saving " + key + ": " + Text::ForMessage(settings.fileName()) +
                           " cannot be written");
}

} // namespace platform
