#include "files/LiveReport.h"

#include <algorithm>
#include <vector>

namespace FileOpr {

namespace {

std::vector<LiveReport*>& Reports() {
    static std::vector<LiveReport*> reports;
    return reports;
}

} // namespace

LiveReport::LiveReport(std::function<void()> recordWritten)
    : recordWritten_(std::move(recordWritten)) {
    Reports().push_back(this);
}

LiveReport::~LiveReport() {
    std::erase(Reports(), this);
}

void LiveReport::RecordWritten() {
    const auto reports = Reports(); // one may end, or another begin, meanwhile
    for (LiveReport* report : reports)
        if (std::find(Reports().begin(), Reports().end(), report) != Reports().end())
            report->recordWritten_();
}

} // namespace FileOpr
