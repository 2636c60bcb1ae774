#include "base/CodePage.h"
#include "base/RunTimeError.h"
#include "files/FileOpr.h"
#include "platform/Platform.h"

namespace FileOpr {

namespace {

namespace fs = std::filesystem;

fs::path InitialFolder() {
    if (!lastFolder.empty())
        return lastFolder;
    const auto& chosen = mWinInit::ProjectInfo.MeasurementFileLocation;
    return chosen.empty() ? mWinInit::DefaultDataFolder() : CodePage::ToPath(chosen);
}

platform::FileDialogRequest Request(DialogMode mode) {
    const std::string mask = "*." + Extension();
    platform::FileDialogRequest request;
    const bool open = mode == DialogMode::open;
    request.kind =
        open ? platform::FileDialogRequest::Kind::open : platform::FileDialogRequest::Kind::save;
    request.title = open ? "Open File" : "Save File As";
    request.fileName = mask;
    request.defaultExtension = Extension();
    request.filter = "Measurement Files (" + mask + ")|" + mask + "|All Files (*.*)|*.*";
    request.initialFolder = InitialFolder();
    return request;
}

bool NameContains(const fs::path& file, fs::path::value_type letter) {
    return file.filename().native().find(letter) != fs::path::string_type::npos;
}

} // namespace

std::string Extension() {
    return mWinInit::HardwareSettings.ChannelCount == 8 ? "8ch" : "4ch";
}

void SetDataFolder() {
    std::error_code failure;
    const auto folder = mWinInit::DefaultDataFolder();
    fs::create_directories(folder, failure);
    if (!failure)
        fs::current_path(folder, failure);
    if (failure)
        throw RunTimeError("Opening the folder " + CodePage::NameOf(folder) + ": Path not found");
}

bool ShowFileDialog(fs::path& fileName, DialogMode mode) {
    const auto request = Request(mode);
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
