#pragma once

#include <array>
#include <string>
#include <string_view>

/// What the simultaneous calibration tells its user.
namespace CalibrationInstructions {

inline constexpr std::array<std::string_view, 9> lines = {
    "For 'Simultaneous Calibration', you need only to type the concentration once, ",
    "for the first electrode.",
    "You must then immerse the electrode(s)in the first calibrating solution ",
    "(to minimise cross contamination, use the lowest concentration first, ",
    "then work up sequentially), type the concentration and click on the 'Read' ",
    "button (or press 'Enter').",
    "When the reading of the electrode is stable, click on the 'Record' button, ",
    "The cursor will then move to the next calibration point to repeat the  ",
    "process until all calibrating solutions have been measured."};

/// Set in bold; each stands within one line.
inline constexpr std::array<std::string_view, 3> boldPhrases = {
    "For 'Simultaneous Calibration'",
    "You must then immerse the electrode(s)in the first calibrating solution",
    "When the reading of the electrode is stable"};

/// The lines joined by CR LF.
std::string Text();

} // namespace CalibrationInstructions
