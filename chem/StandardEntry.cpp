#include "chem/StandardEntry.h"

#include "app/Mcommon.h"
#include "base/NumberText.h"
#include "chem/Measure.h"

StandardUnit UnitOf(float stdUnit) {
    return stdUnit == 0 ? StandardUnit::ppm : StandardUnit::mol_per_litre;
}

namespace StandardEntry {

bool IsBlank(std::string_view text) {
    return Mcommon::TrimControl(text).empty() || text.find(promptStart) != std::string_view::npos;
}

std::string Converted(const std::string& text, StandardUnit to, float molarMass_g_per_mol) {
    if (IsBlank(text))
        return text;
    const auto value = NumberText::StrictSingle(text);
    if (!value)
        return text;
    const float converted = to == StandardUnit::ppm
                                ? Measure::ToPpm(*value, molarMass_g_per_mol)
                                : Measure::ToMolPerLitre(*value, molarMass_g_per_mol);
    return Mcommon::FormatStandard(converted);
}

} // namespace StandardEntry
