#pragma once

#include <string_view>

/// Prefix search as a list box does it.
namespace ListSearch {

/// True when an item begins with the prefix. ASCII letters match without regard to case, every
/// other byte by itself; an item in square brackets also matches behind "[" or "[-", the way lists
/// of folders and drives write them. The empty prefix matches nothing.
bool Matches(std::string_view item, std::string_view prefix);

} // namespace ListSearch
