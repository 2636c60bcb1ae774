#include "settings/SortPairs.h"

#include <cstddef>
#include <utility>

namespace mWinInit {

void SortPairs(int low, int high, std::span<float> keys, std::span<float> values) {
    // The full double loop instead of a shorter sort: where keys are equal, the order of their
    // values is what it has always been.
    for (int i = low; i <= high; ++i) {
        for (int j = low; j <= high; ++j) {
            const auto a = static_cast<std::size_t>(i);
            const auto b = static_cast<std::size_t>(j);
            if (keys[a] < keys[b]) {
                std::swap(keys[a], keys[b]);
                std::swap(values[a], values[b]);
            }
        }
    }
}

} // namespace mWinInit
