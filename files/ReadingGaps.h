#pragma once

#include "base/LocalTime.h"

#include <optional>
#include <string>
#include <string_view>

namespace FileOpr {

/// The times without readings within a run that goes on when the instrument answers again. They
/// are noted in the comment of the next record.
class ReadingGaps {
public:
    /// Readings have ended. Within a gap it changes nothing.
    void Lost(const LocalTime& now);

    /// Readings have come back.
    void Answered(const LocalTime& now);

    /// Reading has ended while there were none; what has not come back is no gap of a run.
    void GiveUp() { since_.reset(); }

    /// Since when there are no readings; nothing while there are.
    const std::optional<LocalTime>& Since() const { return since_; }

    /// "no readings from 02:14:08 to 02:16:31", "no readings 3 times from 02:14:08 to 05:16:31";
    /// with the dates where they differ. Empty when no gap has ended since the last one was noted.
    std::string Text() const;

    /// The comment with that text behind it.
    std::string InComment(std::string_view comment) const;

    /// They stand in a record: the next one need not tell of them.
    void Noted() { ended_.reset(); }

    /// A run begins anew.
    void Clear() { *this = {}; }

private:
    /// All gaps that have ended, from the first one's begin to the last one's end.
    struct Ended {
        LocalTime from;
        LocalTime to;
        int times = 0;
    };

    std::optional<LocalTime> since_;
    std::optional<Ended> ended_;
};

} // namespace FileOpr
