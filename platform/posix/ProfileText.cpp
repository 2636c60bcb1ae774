#include "platform/posix/ProfileText.h"

#include "base/Letters.h"

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
    return Letters::WithoutLeading(text, IsBlank);
}

std::string_view Trimmed(std::string_view text) {
    return Letters::Trimmed(text, IsBlank);
}

/// The part that the calls, which end every text at a NUL, give back.
std::string_view UpToNul(std::string_view text) {
    return text.substr(0, text.find('\0'));
}

/// FNV-1a of the name in lower case: equal names have equal hashes.
std::uint32_t HashOf(std::string_view name) {
    std::uint32_t hash = 2166136261U;
    for (const char c : name)
        hash = (hash ^ static_cast<unsigned char>(Letters::Lower(c))) * 16777619U;
    return hash;
}

/// Goes through the lines of a part of a text. A line ends with CR, LF, CR LF, or the CR CR LF of a
/// file that was converted twice.
class Lines {
public:
    Lines(std::string_view text, std::size_t begin, std::size_t end)
        : text_(text.substr(0, end)), next_(begin), feed_(begin) {
        FindFeed();
    }

    /// Moves to the next line; false behind the last one.
    bool Next() {
        begin_ = next_;
        if (begin_ >= text_.size())
            return false;
        if (feed_ < begin_)
            FindFeed();
        const std::string_view line = text_.substr(begin_, feed_ - begin_);
        const std::size_t cr = line.find('\r');
        if (cr == std::string_view::npos || cr + 1 == line.size() ||
            (cr + 2 == line.size() && line.back() == '\r'))
            next_ = std::min(feed_ + 1, text_.size());
        else
            next_ = begin_ + cr + 1;
        return true;
    }

    std::size_t Begin() const { return begin_; }
    std::size_t End() const { return next_; }
    std::string_view Text() const { return Trimmed(text_.substr(begin_, next_ - begin_)); }

private:
    /// Looked for once, not once a line: a file of carriage returns alone has no line feed at all.
    void FindFeed() { feed_ = std::min(text_.find('\n', next_), text_.size()); }

    std::string_view text_;
    std::size_t begin_ = 0;
    std::size_t next_;
    std::size_t feed_; ///< the next line feed at or behind `begin_`
};

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

bool ProfileText::Holds(std::string_view bytes) const {
    return EncodingOf(bytes) == encoding_ &&
           (encoding_ == TextEncoding::codePage ? bytes == text_
                                                : Decoded(bytes, encoding_) == text_);
}

void ProfileText::IndexSections() {
    headers_.assign(1, {0, HashOf({})});
    for (Lines lines(text_, 0, text_.size()); lines.Next();)
        if (const auto name = SectionName(lines.Text()))
            headers_.push_back({lines.Begin(), HashOf(*name)});
}

/// The section of headers_[index]. Its body begins behind its section line.
ProfileText::Section ProfileText::SectionAt(std::size_t index) const {
    const std::size_t begin = headers_[index].begin;
    const std::size_t end = index + 1 < headers_.size() ? headers_[index + 1].begin : text_.size();
    if (index == 0)
        return {begin, begin, end};
    Lines lines(text_, begin, end);
    lines.Next();
    return {begin, lines.End(), end};
}

std::string_view ProfileText::NameAt(std::size_t index) const {
    if (index == 0)
        return {};
    Lines lines(text_, headers_[index].begin, text_.size());
    lines.Next();
    return SectionName(lines.Text()).value_or("");
}

/// Index of the first section of the name, at or behind `from`.
std::optional<std::size_t> ProfileText::Find(std::string_view name, std::size_t from) const {
    const std::uint32_t hash = HashOf(name);
    for (std::size_t i = from; i < headers_.size(); ++i)
        if (headers_[i].hash == hash && Letters::SameText(NameAt(i), name))
            return i;
    return std::nullopt;
}

/// Goes through the lines of a section that are not blank.
class ProfileText::Entries {
public:
    Entries(std::string_view text, const Section& section)
        : lines_(text, section.body, section.end) {}

    std::optional<Entry> Next() {
        while (lines_.Next())
            if (const std::string_view line = lines_.Text(); !line.empty())
                return Parts(line);
        return std::nullopt;
    }

private:
    Entry Parts(std::string_view line) const {
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos)
            return {lines_.Begin(), lines_.End(), UpToNul(line), std::nullopt};
        return {lines_.Begin(), lines_.End(), UpToNul(Trimmed(line.substr(0, equals))),
                UpToNul(Trimmed(line.substr(equals + 1)))};
    }

    Lines lines_;
};

std::optional<ProfileText::Entry> ProfileText::Find(const Section& section,
                                                    std::string_view name) const {
    Entries entries(text_, section);
    while (const auto entry = entries.Next())
        if (Letters::SameText(entry->name, name))
            return entry;
    return std::nullopt;
}

/// Where a new key goes: before the blank lines and comments that lead to the next section.
std::size_t ProfileText::BehindLastKey(const Section& section) const {
    std::size_t behind = section.body;
    Entries entries(text_, section);
    while (const auto entry = entries.Next())
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
    text_.erase(found.begin, found.end - found.begin);
    IndexSections();
    return found.begin != found.end;
}

/// Puts lines in the place of others of the same section, or behind the last line of the file.
void ProfileText::Replace(std::size_t begin, std::size_t end, const std::string& lines) {
    const auto endsLine = [](char c) { return c == '\r' || c == '\n'; };
    const bool unfinished = begin > 0 && !endsLine(text_[begin - 1]) && !lines.empty();
    const std::string inserted = unfinished ? std::string(lineEnd) + lines : lines;
    text_.replace(begin, end - begin, inserted);
    if (inserted.find('[') == std::string::npos)
        MoveHeaders(begin, end - begin, inserted.size());
    else
        IndexSections();
}

/// The sections behind a change that is none of a section line.
void ProfileText::MoveHeaders(std::size_t behind, std::size_t removed, std::size_t added) {
    for (std::size_t i = 1; i < headers_.size(); ++i)
        if (headers_[i].begin >= behind + removed)
            headers_[i].begin = headers_[i].begin - removed + added;
}

} // namespace platform::posix
