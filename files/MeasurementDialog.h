#pragma once

#include <filesystem>

namespace FileOpr {

enum class DialogMode { save = 0, open = 1 };

/// The dialog that asks for a measurement file.
class MeasurementDialog {
public:
    /// Folder of the last file chosen; the next dialog starts there. While it is empty, dialogs
    /// start in the project's folder for measurement files.
    std::filesystem::path lastFolder;

    /// Asks for a file, starting in lastFolder; false, and the name is the mask, when cancelled. A
    /// name without "." gets the extension of the channel count.
    bool ShowFileDialog(std::filesystem::path& fileName, DialogMode mode);

private:
    std::filesystem::path InitialFolder() const;
};

} // namespace FileOpr
