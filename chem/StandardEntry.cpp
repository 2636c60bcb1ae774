#include "chem/StandardEntry.h"

#include "app/Mcommon.h"
#include "base/NumberText.h"
#include "chem/Measure.h"

StandardUnit UnitOf(float stdUnit) {
    return stdUnit == 0 ? StandardUnit::ppm : StandardUnit::mol_per_litre;
}

namespace StandardEntry {

namespace {
constexpr std::string_view promptStart = "< Type";
}

std::string_view Prompt(bool isPH, StandardUnit unit) {
    if (isPH)
        return "< Type pH value here >";
    return unit == StandardUnit::ppm ? "< Type ppm here >" : "< Type mol/l here >";
}

bool IsBlank(std::string_view text) {
    return Mcommon::TrimControl(text).empty() || text.find(promptStart) != std::string_view::npos;
}

std::string_view PointLabel(bool isPH, StandardUnit unit) {
    if (isPH)
        return "pH:";
    return unit == StandardUnit::ppm ? "ppm:" : "mol/l:";
}

std::string_view ColumnHeading(bool isPH) {
    return isPH ? "Calibration Point:" : "Standards:";
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
