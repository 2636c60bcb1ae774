#pragma once

#include <string_view>

/// Measurement files that another program has stored as UTF-8.
namespace ForeignText {

/// True when the sample begins with the byte order mark or holds characters beyond ASCII, all of
/// them well-formed UTF-8. `cut`: the sample may end within a character.
bool IsUtf8(std::string_view sample, bool cut);

} // namespace ForeignText
