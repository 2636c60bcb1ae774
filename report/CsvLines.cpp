#include "report/CsvLines.h"

#include "base/CodePage.h"

#include <algorithm>
#include <array>

namespace Mreport {

namespace {

constexpr std::size_t blockSize = std::size_t{64} * 1024;
constexpr std::string_view lineEnd = "\r\n";

/// The letters that are the same in UTF-8, and never quoted.
constexpr std::array<bool, 256> plainLetters = [] {
    std::array<bool, 256> plain{};
    for (unsigned char letter = ' '; letter <= '~'; ++letter)
        plain[letter] = letter != ',' && letter != '"';
    return plain;
}();

} // namespace

std::string CsvField(std::string_view utf8) {
    if (utf8.find_first_of(",\"\r\n") == std::string_view::npos)
        return std::string(utf8);
    std::string quoted = "\"";
    for (const char c : utf8)
        quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + "\"";
}

/// Where so many further letters can be put.
char* CsvLines::Room(std::size_t length) {
    if (buffer_.size() - used_ < length)
        buffer_.resize(std::max(used_ + length, 2 * blockSize));
    return buffer_.data() + used_;
}

void CsvLines::Add(std::string_view field) {
    char* out = Room(field.size() + 1);
    const std::size_t separator = lineBegun_ ? 1 : 0;
    *out = ',';
    out += separator;
    lineBegun_ = true;
    bool plain = true; // nearly every field is; a week has millions
    for (const char letter : field) {
        plain = plain & plainLetters[static_cast<unsigned char>(letter)];
        *out++ = letter;
    }
    used_ += separator;
    if (plain)
        used_ += field.size();
    else
        AddReady(CsvField(CodePage::ToUtf8(field)));
}

void CsvLines::AddReady(std::string_view utf8) {
    std::ranges::copy(utf8, Room(utf8.size()));
    used_ += utf8.size();
    lineBegun_ = true;
}

void CsvLines::EndLine() {
    AddReady(lineEnd);
    lineBegun_ = false;
    if (used_ >= blockSize)
        Flush();
}

void CsvLines::Flush() {
    sink_({buffer_.data(), used_});
    used_ = 0;
}

} // namespace Mreport
