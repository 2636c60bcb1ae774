#include "settings/CheckChoices.h"

#include "base/NumberText.h"
#include "settings/StoredLines.h"

namespace mWinInit {

namespace {

const std::string checkSection = "Check Standard";
const std::string lowestKey = "Lowest Percent";
const std::string highestKey = "Highest Percent";

std::optional<float> Read(const std::string& key) {
    return NumberText::StrictSingle(ReadValue(checkSection, key));
}

} // namespace

CheckStandard::Bounds LoadCheckBounds() {
    const auto lowest = Read(lowestKey);
    const auto highest = Read(highestKey);
    if (!lowest || lowest > highest) // a highest that is none is below every number
        return {};
    return {*lowest, *highest};
}

std::vector<std::string> SaveCheckBounds(const CheckStandard::Bounds& bounds) {
    LineWriter writer;
    writer.WriteLine(checkSection, lowestKey, NumberText::Plain(bounds.lowest_percent));
    writer.WriteLine(checkSection, highestKey, NumberText::Plain(bounds.highest_percent));
    return writer.TakeMessages();
}

} // namespace mWinInit
