#pragma once

#include "chem/CalibrationSession.h"

#include <array>
#include <string>
#include <string_view>

/// What both calibration screens say.
namespace CalibrationTexts {

inline constexpr std::string_view read = "&Read";
inline constexpr std::string_view record = "&Record";
inline constexpr std::string_view showSummary = "Contin&ue";
inline constexpr std::string_view print = "&Print";
inline constexpr std::string_view entryTitle = "Electrode Calibration";
inline constexpr std::string_view simultaneousTitle = "Simultaneous Calibration";
inline constexpr std::string_view summaryTitle = "Calibration Summary";
inline constexpr std::string_view helpFile = "CalibHlp.txt";

/// What the mark beside a reading means.
inline constexpr const char* markTip =
    "\"steady\" when the last ten readings lie within 0.2 mV; before "
    "that, how much they change in a minute";

/// Shown in red on the summary page and in a message box when no slope can be computed.
inline constexpr std::string_view invalidData = "Incorrect calibration data encountered.";

/// The main button's caption before the summary.
std::string_view MainCaption(CalibrationSession::Action action);

/// What an entry field holds until the analyst types, for example "< Type ppm here >".
std::string_view Prompt(bool isPH, StandardUnit unit);

/// "pH:", "ppm:" or "mol/l:".
std::string_view PointLabel(bool isPH, StandardUnit unit);

/// Heading of the column of standards.
std::string_view ColumnHeading(bool isPH);

/// The simultaneous calibration's instructions.
inline constexpr std::array<std::string_view, 9> instructionLines = {
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
std::string Instructions();

} // namespace CalibrationTexts
