#include "base/PortName.h"

#include "base/NumberText.h"

namespace PortName {
namespace {

constexpr std::string_view prefix = "COM";

} // namespace

std::string Of(int number) {
    return std::string(prefix) + std::to_string(number);
}

int NumberOf(std::string_view name) {
    if (name.size() <= prefix.size())
        return 0;
    return NumberText::LeadingInteger(name.substr(prefix.size()));
}

std::filesystem::path LinkIn(const std::filesystem::path& configurationFolder, int number) {
    return configurationFolder / "ports" / ("com" + std::to_string(number));
}

} // namespace PortName
