#pragma once

#include <functional>

namespace FileOpr {

class MeasuringRun;

/// A report that follows what is recorded, for as long as the object lives. Several may.
class LiveReport {
public:
    /// `recordWritten` is called after a record is on the disk, in whichever file, and after a
    /// flush has brought records into the target. It must not throw. The run must outlive the
    /// object.
    LiveReport(MeasuringRun& run, std::function<void()> recordWritten);
    ~LiveReport();
    LiveReport(const LiveReport&) = delete;
    LiveReport& operator=(const LiveReport&) = delete;

    void RecordWritten() { recordWritten_(); }

private:
    MeasuringRun& run_;
    std::function<void()> recordWritten_;
};

} // namespace FileOpr
