#include "history/Notes.h"

#include "base/CodePage.h"
#include "history/CalibrationEntry.h"
#include "history/Log.h"
#include "platform/Platform.h"
#include "platform/System.h"
#include "settings/mWinInit.h"

#include <algorithm>

namespace History {

namespace {

/// The prompt of the setup page is nobody's name.
std::string Analyst() {
    const std::string& name = mWinInit::ProjectInfo.Experimentator;
    return name == mWinInit::analystPlaceholder ? std::string() : name;
}

std::string Quoted(const std::string& value) {
    return value.empty() ? "nothing" : '"' + value + '"';
}

Entry EntryOf(const Setting& before, const Setting& now) {
    Entry entry;
    entry.kind = Kind::setting;
    entry.channel = now.channel;
    const std::string name =
        now.channel ? "Channel " + std::to_string(*now.channel + 1) + ", " + now.name : now.name;
    entry.text = name + ": " + Quoted(now.value) + ", was " + Quoted(before.value);
    entry.data = DataOf({{"name", now.name}, {"old", before.value}, {"new", now.value}});
    return entry;
}

template <class Work>
void WithLog(Work work) noexcept {
    Log* log = Log::Current();
    if (log == nullptr)
        return;
    try {
        work(*log);
    } catch (const std::exception&) {
        return; // what cannot be put into words must not hinder what it tells of
    }
}

} // namespace

bool IsKept() {
    return Log::Current() != nullptr && CanBeKept();
}

std::string FileText(const std::filesystem::path& file) {
    if (file.empty())
        return {};
    std::error_code unknown;
    const auto whole = std::filesystem::absolute(file, unknown);
    return CodePage::NameOf((unknown ? file : whole).lexically_normal());
}

void Note(Entry entry) {
    WithLog([&entry](Log& log) {
        entry.at = platform::Current().clock.Now();
        entry.analyst = Analyst();
        entry.user = platform::UserName();
        log.Add(entry);
    });
}

void Note(Kind kind, const std::string& text, const std::filesystem::path& file) {
    Entry entry;
    entry.kind = kind;
    entry.text = text;
    entry.file = FileText(file);
    Note(std::move(entry));
}

void NoteSettings() {
    WithLog([](Log& log) {
        const Settings before = std::exchange(log.known, SettingsInForce());
        const Settings now = log.known;
        for (const Setting& setting : now) {
            const auto known = std::ranges::find_if(before, [&setting](const Setting& other) {
                return other.name == setting.name && other.channel == setting.channel;
            });
            if (known != before.end() && known->value != setting.value)
                Note(EntryOf(*known, setting));
        }
    });
}

void KnowSettings() {
    WithLog([](Log& log) { log.known = SettingsInForce(); });
}

void NoteCalibration(std::size_t channel, const std::string& temperature_celsius) {
    WithLog([&](Log&) { Note(EntryOfCalibration(channel, temperature_celsius)); });
}

} // namespace History
