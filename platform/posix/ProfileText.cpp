#include "platform/posix/ProfileText.h"

#include "app/CodePage.h"

#include <algorithm>
#include <array>
#include <utility>

namespace platform::posix {

namespace {

constexpr std::string_view lineEnd = "\r\n";

/// The white space that the private-profile calls drop at both ends of names and values; 26 is the
/// end-of-file mark of old editors.
bool IsBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r') || c == '\x1A' || c == '\xA0';
}

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

/// Upper case by the code page: besides the letters of ASCII the accented ones.
char Upper(char c) {
    const auto byte = static_cast<unsigned char>(c);
    if (c >= 'a' && c <= 'z')
        return static_cast<char>(c - 'a' + 'A');
    switch (byte) {
    case 0x9A: // s, z with caron, oe
    case 0x9C:
    case 0x9E:
        return static_cast<char>(byte - 0x10);
    case 0xFF: // y with diaeresis
        return '\x9F';
    case 0xF7: // the division sign
        return c;
    default:
        return byte >= 0xE0 ? static_cast<char>(byte - 0x20) : c;
    }
}

bool SameName(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(),
                                              [](char x, char y) { return Upper(x) == Upper(y); });
}

/// Behind the line that begins at `begin`, its line end included.
std::size_t LineEnd(std::string_view bytes, std::size_t begin) {
    const std::size_t feed = bytes.find('\n', begin);
    return feed == std::string_view::npos ? bytes.size() : feed + 1;
}

std::string_view LineText(std::string_view bytes, std::size_t begin, std::size_t end) {
    return Trimmed(bytes.substr(begin, end - begin));
}

/// The name in a section line; nothing for another line.
std::optional<std::string_view> SectionName(std::string_view line) {
    if (line.empty() || line.front() != '[')
        return std::nullopt;
    const std::size_t close = line.rfind(']');
    if (close == std::string_view::npos)
        return std::nullopt;
    return Trimmed(line.substr(1, close - 1));
}

} // namespace

ProfileText::ProfileText(std::string bytes) : bytes_(std::move(bytes)) {
    IndexSections();
}

void ProfileText::IndexSections() {
    headers_.clear();
    const std::string_view bytes = bytes_;
    for (std::size_t begin = 0; begin < bytes.size();) {
        const std::size_t end = LineEnd(bytes, begin);
        if (SectionName(LineText(bytes, begin, end)))
            headers_.push_back(begin);
        begin = end;
    }
}

std::optional<ProfileText::Section> ProfileText::Find(std::string_view section) const {
    const std::string_view bytes = bytes_;
    const std::string_view asked = Trimmed(section);
    for (std::size_t i = 0; i < headers_.size(); ++i) {
        const std::size_t body = LineEnd(bytes, headers_[i]);
        if (SameName(SectionName(LineText(bytes, headers_[i], body)).value_or(""), asked))
            return Section{headers_[i], body,
                           i + 1 < headers_.size() ? headers_[i + 1] : bytes.size()};
    }
    return std::nullopt;
}

/// The next line with "=" that is no comment; `position` moves behind it.
std::optional<ProfileText::Entry> ProfileText::NextEntry(std::size_t& position,
                                                         std::size_t end) const {
    const std::string_view bytes = bytes_;
    while (position < end) {
        const std::size_t begin = position;
        position = LineEnd(bytes, begin);
        const std::string_view line = LineText(bytes, begin, position);
        if (line.empty() || line.front() == ';')
            continue;
        const std::size_t equals = line.find('=');
        if (equals != std::string_view::npos)
            return Entry{begin, position, Trimmed(line.substr(0, equals)),
                         Trimmed(line.substr(equals + 1))};
    }
    return std::nullopt;
}

std::optional<ProfileText::Entry> ProfileText::Find(const Section& section,
                                                    std::string_view key) const {
    const std::string_view asked = Trimmed(key);
    std::size_t position = section.body;
    while (const auto entry = NextEntry(position, section.end))
        if (SameName(entry->name, asked))
            return entry;
    return std::nullopt;
}

std::size_t ProfileText::BehindLastEntry(const Section& section) const {
    std::size_t behind = section.body;
    std::size_t position = section.body;
    while (const auto entry = NextEntry(position, section.end))
        behind = entry->end;
    return behind;
}

std::optional<std::string_view> ProfileText::Value(std::string_view section,
                                                   std::string_view key) const {
    const auto found = Find(section);
    const auto entry = found ? Find(*found, key) : std::nullopt;
    if (!entry)
        return std::nullopt;
    return entry->value;
}

void ProfileText::Set(std::string_view section, std::string_view key, std::string_view value) {
    std::string line(Trimmed(key));
    line += '=';
    line += value;
    line += lineEnd;
    const auto found = Find(section);
    if (!found) {
        std::string header = "[";
        header += Trimmed(section);
        header += ']';
        header += lineEnd;
        Replace(bytes_.size(), bytes_.size(), header + line);
    } else if (const auto entry = Find(*found, key)) {
        Replace(entry->begin, entry->end, line);
    } else {
        const std::size_t behind = BehindLastEntry(*found);
        Replace(behind, behind, line);
    }
}

void ProfileText::Remove(std::string_view section, std::string_view key) {
    const auto found = Find(section);
    if (const auto entry = found ? Find(*found, key) : std::nullopt)
        Replace(entry->begin, entry->end, {});
}

void ProfileText::RemoveSection(std::string_view section) {
    if (const auto found = Find(section))
        Replace(found->header, found->end, {});
}

void ProfileText::Replace(std::size_t begin, std::size_t end, const std::string& lines) {
    const bool unfinished = begin > 0 && bytes_[begin - 1] != '\n' && !lines.empty();
    bytes_.replace(begin, end - begin, unfinished ? std::string(lineEnd) + lines : lines);
    IndexSections();
}

} // namespace platform::posix
