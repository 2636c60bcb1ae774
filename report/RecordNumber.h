#pragma once

#include <cstdint>

namespace Mreport {

/// A record by its number in the file.
struct FileRecord {
    std::int32_t number = 0;

    bool operator==(const FileRecord&) const = default;
};

/// A record by its place in a list page; 1 is the page's first.
struct PageRecord {
    std::int32_t number = 0;

    bool operator==(const PageRecord&) const = default;
};

} // namespace Mreport
