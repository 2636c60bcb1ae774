#pragma once

#include "chem/CalibrationRecord.h"

#include <string>
#include <string_view>
#include <vector>

/// One line of the "Slopes" list.
struct SlopeLine {
    std::string points;  ///< "1 - 2"
    std::string slope;   ///< "58.9"
    std::string percent; ///< "99.6 %" of theory, empty where there is none
    bool usual = true;
};

/// A line for each segment of the record.
std::vector<SlopeLine> SlopeLines(const CalibrationRecord& record, std::string_view electrode);

/// "mV/pH" or "mV/decade".
std::string_view SlopeUnit(bool isPH);

/// What is said below the list; empty when all slopes are usual or have no theory.
std::string SlopeRemark(const std::vector<SlopeLine>& lines);
