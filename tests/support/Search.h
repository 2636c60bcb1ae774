#pragma once

#include <chrono>
#include <cstdlib>

/// How long a random search runs, and by which seed; ./test --search asks for other ones.
namespace search {

inline unsigned long Asked(const char* variable, unsigned long usual) {
    const char* const asked = std::getenv(variable);
    return asked != nullptr ? std::strtoul(asked, nullptr, 10) : usual;
}

inline std::chrono::seconds Length(std::chrono::seconds usual) {
    return std::chrono::seconds(
        Asked("VANTREL_SEARCH_SECONDS", static_cast<unsigned long>(usual.count())));
}

inline unsigned long Seed() {
    constexpr unsigned long usual = 6444;
    return Asked("VANTREL_SEARCH_SEED", usual);
}

} // namespace search
