#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

/// The core's text is Windows-1252; the five bytes without a character stand for the control
/// characters of the same number, so every byte has a character and back.
namespace CodePage {

/// The Unicode character of a byte.
char32_t ToUnicode(unsigned char byte);

/// The byte of a Unicode character, nothing where the code page lacks it.
std::optional<unsigned char> FromUnicode(char32_t character);

std::string ToUtf8(std::string_view text);

/// Nothing when the text is not UTF-8 or holds a character that the code page lacks.
std::optional<std::string> FromUtf8(std::string_view utf8);

/// For looking only: "?" stands for a character that the code page lacks and for a broken byte.
std::string Legible(std::string_view utf8);

std::filesystem::path ToPath(std::string_view text);

/// Nothing when the code page lacks a character of the path.
std::optional<std::string> FromPath(const std::filesystem::path& path);

/// A path as messages name it; "?" stands for what the code page lacks.
std::string NameOf(const std::filesystem::path& path);

} // namespace CodePage
