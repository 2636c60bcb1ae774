#pragma once

#include "base/Quantity.h"
#include "files/RecordWalk.h"
#include "report/LineScanner.h"
#include "report/RecordLayout.h"
#include "report/RecordTime.h"
#include "report/Stretch.h"
#include "report/TextSource.h"
#include "report/ValueCells.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Mreport {

/// What a scan reads of each record.
struct ScanWish {
    /// Whose row of values; nothing for a scan that needs no values.
    std::optional<Quantity> quantity;
    bool utf8 = false; ///< the file is coded so, not as Windows-1252
};

/// One record as a scan finds it.
struct FoundRecord {
    std::uint64_t offset = 0; ///< of its first line
    std::int32_t number = 0;
    std::optional<RecordTime> time;
    std::string_view comment; ///< as the file has it; until the scan goes on
    CellValues values{};      ///< by column, not-a-number where there is none
    bool ended = false;       ///< by its separator or by the next record, not by the stretch's end
    std::uint64_t end = 0;    ///< offset behind its last line
};

/// Reads the records of a stretch one after the other, for whoever needs a value of each. Records
/// of one run have one layout: once it has been learned from a record, the lines behind it are
/// checked against it instead of being looked for, which gives the same records several times as
/// fast.
class RecordScan {
public:
    RecordScan(TextSource& source, const Stretch& stretch, const ScanWish& wish);
    RecordScan(const RecordScan&) = delete; // its parts refer to one another
    RecordScan& operator=(const RecordScan&) = delete;

    /// The next record; false behind the last one. One that is cut off is given with what it has.
    bool Next(FoundRecord& record);

    /// Bytes of the stretch that have been passed.
    std::uint64_t Passed() const { return scanner_.NextOffset() - begin_; }

private:
    /// Reads no byte behind the stretch.
    class Part : public TextSource {
    public:
        Part(TextSource& source, std::uint64_t end) : source_(source), end_(end) {}
        std::uint64_t Size() override { return end_; }
        std::size_t Read(std::uint64_t offset, std::span<char> buffer) override;

    private:
        TextSource& source_;
        std::uint64_t end_;
    };

    bool NextByLayout(FoundRecord& record);
    std::string_view ValueRow(std::string_view rows) const;
    bool NextByWalk(FoundRecord& record);
    void BeginRecord(std::uint64_t offset, std::string_view commentLine);
    void TakeRow(const ScannedLine& line);
    bool HoldsWish(std::string_view label) const;
    void Give(FoundRecord& record, bool ended, std::uint64_t end);

    std::uint64_t begin_;
    Part part_;
    LineScanner scanner_;
    ScanWish wish_;
    RecordWalk walk_;
    RecordTimeReader times_;
    RecordLayout layout_;
    std::optional<std::size_t> valueRow_; ///< of the layout
    std::size_t rows_ = 0;                ///< of the walked record so far

    FoundRecord walked_;
    std::string comment_;        ///< of the walked record
    std::string givenComment_;   ///< of the record given last
    std::uint64_t lastLine_ = 0; ///< offset
};

} // namespace Mreport
