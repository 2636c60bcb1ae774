#pragma once

#include "files/MeasuringRun.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

/// What the analyst was told while a measurement was taken.
struct Told {
    static constexpr std::size_t most = 32;
    struct Saved {
        int target = 0;
        std::int32_t number = 0;
    };
    std::array<Saved, most> saved{}; ///< the records that were said to be on the disk
    std::size_t count = 0;
    std::size_t wordless = 0; ///< failures without a reason
    bool oldKept = true;      ///< a target that was refused still holds what it held
};

inline constexpr const char* oldMeasurement = "an older measurement\r\n";

/// A measurement into two targets as the program takes it: what fails is told, and the analyst goes
/// on. The second target's name is that of an older measurement.
class TakenMeasurement {
public:
    TakenMeasurement(const std::filesystem::path& folder, Told& told)
        : targets_{folder / "first.4ch", folder / "second.4ch"}, told_(told) {}

    void Take();

private:
    template <class Step>
    bool Try(const Step& step);
    void Begin(int target);
    void Save(int count);

    FileOpr::MeasuringRun run_;
    std::array<std::filesystem::path, 2> targets_;
    Told& told_;
    int target_ = 0;
    std::int32_t number_ = 1;
};

/// The next start of the program; what cannot be recovered is told, and tried again at a later one.
void RecoverAll();

/// What is left of a measurement, seen after the next start.
class Remains {
public:
    explicit Remains(std::filesystem::path folder) : folder_(std::move(folder)) {}

    /// Nothing that was said to be on the disk is lost, doubled or out of order.
    void ExpectAllOf(const Told& told) const;

private:
    std::vector<std::int32_t> NumbersOf(int target) const;

    std::filesystem::path folder_;
};
