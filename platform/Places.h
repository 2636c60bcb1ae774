#pragma once

#include <filesystem>

namespace platform {

/// The folders that the program uses.
class Places {
public:
    virtual ~Places() = default;

    /// Holds the help texts.
    virtual std::filesystem::path ProgramFolder() const = 0;

    /// Holds the folder "Data" in which measurement files are kept until the user chooses
    /// another: the program's own folder where the user may write there, else the user's own data
    /// folder of this program.
    virtual std::filesystem::path DataParentFolder() const = 0;

    /// Holds the settings file and the port links; made when it is first asked for.
    virtual std::filesystem::path ConfigurationFolder() const = 0;

    /// The temporary folder that survives a restart of the machine.
    virtual std::filesystem::path TemporaryFolder() const = 0;
};

} // namespace platform
