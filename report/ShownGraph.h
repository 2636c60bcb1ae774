#pragma once

#include "report/ViewedFile.h"

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace Mreport {

inline constexpr std::int32_t spanLength = 50; ///< records that the graph shows at most
inline constexpr std::int32_t maxGraphPoints = 1500;

/// What the graph of one viewer shows of its file, and the page selected beside it. Owned by the
/// viewer; the selection dialog changes it, printing looks at it.
struct ShownGraph {
    Quantity unitCode = Quantity::mV;
    std::array<bool, maxChannels> channelInUse{};  ///< drawn, by channel
    std::array<bool, maxChannels> channelWanted{}; ///< the user's choice, whatever the unit gives
    std::array<bool, tempSensorCount> sensorInUse{};

    int graphPageIndex = 0; ///< whose records the graph shows
    int shownPageIndex = 0; ///< selected among the lists

    bool autoUpdate = false;
    bool scrollGuard = false; ///< the program itself sets the scroll bar
};

/// The records of the page that graph and scroll bar use.
inline PageRange GraphRange(const ViewedFile& file, const ShownGraph& shown) {
    return PageRecordRange(file.pages, shown.graphPageIndex);
}

/// "mV", "pH", "ppm", "mol/l", "°C".
std::string UnitText(Quantity unit);

/// Limits of the scroll bar and, where it is to be set, its value: the last record of the graph's
/// span.
struct ScrollLimits {
    std::int32_t min = 0;
    std::int32_t max = 0;
    std::optional<std::int32_t> value;
};
ScrollLimits ResetScroll(const ViewedFile& file, const ShownGraph& shown, bool setValue);

/// Numbers of the channels (1..8) or, for degrees, of the sensors (1..4) that the graph would show
/// in this unit, in the order of its sets.
std::vector<int> Series(const ViewedFile& file, const ShownGraph& shown, Quantity unit);

/// The same in the unit in force.
std::vector<int> Series(const ViewedFile& file, const ShownGraph& shown);

/// True when a channel of this kind gives values of the unit; one without an electrode gives none.
bool KindGives(Electrode::Kind kind, Quantity unit);

/// True when some channel or sensor of the file gives the unit.
bool Givable(const ViewedFile& file, Quantity unit);

} // namespace Mreport
