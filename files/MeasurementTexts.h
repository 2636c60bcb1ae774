#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// The fixed texts of a measurement file, for those who write it and those who read it.
namespace MeasurementTexts {

inline constexpr std::string_view lineEnd = "\r\n";

/// A row is a label column and a tab and a cell for each channel.
inline constexpr std::size_t labelWidth = 15;
inline constexpr std::size_t cellWidth = 12;
inline constexpr std::size_t separatorWidth = 150;
inline constexpr std::size_t listSeparatorWidth = 200; ///< the report list's wider separator line

/// A cell without a value.
inline constexpr std::string_view noHeaderValue = "N/A";
inline constexpr std::string_view noRecordValue = "NA";

/// The header's line of free texts, separated by tabs.
inline constexpr std::string_view projectName = "Project Name: ";
inline constexpr std::string_view analyst = "Analyst: ";
inline constexpr std::string_view createdAt = "Report created at: ";

/// The rows of the channel table.
inline constexpr std::string_view channelRow = "Channel :";
inline constexpr std::string_view electrodeRow = "Electrode   :";
inline constexpr std::string_view serialNoRow = "Serial No.  :";
inline constexpr std::string_view refTypeRow = "Ref. Type   :";
inline constexpr std::string_view refSerialNoRow = "Ref. S/N    :";
inline constexpr std::string_view tempSensorRow = "Temp. Sens. :";

/// The calibration block: its title and its rows. Some rows are numbered.
inline constexpr std::string_view calibrationInfo = "Calibration Info.";
inline constexpr std::string_view dateRow = "Date :";
inline constexpr std::string_view timeRow = "Time :";
inline constexpr std::string_view pointCountRow = "Cali. Points :";
inline constexpr std::string_view stdUnitRow = "Std. Unit :";
inline constexpr std::string_view standardRows = "Standard ";
inline constexpr std::string_view caliUnitRow = "Cali. Unit :";
inline constexpr std::string_view caliDataRows = "Cali. Data ";

inline constexpr std::string_view slopesInfo = "Slopes Info.";
inline constexpr std::string_view slopeRows = "Slope ";
inline constexpr std::string_view noSlopesInfo =
    "Slopes Info.:"; ///< of a file without calibrations

/// The label of a numbered row; `number` counts from 1: "Standard 1:".
inline std::string NumberedRow(std::string_view rows, std::size_t number) {
    return std::string(rows) + std::to_string(number) + ":";
}

/// A record's first line is the mark, its number, and behind the second tab its time; its second
/// line is the comment's mark, a tab and the comment.
inline constexpr std::string_view record = "Record ";
inline constexpr std::string_view at = "\tAt\t";
inline constexpr std::string_view comment = "Comment:";

} // namespace MeasurementTexts
