#include "base/Electrode.h"

#include <algorithm>

namespace Electrode {

namespace {

Type Find(std::string_view electrode) {
    const auto found = std::ranges::find(types, electrode, &Type::name);
    return found == types.end() ? Type{electrode, 0, 0} : *found;
}

} // namespace

Kind KindOf(std::string_view electrode) {
    if (electrode.find(redoxName) != std::string_view::npos)
        return Kind::redox;
    if (electrode.find("(pH") != std::string_view::npos)
        return Kind::pH;
    if (electrode.empty() || electrode == noneName)
        return Kind::none;
    return Kind::ion;
}

float MolarMass(std::string_view electrode) {
    return static_cast<float>(Find(electrode).molarMass_g_per_mol);
}

int Charge(std::string_view electrode) {
    return Find(electrode).charge;
}

} // namespace Electrode
