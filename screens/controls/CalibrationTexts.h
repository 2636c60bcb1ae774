#pragma once

#include <string_view>

/// What both calibration screens say.
namespace CalibrationTexts {

inline constexpr std::string_view read = "&Read";
inline constexpr std::string_view record = "&Record";
inline constexpr std::string_view showSummary = "Contin&ue";
inline constexpr std::string_view print = "&Print";
inline constexpr std::string_view entryTitle = "Electrode Calibration";
inline constexpr std::string_view summaryTitle = "Calibration Summary";
inline constexpr std::string_view helpFile = "CalibHlp.txt";

} // namespace CalibrationTexts
