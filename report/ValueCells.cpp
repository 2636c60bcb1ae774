#include "report/ValueCells.h"

#include "base/Letters.h"
#include "base/NumberText.h"
#include "files/MeasurementLines.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace Mreport {

namespace {

constexpr double noValue = std::numeric_limits<double>::quiet_NaN();

/// With so many digits a mantissa is a whole number that a double holds exactly, and so is such a
/// power of ten: their product or quotient is the double nearest to the number written.
constexpr int exactDigits = 15;
constexpr int exactPower = 22;
constexpr std::array<double, exactPower + 1> powersOfTen = {
    1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
    1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// Reads one cell from its first character on.
class CellReader {
public:
    explicit CellReader(std::string_view text) : text_(text) {}

    /// The value of a cell that is a plain number among blanks; nothing for any other cell.
    std::optional<double> PlainNumber() {
        SkipBlanks();
        const bool negative = Take('-');
        TakeDigits();
        if (Take('.')) {
            const int whole = digits_;
            TakeDigits();
            power_ = whole - digits_;
        }
        const bool exponent = digits_ > 0 && (Take('E') || Take('e'));
        if (exponent && !TakeExponent())
            return std::nullopt;
        SkipBlanks();
        if (!AtEnd() || digits_ == 0 || digits_ > exactDigits || power_ < -exactPower ||
            power_ > exactPower)
            return std::nullopt;
        const auto mantissa = static_cast<double>(mantissa_);
        const double size = power_ < 0 ? mantissa / powersOfTen[static_cast<unsigned>(-power_)]
                                       : mantissa * powersOfTen[static_cast<unsigned>(power_)];
        return negative ? -size : size;
    }

    std::size_t Place() const { return place_; }

private:
    char Next() const { return place_ < text_.size() ? text_[place_] : '\t'; }
    bool AtEnd() const { return Next() == '\t'; }
    void SkipBlanks() {
        while (Next() == ' ')
            ++place_;
    }
    bool Take(char letter) {
        const bool there = Next() == letter;
        place_ += there ? 1 : 0;
        return there;
    }
    void TakeDigits() {
        for (; Letters::IsDigit(Next()); ++place_, ++digits_)
            mantissa_ = mantissa_ * 10 + static_cast<std::uint64_t>(text_[place_] - '0');
    }
    bool TakeExponent() {
        constexpr int longest = 3; // digits; a longer one is beyond the exact powers
        const bool negative = Next() == '-';
        if (negative || Next() == '+')
            ++place_;
        int exponent = 0;
        int digits = 0;
        for (; Letters::IsDigit(Next()) && digits <= longest; ++place_, ++digits)
            exponent = exponent * 10 + (text_[place_] - '0');
        power_ += negative ? -exponent : exponent;
        return digits > 0 && digits <= longest;
    }

    std::string_view text_;
    std::size_t place_ = 0;
    std::uint64_t mantissa_ = 0;
    int digits_ = 0;
    int power_ = 0;
};

} // namespace

std::optional<double> NumberInCell(std::string_view cell) {
    const std::string text = Letters::TrimControl(cell);
    if (MeasurementLines::IsMissing(text))
        return std::nullopt;
    return NumberText::Leading(text);
}

CellValues ReadCells(std::string_view cells) {
    CellValues values;
    values.fill(noValue);
    for (double& value : values) {
        if (cells.empty())
            break;
        cells.remove_prefix(1); // the tab
        CellReader reader(cells);
        std::size_t end = 0;
        if (const auto number = reader.PlainNumber()) {
            value = *number;
            end = reader.Place();
        } else {
            end = cells.find('\t');
            value = NumberInCell(cells.substr(0, end)).value_or(noValue);
        }
        cells.remove_prefix(std::min(end, cells.size()));
    }
    return values;
}

} // namespace Mreport
