#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

namespace platform {

/// Buttons, icon and default button of a message box; a box's style is the sum of one of each.
namespace style {
inline constexpr int okOnly = 0;
inline constexpr int okCancel = 1;
inline constexpr int yesNo = 4;
inline constexpr int noIcon = 0;
inline constexpr int critical = 16;
inline constexpr int question = 32;
inline constexpr int exclamation = 48;
inline constexpr int information = 64;
inline constexpr int defaultButton1 = 0;
inline constexpr int defaultButton2 = 256;
} // namespace style

/// Codes of the buttons that a message box returns.
namespace button {
inline constexpr int ok = 1;
inline constexpr int cancel = 2;
inline constexpr int yes = 6;
inline constexpr int no = 7;
} // namespace button

/// What the open, save and folder dialogs are asked; a folder dialog takes title and initial
/// folder alone.
struct FileDialogRequest {
    enum class Kind { open, save, folder };
    Kind kind = Kind::open;
    std::string title;
    std::string fileName;         ///< name or mask shown first
    std::string defaultExtension; ///< without the point
    std::string filter;           ///< pairs "text|mask" joined by "|"
    std::filesystem::path initialFolder;
    std::size_t* chosenFilter = nullptr; ///< takes the position of the filter in force, from 0
};

/// The boxes that stop the user until they are answered. Texts are Windows-1252.
class Dialogs {
public:
    virtual ~Dialogs() = default;

    /// The desktop's beep; silence where there is none.
    virtual void Beep() = 0;

    /// Shows a modal box and returns a code of `button`.
    virtual int ShowMessage(const std::string& prompt, int style, const std::string& caption) = 0;

    /// Asks for one line of text; Cancel gives the empty text.
    virtual std::string AskText(const std::string& prompt, const std::string& title,
                                const std::string& proposal) = 0;

    /// The chosen file or folder, nothing when the dialog was cancelled.
    virtual std::optional<std::filesystem::path> ChooseFile(const FileDialogRequest& request) = 0;
};

} // namespace platform
