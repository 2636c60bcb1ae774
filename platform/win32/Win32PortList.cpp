#include "platform/PortList.h"

#include <array>
#include <optional>

// clang-format off
#include <windows.h> // before those that build on it
#include <devguid.h>
#include <setupapi.h>
// clang-format on

namespace platform {

namespace {

/// The devices of the class "Ports", as the system's device manager lists them.
class PortDevices {
public:
    PortDevices()
        : set_(::SetupDiGetClassDevsW(&GUID_DEVCLASS_PORTS, nullptr, nullptr, DIGCF_PRESENT)) {}
    ~PortDevices() {
        if (set_ != INVALID_HANDLE_VALUE)
            ::SetupDiDestroyDeviceInfoList(set_);
    }
    PortDevices(const PortDevices&) = delete;
    PortDevices& operator=(const PortDevices&) = delete;

    /// The device of a port's name, "COM3".
    std::optional<SP_DEVINFO_DATA> Find(const std::wstring& portName) const {
        SP_DEVINFO_DATA device{};
        device.cbSize = sizeof device;
        for (DWORD i = 0; ::SetupDiEnumDeviceInfo(set_, i, &device); ++i)
            if (PortNameOf(device) == portName)
                return device;
        return std::nullopt;
    }

    std::wstring Property(SP_DEVINFO_DATA device, DWORD property) const {
        std::array<wchar_t, 256> text{};
        if (!::SetupDiGetDeviceRegistryPropertyW(set_, &device, property, nullptr,
                                                 reinterpret_cast<BYTE*>(text.data()),
                                                 sizeof text - sizeof(wchar_t), nullptr))
            return {};
        return text.data();
    }

private:
    std::wstring PortNameOf(SP_DEVINFO_DATA device) const {
        const HKEY key =
            ::SetupDiOpenDevRegKey(set_, &device, DICS_FLAG_GLOBAL, 0, DIREG_DEV, KEY_QUERY_VALUE);
        if (key == INVALID_HANDLE_VALUE)
            return {};
        std::array<wchar_t, 32> name{};
        DWORD bytes = sizeof name;
        const LSTATUS read =
            ::RegGetValueW(key, nullptr, L"PortName", RRF_RT_REG_SZ, nullptr, name.data(), &bytes);
        ::RegCloseKey(key);
        return read == ERROR_SUCCESS ? std::wstring(name.data()) : std::wstring();
    }

    HDEVINFO set_;
};

std::wstring NameOf(int number) {
    return L"COM" + std::to_wstring(number);
}

} // namespace

std::wstring FriendlyNameOfPort(int number) {
    const PortDevices devices;
    const auto device = devices.Find(NameOf(number));
    if (!device)
        return {};
    std::wstring name = devices.Property(*device, SPDRP_FRIENDLYNAME);
    // The number stands before it already.
    if (const auto suffix = name.rfind(L" (" + NameOf(number) + L")"); suffix != std::wstring::npos)
        name.erase(suffix);
    const std::wstring maker = devices.Property(*device, SPDRP_MFG);
    return name.empty() || maker.empty() ? name : name + L" (" + maker + L")";
}

bool IsPortThere(int number) {
    std::array<wchar_t, 1024> target{};
    return ::QueryDosDeviceW(NameOf(number).c_str(), target.data(),
                             static_cast<DWORD>(target.size())) != 0;
}

} // namespace platform
