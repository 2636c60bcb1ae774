#pragma once

#include "files/MeasurementHeader.h"
#include "platform/Printer.h"

#include <string>
#include <string_view>

namespace Mreport {

/// Prints one page that tells what a measurement file's header tells: project, analyst, channels,
/// their calibration and slopes; and a line to be signed. The page is not ended.
void PrintFirstPage(platform::Printer& printer, std::string_view title, std::string_view fileName,
                    const FileOpr::MeasurementHeader& header);

} // namespace Mreport
