#include "chem/CalibrationSession.h"

#include "app/Mcommon.h"
#include "base/NumberText.h"
#include "base/RunTimeError.h"
#include "chem/Measure.h"

#include <algorithm>

namespace {

/// What is recorded is what the analyst saw.
float AsDisplayed(float potential_mV) {
    return static_cast<float>(NumberText::Leading(Mcommon::FormatReading(potential_mV)));
}

} // namespace

CalibrationSession::Point& CalibrationSession::At(std::size_t point) {
    return points_.at(point);
}

const CalibrationSession::Point& CalibrationSession::At(std::size_t point) const {
    return points_.at(point);
}

void CalibrationSession::Start(bool isPH, StandardUnit unit) {
    *this = CalibrationSession();
    isPH_ = isPH;
    unit_ = unit;
}

void CalibrationSession::SetUnit(StandardUnit unit) {
    unit_ = unit;
    finished_ = false;
}

void CalibrationSession::SetChannels(std::vector<std::size_t> channels) {
    if (channels == channels_)
        return;
    channels_ = std::move(channels);
    finished_ = false;
}

void CalibrationSession::Load(std::size_t channel, const CalibrationRecord& record) {
    if (record.Points() < minPoints)
        return;
    SetPointCount(record.Points());
    for (std::size_t row = 0; row < record.Points(); ++row) {
        points_[row].standard = record.Standard[row];
        points_[row].potential_mV.at(channel) = record.CaliData[row];
    }
}

void CalibrationSession::SetPointCount(std::size_t count) {
    count = std::clamp(count, minPoints, maxPoints);
    if (count == pointCount_)
        return;
    pointCount_ = count;
    current_ = std::min(current_, count - 1);
    finished_ = false;
}

void CalibrationSession::SetCurrentPoint(std::size_t point) {
    if (!reading_ && point < pointCount_)
        current_ = point;
}

void CalibrationSession::SetStandard(std::size_t point, float standard) {
    if (At(point).standard == standard)
        return;
    At(point).standard = standard;
    finished_ = false;
}

std::optional<float> CalibrationSession::Standard(std::size_t point) const {
    return At(point).standard;
}

CalibrationSession::Action CalibrationSession::MainAction() const {
    if (reading_)
        return Action::record;
    // A point of an earlier calibration is offered for reading anew: old data must not get a new
    // date by a few strokes of the Enter key.
    return IsComplete() && IsRecordedHere(current_) ? Action::showSummary : Action::read;
}

void CalibrationSession::BeginReading() {
    reading_ = true;
    live_mV_.fill(std::nullopt);
}

void CalibrationSession::SetLive(std::size_t channel, float potential_mV) {
    if (reading_)
        live_mV_.at(channel) = AsDisplayed(potential_mV);
}

std::optional<float> CalibrationSession::Live(std::size_t channel) const {
    return live_mV_.at(channel);
}

bool CalibrationSession::HasLive() const {
    return !channels_.empty() && std::ranges::all_of(channels_, [this](std::size_t channel) {
        return Live(channel).has_value();
    });
}

CalibrationSession::Recorded CalibrationSession::Record() {
    if (!reading_ || !HasLive())
        return Recorded::nothing;
    Point& point = At(current_);
    for (const std::size_t channel : channels_)
        point.potential_mV[channel] = live_mV_[channel];
    point.recordedHere = true;
    reading_ = false;
    finished_ = false;
    if (current_ == pointCount_ - 1 && IsComplete())
        return Recorded::allPoints;
    current_ = PointAfterRecording();
    return Recorded::nextPoint;
}

/// The next point; behind the last one the first that was left out.
std::size_t CalibrationSession::PointAfterRecording() const {
    if (current_ + 1 < pointCount_)
        return current_ + 1;
    std::size_t missing = 0;
    while (missing < current_ && IsRecorded(missing))
        ++missing;
    return missing;
}

void CalibrationSession::StopReading() {
    reading_ = false;
    live_mV_.fill(std::nullopt);
}

void CalibrationSession::ClearPoint(std::size_t point) {
    At(point).potential_mV.fill(std::nullopt);
    At(point).recordedHere = false;
    finished_ = false;
}

std::optional<float> CalibrationSession::Reading(std::size_t channel, std::size_t point) const {
    return At(point).potential_mV.at(channel);
}

std::optional<float> CalibrationSession::Shown(std::size_t channel, std::size_t point) const {
    return IsBeingRead(point) ? Live(channel) : Reading(channel, point);
}

bool CalibrationSession::IsRecorded(std::size_t point) const {
    return !channels_.empty() && std::ranges::all_of(channels_, [&](std::size_t channel) {
        return Reading(channel, point).has_value();
    });
}

bool CalibrationSession::IsRecordedHere(std::size_t point) const {
    return At(point).recordedHere && IsRecorded(point);
}

bool CalibrationSession::IsComplete() const {
    for (std::size_t point = 0; point < pointCount_; ++point)
        if (!IsRecorded(point) || !Standard(point))
            return false;
    return true;
}

CalibrationSession::Outcome CalibrationSession::OutcomeOf(std::size_t channel,
                                                          const CalibrationRecord& stored) const {
    Outcome outcome{.record = stored};
    outcome.record.PointCount = static_cast<std::int16_t>(pointCount_);
    if (!isPH_)
        outcome.record.StdUnit = static_cast<float>(unit_);
    for (std::size_t point = 0; point < pointCount_; ++point) {
        outcome.record.Standard[point] = Standard(point).value_or(0.0F);
        outcome.record.CaliData[point] = Reading(channel, point).value_or(0.0F);
    }
    Measure::IsPHMode = isPH_;
    try {
        Measure::ComputeSlopes(outcome.record);
        outcome.usable = IsComplete();
    } catch (const RunTimeError&) {
        // Not usable: the screen says so, and the data is not stored.
    }
    return outcome;
}
