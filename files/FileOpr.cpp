#include "files/FileOpr.h"

#include "base/CodePage.h"
#include "base/RunTimeError.h"
#include "settings/mWinInit.h"

#include <filesystem>

namespace FileOpr {

namespace {

constexpr std::string_view fourChannels = "4ch";
constexpr std::string_view eightChannels = "8ch";

} // namespace

void SetDataFolder() {
    std::error_code failure;
    const auto folder = mWinInit::DefaultDataFolder();
    std::filesystem::create_directories(folder, failure);
    if (!failure)
        std::filesystem::current_path(folder, failure);
    if (failure)
        throw RunTimeError("Opening the folder " + CodePage::NameOf(folder) + ": Path not found");
}

std::string Extension() {
    return std::string(mWinInit::HardwareSettings.ChannelCount == 8 ? eightChannels : fourChannels);
}

bool BeginsWithExtension(std::string_view name) {
    return name.starts_with(fourChannels) || name.starts_with(eightChannels);
}

} // namespace FileOpr
