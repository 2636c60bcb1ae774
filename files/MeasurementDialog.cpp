#include "files/MeasurementDialog.h"

#include "base/CodePage.h"
#include "files/FileOpr.h"
#include "platform/Platform.h"
#include "settings/mWinInit.h"

namespace FileOpr {

namespace {

namespace fs = std::filesystem;

platform::FileDialogRequest Request(DialogMode mode, fs::path initialFolder) {
    const std::string mask = "*." + Extension();
    platform::FileDialogRequest request;
    const bool open = mode == DialogMode::open;
    request.kind =
        open ? platform::FileDialogRequest::Kind::open : platform::FileDialogRequest::Kind::save;
    request.title = open ? "Open File" : "Save File As";
    request.fileName = mask;
    request.defaultExtension = Extension();
    request.filter = "Measurement Files (" + mask + ")|" + mask + "|All Files (*.*)|*.*";
    request.initialFolder = std::move(initialFolder);
    return request;
}

bool NameContains(const fs::path& file, fs::path::value_type letter) {
    return file.filename().native().find(letter) != fs::path::string_type::npos;
}

} // namespace

fs::path MeasurementDialog::InitialFolder() const {
    if (!lastFolder.empty())
        return lastFolder;
    const auto& chosen = mWinInit::ProjectInfo.MeasurementFileLocation;
    return chosen.empty() ? mWinInit::DefaultDataFolder() : CodePage::ToPath(chosen);
}

bool MeasurementDialog::ShowFileDialog(fs::path& fileName, DialogMode mode) {
    const auto request = Request(mode, InitialFolder());
    fileName = platform::Current().dialogs.ChooseFile(request).value_or(request.fileName);
    if (fileName.has_parent_path())
        lastFolder = fileName.parent_path();
    if (!NameContains(fileName, '.')) {
        fileName += ".";
        fileName += Extension();
    }
    // A cancelled dialog leaves the mask in place; its star is what tells.
    return !NameContains(fileName, '*');
}

} // namespace FileOpr
