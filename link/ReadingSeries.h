#pragma once

#include "chem/CalibrationRecord.h"
#include "platform/Timer.h"

#include <cstdint>
#include <optional>
#include <span>

/// The readings of one calibration point: a series of averages that a form's timer drives. While
/// the first average is awaited, the mouse pointer is the hourglass.
class ReadingSeries {
public:
    enum class Tick {
        nothing, ///< no good frame yet, or the series has ended meanwhile
        values,  ///< the averages are new
        failed,  ///< the link has failed; the series has ended
    };

    /// The timer must outlive the series.
    explicit ReadingSeries(platform::Timer& timer) : timer_(timer) {}
    ~ReadingSeries();
    ReadingSeries(const ReadingSeries&) = delete;
    ReadingSeries& operator=(const ReadingSeries&) = delete;

    /// Begins to read with this averaging number.
    void Start(std::int16_t averageCount);

    /// Starts the averaging anew while reading goes on.
    void RestartAveraging(std::int16_t averageCount);

    /// Ends the series; nothing where none runs.
    void Stop();

    bool IsRunning() const { return running_; }

    /// A tick is on the stack; whoever owns the series must not destroy it now.
    bool IsAtWork() const { return atWork_; }

    /// To be called at each tick of the timer. Lets events run; a tick that comes in meanwhile does
    /// nothing.
    Tick OnTimer(std::span<float, cyclePositions> averages);

private:
    void BeginAveraging(std::int16_t averageCount);
    void SetTimerInterval();

    platform::Timer& timer_;
    bool running_ = false;
    bool atWork_ = false;
    std::optional<std::int16_t> waitingAverageCount_; ///< of averaging begun while a tick works
};
