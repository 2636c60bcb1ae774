#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace platform {

/// The settings file "Vantrel.ini" with the behaviour of the private-profile calls: section and
/// key names without regard to case, the first of two equal ones counts. Texts are Windows-1252.
class ProfileFile {
public:
    virtual ~ProfileFile() = default;

    /// The value of a key, or `fallback` (without its trailing blanks) where section or key is
    /// missing; without one pair of equal quotes around it; cut at `bufferSize` - 1 characters.
    virtual std::string GetString(const std::string& section, const std::string& key,
                                  const std::string& fallback, std::size_t bufferSize) const = 0;

    /// The value of a key as an integer: leading digits count (decimal ones, or others behind 0x,
    /// 0o or 0b), anything else gives 0; a missing key or an empty value gives `fallback`.
    virtual int GetInt(const std::string& section, const std::string& key, int fallback) const = 0;

    /// Writes one key. No value deletes the key, no key deletes the section. False when the file
    /// could not be written; it is then as it was.
    virtual bool Write(const std::string& section, const std::optional<std::string>& key,
                       const std::optional<std::string>& value) = 0;
};

} // namespace platform
