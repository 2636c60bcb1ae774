#include "files/LiveReport.h"

#include "files/MeasuringRun.h"

#include <vector>

namespace FileOpr {

LiveReport::LiveReport(MeasuringRun& run, std::function<void()> recordWritten)
    : run_(run), recordWritten_(std::move(recordWritten)) {
    run_.reports_.push_back(this);
}

LiveReport::~LiveReport() {
    std::erase(run_.reports_, this);
}

} // namespace FileOpr
