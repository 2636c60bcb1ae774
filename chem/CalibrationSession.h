#pragma once

#include "chem/CalibrationRecord.h"
#include "chem/StandardEntry.h"

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

/// A calibration in progress, of one channel or of several in one vessel: the standards, the mV
/// recorded at each point, and which step comes next. It is a working copy; nothing of it is
/// stored before its owner takes the outcome.
class CalibrationSession {
public:
    static constexpr std::size_t minPoints = 2;
    static constexpr std::size_t maxPoints = maxCalibrationPoints;

    /// What the main button does next.
    enum class Action { read, record, showSummary };

    /// What a click on "&Record" came to.
    enum class Recorded {
        nothing,   ///< no reading has arrived yet
        nextPoint, ///< recorded; the current point is now the next one to read
        allPoints, ///< recorded; every point of the chosen number has its reading
    };

    /// What the summary shows of a channel, and what is stored of it but for the date.
    struct Outcome {
        CalibrationRecord record;
        bool usable = false; ///< every slope could be computed
    };

    /// Forgets everything.
    void Start(bool isPH, StandardUnit unit);

    bool IsPH() const { return isPH_; }
    StandardUnit Unit() const { return unit_; }
    void SetUnit(StandardUnit unit);

    /// The channels (0-based) that take part. A channel that joins later has no readings yet, so
    /// the points that others have recorded become unrecorded until it has read them too.
    void SetChannels(std::vector<std::size_t> channels);
    const std::vector<std::size_t>& Channels() const { return channels_; }

    /// Takes the points of a stored calibration, to be recorded anew or kept.
    void Load(std::size_t channel, const CalibrationRecord& record);

    /// Number of points, 2 to 6. Points beyond it keep what they hold, for a larger number chosen
    /// again.
    void SetPointCount(std::size_t count);
    std::size_t PointCount() const { return pointCount_; }

    /// The point that the main button works on, 0-based. It stays while it is being read, and
    /// where the new one is beyond the number of points.
    void SetCurrentPoint(std::size_t point);
    std::size_t CurrentPoint() const { return current_; }

    void SetStandard(std::size_t point, float standard);
    std::optional<float> Standard(std::size_t point) const;

    Action MainAction() const;

    void BeginReading();
    bool IsReading() const { return reading_; }
    bool IsBeingRead(std::size_t point) const { return reading_ && point == current_; }

    /// The averaged mV of a channel for the point being read.
    void SetLive(std::size_t channel, float potential_mV);

    /// What would be recorded of a channel: nothing before its first reading.
    std::optional<float> Live(std::size_t channel) const;

    /// True once every channel has a reading of the point being read.
    bool HasLive() const;

    /// Keeps the displayed readings as the point's mV and moves on.
    Recorded Record();

    /// Ends a reading without recording; the point keeps what it held before.
    void StopReading();

    void ClearPoint(std::size_t point);

    /// The recorded mV, as displayed.
    std::optional<float> Reading(std::size_t channel, std::size_t point) const;
    /// What stands beside a point: the live reading while it is read, then the recorded one.
    std::optional<float> Shown(std::size_t channel, std::size_t point) const;

    bool IsRecorded(std::size_t point) const;
    bool IsRecordedHere(
        std::size_t point) const; ///< in this session, not taken from a stored calibration
    bool IsComplete() const;

    /// The record of a channel with its slopes; where the data allows no slope, those before it.
    /// What this calibration does not write stays as `stored` has it: the entries behind its
    /// points, and the unit of a pH electrode. Leaves Measure::IsPHMode at this session's kind.
    Outcome OutcomeOf(std::size_t channel, const CalibrationRecord& stored) const;

    /// The summary of this data has been shown and was good. Any later change takes it back, since
    /// no data is ever stored whose summary was not shown.
    void SetFinished() { finished_ = true; }
    bool IsFinished() const { return finished_; }

    /// A standard is being changed by hand.
    void Touch() { finished_ = false; }

private:
    struct Point {
        std::optional<float> standard;
        std::array<std::optional<float>, maxChannels> potential_mV{};
        bool recordedHere = false;
    };

    Point& At(std::size_t point);
    const Point& At(std::size_t point) const;
    std::size_t PointAfterRecording() const;

    bool isPH_ = false;
    StandardUnit unit_ = StandardUnit::ppm;
    std::vector<std::size_t> channels_;
    std::array<Point, maxPoints> points_{};
    std::array<std::optional<float>, maxChannels> live_mV_{};
    std::size_t pointCount_ = minPoints;
    std::size_t current_ = 0;
    bool reading_ = false;
    bool finished_ = false;
};
