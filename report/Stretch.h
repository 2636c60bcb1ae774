#pragma once

#include <cstdint>

namespace Mreport {

/// A stretch of a file that begins and ends at line ends.
struct Stretch {
    std::uint64_t begin = 0;
    std::uint64_t end = 0; ///< behind its last byte

    bool operator==(const Stretch&) const = default;
};

} // namespace Mreport
