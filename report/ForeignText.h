#pragma once

#include <string>
#include <string_view>

/// Measurement files that another program has stored as UTF-8.
namespace ForeignText {

inline constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// True when the sample begins with the byte order mark or holds characters beyond ASCII, all of
/// them well-formed UTF-8. `cut`: the sample may end within a character.
bool IsUtf8(std::string_view sample, bool cut);

/// As Windows-1252; a character that the code page lacks and a broken byte become "?". For
/// looking only: nothing that is shown is written back.
std::string FromUtf8(std::string_view utf8);

} // namespace ForeignText
