#pragma once

#include "history/Store.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace History {

/// Walks the chain of a history, a few rows at a time, and finds the first that is not as it was
/// written.
class ChainCheck {
public:
    struct Finding {
        std::int64_t row = 0; ///< the number of the first wrong row
        std::string reason;   ///< "it was changed"
    };

    /// The store must outlive it.
    explicit ChainCheck(const Store& store) : store_(store) {}

    /// Goes on by so many rows. False when the walk has come to its end. Throws RunTimeError.
    bool Step(std::size_t rows);

    /// The first wrong row; nothing where all that was walked is as it was written.
    const std::optional<Finding>& Wrong() const { return wrong_; }

    std::int64_t Walked() const { return last_; } ///< rows that are right

    /// Once Step has returned false: "1234 entries, all as they were written" or what is wrong.
    std::string Text() const;

private:
    bool Take(const Row& row);

    const Store& store_;
    std::int64_t last_ = 0;
    std::string sum_ = noSum; ///< of the last row
    std::optional<Finding> wrong_;
};

/// The whole walk at once.
std::optional<ChainCheck::Finding> CheckChain(const Store& store);

} // namespace History
