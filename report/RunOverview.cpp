#include "report/RunOverview.h"

#include <algorithm>
#include <cmath>

namespace Mreport {

double ValueIn(const CellValues& cells, const SeriesColumns& columns) {
    for (const std::size_t column : columns)
        if (!std::isnan(cells[column]))
            return cells[column];
    return std::numeric_limits<double>::quiet_NaN();
}

namespace {

float Single(double value) {
    constexpr double largest = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(value, -largest, largest)); // not-a-number stays so
}

} // namespace

void RunOverview::Start(TextSource& source, std::vector<RunPiece> pieces, Plan plan) {
    source_ = &source;
    plan_ = std::move(plan);
    pieces_.clear();
    groups_.clear();
    ranges_.clear();
    perGroup_ = 1;
    read_ = 0;
    scan_.reset();
    Grow(std::move(pieces));
}

void RunOverview::Clear() {
    scan_.reset();
    source_ = nullptr;
    plan_ = {};
    pieces_.clear();
    groups_.clear();
    ranges_.clear();
    read_ = 0;
}

bool RunOverview::Grow(std::vector<RunPiece> pieces) {
    if (pieces.size() < pieces_.size())
        return false;
    std::int64_t place = 0;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const RunPiece& piece = pieces[i];
        if (i == pieces_.size())
            pieces_.push_back({piece, place, 0, piece.bytes.begin, false, false});
        Piece& kept = pieces_[i];
        if (kept.run.bytes.begin != piece.bytes.begin || kept.first != place ||
            piece.bytes.end < kept.run.bytes.end)
            return false;
        if (kept.run != piece) {
            if (scan_ && atHand_ == i)
                scan_.reset(); // it knows the old end
            kept.run = piece;
            kept.done = false;
        }
        place += piece.records;
    }
    if (plan_.followsGrowth)
        plan_.span.end = place;
    FitGroups();
    return true;
}

void RunOverview::FitGroups() {
    const std::int64_t records = std::max<std::int64_t>(plan_.span.Count(), 0);
    while ((records + perGroup_ - 1) / perGroup_ > mostGroups)
        MergePairs();
    const std::size_t count = GroupAt(records + perGroup_ - 1);
    groups_.resize(count);
    ranges_.resize(count * SeriesCount());
}

void RunOverview::MergePairs() {
    perGroup_ *= 2;
    const std::size_t series = SeriesCount();
    const std::size_t count = (groups_.size() + 1) / 2;
    for (std::size_t i = 0; i < count; ++i) {
        Group merged = groups_[2 * i];
        const bool paired = 2 * i + 1 < groups_.size();
        if (paired) {
            const Group& next = groups_[2 * i + 1];
            merged.records += next.records;
            if (next.end)
                merged.end = next.end;
            if (merged.comment < 0) {
                merged.comment = next.comment;
                merged.commentOffset = next.commentOffset;
            }
        }
        groups_[i] = merged;
        for (std::size_t s = 0; s < series; ++s) {
            Range range = ranges_[2 * i * series + s];
            if (paired)
                range.Take(ranges_[(2 * i + 1) * series + s]);
            ranges_[i * series + s] = range;
        }
    }
    groups_.resize(count);
    ranges_.resize(count * series);
}

bool RunOverview::Reaches(const Piece& piece) const {
    return piece.first < plan_.span.end && piece.first + piece.run.records > plan_.span.first;
}

/// The nearest unread piece to the place from which the overview is filled.
std::optional<std::size_t> RunOverview::NextPiece() const {
    std::optional<std::size_t> nearest;
    std::int64_t least = std::numeric_limits<std::int64_t>::max();
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
        const Piece& piece = pieces_[i];
        if (piece.done || !Reaches(piece))
            continue;
        const std::int64_t last = piece.first + piece.run.records - 1;
        const std::int64_t distance =
            std::max({piece.first - plan_.from, plan_.from - last, std::int64_t{0}});
        if (distance < least) {
            least = distance;
            nearest = i;
        }
    }
    return nearest;
}

