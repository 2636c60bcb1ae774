#include "report/OtherUnit.h"

#include "base/NumberText.h"
#include "chem/Measure.h"

#include <algorithm>
#include <limits>

namespace Mreport {

namespace {

constexpr std::string_view errorText = "Error";

bool MeetsAny(const std::vector<NumberInterval>& values, const NumberInterval& meant) {
    return std::ranges::any_of(
        values, [&](const NumberInterval& interval) { return interval.Meets(meant); });
}

double Share(double dividend, double divisor) {
    return divisor > 0 ? dividend / divisor : std::numeric_limits<double>::infinity();
}

/// The molar masses in g/mol that lead from one of the calibrated values to one that is meant. Both
/// conversions are x / M and x * M of what a mass of 1 g/mol gives.
NumberInterval MassesOf(const ExpectedCell& calibrated, bool calibratedInPpm,
                        const NumberInterval& meant) {
    const double low = std::ranges::min(calibrated.values, {}, &NumberInterval::low).low;
    const double high = std::ranges::max(calibrated.values, {}, &NumberInterval::high).high;
    if (calibratedInPpm) {
        const double unit = Measure::ToMolPerLitre(1, 1);
        return {Share(low * unit, meant.high), Share(high * unit, meant.low)};
    }
    const double unit = Measure::ToPpm(1, 1);
    return {Share(meant.low, high * unit), Share(meant.high, low * unit)};
}

std::string MassReason(const std::string& mass, const HeaderChannel& rules,
                       std::int64_t exceptions) {
    std::string text = "fits " + mass + " g/mol";
    if (exceptions > 0)
        text += " but for " + Grouped(exceptions);
    return text + (rules.molarMass_g_per_mol == 0
                       ? "; no mass is built in"
                       : "; built in is " + NumberText::Plain(rules.molarMass_g_per_mol));
}

} // namespace

void OtherUnit::Exceptions::Add(const RecordedCell& cell, const ExpectedCell& expected) {
    ++count;
    if (listed.size() < VerifyResult::mostListed)
        listed.emplace_back(cell, ExpectedText(expected, cell.quantity));
}

void OtherUnit::Exceptions::AddTo(VerifyResult& result) const {
    result.diverged += count;
    result.divergences.insert(result.divergences.end(), listed.begin(), listed.end());
}

bool OtherUnit::IsExplained(std::string_view cell, const std::optional<NumberInterval>& meant,
                            const HeaderChannel& rules, const Expected& expected) {
    if (!meant)
        return cell == errorText && expected.calibrated.error;
    if (meant->high < 0 || expected.calibrated.values.empty())
        return false;
    return mass_.Take(MassesOf(expected.calibrated, rules.record.StdUnit == 0, *meant));
}

void OtherUnit::Take(const RecordedCell& cell, const HeaderChannel& rules,
                     const Expected& expected) {
    ++taken_;
    const bool error = cell.text == errorText;
    const auto meant = NumberText::MeantBy(cell.text);
    const bool byBuiltIn =
        meant ? MeetsAny(expected.builtIn.values, *meant) : error && expected.builtIn.error;
    if (!byBuiltIn)
        ofBuiltIn_.Add(cell, expected.builtIn);
    if (IsExplained(cell.text, meant, rules, expected))
        return;
    withoutMass_ += error ? 1 : 0;
    ofMass_.Add(cell, expected.builtIn);
}

void OtherUnit::Finish(std::size_t channel, const HeaderChannel& rules,
                       VerifyResult& result) const {
    const Quantity quantity = *rules.OtherUnit();
    const bool builtInIsKnown = rules.molarMass_g_per_mol != 0;
    const auto mass = mass_.Text();
    if (builtInIsKnown && ofBuiltIn_.count == 0) {
        result.reproduced += taken_;
    } else if (mass_.Taken() == 0 && withoutMass_ > 0) {
        result.AddNotComputed(channel, quantity, "no molar mass was set", taken_);
    } else if (mass && (!builtInIsKnown || ofMass_.count < ofBuiltIn_.count)) {
        ofMass_.AddTo(result);
        result.AddNotComputed(channel, quantity, MassReason(*mass, rules, ofMass_.count),
                              taken_ - ofMass_.count);
    } else {
        ofBuiltIn_.AddTo(result);
        result.reproduced += taken_ - ofBuiltIn_.count;
    }
}

} // namespace Mreport
