#pragma once

#include "base/Channels.h"
#include "base/LocalTime.h"
#include "chem/ChannelDisplay.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>

/// Between what an analyst wants a channel's readings to stay; either end may be left open.
struct Limits {
    std::optional<float> low;
    std::optional<float> high;
    Quantity quantity = Quantity::mV;

    bool AreSet() const { return low || high; }
    bool Hold(float value) const { return !(low && value < *low) && !(high && value > *high); }

    bool operator==(const Limits&) const = default;
};

using ChannelLimits = std::array<Limits, maxChannels>;

/// "1 to 100 ppm", "from 1 ppm", "up to 100 ppm"; empty where none are set.
std::string LimitsText(const Limits& limits);

/// Watches the readings of all channels. An alarm stands until it is acknowledged, also when the
/// readings have come back meanwhile: nobody may have looked.
class LimitWatch {
public:
    /// One reading outside may be a bubble at the electrode.
    static constexpr int readingsUntilAlarm = 3;

    enum class State {
        inside,
        alarm,        ///< outside for three readings in a row, or has been; not yet acknowledged
        acknowledged, ///< still outside, and known
    };

    /// Takes the limits of all channels; a channel whose limits have changed starts anew.
    void Watch(const ChannelLimits& limits);

    /// The channel's next reading. True when an alarm begins with it. A reading without a value
    /// neither counts nor ends a row.
    bool Add(std::size_t channel, const ChannelDisplay::Values& values, const LocalTime& now);

    void Acknowledge(std::size_t channel);

    State StateOf(std::size_t channel) const { return watched_[channel].state; }

    /// "outside its limits (1 to 100 ppm) since 14:54:06", or from when to when it was; empty while
    /// there is nothing to tell.
    std::string Text(std::size_t channel) const;

private:
    struct Watched {
        Limits limits;
        State state = State::inside;
        int outside = 0; ///< readings in a row
        LocalTime since; ///< of the first of them
        std::optional<LocalTime> until;
    };

    static bool AddOutside(Watched& watched, const LocalTime& now);
    static void AddInside(Watched& watched, const LocalTime& now);

    std::array<Watched, maxChannels> watched_;
};
