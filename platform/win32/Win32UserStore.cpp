#include "platform/System.h"

#include "base/CodePage.h"
#include "base/RunTimeError.h"

#include <windows.h>

namespace platform {

namespace {

std::wstring Wide(const std::string& text) {
    std::wstring wide;
    for (const char c : text)
        wide += static_cast<wchar_t>(CodePage::ToUnicode(static_cast<unsigned char>(c)));
    return wide;
}

std::string Single(const std::wstring& wide) {
    std::string text;
    for (const wchar_t c : wide)
        text += static_cast<char>(CodePage::FromUnicode(c).value_or('?'));
    return text;
}

std::wstring KeyPath(const std::string& application, const std::string& section) {
    return L"Software\\Vantrel\\" + Wide(application) + L"\\" + Wide(section);
}

/// The user's own part of the registry.
class Win32UserStore : public UserStore {
public:
    std::string GetSetting(const std::string& application, const std::string& section,
                           const std::string& key, const std::string& fallback) const override {
        const std::wstring path = KeyPath(application, section);
        const std::wstring name = Wide(key);
        DWORD bytes = 0;
        if (::RegGetValueW(HKEY_CURRENT_USER, path.c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr,
                           nullptr, &bytes) != ERROR_SUCCESS)
            return fallback;
        std::wstring value(bytes / sizeof(wchar_t), L'\0');
        if (::RegGetValueW(HKEY_CURRENT_USER, path.c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr,
                           value.data(), &bytes) != ERROR_SUCCESS)
            return fallback;
        value.resize(value.find(L'\0'));
        return Single(value);
    }

    void SaveSetting(const std::string& application, const std::string& section,
                     const std::string& key, const std::string& value) override {
        const std::wstring path = KeyPath(application, section);
        const std::wstring text = Wide(value);
        const auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
        if (::RegSetKeyValueW(HKEY_CURRENT_USER, path.c_str(), Wide(key).c_str(), REG_SZ,
                              text.c_str(), bytes) != ERROR_SUCCESS)
            throw RunTimeError("Saving " + key + ": the registry cannot be written");
    }
};

} // namespace

std::unique_ptr<UserStore> MakeUserStore() {
    return std::make_unique<Win32UserStore>();
}

} // namespace platform
