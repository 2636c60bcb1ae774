#pragma once

#include "base/Channels.h"
#include "chem/ChannelDisplay.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <vector>

/// The readings of the last hour, of each channel and quantity, for the trend below the readings.
/// Its memory is bounded however long it is fed.
class TrendHistory {
public:
    static constexpr std::chrono::minutes span{60}; ///< what is kept
    /// Readings that follow faster are left out: nobody sees them on an axis of minutes.
    static constexpr std::chrono::milliseconds shortestInterval{250};
    static constexpr std::size_t capacity = span / shortestInterval;

    using Reading = std::array<ChannelDisplay::Values, maxChannels>;

    /// A point of a line; a value that is not-a-number parts the line.
    struct Point {
        std::chrono::milliseconds time{0};
        float value = 0;
    };

    /// A stretch of the monotonic clock and the columns that it is drawn in.
    struct Window {
        std::chrono::milliseconds from{0};
        std::chrono::milliseconds to{0};
        std::size_t columns = 0;
    };

    /// The next reading and its moment on the monotonic clock, no earlier than the last one's.
    void Add(std::chrono::milliseconds now, const Reading& reading);

    /// Readings have ended: no line joins what comes next to what was before.
    void Break() { broken_ = true; }

    void Clear();

    /// True when the channel has a value of the quantity anywhere in the history.
    bool Holds(std::size_t channel, Quantity quantity) const;

    /// The line of a channel's quantity within the window, and one reading before it where the line
    /// enters. In each column at most the first, the lowest, the highest and the last reading stay,
    /// so that what is drawn looks as if all were. Times ascend.
    std::vector<Point> Reduced(std::size_t channel, Quantity quantity, const Window& window) const;

    static constexpr std::size_t MostBytes() { return capacity * sizeof(Sample); }

private:
    struct Sample {
        std::chrono::milliseconds time{0};
        std::array<PerQuantity<float>, maxChannels> values{}; ///< not-a-number where there is none
    };

    std::size_t Size() const { return samples_.size(); }
    const Sample& At(std::size_t age) const; ///< 0: the oldest
    /// The age of the last reading before the moment, or of the oldest.
    std::size_t LastBefore(std::chrono::milliseconds from) const;
    void Append(const Sample& sample);

    std::vector<Sample> samples_; ///< a ring once it is full
    std::size_t oldest_ = 0;
    bool broken_ = false;
};
