#include "files/MeasurementFormat.h"

#include "app/Mcommon.h"
#include "base/DateText.h"
#include "base/Electrode.h"
#include "base/Letters.h"
#include "base/NumberText.h"
#include "files/MeasurementTexts.h"

#include <algorithm>
#include <functional>

namespace MeasurementFormat {

namespace {

namespace Text = MeasurementTexts;

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
    text.append(Text::separatorWidth, '-');
    text += Text::lineEnd;
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
        AddField(text_, label, Text::labelWidth);
        for (std::size_t i = 0; i < source_.channels.size(); ++i) {
            text_ += '\t';
            AddField(text_, OneLine(cell(i), false), Text::cellWidth);
        }
        text_ += Text::lineEnd;
    }

    /// A row of calibrated channels; the others show that they have no value.
    void AddCalibrationRow(std::string_view label, const CellOf& cell) {
        AddRow(label, [&](std::size_t i) {
            return source_.calibration[i].Points() < 1 ? std::string(Text::noHeaderValue) : cell(i);
        });
    }

    void AddProject(const LocalTime& now) {
        text_ += std::string(Text::projectName) + OneLine(source_.project.ProjectName, false);
        text_ += "\t" + std::string(Text::analyst) + OneLine(source_.project.Experimentator, false);
        text_ += "\t" + std::string(Text::createdAt) + DateText::Header(now);
        text_ += Text::lineEnd;
    }

    void AddChannels() {
        const auto& channels = source_.channels;
        AddRow(Text::channelRow, [](std::size_t i) { return "Chan " + std::to_string(i + 1); });
        AddRow(Text::electrodeRow, [&](std::size_t i) { return channels[i].Electrode; });
        AddRow(Text::serialNoRow, [&](std::size_t i) { return channels[i].SerialNo; });
        AddRow(Text::refTypeRow, [&](std::size_t i) { return channels[i].RefType; });
        AddRow(Text::refSerialNoRow, [&](std::size_t i) { return channels[i].RefSerialNo; });
        AddRow(Text::tempSensorRow, [&](std::size_t i) {
            const int sensor = channels[i].TempSensor;
            return sensor < 1 ? std::string(Text::noHeaderValue)
                              : NumberText::Plain(std::int32_t{sensor});
        });
    }

    void AddCalibrations() {
        const auto& records = source_.calibration;
        text_ += Text::calibrationInfo;
        text_ += Text::lineEnd;
        AddCalibrationRow(Text::dateRow, [&](std::size_t i) { return DatePart(records[i]); });
        AddCalibrationRow(Text::timeRow, [&](std::size_t i) { return TimePart(records[i]); });
        AddCalibrationRow(Text::pointCountRow, [&](std::size_t i) {
            return NumberText::Plain(std::int32_t{records[i].PointCount});
        });
        AddCalibrationRow(Text::stdUnitRow, [&](std::size_t i) { return UnitOf(i); });
        for (std::size_t k = 0; k < MostPoints(); ++k)
            AddCalibrationRow(Text::NumberedRow(Text::standardRows, k + 1), [&](std::size_t i) {
                return NumberText::Plain(records[i].Standard[k]);
            });
        AddCalibrationRow(Text::caliUnitRow, [](std::size_t) { return std::string("mV"); });
        for (std::size_t k = 0; k < MostPoints(); ++k)
            AddCalibrationRow(Text::NumberedRow(Text::caliDataRows, k + 1), [&](std::size_t i) {
                return NumberText::Plain(records[i].CaliData[k]);
            });
    }

    void AddSlopes() {
        text_ += Text::slopesInfo;
        text_ += Text::lineEnd;
        for (std::size_t k = 0; k + 1 < MostPoints(); ++k)
            AddRow(Text::NumberedRow(Text::slopeRows, k + 1), [&](std::size_t i) {
                return source_.calibration[i].Points() < k + 2
                           ? std::string(Text::noHeaderValue)
                           : NumberText::Plain(source_.calibration[i].Slope[k]);
            });
    }

    void AddNoSlopes() {
        text_ += Text::noSlopesInfo;
        for (int cell = 0; cell < slopeCellsWithoutCalibration; ++cell) {
            text_ += '\t';
            text_ += Text::noHeaderValue;
        }
        text_ += Text::lineEnd;
    }

    std::size_t MostPoints() const {
        std::size_t most = 0;
        for (std::size_t i = 0; i < source_.channels.size(); ++i)
            most = std::max(most, source_.calibration[i].Points());
        return most;
    }

    static std::string DatePart(const CalibrationRecord& record) {
        constexpr std::size_t dateLength = 11;
        const auto& date = record.CalibrationDate;
        return date.substr(date.size() - std::min(date.size(), dateLength));
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

/// Potential and temperature are of every run, the rest of those whose electrodes give it.
bool IsPresent(const Quantities::Givers& givers, const RunRows& rows) {
    return givers.none || givers.sensor || (givers.pH && rows.pH) || (givers.ion && rows.ion);
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
                                       std::size_t channelCount) {
    FileOpr::MeasurementRecord record;
    record.number = number;
    record.timeStamp = DateText::Record(now);
    record.comment = OneLine(comment, true);
    for (std::size_t i = 0; i < record.cells.size(); ++i) {
        const bool used = i < channelCount;
        const bool idle = used && Mcommon::TrimControl(displayed[i][Quantity::mV]).empty();
        for (const auto& row : Quantities::table) {
            std::string& cell = record.cells[i][row.quantity];
            if (idle)
                AddField(cell, Text::noRecordValue, Text::cellWidth);
            else
                AddField(cell, used ? OneLine(displayed[i][row.quantity], false) : std::string(),
                         Text::cellWidth);
        }
    }
    return record;
}

std::string RecordText(const FileOpr::MeasurementRecord& record, const RunRows& rows,
                       std::size_t channelCount) {
    constexpr std::size_t longestFixedPart = 1100; // a record of eight channels without a comment
    std::string text;
    text.reserve(longestFixedPart + record.comment.size());
    text += std::string(Text::record) + NumberText::Plain(record.number);
    text += Text::at;
    text += record.timeStamp;
    text += Text::lineEnd;
    text += Text::comment;
    text += '\t';
    text += record.comment;
    text += Text::lineEnd;
    for (const auto& row : Quantities::table) {
        if (!IsPresent(row.givers, rows))
            continue;
        AddField(text, row.label, Text::labelWidth);
        for (std::size_t i = 0; i < channelCount; ++i) {
            text += '\t';
            text += record.cells[i][row.quantity];
        }
        text += Text::lineEnd;
    }
    AddSeparator(text);
    return text;
}

} // namespace MeasurementFormat
