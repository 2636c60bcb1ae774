#pragma once

#include <cstddef>
#include <string>

namespace Mreport {

/// The lines of one list page, as the list shows them.
class PageText {
public:
    virtual ~PageText() = default;

    virtual std::size_t LineCount() const = 0;
    virtual std::string Line(std::size_t index) const = 0; ///< from 0
};

} // namespace Mreport
