#pragma once

#include "base/Electrode.h"
#include "base/NumberText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

/// What is measured, shown and recorded of a channel; the numbers are the report's unit codes.
enum class Quantity { mV = 0, pH = 1, ppm = 2, mol_l = 3, celsius = 4 };

inline constexpr std::size_t quantityCount = 5;

/// One value for each quantity.
template <class T>
struct PerQuantity {
    constexpr T& operator[](Quantity quantity) { return items[Index(quantity)]; }
    constexpr const T& operator[](Quantity quantity) const { return items[Index(quantity)]; }

    constexpr auto begin() { return items.begin(); }
    constexpr auto end() { return items.end(); }
    constexpr auto begin() const { return items.begin(); }
    constexpr auto end() const { return items.end(); }

    bool operator==(const PerQuantity&) const = default;

    std::array<T, quantityCount> items{};

    static constexpr std::size_t Index(Quantity quantity) {
        return static_cast<std::size_t>(quantity);
    }
};

/// What is said of each quantity in one place. A further one is a value of the enumeration and its
/// row here.
namespace Quantities {

/// What gives the values: a channel with an electrode of these kinds, or a temperature sensor.
struct Givers {
    bool none = false; ///< a channel without an electrode
    bool redox = false;
    bool pH = false;
    bool ion = false;
    bool sensor = false;
};

/// The least that an axis shows: the noise of a steady reading must not fill a graph.
struct LeastRange {
    double value = 0;        ///< in the quantity's unit
    double shareOfValue = 0; ///< of the value in the middle of the axis
};

struct Row {
    Quantity quantity;
    std::string_view label;      ///< in the files, the lists and on the axis; Windows-1252
    NumberText::Pattern pattern; ///< of a value that stands alone
    Givers givers;
    LeastRange leastRange;
};

inline constexpr std::array<Row, quantityCount> table = {{
    {Quantity::mV,
     "mV",
     NumberText::Pattern::oneDecimal,
     {.none = true, .redox = true, .pH = true, .ion = true},
     {.value = 2}},
    {Quantity::pH, "pH", NumberText::Pattern::twoDecimals, {.pH = true}, {.value = 0.1}},
    {Quantity::ppm, "ppm", NumberText::Pattern::oneDecimal, {.ion = true}, {.shareOfValue = 0.05}},
    {Quantity::mol_l,
     "mol/l",
     NumberText::Pattern::scientific,
     {.ion = true},
     {.shareOfValue = 0.05}},
    {Quantity::celsius,
     "\xB0"
     "C",
     NumberText::Pattern::oneDecimal,
     {.sensor = true},
     {.value = 1}},
}};

constexpr const Row& Of(Quantity quantity) {
    return table[static_cast<std::size_t>(quantity)];
}

constexpr std::string_view Label(Quantity quantity) {
    return Of(quantity).label;
}

/// The least range of an axis whose middle stands for this value.
constexpr double LeastRangeAt(Quantity quantity, double value) {
    const LeastRange& least = Of(quantity).leastRange;
    return std::max(least.value, least.shareOfValue * std::max(value, -value));
}

/// The quantity of a label, letter by letter; nothing for any other text.
constexpr std::optional<Quantity> WithLabel(std::string_view label) {
    const auto found = std::ranges::find(table, label, &Row::label);
    return found == table.end() ? std::nullopt : std::optional(found->quantity);
}

/// True when the quantity is a temperature sensor's, not a channel's own.
constexpr bool IsOfSensors(Quantity quantity) {
    return Of(quantity).givers.sensor;
}

/// True when an electrode of this kind gives the quantity.
constexpr bool Gives(Electrode::Kind kind, Quantity quantity) {
    const Givers& givers = Of(quantity).givers;
    switch (kind) {
    case Electrode::Kind::none:
        return givers.none;
    case Electrode::Kind::redox:
        return givers.redox;
    case Electrode::Kind::pH:
        return givers.pH;
    case Electrode::Kind::ion:
        return givers.ion;
    }
    return false;
}

} // namespace Quantities
