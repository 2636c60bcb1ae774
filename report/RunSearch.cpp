#include "report/RunSearch.h"

#include "base/CodePage.h"
#include "base/Letters.h"

namespace Mreport {

RunSearch::RunSearch(TextSource& source, std::vector<RunPiece> pieces, RunSearchWish wish)
    : source_(source), pieces_(std::move(pieces)), wish_(std::move(wish)) {
    std::int64_t place = 0;
    for (const RunPiece& piece : pieces_) {
        firsts_.push_back(place);
        place += piece.records;
    }
}

ScanWish RunSearch::Reading() const {
    const auto* value = std::get_if<ValueWish>(&wish_.what);
    return {value == nullptr ? std::nullopt : std::optional(value->quantity), wish_.utf8};
}

bool RunSearch::MayHold(std::size_t piece) const {
    if (!wish_.beyond || std::holds_alternative<TimeWish>(wish_.what))
        return true;
    return wish_.fromEnd ? firsts_[piece] < *wish_.beyond
                         : firsts_[piece] + pieces_[piece].records - 1 > *wish_.beyond;
}

bool RunSearch::OpenNextPiece() {
    while (opened_ < pieces_.size()) {
        atHand_ = wish_.fromEnd ? pieces_.size() - 1 - opened_ : opened_;
        ++opened_;
        if (!MayHold(atHand_))
            continue;
        place_ = firsts_[atHand_];
        scan_.emplace(source_, pieces_[atHand_].bytes, Reading());
        return true;
    }
    return false;
}

bool RunSearch::Step(std::uint64_t bytes) {
    std::uint64_t passed = 0;
    FoundRecord record;
    while (!ended_ && passed < bytes) {
        if (!scan_ && !OpenNextPiece()) {
            ended_ = true;
            break;
        }
        const std::uint64_t before = scan_->Passed();
        const bool more = scan_->Next(record);
        passed += scan_->Passed() - before;
        if (more)
            TakeRecord(record);
        else
            ClosePiece();
    }
    return !ended_;
}

void RunSearch::TakeRecord(const FoundRecord& record) {
    const std::int64_t place = place_++;
    const bool time = std::holds_alternative<TimeWish>(wish_.what);
    if (wish_.beyond && !time && (wish_.fromEnd ? place >= *wish_.beyond : place <= *wish_.beyond))
        return;
    if (!Pleases(record))
        return;
    found_ = FoundPlace{place, record.offset, record.number, atHand_};
    ended_ = !time && !wish_.fromEnd; // from the end the last one of the piece counts
}

void RunSearch::ClosePiece() {
    scan_.reset();
    if (found_ && !std::holds_alternative<TimeWish>(wish_.what))
        ended_ = true;
}

bool RunSearch::Pleases(const FoundRecord& record) {
    if (const auto* comment = std::get_if<CommentWish>(&wish_.what)) {
        if (record.comment.empty())
            return false;
        return wish_.utf8 ? Letters::Contains(CodePage::Legible(record.comment), comment->text)
                          : Letters::Contains(record.comment, comment->text);
    }
    if (const auto* value = std::get_if<ValueWish>(&wish_.what)) {
        const double found = ValueIn(record.values, value->columns);
        return value->above ? found > value->limit : found < value->limit;
    }
    return IsNearer(record);
}

bool RunSearch::IsNearer(const FoundRecord& record) {
    if (!record.time)
        return false;
    const auto distance = std::chrono::abs(*record.time - std::get<TimeWish>(wish_.what).time);
    const bool earlier = found_ && distance == nearest_ && record.offset < found_->offset;
    if (distance >= nearest_ && !earlier)
        return false;
    nearest_ = distance;
    return true;
}

double RunSearch::Share() const {
    return pieces_.empty() ? 1 : static_cast<double>(opened_) / static_cast<double>(pieces_.size());
}

} // namespace Mreport
