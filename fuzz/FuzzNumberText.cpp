#include "NullPlatform.h"

#include "base/NumberText.h"

#include <cmath>
#include <cstring>

// Any text is read without harm, the strict parsers agree with the lenient one, and any single's
// plain text reads back as the value of its seven digits.

namespace {

void ReadAsText(std::string_view text) {
    const double leading = NumberText::Leading(text);
    fuzz::Require(std::isfinite(leading));
    fuzz::Require(std::isfinite(NumberText::LeadingSingle(text)));
    const int whole = NumberText::LeadingInteger(text);
    if (std::fabs(leading) < 32767)
        fuzz::Require(std::fabs(whole - leading) <= 0.5);
    if (const auto single = NumberText::StrictSingle(text))
        fuzz::Require(*single == NumberText::LeadingSingle(text) || leading == 0);
    if (const auto integer = NumberText::StrictInteger(text))
        fuzz::Require(*integer == whole || leading == 0);
}

void WriteAsText(float value) {
    using NumberText::Pattern;
    for (const auto pattern : {Pattern::oneDecimal, Pattern::scientific, Pattern::twoDecimals,
                               Pattern::frame, Pattern::percent})
        fuzz::Require(!NumberText::Format(value, pattern).empty());
    const std::string plain = NumberText::Plain(value);
    if (!std::isfinite(value))
        return;
    const auto back = NumberText::Leading(plain);
    // Half of the seventh digit, and the rounding of the double.
    fuzz::Require(std::fabs(back - static_cast<double>(value)) <=
                  std::fabs(static_cast<double>(value)) * 5.1e-7);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ReadAsText(fuzz::Text(data, size));
    for (std::size_t i = 0; i + sizeof(float) <= size; i += sizeof(float)) {
        float value = 0;
        std::memcpy(&value, data + i, sizeof value);
        WriteAsText(value);
    }
    return 0;
}
