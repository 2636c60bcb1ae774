#pragma once

#include "base/Channels.h"
#include "base/Quantity.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace FileOpr {

/// The texts that the measuring page shows for one channel.
using DisplayedCells = PerQuantity<std::string>;
using DisplayedChannels = std::array<DisplayedCells, maxChannels>;

/// One recorded reading.
struct MeasurementRecord {
    std::int32_t number = 0;
    std::string timeStamp; ///< "hh:mm:ss dd.mmm.yyyy"
    std::string comment;
    /// Fixed texts of 12 characters; blank where the file has no such row or column.
    std::array<DisplayedCells, maxChannels> cells;

    bool operator==(const MeasurementRecord&) const = default;
};

} // namespace FileOpr
