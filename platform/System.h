#pragma once

#include "platform/Clock.h"
#include "platform/Digest.h"
#include "platform/FileStore.h"
#include "platform/ProfileFile.h"
#include "platform/UserStore.h"

#include <filesystem>
#include <memory>
#include <string>

namespace platform {

/// The parts of the seam that need no Qt: on Windows the system's own calls, elsewhere the same
/// behaviour over POSIX.
std::unique_ptr<ProfileFile> MakeProfileFile(std::filesystem::path file);
std::unique_ptr<FileStore> MakeFileStore();
std::unique_ptr<Clock> MakeClock();
std::unique_ptr<Digest> MakeSha256();

/// The user's part of the registry. Windows only: elsewhere the store is a file that Qt keeps.
std::unique_ptr<UserStore> MakeUserStore();

/// The device behind COM1..COM16, for example "/dev/ttyUSB0"; a link "ports/comN" in the
/// configuration folder overrides it. Empty where the system has no such device name.
std::string DeviceOfPort(int number, const std::filesystem::path& configurationFolder);

/// The name under which the system knows its user; empty where it does not tell.
std::string UserName();

/// The folder of the user's in which the program, installed for all, keeps what outlives a run.
/// Empty where the system's program keeps nothing there.
std::filesystem::path UserDataFolder();

/// The temporary folder that survives a restart.
std::filesystem::path SystemTemporaryFolder();

/// From now on a write that fails is told by its call alone, and never by a signal that ends the
/// program.
void IgnoreSignalsOfWrites();

} // namespace platform
