#include "files/MeasurementFormat.h"

#include "app/Mcommon.h"
#include "base/DateText.h"
#include "base/Electrode.h"
#include "base/Letters.h"
#include "base/NumberText.h"

#include <algorithm>
#include <functional>

namespace MeasurementFormat {

namespace {

constexpr std::string_view lineEnd = "\r\n";
constexpr std::string_view noHeaderValue = "N/A";
constexpr std::string_view noRecordValue = "NA";
constexpr int slopeCellsWithoutCalibration = 8; // in four-channel files too: readers count them

bool HasCalibrationBlock(const mWinInit::ChannelSetupRecord& channel) {
    return channel.Electrode != Electrode::noneName &&
           !Letters::Contains(channel.Electrode, Electrode::redoxName);
}

/// The text on one line, and where `keepTabs` is false in one column.
std::string OneLine(std::string_view text, bool keepTabs) {
    std::string line(text);
    for (char& letter : line)
        if (letter == '\r' || letter == '\n' || (letter == '\t' && !keepTabs))
            letter = ' ';
    return line;
}

/// Adds the text cut or padded with blanks to `width`.
void AddField(std::string& line, std::string_view text, std::size_t width) {
    const auto kept = text.substr(0, width);
    line += kept;
    line.append(width - kept.size(), ' ');
}

void AddSeparator(std::string& text) {
    text.append(FileOpr::separatorWidth, '-');
    text += lineEnd;
}

class HeaderWriter {
public:
    explicit HeaderWriter(const HeaderSource& source) : source_(source) {}

    std::string Write(const LocalTime& now) {
        AddSeparator(text_);
        AddProject(now);
        AddSeparator(text_);
        AddChannels();
        AddSeparator(text_);
        if (std::ranges::any_of(source_.channels, HasCalibrationBlock)) {
            AddCalibrations();
            AddSlopes();
        } else {
            AddNoSlopes();
        }
        AddSeparator(text_);
        return std::move(text_);
    }

private:
    using CellOf = std::function<std::string(std::size_t channel)>;

    void AddRow(std::string_view label, const CellOf& cell) {
        AddField(text_, label, FileOpr::labelWidth);
        for (std::size_t i = 0; i < source_.channels.size(); ++i) {
            text_ += '\t';
            AddField(text_, OneLine(cell(i), false), FileOpr::cellWidth);
        }
        text_ += lineEnd;
    }

    /// A row of calibrated channels; the others show that they have no value.
    void AddCalibrationRow(std::string_view label, const CellOf& cell) {
        AddRow(label,
               [&](std::size_t i) { return Points(i) < 1 ? std::string(noHeaderValue) : cell(i); });
    }

    void AddProject(const LocalTime& now) {
        text_ += "Project Name: " + OneLine(source_.project.ProjectName, false);
        text_ += "\tAnalyst: " + OneLine(source_.project.Experimentator, false);
        text_ += "\tReport created at: " + DateText::Header(now);
        text_ += lineEnd;
    }

    void AddChannels() {
        const auto& channels = source_.channels;
        AddRow("Channel :", [](std::size_t i) { return "Chan " + Numeral(i + 1); });
        AddRow("Electrode   :", [&](std::size_t i) { return channels[i].Electrode; });
        AddRow("Serial No.  :", [&](std::size_t i) { return channels[i].SerialNo; });
        AddRow("Ref. Type   :", [&](std::size_t i) { return channels[i].RefType; });
        AddRow("Ref. S/N    :", [&](std::size_t i) { return channels[i].RefSerialNo; });
        AddRow("Temp. Sens. :", [&](std::size_t i) {
            const std::int16_t sensor = channels[i].TempSensor;
            return sensor < 1 ? std::string(noHeaderValue)
                              : NumberText::Plain(std::int32_t{sensor});
        });
    }

    void AddCalibrations() {
        const auto& records = source_.calibration;
        text_ += "Calibration Info.";
        text_ += lineEnd;
        AddCalibrationRow("Date :", [&](std::size_t i) { return DatePart(records[i]); });
        AddCalibrationRow("Time :", [&](std::size_t i) { return TimePart(records[i]); });
        AddCalibrationRow("Cali. Points :", [&](std::size_t i) {
            return NumberText::Plain(std::int32_t{records[i].PointCount});
        });
        AddCalibrationRow("Std. Unit :", [&](std::size_t i) { return UnitOf(i); });
        for (std::size_t k = 0; k < MostPoints(); ++k)
            AddCalibrationRow("Standard " + Numeral(k + 1) + ":", [&](std::size_t i) {
                return NumberText::Plain(records[i].Standard[k]);
            });
        AddCalibrationRow("Cali. Unit :", [](std::size_t) { return std::string("mV"); });
        for (std::size_t k = 0; k < MostPoints(); ++k)
            AddCalibrationRow("Cali. Data " + Numeral(k + 1) + ":", [&](std::size_t i) {
                return NumberText::Plain(records[i].CaliData[k]);
            });
    }

