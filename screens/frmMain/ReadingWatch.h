#pragma once

#include "chem/LimitWatch.h"
#include "chem/MeasuringCycle.h"
#include "chem/StabilityMark.h"
#include "chem/StandardsRange.h"
#include "link/ReadingSeries.h"

#include <array>
#include <optional>
#include <string>

/// What there is to say about the measuring page's readings beside their values: whether they are
/// steady or how they drift, whether they lie outside their channel's standards or limits.
class ReadingWatch {
public:
    struct Row {
        std::string mark; ///< "steady", the drift in the row's unit per minute, or empty
        bool steady = false;
        /// The cell whose value lies outside the channel's standards, and the words for it.
        std::optional<Quantity> outsideStandards;
        std::string standardsText;
        /// The cell that the channel's limits are about, and the words for what has happened to it.
        std::optional<Quantity> alarm; ///< not yet acknowledged
        std::string limitsText;
    };

    ReadingWatch();

    /// A measurement of these channels begins.
    void Begin(const MeasuringCycle::Source& source);

    /// A series of readings begins: what was steady before it counts no more.
    void BeginSeries();

    /// The limits in force from now on.
    void WatchLimits(const ChannelLimits& limits);

    /// The next reading of all channels. True when an alarm begins with it.
    bool Add(const MeasuringCycle::Outcome& outcome);

    const Row& RowOf(std::size_t channel) const { return rows_[channel]; }

    /// All channels in use are steady.
    bool AllSteady() const;

    void Acknowledge(std::size_t channel);

private:
    /// As many readings as span the time of a calibration's ten: this page reads more often.
    static constexpr std::size_t window =
        (Drift::usualWindow - 1) *
            (ReadingSeries::calibrationPace.connected / ReadingSeries::measuringPace.connected) +
        1;

    void ShowMark(std::size_t channel, const ChannelDisplay::Values& values);
    void ShowStandards(std::size_t channel, const ChannelDisplay::Values& values);
    void ShowLimits(std::size_t channel);

    std::array<bool, maxChannels> selected_{};
    std::array<Quantity, maxChannels> quantity_{}; ///< the one whose drift is told
    std::array<std::optional<StandardsRange>, maxChannels> standards_;
    std::array<StabilityMark, maxChannels> marks_;
    std::array<Drift, maxChannels> drifts_;
    ChannelLimits limits_;
    LimitWatch watch_;
    std::array<Row, maxChannels> rows_;
};
