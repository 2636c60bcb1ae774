#pragma once

#include "files/MeasurementHeader.h"
#include "files/MeasurementRecord.h"
#include "files/RecordWalk.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace FileOpr {

/// Takes the text of a measurement file apart. Any bytes are taken without failing: what is no
/// header row and no record is passed over, and LF ends lines as CR LF does.
class MeasurementReader {
public:
    /// Reads the header. The text must outlive the reader.
    explicit MeasurementReader(std::string_view text);

    const MeasurementHeader& Header() const { return header_; }

    /// Reads the next record; false at the end. A record that the text or the next record cuts off
    /// before its separator is given, and LastWasComplete() is then false.
    bool Next(MeasurementRecord& record);
    bool LastWasComplete() const { return complete_; }

private:
    RecordWalk::Step Step(std::string_view line);

    std::string_view rest_;
    RecordWalk walk_;
    bool begun_ = false;       ///< the walk has come to a record that has not been given
    std::string_view comment_; ///< of the record that has begun last
    bool complete_ = true;
    MeasurementHeader header_;
};

struct MeasurementFile {
    MeasurementHeader header;
    std::vector<MeasurementRecord> records;
    bool complete = true; ///< the last record ends with its separator
};

/// The whole file. Throws RunTimeError when it cannot be read.
MeasurementFile ReadMeasurementFile(const std::filesystem::path& file);

} // namespace FileOpr
