#pragma once

#include <filesystem>
#include <memory>
#include <optional>

namespace tools {

/// The platform of a program without a display: the system's files, clock and temporary folder.
/// Nobody answers a question, nothing is shown or printed. Installed while it lives.
class Headless {
public:
    /// `recordings`: where unfinished recordings lie, if not in the system's temporary folder.
    explicit Headless(const std::optional<std::filesystem::path>& recordings);
    ~Headless();
    Headless(const Headless&) = delete;
    Headless& operator=(const Headless&) = delete;

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

} // namespace tools
