// Any bytes as the name of a file, as it comes from a dialog, a command line or a file manager, and
// as text that is pasted: told without harm, and what can be told exactly comes back as it was.

#include "NullPlatform.h"

#include "base/CodePage.h"
#include "base/Utf8.h"
#include "platform/Platform.h"
#include "report/ForeignText.h"
#include "report/RecentFiles.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace {

const fuzz::NullPlatform platform;

void NameFile(std::string_view bytes) {
    // A name of the system's ends at its first zero.
    const std::filesystem::path path(std::string(bytes.substr(0, bytes.find('\0'))));
    const std::string told = CodePage::NameOf(path);
    fuzz::Require(told.empty() == path.empty());
    if (const auto exact = CodePage::FromPath(path)) {
        fuzz::Require(CodePage::ToPath(*exact) == path);
        fuzz::Require(*exact == told);
    }
    RecentFiles::Add(path);
    const auto recent = RecentFiles::List();
    fuzz::Require(recent.size() <= RecentFiles::count);
    fuzz::Require(std::ranges::count(recent, path) <= 1);
    RecentFiles::Remove(path);
    fuzz::Require(std::ranges::count(RecentFiles::List(), path) == 0);
}

void Paste(std::string_view bytes) {
    if (const auto text = CodePage::FromUtf8(bytes))
        fuzz::Require(CodePage::ToUtf8(*text) == bytes);
    fuzz::Require(CodePage::FromUtf8(CodePage::ToUtf8(bytes)) == bytes);
    fuzz::Require(CodePage::Legible(bytes).size() <= bytes.size());
    ForeignText::IsUtf8(bytes, true);
    for (std::string_view rest = bytes; !rest.empty();) {
        const auto character = Utf8::First(rest);
        fuzz::Require(character.length <= rest.size());
        rest.remove_prefix(std::max<std::size_t>(character.length, 1));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    NameFile(fuzz::Text(data, size));
    Paste(fuzz::Text(data, size));
    return 0;
}
