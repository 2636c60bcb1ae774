#pragma once

#include <filesystem>
#include <string>

namespace simulator {

/// The configuration folder in which the program looks for its port links. Throws RunTimeError
/// where the user has no home folder.
std::filesystem::path ConfigurationFolder();

/// The link that stands for a COM port of the program: "ports/comN" in that folder.
std::filesystem::path LinkOfPort(int number);

/// A symbolic link to a device, as long as the object lives. A link that a former instrument left
/// behind (one to a pseudo-terminal, or to nothing) is replaced; anything else that has the name
/// is left alone and RunTimeError thrown.
class PortLink {
public:
    PortLink(std::filesystem::path link, const std::string& device);
    ~PortLink();
    PortLink(const PortLink&) = delete;
    PortLink& operator=(const PortLink&) = delete;

private:
    std::filesystem::path link_;
    std::filesystem::path device_;
};

} // namespace simulator
