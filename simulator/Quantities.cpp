#include "simulator/Quantities.h"

#include <array>
#include <charconv>

namespace simulator {

namespace {

template <typename... Format>
std::string Written(double value, Format... format) {
    std::array<char, 512> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value, format...);
    return end.ec == std::errc{} ? std::string(text.data(), end.ptr) : std::string("?");
}

} // namespace

std::string Fixed(double value, int decimals) {
    return Written(value, std::chars_format::fixed, decimals);
}

std::string Short(double value) {
    return Written(value);
}

} // namespace simulator
