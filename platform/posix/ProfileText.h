#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::posix {

/// The text of a private-profile file: finding values and changing single lines. Section and key
/// names compare without regard to case, blanks around names and values do not count, the first of
/// two equal sections or keys counts. Whatever is neither a section line nor a line with "=", and
/// what stands before the first section, is skipped on reading and kept on changing.
class ProfileText {
public:
    explicit ProfileText(std::string bytes);

    const std::string& Bytes() const { return bytes_; }

    /// The value as it stands in the file, without the blanks around it; nothing where section or
    /// key is missing. Valid until the next change.
    std::optional<std::string_view> Value(std::string_view section, std::string_view key) const;

    /// Replaces the key's line, or adds it behind the last key of its section, or adds both at the
    /// end of the file.
    void Set(std::string_view section, std::string_view key, std::string_view value);

    /// Removes the key's line; no change where it is missing.
    void Remove(std::string_view section, std::string_view key);

    /// Removes the first section of the name, up to the next section line.
    void RemoveSection(std::string_view section);

private:
    /// Where a section's header line stands and where its lines begin and end.
    struct Section {
        std::size_t header = 0;
        std::size_t body = 0;
        std::size_t end = 0;
    };
    struct Entry {
        std::size_t begin = 0; ///< of the line
        std::size_t end = 0;   ///< behind its line end
        std::string_view name;
        std::string_view value;
    };

    void IndexSections();
    std::optional<Section> Find(std::string_view section) const;
    std::optional<Entry> Find(const Section& section, std::string_view key) const;
    std::optional<Entry> NextEntry(std::size_t& position, std::size_t end) const;
    std::size_t BehindLastEntry(const Section& section) const;
    void Replace(std::size_t begin, std::size_t end, const std::string& lines);

    std::string bytes_;
    std::vector<std::size_t> headers_; ///< where the section lines begin, in the file's order
};

} // namespace platform::posix
