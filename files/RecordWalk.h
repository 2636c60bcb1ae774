#pragma once

#include "files/MeasurementLines.h"

#include <cstdint>
#include <string>
#include <string_view>

/// Finds the records in the lines of a measurement file. This is the one definition of a record:
/// its first line begins with "Record " and a digit, its second with "Comment:", rows follow, and a
/// separator or the next record ends it. A line that looks like a first line but has no comment
/// line behind it is a line as others are. Costs a look at one character for most lines.
class RecordWalk {
public:
    /// What a line is.
    enum class Step : std::uint8_t {
        other,     ///< no part of a record; a first line, too, is known only by the line behind it
        begins,    ///< a comment line, with which the record of the line before it begins; one that
                   ///< was at hand has been cut off
        row,       ///< a line of the record at hand; QuantityOf tells whether it holds values
        ends,      ///< the separator of the record at hand
        separator, ///< a separator outside a record
    };

    /// Takes the next line, without its line end, of up to any length.
    Step Take(std::string_view line) {
        switch (line.empty() ? '\0' : line.front()) {
        case 'C':
            if (firstLineTaken_ && MeasurementLines::IsComment(line))
                return Begin();
            break;
        case 'R':
            if (MeasurementLines::IsRecordStart(line))
                return TakeFirstLine(line);
            break;
        case '-':
            if (MeasurementLines::IsSeparator(line))
                return End();
            break;
        default:
            break;
        }
        firstLineTaken_ = false;
        return inRecord_ ? Step::row : Step::other;
    }

    /// Takes all lines of a record at once, from this first line to its separator.
    void TakeWhole(std::string_view firstLine) {
        firstLine_ = firstLine;
        firstLineTaken_ = inRecord_ = false;
    }

    /// Whether a record has begun and not yet ended.
    bool InRecord() const { return inRecord_; }

    /// The first line of the record that has begun last, as it was taken.
    const std::string& FirstLine() const { return firstLine_; }
    std::int32_t Number() const { return MeasurementLines::RecordNumber(firstLine_); }
    std::string_view TimeStamp() const { return MeasurementLines::TimeStamp(firstLine_); }

private:
    Step Begin();
    Step TakeFirstLine(std::string_view line);
    Step End();

    bool inRecord_ = false;
    bool firstLineTaken_ = false; ///< the line before looks like a record's first line
    std::string firstLine_;
    std::string nextFirstLine_;
};
