#include "link/PortChoice.h"

#include "base/NumberText.h"
#include "platform/Platform.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

const std::string application = "CommPort";
const std::string section = "Startup";
const std::string bitRateKey = "BitRate";
const std::string portNumberKey = "PortNumber";

std::int32_t LeadingInteger32(const std::string& text) {
    constexpr double lowest = std::numeric_limits<std::int32_t>::min();
    constexpr double highest = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(
        std::nearbyint(std::clamp(NumberText::Leading(text), lowest, highest)));
}

} // namespace

PortChoice LoadPortChoice() {
    const auto& store = platform::Current().userStore;
    return {LeadingInteger32(store.GetSetting(application, section, bitRateKey, "9600")),
            NumberText::LeadingInteger(store.GetSetting(application, section, portNumberKey, "1"))};
}

void SavePortChoice(const PortChoice& choice) {
    auto& store = platform::Current().userStore;
    store.SaveSetting(application, section, bitRateKey, NumberText::Plain(choice.BitRate));
    store.SaveSetting(application, section, portNumberKey,
                      NumberText::Plain(std::int32_t{choice.PortNumber}));
}

std::string LineFormat(std::int32_t bitRate) {
    return NumberText::Plain(bitRate) + ",N,8,1";
}

platform::CommTimeouts TimeoutsFor(std::int32_t bitRate) {
    constexpr std::int32_t tenSeconds_ms = 10000;
    constexpr std::uint32_t constant_ms = 1000;
    // Twice the remainder against the divisor decides. Every tie (0.5, 2.5, 12.5, 62.5, 312.5) lies
    // above an even number and goes down to it.
    std::int32_t perByte_ms = tenSeconds_ms / bitRate;
    const std::int64_t twiceRest = std::int64_t{2} * (tenSeconds_ms % bitRate);
    if (twiceRest > bitRate)
        ++perByte_ms;
    const auto t = static_cast<std::uint32_t>(perByte_ms);
    return {t, t, constant_ms, t, constant_ms};
}
