#pragma once

#include <string>
#include <string_view>

namespace platform::posix {

/// How a settings file is encoded. Editors that save Unicode put a byte order mark before it.
enum class TextEncoding { codePage, utf8, utf16Little, utf16Big };

TextEncoding EncodingOf(std::string_view bytes);

/// The text to work on: the bytes themselves for the code page, else UTF-8 without the mark.
std::string Decoded(std::string_view bytes, TextEncoding encoding);

/// The file's bytes again, mark included; what Decoded gave comes back unchanged.
std::string Encoded(std::string_view text, TextEncoding encoding);

/// Windows-1252 text as it stands in a text of this encoding, and back. A character that the code
/// page lacks reads as "?".
std::string FromCodePage(std::string_view text, TextEncoding encoding);
std::string ToCodePage(std::string_view text, TextEncoding encoding);

} // namespace platform::posix
