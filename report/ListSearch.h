#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

/// Prefix search as a list box does it.
namespace ListSearch {

inline constexpr int notFound = -1;

/// True when an item begins with the prefix. ASCII letters match without regard to case, every
/// other byte by itself; an item in square brackets also matches behind "[" or "[-", the way lists
/// of folders and drives write them. The empty prefix matches nothing.
bool Matches(std::string_view item, std::string_view prefix);

/// The first match behind item `start`, going round to `start` itself; a `start` that is no item
/// searches from the top.
int FindString(int count, const std::function<std::string_view(int)>& item, std::string_view prefix,
               int start);

} // namespace ListSearch
