#pragma once

#include <concepts>
#include <cstdint>
#include <random>
#include <string>

/// Texts of measurement files as chance makes them: runs of one layout, and damage.
class RandomRun {
public:
    explicit RandomRun(std::uint32_t seed) : chance_(seed) {}

    template <std::integral Number>
    Number Below(Number bound) {
        return std::uniform_int_distribution<Number>(0, bound - 1)(chance_);
    }

    /// A header and so many records, some with a comment, some cells missing or no number.
    std::string Text(int records);

    /// Takes bytes away, puts bytes in or changes them, at so many places.
    void Damage(std::string& text, int places);

private:
    std::string Cell();

    std::mt19937 chance_;
};
