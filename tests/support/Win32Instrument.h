#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// A running `vantrel-instrument`, a program of the system below Wine, at the far end of a COM
/// port. Two variables of the environment tell where: VANTREL_INSTRUMENT, the program, and
/// VANTREL_SERIAL_LINK, the link that Wine takes for COM `portNumber`; both are paths of the system
/// below. Every failure, and every wait of more than ten seconds, is a std::runtime_error.
class Win32Instrument {
public:
    static constexpr int portNumber = 3;

    /// False on a system that has no such port; there is nothing to test there.
    static bool IsThere();

    explicit Win32Instrument(const std::vector<std::string>& arguments = {});
    ~Win32Instrument();
    Win32Instrument(const Win32Instrument&) = delete;
    Win32Instrument& operator=(const Win32Instrument&) = delete;

    /// Carries out a command and returns when it has answered.
    void Command(const std::string& line) const;

private:
    std::string RunBelow(const std::string& arguments, const std::string& awaited) const;

    std::filesystem::path folder_; ///< of what it says
};
