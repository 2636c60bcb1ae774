#pragma once

#include "report/RunOverview.h"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace Mreport {

/// A comment that holds a text, letters A to Z without regard to case.
struct CommentWish {
    std::string text; ///< as Windows-1252
};

/// The record whose time is nearest; of two as near the earlier one in the file.
struct TimeWish {
    RecordTime time{};
};

/// A value above or below a limit.
struct ValueWish {
    Quantity quantity = Quantity::mV;
    SeriesColumns columns;
    double limit = 0;
    bool above = true; ///< else below; the limit itself is neither
};

struct RunSearchWish {
    std::variant<CommentWish, TimeWish, ValueWish> what;
    bool utf8 = false; ///< the file's coding
    bool fromEnd = false;
    /// The search goes on behind this place, or from the end before it; a time is looked for in the
    /// whole run.
    std::optional<std::int64_t> beyond;
};

/// A record of the run that a search has found.
struct FoundPlace {
    std::int64_t place = 0;   ///< 0 is the run's first record
    std::uint64_t offset = 0; ///< of its first line
    std::int32_t number = 0;
    std::size_t piece = 0;
};

/// Searches a run for a record in slices, so that it can be stopped.
class RunSearch {
public:
    /// The source must outlive the search.
    RunSearch(TextSource& source, std::vector<RunPiece> pieces, RunSearchWish wish);

    /// Searches on, about so many bytes. False when the search has ended.
    bool Step(std::uint64_t bytes);

    const std::optional<FoundPlace>& Found() const { return found_; }
    double Share() const; ///< of the pieces that have been searched, 0..1

private:
    bool OpenNextPiece();
    bool MayHold(std::size_t piece) const;
    void TakeRecord(const FoundRecord& record);
    bool Pleases(const FoundRecord& record);
    bool IsNearer(const FoundRecord& record);
    void ClosePiece();
    ScanWish Reading() const;

    TextSource& source_;
    std::vector<RunPiece> pieces_;
    std::vector<std::int64_t> firsts_; ///< place of each piece's first record
    RunSearchWish wish_;
    std::size_t opened_ = 0; ///< pieces that have been gone through or skipped
    std::size_t atHand_ = 0;
    std::int64_t place_ = 0; ///< of the next record
    std::optional<RecordScan> scan_;
    std::optional<FoundPlace> found_;
    std::chrono::seconds nearest_ = std::chrono::seconds::max();
    bool ended_ = false;
};

} // namespace Mreport
