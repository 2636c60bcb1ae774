#pragma once

#include "files/MeasurementTexts.h"
#include "files/RecordWalk.h"
#include "report/LineScanner.h"

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

namespace Mreport {

/// The beginning of a text as a record that looks like one walked before.
struct RecordText {
    std::string_view first; ///< without its line end, as the comment line
    std::string_view comment;
    std::size_t firstLength = 0; ///< with its line end
    std::size_t commentLength = 0;
    std::string_view rows;  ///< with line ends, without the separator
    std::size_t length = 0; ///< of all lines, with their ends
};

/// How the lines behind a record's comment line follow one another. Records of one run are alike:
/// once a record has been walked, the text behind it is held against its lines instead of being
/// walked, which finds the same records several times as fast. Whatever differs is walked again.
class RecordLayout {
public:
    /// Bytes to have at hand for Match; a longer record is walked.
    static constexpr std::size_t usualRecord = 4096;

    /// A walk has taken this line.
    void Learn(RecordWalk::Step step, const ScannedLine& line);

    /// True when the text begins with a record that looks like the one walked last and whose lines
    /// are all in the text. Not to be asked within a record.
    bool Match(std::string_view text, RecordText& record);

    struct Row {
        std::array<char, MeasurementTexts::labelWidth + 1> label{}; ///< with the tab
        std::size_t length = 0;                                     ///< with the line end
    };
    const std::vector<Row>& Rows() const { return rows_; }
    std::size_t SeparatorLength() const { return separatorLength_; } ///< with its line end

    /// Bytes that the ends of rows and separator take.
    std::size_t LineEnds() const { return lineEnds_; }

private:
    /// The lengths of the lines before the rows, with their ends.
    struct Head {
        std::size_t first = 0;
        std::size_t comment = 0;

        std::size_t Length() const { return first + comment; }
        bool operator==(const Head&) const = default;
    };

    void Begin();
    void AddRow(const ScannedLine& row);
    void End(const ScannedLine& separator);

    static Head HeadOf(std::string_view text);
    bool Fits(std::string_view text, const Head& head) const;
    bool FitRows(std::string_view text) const;

    std::vector<Row> rows_;
    Head usual_; ///< of the record matched last
    std::size_t separatorLength_ = 0;
    std::size_t rowsLength_ = 0;
    std::size_t rowEnds_ = 0; ///< bytes of their line ends
    std::size_t length_ = 0;  ///< of rows and separator
    std::size_t lineEnds_ = 0;
    bool regular_ = false; ///< every row has a label as wide as it should be
    bool known_ = false;
};

} // namespace Mreport
