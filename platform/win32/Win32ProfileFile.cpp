#include "platform/System.h"

#include <windows.h>

#include <utility>

namespace platform {

namespace {

/// The path in the system's own single-byte text; nothing where that text lacks a character.
std::optional<std::string> Narrow(const std::wstring& path) {
    BOOL lost = FALSE;
    const auto convert = [&](char* text, int size) {
        return ::WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, path.data(),
                                     static_cast<int>(path.size()), text, size, nullptr, &lost);
    };
    std::string text(static_cast<std::size_t>(convert(nullptr, 0)), '\0');
    convert(text.data(), static_cast<int>(text.size()));
    return lost ? std::nullopt : std::optional(text);
}

std::wstring ShortPath(const std::wstring& path) {
    std::wstring text(::GetShortPathNameW(path.c_str(), nullptr, 0), L'\0');
    text.resize(::GetShortPathNameW(path.c_str(), text.data(), static_cast<DWORD>(text.size())));
    return text;
}

/// The name for the single-byte calls. A folder that they cannot name has a short name that they
/// can, where the disk keeps short names.
std::string CallName(const std::filesystem::path& file) {
    if (auto name = Narrow(file.native()))
        return *name;
    const std::filesystem::path folder = ShortPath(file.parent_path().native());
    return Narrow((folder / file.filename()).native()).value_or(file.string());
}

const char* OrNull(const std::optional<std::string>& text) {
    return text ? text->c_str() : nullptr;
}

/// The single-byte calls hand the file's bytes through, whatever the system's own code page is.
class Win32ProfileFile : public ProfileFile {
public:
    explicit Win32ProfileFile(const std::filesystem::path& file)
        : file_(CallName(std::filesystem::absolute(file))) {}

    std::string GetString(const std::string& section, const std::string& key,
                          const std::string& fallback, std::size_t bufferSize) const override {
        std::string value(bufferSize, '\0');
        const DWORD length =
            ::GetPrivateProfileStringA(section.c_str(), key.c_str(), fallback.c_str(), value.data(),
                                       static_cast<DWORD>(value.size()), file_.c_str());
        value.resize(length);
        return value;
    }

    int GetInt(const std::string& section, const std::string& key, int fallback) const override {
        return static_cast<int>(
            ::GetPrivateProfileIntA(section.c_str(), key.c_str(), fallback, file_.c_str()));
    }

    bool Write(const std::string& section, const std::optional<std::string>& key,
               const std::optional<std::string>& value) override {
        return ::WritePrivateProfileStringA(section.c_str(), OrNull(key), OrNull(value),
                                            file_.c_str()) != 0;
    }

private:
    std::string file_; ///< absolute: a bare name would mean the system's own folder
};

} // namespace

std::unique_ptr<ProfileFile> MakeProfileFile(std::filesystem::path file) {
    return std::make_unique<Win32ProfileFile>(file);
}

} // namespace platform
