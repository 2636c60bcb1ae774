#pragma once

#include "chem/CalibrationSession.h"
#include "chem/StabilityMark.h"
#include "link/ReadingSeries.h"
#include "screens/controls/FormTimer.h"

#include <QObject>
#include <QScopedValueRollback>
#include <QTimer>

#include <array>
#include <chrono>
#include <deque>
#include <functional>
#include <string>

/// The reading of a calibration point: hands the averages to the session and tells how long it
/// lasts and whether they have settled. The form wires both timers to its handlers.
class PointReading : public QObject {
    Q_OBJECT

public:
    /// One average of every channel and when it came.
    struct Sample {
        std::chrono::milliseconds sinceRead{0};
        std::array<float, maxChannels> potential_mV{};
    };
    using Trace = std::deque<Sample>;
    static constexpr std::chrono::minutes longestTrace{10};

    PointReading(CalibrationSession& session, QObject& form);

    QTimer tmrRead;
    QTimer tmrElapsed; ///< for what changes by time alone; runs while a point is read

    /// Reads the session's current point.
    void Begin();

    /// Ends the reading, recorded or not; nothing where none is.
    void Stop();

    /// The averaging number has changed.
    void RestartAveraging();

    /// Takes away the hourglass that whoever opened the form has shown while it was loading; that
    /// of a reading stays.
    void EndBusyPointer() const;

    bool IsRunning() const { return series_.IsRunning(); }

    /// The averages shown are being read now, so that they can be recorded.
    bool HasValues() const { return series_.HasValues(); }

    /// A tick of tmrRead. `show` is called when the session has changed; a failed link ends the
    /// reading and is told.
    void OnTimer(const std::function<void()>& show);

    /// "1:05 since Read", empty while no point is read.
    std::string ElapsedText() const;

    /// How a channel's reading settles; nothing before its first value of this reading.
    const StabilityMark* MarkOf(std::size_t channel) const;

    /// The averages of this reading, or of the last one, over its last ten minutes.
    const Trace& Readings() const { return trace_; }

    /// Nothing read so far belongs to the session any more.
    void ForgetReadings() { trace_.clear(); }

    /// The temperature beside a channel's electrode in degrees Celsius; "Error" where the sensor's
    /// table gives none, empty without a sensor and while nothing is read.
    std::string TemperatureText(std::size_t channel) const;

    /// The last one of this reading or of the one before; empty where none was read.
    const std::string& LastTemperature(std::size_t channel) const {
        return temperature_celsius_.at(channel);
    }

    /// Keeps the ticks from acting while a box of the form waits for its answer: boxes do not pile
    /// up, and reading goes on when this one is answered.
    [[nodiscard]] QScopedValueRollback<bool> HoldForBox() {
        return QScopedValueRollback<bool>(boxOpen_, true);
    }

    /// False while the form must stay: a box is open, or a tick is at work below this call. The
    /// form then closes when the tick has ended.
    bool MayClose();

    /// The form was to close during the tick that has just ended.
    bool CloseWaits() const { return closeWaits_; }

private:
    void TakeAverages(std::span<const float, cyclePositions> averages);
    void TakeTemperatures(std::span<const float, cyclePositions> averages);
    void StartSeries();

    CalibrationSession& session_;
    FormTimer readTimer_{tmrRead};
    ReadingSeries series_{readTimer_};
    std::array<StabilityMark, maxChannels> marks_;
    Trace trace_;
    std::array<std::string, maxChannels> temperature_celsius_;
    bool boxOpen_ = false;
    bool closeWaits_ = false;
};
