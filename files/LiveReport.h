#pragma once

#include <functional>

namespace FileOpr {

/// A report that follows what is recorded, for as long as the object lives. Several may.
class LiveReport {
public:
    /// `recordWritten` is called after a record is on the disk and must not throw.
    explicit LiveReport(std::function<void()> recordWritten);
    ~LiveReport();
    LiveReport(const LiveReport&) = delete;
    LiveReport& operator=(const LiveReport&) = delete;

    /// Tells all of them.
    static void RecordWritten();

private:
    std::function<void()> recordWritten_;
};

} // namespace FileOpr
