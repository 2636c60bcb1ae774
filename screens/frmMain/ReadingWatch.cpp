#include "screens/frmMain/ReadingWatch.h"

#include "platform/Platform.h"
#include "settings/mWinInit.h"

#include <algorithm>

namespace {

/// In which quantity a channel's drift is told: that of its standards, else the potential.
Quantity QuantityOf(const std::optional<StandardsRange>& standards) {
    return standards ? standards->quantity : Quantity::mV;
}

} // namespace

ReadingWatch::ReadingWatch() {
    marks_.fill(StabilityMark(window));
    drifts_.fill(Drift(window));
}

void ReadingWatch::Begin(const MeasuringCycle::Source& source) {
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        selected_[i] = source.selected[i] != 0;
        const auto kind = Electrode::KindOf(mWinInit::ChannelSetup[i].Electrode);
        standards_[i] = StandardsOf(mWinInit::Calibration[i], kind);
        quantity_[i] = QuantityOf(standards_[i]);
    }
    BeginSeries();
}

void ReadingWatch::BeginSeries() {
    const auto now = platform::Current().clock.Monotonic();
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        marks_[i].Start(now);
        drifts_[i].Start();
        rows_[i].mark.clear();
        rows_[i].steady = false;
    }
}

void ReadingWatch::WatchLimits(const ChannelLimits& limits) {
    limits_ = limits;
    watch_.Watch(limits);
    for (std::size_t i = 0; i < rows_.size(); ++i)
        ShowLimits(i);
}

bool ReadingWatch::Add(const MeasuringCycle::Outcome& outcome) {
    const LocalTime now = platform::Current().clock.Now();
    bool alarm = false;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        if (!selected_[i])
            continue;
        ShowMark(i, outcome.values[i]);
        ShowStandards(i, outcome.values[i]);
        alarm = watch_.Add(i, outcome.values[i], now) || alarm;
        ShowLimits(i);
    }
    return alarm;
}

/// Steady by the criterion of the calibration, which is one of potentials.
void ReadingWatch::ShowMark(std::size_t channel, const ChannelDisplay::Values& values) {
    const auto now = platform::Current().clock.Monotonic();
    Row& row = rows_[channel];
    if (const auto potential_mV = values[Quantity::mV])
        marks_[channel].Add(*potential_mV, now);
    row.steady = marks_[channel].IsSteady();
    const auto& quantity = Quantities::Of(quantity_[channel]);
    const auto value = values[quantity.quantity];
    if (value)
        drifts_[channel].Add(*value, now);
    const auto drift = value ? drifts_[channel].PerMinute() : std::nullopt;
    if (row.steady || !drift)
        row.mark = marks_[channel].Text();
    else
        row.mark = DriftText(*drift, quantity.label, quantity.pattern);
}

void ReadingWatch::ShowStandards(std::size_t channel, const ChannelDisplay::Values& values) {
    Row& row = rows_[channel];
    const auto& standards = standards_[channel];
    const bool outside = standards && IsOutside(*standards, values);
    row.outsideStandards = outside ? std::optional(standards->quantity) : std::nullopt;
    row.standardsText = outside ? OutsideText(*standards) : std::string();
}

void ReadingWatch::ShowLimits(std::size_t channel) {
    Row& row = rows_[channel];
    const bool alarm = watch_.StateOf(channel) == LimitWatch::State::alarm;
    row.alarm = alarm ? std::optional(limits_[channel].quantity) : std::nullopt;
    row.limitsText = watch_.Text(channel);
}

bool ReadingWatch::AllSteady() const {
    for (std::size_t i = 0; i < rows_.size(); ++i)
        if (selected_[i] && !rows_[i].steady)
            return false;
    return true;
}

void ReadingWatch::Acknowledge(std::size_t channel) {
    watch_.Acknowledge(channel);
    ShowLimits(channel);
}
