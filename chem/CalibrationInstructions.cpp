#include "chem/CalibrationInstructions.h"

namespace CalibrationInstructions {

std::string Text() {
    std::string text;
    for (const std::string_view line : lines) {
        if (!text.empty())
            text += "\r\n";
        text += line;
    }
    return text;
}

} // namespace CalibrationInstructions
