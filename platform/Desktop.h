#pragma once

#include <filesystem>
#include <memory>
#include <string>

namespace platform {

/// Codes of the mouse pointer of the whole screen.
enum class MousePointer { normal = 0, hourglass = 11 };

/// Keeps the system from going to sleep while it lives.
class WakeLock {
public:
    virtual ~WakeLock() = default;
};

/// Mouse pointer, pending events, wishes and other programs of the user's desktop.
class Desktop {
public:
    virtual ~Desktop() = default;

    virtual void SetMousePointer(MousePointer pointer) = 0;
    virtual MousePointer GetMousePointer() const = 0;

    /// Runs the user-interface events that wait at this moment, then returns.
    virtual void ProcessPendingEvents() = 0;

    /// Shows a help text in the plain-text editor, or in a window of the program where none is
    /// installed. Throws RunTimeError when the file cannot be read.
    virtual void ShowHelpText(const std::filesystem::path& helpFile) = 0;

    /// Brings a running calculator to the front or starts one. Throws RunTimeError when none is
    /// installed.
    virtual void ShowCalculator() = 0;

    /// Brings a running plain-text editor to the front or starts one. Throws RunTimeError when
    /// none is installed.
    virtual void ShowNotepad() = 0;

    /// The user has asked for less motion on the screen.
    virtual bool WantsLessMotion() const = 0;

    /// The system does not go to sleep by itself while the lock lives; its screen may. Nothing
    /// where the system offers no such service. `reason` is what it tells its user.
    virtual std::unique_ptr<WakeLock> KeepAwake(const std::string& reason) = 0;
};

} // namespace platform
