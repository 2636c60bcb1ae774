#include "platform/posix/ProfileText.h"

#include <algorithm>

namespace platform::posix {

namespace {

constexpr std::string_view lineEnd = "\r\n";

/// What the private-profile calls drop at both ends of names and values; 26 is the end-of-file
/// mark of old editors.
bool IsBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r') || c == '\x1A';
}

std::string_view WithoutLeadingBlanks(std::string_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    return text;
}

std::string_view Trimmed(std::string_view text) {
    text = WithoutLeadingBlanks(text);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

/// The part that the calls, which end every text at a NUL, give back.
std::string_view UpToNul(std::string_view text) {
    return text.substr(0, text.find('\0'));
}

char Upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool SameName(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(),
                                              [](char x, char y) { return Upper(x) == Upper(y); });
}

/// FNV-1a of the name in upper case: equal names have equal hashes.
std::uint32_t HashOf(std::string_view name) {
    std::uint32_t hash = 2166136261U;
    for (const char c : name)
        hash = (hash ^ static_cast<unsigned char>(Upper(c))) * 16777619U;
    return hash;
}

/// Behind the line that begins at `begin`, its line end included: CR, LF, CR LF, or the CR CR LF
/// of a file that was converted twice.
std::size_t LineEnd(std::string_view text, std::size_t begin) {
    while (begin < text.size() && text[begin] != '\r' && text[begin] != '\n')
        ++begin;
    for (const std::string_view end : {"\r\r\n", "\r\n"})
        if (text.substr(begin, end.size()) == end)
            return begin + end.size();
    return std::min(begin + 1, text.size());
}

std::string_view LineText(std::string_view text, std::size_t begin, std::size_t end) {
    return Trimmed(text.substr(begin, end - begin));
}

/// The name in a section line; nothing for another line. Text behind the last bracket is ignored.
std::optional<std::string_view> SectionName(std::string_view line) {
    if (line.empty() || line.front() != '[')
        return std::nullopt;
    const std::size_t close = line.rfind(']');
    if (close == std::string_view::npos)
        return std::nullopt;
    return UpToNul(Trimmed(line.substr(1, close - 1)));
}

bool IsComment(std::string_view line) {
    return !line.empty() && line.front() == ';';
}

} // namespace

ProfileText::ProfileText(std::string_view bytes)
    : encoding_(EncodingOf(bytes)), text_(Decoded(bytes, encoding_)) {
    IndexSections();
}

void ProfileText::IndexSections() {
    headers_.assign(1, {0, 0, HashOf({})});
    const std::string_view text = text_;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = LineEnd(text, begin);
        if (const auto name = SectionName(LineText(text, begin, end)))
            headers_.push_back({begin, end, HashOf(*name)});
        begin = end;
    }
}

ProfileText::Section ProfileText::SectionAt(std::size_t index) const {
    const std::size_t end = index + 1 < headers_.size() ? headers_[index + 1].begin : text_.size();
    return {headers_[index].begin, headers_[index].body, end};
}

std::string_view ProfileText::NameAt(std::size_t index) const {
    const Header& header = headers_[index];
    return SectionName(LineText(text_, header.begin, header.body)).value_or("");
}

/// Index of the first section of the name, at or behind `from`.
std::optional<std::size_t> ProfileText::Find(std::string_view name, std::size_t from) const {
    const std::uint32_t hash = HashOf(name);
    for (std::size_t i = from; i < headers_.size(); ++i)
        if (headers_[i].hash == hash && SameName(NameAt(i), name))
            return i;
    return std::nullopt;
}

/// The next line that is not blank; `position` moves behind it.
std::optional<ProfileText::Entry> ProfileText::NextEntry(std::size_t& position,
                                                         std::size_t end) const {
    const std::string_view text = text_;
    while (position < end) {
        const std::size_t begin = position;
        position = LineEnd(text, begin);
        const std::string_view line = LineText(text, begin, position);
        if (line.empty())
            continue;
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos)
            return Entry{begin, position, UpToNul(line), std::nullopt};
        return Entry{begin, position, UpToNul(Trimmed(line.substr(0, equals))),
                     UpToNul(Trimmed(line.substr(equals + 1)))};
    }
    return std::nullopt;
}

std::optional<ProfileText::Entry> ProfileText::Find(const Section& section,
                                                    std::string_view name) const {
    std::size_t position = section.body;
    while (const auto entry = NextEntry(position, section.end))
        if (SameName(entry->name, name))
            return entry;
    return std::nullopt;
}

/// Where a new key goes: before the blank lines and comments that lead to the next section.
std::size_t ProfileText::BehindLastKey(const Section& section) const {
    std::size_t behind = section.body;
    std::size_t position = section.body;
    while (const auto entry = NextEntry(position, section.end))
        if (!IsComment(entry->name))
            behind = entry->end;
    return behind;
}

std::optional<std::string> ProfileText::Value(std::string_view section,
                                              std::string_view key) const {
    const auto index = Find(Trimmed(FromCodePage(section, encoding_)));
    if (!index)
        return std::nullopt;
    const auto entry = Find(SectionAt(*index), Trimmed(FromCodePage(key, encoding_)));
    if (!entry || !entry->value)
        return std::nullopt;
    return ToCodePage(*entry->value, encoding_);
}

bool ProfileText::Set(std::string_view section, std::string_view key, std::string_view value) {
    const std::string sectionText = FromCodePage(section, encoding_);
    const std::string keyText = FromCodePage(key, encoding_);
    const std::string newValue(WithoutLeadingBlanks(FromCodePage(value, encoding_)));
    const auto index = Find(Trimmed(sectionText));
    if (!index) {
        std::string header = "[";
        header.append(WithoutLeadingBlanks(sectionText)).append("]").append(lineEnd);
        header.append(WithoutLeadingBlanks(keyText)).append("=").append(newValue).append(lineEnd);
        Replace(text_.size(), text_.size(), header);
        return true;
    }
    const Section found = SectionAt(*index);
    const auto entry = Find(found, Trimmed(keyText));
    if (entry && entry->value == newValue)
        return false;
    std::string line(entry ? entry->name : WithoutLeadingBlanks(keyText));
    line.append("=").append(newValue).append(lineEnd);
    const std::size_t place = entry ? entry->begin : BehindLastKey(found);
    Replace(place, entry ? entry->end : place, line);
    return true;
}

bool ProfileText::Remove(std::string_view section, std::string_view key) {
    const std::string sectionText = FromCodePage(section, encoding_);
    const std::string keyText = FromCodePage(key, encoding_);
    // Unlike the others this call looks through all sections of the name.
    for (auto index = Find(sectionText); index; index = Find(sectionText, *index + 1)) {
        if (const auto entry = Find(SectionAt(*index), keyText)) {
            Replace(entry->begin, entry->end, {});
            return true;
        }
    }
    return false;
}

bool ProfileText::RemoveSection(std::string_view section) {
    const auto index = Find(FromCodePage(section, encoding_));
    if (!index)
        return false;
    const Section found = SectionAt(*index);
    Replace(found.begin, found.end, {});
    return found.begin != found.end;
}

void ProfileText::Replace(std::size_t begin, std::size_t end, const std::string& lines) {
    const auto endsLine = [](char c) { return c == '\r' || c == '\n'; };
    const bool unfinished = begin > 0 && !endsLine(text_[begin - 1]) && !lines.empty();
    text_.replace(begin, end - begin, unfinished ? std::string(lineEnd) + lines : lines);
    IndexSections();
}

} // namespace platform::posix
