#pragma once

#include <span>

namespace mWinInit {

/// Sorts both arrays ascending by key, from `low` to `high`.
void SortPairs(int low, int high, std::span<float> keys, std::span<float> values);

} // namespace mWinInit
