#pragma once

#include "platform/posix/TextEncoding.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::posix {

/// The text of a private-profile file: finding values and changing single lines. Names compare
/// without regard to the case of ASCII letters, blanks around names and values do not count, the
/// first of two equal sections or keys counts. What stands before the first section line belongs
/// to a section of the empty name. A line without "=" is a key without a value.
class ProfileText {
public:
    /// The file's bytes: Windows-1252, or Unicode where a byte order mark says so.
    explicit ProfileText(std::string_view bytes);

    /// The file's bytes after the changes.
    std::string Bytes() const { return Encoded(text_, encoding_); }

    /// True when a file of these bytes holds what this text does.
    bool Holds(std::string_view bytes) const;

    /// The value as Windows-1252, as it stands in the file without the blanks around it; nothing
    /// where section, key or value is missing.
    std::optional<std::string> Value(std::string_view section, std::string_view key) const;

    /// Gives the key's line this value, or adds the line behind the last key of its section, or
    /// adds both at the end of the file. False when the file already says so.
    bool Set(std::string_view section, std::string_view key, std::string_view value);

    /// Removes the key's line; false where there is none.
    bool Remove(std::string_view section, std::string_view key);

    /// Removes the first section of the name, up to the next section line; false where there is
    /// none.
    bool RemoveSection(std::string_view section);

private:
    /// A line that is not blank, taken apart.
    struct Entry {
        std::size_t begin = 0;
        std::size_t end = 0; ///< behind its line end
        std::string_view name;
        std::optional<std::string_view> value;
    };
    class Entries;
    struct Header {
        std::size_t begin = 0;  ///< of the section line; 0 for what stands before the first one
        std::uint32_t hash = 0; ///< of the name in upper case
    };
    struct Section {
        std::size_t begin = 0;
        std::size_t body = 0;
        std::size_t end = 0;
    };
    void IndexSections();
    Section SectionAt(std::size_t index) const;
    std::string_view NameAt(std::size_t index) const;
    std::optional<std::size_t> Find(std::string_view name, std::size_t from = 0) const;
    std::optional<Entry> Find(const Section& section, std::string_view name) const;
    std::size_t BehindLastKey(const Section& section) const;
    void Replace(std::size_t begin, std::size_t end, const std::string& lines);
    void MoveHeaders(std::size_t behind, std::size_t removed, std::size_t added);

    TextEncoding encoding_;
    std::string text_;
    std::vector<Header> headers_; ///< in the file's order; the first is that of the empty name
};

} // namespace platform::posix
