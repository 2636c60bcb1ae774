#include "chem/CheckStandard.h"

#include "base/Electrode.h"
#include "base/NumberText.h"
#include "chem/StandardEntry.h"

Quantity CalibratedQuantity(std::string_view electrode, float stdUnit) {
    switch (Electrode::KindOf(electrode)) {
    case Electrode::Kind::pH:
        return Quantity::pH;
    case Electrode::Kind::ion:
        return UnitOf(stdUnit) == StandardUnit::ppm ? Quantity::ppm : Quantity::mol_l;
    case Electrode::Kind::redox:
    case Electrode::Kind::none:
        break;
    }
    return Quantity::mV;
}

namespace CheckStandard {

namespace {

std::string Decimal(float percent) {
    return NumberText::Format(percent, NumberText::Pattern::oneDecimal);
}

} // namespace

std::optional<Outcome> Check(float reading, float standard, const Bounds& bounds) {
    if (standard == 0)
        return std::nullopt;
    Outcome outcome;
    outcome.recovery_percent =
        static_cast<float>(NumberText::Leading(Decimal(reading / standard * 100.0F)));
    outcome.passes = outcome.recovery_percent >= bounds.lowest_percent &&
                     outcome.recovery_percent <= bounds.highest_percent;
    return outcome;
}

std::string Text(const Outcome& outcome, const Bounds& bounds) {
    return "Recovery " + Decimal(outcome.recovery_percent) +
           " %: " + (outcome.passes ? "pass" : "fail") + " (" +
           NumberText::Plain(bounds.lowest_percent) + " to " +
           NumberText::Plain(bounds.highest_percent) + " %)";
}

} // namespace CheckStandard
