#pragma once

#include "report/RecordScan.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <vector>

namespace Mreport {

/// The columns of a record's row that give the values of a series; of several the first that has a
/// value gives it.
using SeriesColumns = std::vector<std::size_t>;

/// The value of a series in a record; not-a-number without one.
double ValueIn(const CellValues& cells, const SeriesColumns& columns);

/// A part of a run that is read in one go, a list page for example: whole lines, whole records.
struct RunPiece {
    Stretch bytes;
    std::int64_t records = 0;

    bool operator==(const RunPiece&) const = default;
};

/// Records of a run by their place: 0 is the run's first.
struct RecordSpan {
    std::int64_t first = 0;
    std::int64_t end = 0; ///< behind the last one

    std::int64_t Count() const { return end - first; }
    bool operator==(const RecordSpan&) const = default;
};

/// What a whole run, or a span of any length of it, looks like: the smallest and the largest value
/// of each series for every few records. It is filled in slices, from a place outward, and follows
/// a run that grows. Its memory does not grow with the run.
class RunOverview {
public:
    /// More records than this are kept in groups of two, four, eight ..., so that at least half as
    /// many groups are in use.
    static constexpr std::int64_t mostGroups = 8192;

    struct Plan {
        ScanWish wish;
        std::vector<SeriesColumns> series;
        RecordSpan span;            ///< of the run that is looked at
        bool followsGrowth = false; ///< the span ends where the run ends, also when it grows
        std::int64_t from = 0;      ///< the place that is filled first
    };

    struct Range {
        float low = std::numeric_limits<float>::infinity();
        float high = -std::numeric_limits<float>::infinity();

        bool Any() const { return low <= high; }
        void Take(float value) {
            low = value < low ? value : low;
            high = value > high ? value : high;
        }
        void Take(const Range& other) {
            low = other.low < low ? other.low : low;
            high = other.high > high ? other.high : high;
        }
        bool operator==(const Range&) const = default;
    };

    /// Neighbouring records that are kept as one.
    struct Group {
        std::int64_t records = 0; ///< read so far
        std::int32_t number = 0;  ///< of its first record
        std::optional<RecordTime> begin;
        std::optional<RecordTime> end; ///< of its latest record
        std::int64_t comment = -1;     ///< place of the first record with a comment
        std::uint64_t commentOffset = 0;
    };

    /// One point of a drawn series: what lies in a column of pixels.
    struct Column {
        std::int64_t column = 0;
        Range range; ///< nothing where the column's records have no value: the line is interrupted
        bool operator==(const Column&) const = default;
    };

    using Observer = std::function<void(std::int64_t place, const FoundRecord& record)>;

    /// Starts anew over a source that must outlive the overview.
    void Start(TextSource& source, std::vector<RunPiece> pieces, Plan plan);

    /// Forgets run and source; everything is empty then.
    void Clear();

    /// The run has become longer: the same pieces, of which the last may hold more, and new ones.
    /// False where it is another run; the overview is then to be started anew.
    bool Grow(std::vector<RunPiece> pieces);

    /// Called with each record of the span as it is read. One in which the run ended is told again
    /// when it has grown.
    void Observe(Observer observer) { observer_ = std::move(observer); }

    /// Reads on, about so many bytes. False when everything has been read.
    bool Step(std::uint64_t bytes);

    bool Complete() const { return !scan_ && !NextPiece(); }
    double Share() const; ///< of the span's records that has been read, 0..1

    const RecordSpan& Span() const { return plan_.span; }
    std::size_t SeriesCount() const { return plan_.series.size(); }
    std::int64_t RecordsPerGroup() const { return perGroup_; }
    std::size_t GroupCount() const { return groups_.size(); }
    const Group& At(std::size_t group) const { return groups_[group]; }
    const Range& At(std::size_t group, std::size_t series) const {
        return ranges_[group * SeriesCount() + series];
    }

    /// The series over `width` columns of pixels that show these records. A group lies in the
    /// column of its first record; columns without a group are left out.
    std::vector<Column> Columns(std::size_t series, const RecordSpan& shown,
                                std::int64_t width) const;

    /// The smallest and the largest value of a series in these records, by groups.
    Range RangeOf(std::size_t series, const RecordSpan& shown) const;

    /// The groups that hold these records, from the first to before the end.
    struct Groups {
        std::size_t first = 0;
        std::size_t end = 0;
    };
    Groups GroupsOf(const RecordSpan& shown) const;

    std::size_t Bytes() const; ///< of memory

private:
    struct Piece {
        RunPiece run;
        std::int64_t first = 0;     ///< place of its first record
        std::int64_t taken = 0;     ///< ended records that have been read
        std::uint64_t takenEnd = 0; ///< offset behind them
        bool lastIsOpen = false;    ///< the record behind them has been read as far as it goes
        bool done = false;
    };

    std::optional<std::size_t> NextPiece() const;
    bool Reaches(const Piece& piece) const;
    bool OpenNextPiece();
    bool TakeNext();
    void Take(std::int64_t place, const FoundRecord& record, bool isNew);
    void FitGroups();
    void MergePairs();
    std::size_t GroupAt(std::int64_t withinSpan) const;

    TextSource* source_ = nullptr;
    Plan plan_;
    std::vector<Piece> pieces_;
    std::vector<Group> groups_;
    std::vector<Range> ranges_; ///< by group, then by series
    std::int64_t perGroup_ = 1;
    std::int64_t read_ = 0;          ///< records of the span
    std::optional<RecordScan> scan_; ///< of the piece at hand
    std::size_t atHand_ = 0;
    Observer observer_;
};

} // namespace Mreport
