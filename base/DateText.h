#pragma once

#include "base/LocalTime.h"

#include <string>
#include <string_view>

/// Moments as text. Month names are English in every locale.
namespace DateText {

/// The month (1..12) of its name "Jan" to "Dec"; 0 for any other text.
int MonthOf(std::string_view name);

std::string Record(const LocalTime& time);            ///< "hh:mm:ss dd.mmm.yyyy"
std::string Header(const LocalTime& time);            ///< "hh:mm:ss  dd.mmm.yyyy"
std::string Clock(const LocalTime& time);             ///< "h:mm:ss dd.mmm.yyyy"
std::string Date(const LocalTime& time);              ///< "dd.mmm.yyyy"
std::string SingleCalibration(const LocalTime& time); ///< "hh:mm dd.mmm.yyyy"
std::string PrintedPage(const LocalTime& time);       ///< "dd-mmm-yyyy"
std::string TimeOfDay(const LocalTime& time);         ///< "hh:mm:ss"
std::string General(const LocalTime& time);           ///< "dd.mmm.yyyy h:mm:ss", link messages

} // namespace DateText
