// One digit of a run is changed anywhere: in a value, a potential or the header's calibration. The
// potentials that a record may stand for are gone through here one by one; what they cannot give,
// by more than a unit of the last digit, must be found.

#include "base/NumberText.h"
#include "files/MeasurementReader.h"
#include "report/Verify.h"
#include "report/support/MeasuredRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr int records = 10;
constexpr std::array<Quantity, 3> computed = {Quantity::pH, Quantity::ppm, Quantity::mol_l};

Mreport::VerifyResult Verify(const std::string& text) {
    const FileOpr::MeasurementReader reader(text);
    Mreport::MemorySource source(text);
    Mreport::Verification verification(source, text.size(), reader.Header());
    while (verification.Step(text.size())) {
    }
    return verification.Result();
}

/// Another digit in place of one of the text's; false for a text without one.
bool ChangeDigit(MeasuredRun& run, std::string& text) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] >= '0' && text[i] <= '9')
            places.push_back(i);
    if (places.empty())
        return false;
    char& digit = text[places[run.Below(places.size())]];
    digit = static_cast<char>('0' + (digit - '0' + 1 + run.Below(9)) % 10);
    return true;
}

double UnitOf(const std::string& text) {
    const auto exponent = text.find('E');
    const auto point = text.find('.');
    const double decimals = point == std::string::npos
                                ? 0
                                : static_cast<double>(std::min(exponent, text.size()) - point - 1);
    const double power =
        exponent == std::string::npos ? 0 : NumberText::Leading(text.substr(exponent + 1));
    return std::pow(10.0, power - decimals);
}

/// True when no potential that reads as the recorded one gives a value near the recorded.
bool IsImpossible(const MeasuredRun& run, std::size_t record, std::size_t channel,
                  Quantity quantity) {
    const auto& cells = run.records[record][channel];
    const std::string& text = cells[quantity];
    const std::string& potential = cells[Quantity::mV];
    const double unit = UnitOf(potential);
    const double middle = NumberText::Leading(potential);
    double low = 1e300;
    double high = -1e300;
    constexpr int steps = 60;
    for (int i = 0; i <= steps; ++i) {
        const double reading = middle + unit * (static_cast<double>(i) / steps - 0.5);
        const auto given = run.CellsOf(channel, static_cast<float>(reading))[quantity].text;
        if (given == text || given == "Error" || given.empty())
            return false; // left to the other tests
        low = std::min(low, NumberText::Leading(given));
        high = std::max(high, NumberText::Leading(given));
    }
    const double value = NumberText::Leading(text);
    const double open = 1.01 * UnitOf(text) + 2e-5 * std::max(std::abs(low), std::abs(high));
    return value < low - open || value > high + open;
}

bool AnyIsImpossible(const MeasuredRun& run) {
    for (std::size_t record = 0; record < run.records.size(); ++record)
        for (std::size_t channel = 0; channel < MeasuredRun::channels; ++channel)
            for (const Quantity quantity : computed)
                if (!run.records[record][channel][quantity].empty() &&
                    IsImpossible(run, record, channel, quantity))
                    return true;
    return false;
}

/// Changes a digit of a cell or of the calibration of a channel.
bool ChangeAnywhere(MeasuredRun& run) {
    const std::size_t channel = run.Below(std::size_t{3});
    if (run.Below(4) == 0) {
        auto& record = run.calibration[channel];
        auto& table = run.Below(2) == 0 ? record.Standard : record.CaliData;
        float& number = table[run.Below(record.Points())];
        std::string text = NumberText::Plain(number);
        const bool changed = ChangeDigit(run, text);
        number = static_cast<float>(NumberText::Leading(text));
        return changed;
    }
    auto& cells = run.records[run.Below(run.records.size())][channel];
    constexpr std::array<Quantity, 4> rows = {Quantity::mV, Quantity::pH, Quantity::ppm,
                                              Quantity::mol_l};
    return ChangeDigit(run, cells[rows[run.Below(rows.size())]]);
}

/// A small change of the unit that needs a molar mass may fit one that is near the built-in one.
bool NamesAnotherMass(const Mreport::VerifyResult& result) {
    return std::ranges::any_of(result.reasons, [](const Mreport::NotComputed& reason) {
        return reason.why.starts_with("fits ");
    });
}

} // namespace

TEST(VerifyDigit, One_changed_digit_is_caught_wherever_it_exceeds_the_rounding) {
    int impossible = 0;
    int explainedByAMass = 0;
    for (std::uint32_t seed = 1; seed <= 300; ++seed) {
        MeasuredRun run(seed, records);
        if (!ChangeAnywhere(run) || !AnyIsImpossible(run))
            continue;
        ++impossible;
        const auto result = Verify(run.Text());
        const bool mass = result.diverged == 0 && NamesAnotherMass(result);
        explainedByAMass += mass ? 1 : 0;
        EXPECT_TRUE(result.diverged > 0 || mass) << "seed " << seed << ": " << VerdictText(result);
    }
    EXPECT_GT(impossible, 150); // the others were too small, or changed nothing
    EXPECT_LT(explainedByAMass, impossible / 20);
}
