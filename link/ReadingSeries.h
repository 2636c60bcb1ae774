#pragma once

#include "base/Channels.h"
#include "platform/Timer.h"

#include <chrono>
#include <optional>
#include <span>

/// A screen's readings: a series of averages that the form's tmrRead drives. Calibration screens
/// and measuring page read through this one class, which decides the first average, the tick at
/// work, a changed averaging number, failure and abandoning. While an average is awaited, the mouse
/// pointer is the hourglass; the series takes away only an hourglass of its own.
///
/// A form calls OnTimer from its tmrRead_Timer and acts on what that tells:
///
///     switch (series_.OnTimer(averages)) {
///     case ReadingSeries::Tick::nothing: break;
///     case ReadingSeries::Tick::values:  convert and show; break;
///     case ReadingSeries::Tick::failed:  button back, connection message; break;
///     case ReadingSeries::Tick::lost:    mark the values as old ones; break;
///     }
///
/// `lost` is told once, also where the instrument answers again before the tick;
/// CommPort::LastReadingBeforeLoss() is then the moment of the last good frame. The next `values`
/// are of a new averaging, so that no average reaches over the gap.
class ReadingSeries {
public:
    /// The timer's intervals until the instrument has been heard for the first time, and after.
    struct Pace {
        std::chrono::milliseconds unconnected;
        std::chrono::milliseconds connected;
    };
    static constexpr Pace calibrationPace{std::chrono::milliseconds(50),
                                          std::chrono::milliseconds(1500)};
    static constexpr Pace measuringPace{std::chrono::milliseconds(500),
                                        std::chrono::milliseconds(500)};

    enum class Tick {
        nothing, ///< no good frame yet, or the series or its averaging has ended meanwhile
        values,  ///< the averages are new
        failed,  ///< the link has failed; the series has ended, its timer stands
        lost,    ///< the link has failed; the series goes on, and gives values when it can again
    };

    /// The timer must outlive the series.
    explicit ReadingSeries(platform::Timer& timer, Pace pace = calibrationPace)
        : timer_(timer), pace_(pace) {}
    ~ReadingSeries();
    ReadingSeries(const ReadingSeries&) = delete;
    ReadingSeries& operator=(const ReadingSeries&) = delete;

    /// Begins to read with this averaging number, from any state: what an earlier reading left is
    /// ended, the first request goes out at once.
    void Start(int averageCount);

    /// Starts the averaging anew, with this number, while reading goes on; without a series running
    /// it does nothing.
    void RestartAveraging(int averageCount);

    /// Whether a failure ends the series, as it does unless chosen, or the link asks on until the
    /// instrument answers again. Taken back while the link is lost, the series fails.
    void GoOnAfterFailure(bool goOn);

    /// Ends the series, also from within a tick, which then gives no values; nothing where none
    /// runs.
    void Stop();

    bool IsRunning() const { return state_ != State::stopped; }

    /// The first average, or that of a new number, is awaited: the hourglass stands.
    bool IsAwaiting() const { return state_ == State::averaging; }

    /// Values of the present averaging have been given and are being read now: not before the
    /// first average, nor while a new one fills, nor once the link has failed. Only then may they
    /// be recorded.
    bool HasValues() const;

    /// A tick is on the stack; whoever owns the series must not destroy it now.
    bool IsAtWork() const { return atWork_; }

    /// To be called at each tick of the timer. Lets events run; a tick that comes in meanwhile does
    /// nothing.
    Tick OnTimer(std::span<float, cyclePositions> averages);

private:
    enum class State {
        stopped,
        averaging, ///< the first average, or that of a new number, is awaited
        giving,    ///< each tick gives values
        lost,      ///< the link has failed; it is asked on until the instrument answers again
    };

    void AwaitAverage(int averageCount);
    void EndAwaiting();
    Tick TellLoss();
    void AwaitNewAverage();
    Tick TakeAverages(std::span<float, cyclePositions> averages);
    void SetTimerInterval();

    platform::Timer& timer_;
    Pace pace_;
    State state_ = State::stopped;
    bool goesOn_ = false; ///< the choice for the time after a failure
    bool atWork_ = false;
    unsigned losses_ = 0;                    ///< of the link, as far as they have been told
    std::optional<int> waitingAverageCount_; ///< of averaging begun while a tick works
};
