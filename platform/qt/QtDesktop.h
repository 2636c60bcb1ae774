#pragma once

#include "platform/Desktop.h"

namespace platform {

/// The user's desktop through Qt, with the text editor and calculator that are installed on it.
class QtDesktop : public Desktop {
public:
    void SetMousePointer(MousePointer pointer) override;
    MousePointer GetMousePointer() const override { return pointer_; }
    void ProcessPendingEvents() override;
    void ShowHelpText(const std::filesystem::path& helpFile) override;
    void ShowCalculator() override;
    void ShowNotepad() override;
    bool WantsLessMotion() const override;
    std::unique_ptr<WakeLock> KeepAwake(const std::string& reason) override;

private:
    MousePointer pointer_ = MousePointer::normal;
};

} // namespace platform
