#include "screens/calibration/CalibrationTexts.h"

namespace CalibrationTexts {

std::string_view MainCaption(CalibrationSession::Action action) {
    switch (action) {
    case CalibrationSession::Action::read:
        return read;
    case CalibrationSession::Action::record:
        return record;
    case CalibrationSession::Action::showSummary:
        break;
    }
    return showSummary;
}

std::string_view Prompt(bool isPH, StandardUnit unit) {
    if (isPH)
        return "< Type pH value here >";
    return unit == StandardUnit::ppm ? "< Type ppm here >" : "< Type mol/l here >";
}

std::string_view PointLabel(bool isPH, StandardUnit unit) {
    if (isPH)
        return "pH:";
    return unit == StandardUnit::ppm ? "ppm:" : "mol/l:";
}

std::string_view ColumnHeading(bool isPH) {
    return isPH ? "Calibration Point:" : "Standards:";
}

std::string Instructions() {
    std::string text;
    for (const std::string_view line : instructionLines) {
        if (!text.empty())
            text += "\r\n";
        text += line;
    }
    return text;
}

} // namespace CalibrationTexts