/// False where nothing is left to be read.
bool RunOverview::OpenNextPiece() {
    const auto next = NextPiece();
    if (!next)
        return false;
    atHand_ = *next;
    const Piece& piece = pieces_[atHand_];
    scan_.emplace(*source_, Stretch{piece.takenEnd, piece.run.bytes.end}, plan_.wish);
    return true;
}

bool RunOverview::Step(std::uint64_t bytes) {
    std::uint64_t passed = 0;
    while (passed < bytes && (scan_ || OpenNextPiece())) {
        const std::uint64_t before = scan_->Passed();
        const bool more = TakeNext();
        passed += scan_->Passed() - before;
        if (more)
            continue;
        pieces_[atHand_].done = true;
        scan_.reset();
    }
    return !Complete();
}

/// Takes the next record of the piece at hand; false where it has no more for the span.
bool RunOverview::TakeNext() {
    Piece& piece = pieces_[atHand_];
    const std::int64_t place = piece.first + piece.taken;
    FoundRecord record;
    if (piece.taken == piece.run.records || place >= plan_.span.end || !scan_->Next(record))
        return false;
    if (place >= plan_.span.first)
        Take(place, record, !piece.lastIsOpen);
    piece.lastIsOpen = !record.ended;
    if (record.ended) {
        ++piece.taken;
        piece.takenEnd = record.end;
    }
    return true;
}

void RunOverview::Take(std::int64_t place, const FoundRecord& record, bool isNew) {
    const std::int64_t within = place - plan_.span.first;
    const std::size_t index = GroupAt(within);
    Group& group = groups_[index];
    if (within % perGroup_ == 0) {
        group.number = record.number;
        group.begin = record.time;
    }
    if (record.time && (!group.end || *group.end < *record.time))
        group.end = record.time;
    if (!record.comment.empty() && (group.comment < 0 || place < group.comment)) {
        group.comment = place;
        group.commentOffset = record.offset;
    }
    Range* ranges = &ranges_[index * SeriesCount()];
    for (std::size_t s = 0; s < plan_.series.size(); ++s)
        ranges[s].Take(Single(ValueIn(record.values, plan_.series[s])));
    if (isNew) {
        ++group.records;
        ++read_;
    }
    if (observer_)
        observer_(place, record);
}

double RunOverview::Share() const {
    const auto records = static_cast<double>(plan_.span.Count());
    return records <= 0 ? 1 : std::min(static_cast<double>(read_) / records, 1.0);
}

/// The group of a record by its place in the span, which is not negative.
std::size_t RunOverview::GroupAt(std::int64_t withinSpan) const {
    return static_cast<std::size_t>(withinSpan / perGroup_);
}

RunOverview::Groups RunOverview::GroupsOf(const RecordSpan& shown) const {
    const std::int64_t first = std::max(shown.first - plan_.span.first, std::int64_t{0});
    const std::int64_t end = std::max(shown.end - plan_.span.first, std::int64_t{0});
    Groups groups{GroupAt(first), std::min(GroupAt(end + perGroup_ - 1), groups_.size())};
    groups.end = std::max(groups.end, groups.first);
    return groups;
}

std::vector<RunOverview::Column> RunOverview::Columns(std::size_t series, const RecordSpan& shown,
                                                      std::int64_t width) const {
    std::vector<Column> columns;
    const Groups groups = GroupsOf(shown);
    for (std::size_t i = groups.first; i < groups.end; ++i) {
        const std::int64_t first = plan_.span.first + static_cast<std::int64_t>(i) * perGroup_;
        const std::int64_t ahead = std::max(first - shown.first, std::int64_t{0});
        const std::int64_t column = ahead * width / shown.Count();
        if (columns.empty() || columns.back().column != column)
            columns.push_back({column, {}});
        columns.back().range.Take(At(i, series));
    }
    return columns;
}

RunOverview::Range RunOverview::RangeOf(std::size_t series, const RecordSpan& shown) const {
    Range range;
    const Groups groups = GroupsOf(shown);
    for (std::size_t i = groups.first; i < groups.end; ++i)
        range.Take(At(i, series));
    return range;
}

std::size_t RunOverview::Bytes() const {
    return groups_.capacity() * sizeof(Group) + ranges_.capacity() * sizeof(Range) +
           pieces_.capacity() * sizeof(Piece);
}

} // namespace Mreport
