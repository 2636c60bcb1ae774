#include "platform/System.h"

#include <windows.h>

namespace platform {

namespace {

class Win32Clock : public Clock {
public:
    LocalTime Now() const override {
        SYSTEMTIME now{};
        ::GetLocalTime(&now);
        return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond};
    }

    std::chrono::milliseconds Monotonic() const override {
        return std::chrono::milliseconds(static_cast<std::int64_t>(::GetTickCount64()));
    }
};

} // namespace

std::unique_ptr<Clock> MakeClock() {
    return std::make_unique<Win32Clock>();
}

} // namespace platform
