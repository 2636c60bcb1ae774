// Any text that is typed or pasted into a box: refused, or a value within its range.

#include "NullPlatform.h"

#include "base/RunTimeError.h"
#include "chem/StandardEntry.h"
#include "report/PrintRange.h"
#include "report/RecordTime.h"
#include "settings/SetupChecks.h"
#include "settings/SetupEntries.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

const fuzz::NullPlatform platform;

void TypeIntoSetup(std::string_view text) {
    if (const auto number = SetupChecks::Averaging(text))
        fuzz::Require(*number >= SetupChecks::minAveraging && *number <= SetupChecks::maxAveraging);
    if (const auto mass = SetupChecks::MolarMass(text))
        fuzz::Require(std::isfinite(*mass) && *mass >= 0);
    SetupChecks::Entries entries;
    entries.averagingForCalibration = entries.averagingForMeasurement = "1";
    entries.projectName = entries.analyst = text;
    entries.channels[0] = {true, 0, std::string(text), std::string(text), 2};
    if (!SetupChecks::FirstFinding(entries))
        fuzz::Require(SetupChecks::IsFilled(text) && SetupChecks::MolarMass(text).has_value());
}

void ReadDate(std::string_view text) {
    if (const auto day = SetupEntries::DayOf(text)) {
        fuzz::Require(day->month >= 1 && day->month <= 12 && day->day >= 1 && day->day <= 31);
        fuzz::Require(SetupEntries::OnDay(text, *day) == text);
    }
    Mreport::RecordTimeReader().Read(text);
}

void TypeStandard(std::string_view text, float molarMass) {
    try {
        const std::string typed(text);
        const auto converted =
            StandardEntry::Converted(typed, StandardUnit::mol_per_litre, molarMass);
        fuzz::Require(!StandardEntry::IsBlank(text) || converted == text);
    } catch (const RunTimeError&) {
        // No conversion with this molar mass.
    }
}

void TypeRange(std::string_view text) {
    const std::int32_t number = Mreport::TypedRecordNumber(text);
    const Mreport::RecordRange page{1, 4080};
    if (Mreport::RefuseRange({number, number}, page).empty())
        fuzz::Require(number >= page.first && number <= page.last);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = fuzz::Text(data, size);
    TypeIntoSetup(text);
    ReadDate(text);
    TypeStandard(text, size % 2 == 0 ? 40.078F : 0.0F);
    TypeRange(text);
    return 0;
}