    void AddSlopes() {
        text_ += "Slopes Info.";
        text_ += lineEnd;
        for (std::size_t k = 0; k + 1 < MostPoints(); ++k)
            AddRow("Slope " + Numeral(k + 1) + ":", [&](std::size_t i) {
                return Points(i) < static_cast<int>(k) + 2
                           ? std::string(noHeaderValue)
                           : NumberText::Plain(source_.calibration[i].Slope[k]);
            });
    }

    void AddNoSlopes() {
        text_ += "Slopes Info.:";
        for (int cell = 0; cell < slopeCellsWithoutCalibration; ++cell) {
            text_ += '\t';
            text_ += noHeaderValue;
        }
        text_ += lineEnd;
    }

    static std::string Numeral(std::size_t number) {
        return NumberText::Plain(static_cast<std::int32_t>(number));
    }

    int Points(std::size_t channel) const { return source_.calibration[channel].PointCount; }

    std::size_t MostPoints() const {
        int most = 0;
        for (std::size_t i = 0; i < source_.channels.size(); ++i)
            most = std::max(most, Points(i));
        return static_cast<std::size_t>(std::min(most, maxCalibrationPoints));
    }

    static std::string DatePart(const CalibrationRecord& record) {
        constexpr std::size_t dateLength = 11;
        const auto& date = record.CalibrationDate;
        return date.size() <= dateLength ? date : date.substr(date.size() - dateLength);
    }

    static std::string TimePart(const CalibrationRecord& record) {
        return record.CalibrationDate.substr(0, record.CalibrationDate.find(' '));
    }

    std::string UnitOf(std::size_t channel) const {
        if (source_.channels[channel].Electrode == Electrode::pHName)
            return "pH";
        return source_.calibration[channel].StdUnit == 0 ? "ppm" : "mol/L";
    }

    const HeaderSource& source_;
    std::string text_;
};

bool IsPresent(Quantity quantity, const RunRows& rows) {
    switch (quantity) {
    case Quantity::pH:
        return rows.pH;
    case Quantity::ppm:
    case Quantity::mol_l:
        return rows.ion;
    default:
        return true;
    }
}

} // namespace

RunRows RowsOf(Channels channels) {
    RunRows rows;
    for (const auto& channel : channels) {
        rows.pH = rows.pH || Letters::Contains(channel.Electrode, "pH");
        rows.ion = rows.ion || (!Letters::Contains(channel.Electrode, Electrode::noneName) &&
                                !Letters::Contains(channel.Electrode, Electrode::redoxName));
        rows.tempSensor = rows.tempSensor || channel.TempSensor >= 1;
    }
    return rows;
}

std::string HeaderText(const HeaderSource& source, const LocalTime& now) {
    return HeaderWriter(source).Write(now);
}

FileOpr::MeasurementRecord BuildRecord(std::int32_t number, const LocalTime& now,
                                       std::string_view comment,
                                       const FileOpr::DisplayedChannels& displayed,
                                       int channelCount) {
    FileOpr::MeasurementRecord record;
    record.number = number;
    record.timeStamp = DateText::Record(now);
    record.comment = OneLine(comment, true);
    for (std::size_t i = 0; i < record.cells.size(); ++i) {
        const bool used = i < static_cast<std::size_t>(channelCount);
        const bool idle = used && Mcommon::TrimControl(displayed[i][Quantity::mV]).empty();
        for (const auto& row : Quantities::table) {
            std::string& cell = record.cells[i][row.quantity];
            if (idle)
                AddField(cell, noRecordValue, FileOpr::cellWidth);
            else
                AddField(cell, used ? OneLine(displayed[i][row.quantity], false) : std::string(),
                         FileOpr::cellWidth);
        }
    }
    return record;
}

std::string RecordText(const FileOpr::MeasurementRecord& record, const RunRows& rows,
                       int channelCount) {
    constexpr std::size_t longestFixedPart = 1100; // a record of eight channels without a comment
    std::string text;
    text.reserve(longestFixedPart + record.comment.size());
    text += "Record " + NumberText::Plain(record.number) + "\tAt\t" + record.timeStamp;
    text += lineEnd;
    text += "Comment:\t" + record.comment;
    text += lineEnd;
    for (const auto& row : Quantities::table) {
        if (!IsPresent(row.quantity, rows))
            continue;
        AddField(text, row.label, FileOpr::labelWidth);
        for (std::size_t i = 0; i < static_cast<std::size_t>(channelCount); ++i) {
            text += '\t';
            text += record.cells[i][row.quantity];
        }
        text += lineEnd;
    }
    AddSeparator(text);
    return text;
}

} // namespace MeasurementFormat
