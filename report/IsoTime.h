#pragma once

#include <string>
#include <string_view>

namespace Mreport {

/// "14:05:33 07.Mar.2026" as "2026-03-07T14:05:33"; any other text as it is.
std::string IsoTime(std::string_view timeStamp);

/// The same of one time stamp after another. Most have the date of the one before.
class IsoTimes {
public:
    /// Until the next call.
    std::string_view Of(std::string_view timeStamp);

private:
    std::string date_; ///< of the last stamp, where it could be written so
    std::string iso_;
};

} // namespace Mreport
