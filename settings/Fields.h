#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

/// The fields of a line of the settings file.
namespace mWinInit {

inline constexpr char fieldSeparator = '\x0F';

/// Fields joined by character 15.
std::string JoinFields(std::span<const std::string> fields);

/// Field `index` (from 1) of a joined text, part 1 or 2 of a pair, trimmed; empty when absent.
std::string GetField(std::string_view text, int index, int part);

/// Where field `index` (from 1) begins; nothing where the text has fewer fields.
std::optional<std::size_t> FieldBegin(std::string_view text, int index);

int FieldCount(std::string_view text);

} // namespace mWinInit
