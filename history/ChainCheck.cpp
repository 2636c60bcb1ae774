#include "history/ChainCheck.h"

namespace History {

namespace {

constexpr std::size_t rowsAtOnce = 1000;

} // namespace

bool ChainCheck::Step(std::size_t rows) {
    if (wrong_)
        return false;
    Wish wish;
    wish.after = last_;
    wish.most = rows;
    const std::int64_t given = store_.LastNumber(); // first: another program may write meanwhile
    const auto found = store_.Rows(wish);
    for (const Row& row : found)
        if (!Take(row))
            return false;
    if (found.size() == rows)
        return true;
    if (given > last_) // a row that was cut off at the end has left its number
        wrong_ = {last_ + 1, "it is missing"};
    return false;
}

bool ChainCheck::Take(const Row& row) {
    if (row.number != last_ + 1)
        wrong_ = {last_ + 1, "it is missing"};
    else if (row.before != sum_)
        wrong_ = {row.number, "it does not follow the entry before it"};
    else if (row.sum != SumOf(row))
        wrong_ = {row.number, "it was changed"};
    if (wrong_)
        return false;
    last_ = row.number;
    sum_ = row.sum;
    return true;
}

std::string ChainCheck::Text() const {
    if (wrong_)
        return "Entry " + std::to_string(wrong_->row) +
               " is not as it was written: " + wrong_->reason;
    return std::to_string(last_) +
           (last_ == 1 ? " entry, as it was written" : " entries, all as they were written");
}

std::optional<ChainCheck::Finding> CheckChain(const Store& store) {
    ChainCheck check(store);
    while (check.Step(rowsAtOnce))
        continue;
    return check.Wrong();
}

} // namespace History
