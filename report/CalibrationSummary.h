#pragma once

#include "chem/CalibrationRecord.h"

#include <string>
#include <string_view>
#include <vector>

/// The printed calibration summary as data; whoever prints it places the texts.
namespace CalibrationSummary {

/// A text that begins at a tab column, counted from 1 in average characters.
struct TabText {
    int column = 1;
    std::string text;

    bool operator==(const TabText&) const = default;
};
using Line = std::vector<TabText>;

struct Summary {
    std::string title;        ///< centred, in a larger font
    std::vector<Line> labels; ///< electrode, channel, date, number of points
    Line heading;
    std::vector<Line> points; ///< number, standard, mV and the slope that ends at the point
};

/// The summary of channel 0..7. A count outside 0..6 prints the points that exist.
Summary Compose(std::string_view electrode, std::size_t channel, const CalibrationRecord& record);

} // namespace CalibrationSummary
