#include "report/RecentFiles.h"

#include "base/CodePage.h"
#include "platform/Platform.h"

#include <algorithm>
#include <string>

namespace RecentFiles {

namespace {

const std::string application = "Report";
const std::string section = "Recent";

std::string Key(std::size_t index) {
    return "File" + std::to_string(index + 1);
}

void Save(const std::vector<std::filesystem::path>& files) {
    for (std::size_t i = 0; i < count; ++i)
        platform::Current().userStore.SaveSetting(
            application, section, Key(i),
            i < files.size() ? CodePage::FromPath(files[i]).value_or("") : std::string());
}

} // namespace

std::vector<std::filesystem::path> List() {
    std::vector<std::filesystem::path> files;
    for (std::size_t i = 0; i < count; ++i) {
        const auto name =
            platform::Current().userStore.GetSetting(application, section, Key(i), "");
        if (!name.empty())
            files.push_back(CodePage::ToPath(name));
    }
    return files;
}

void Add(const std::filesystem::path& file) {
    if (!CodePage::FromPath(file))
        return;
    auto files = List();
    std::erase(files, file);
    files.insert(files.begin(), file);
    files.resize(std::min(files.size(), count));
    Save(files);
}

void Remove(const std::filesystem::path& file) {
    auto files = List();
    if (std::erase(files, file) > 0)
        Save(files);
}

} // namespace RecentFiles
