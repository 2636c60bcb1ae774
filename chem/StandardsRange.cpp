#include "chem/StandardsRange.h"

#include "app/Mcommon.h"
#include "chem/Measure.h"

#include <algorithm>
#include <span>

namespace {

double AsShown(float value, Quantity quantity) {
    return NumberText::Leading(quantity == Quantity::pH
                                   ? NumberText::Format(value, NumberText::Pattern::twoDecimals)
                                   : Mcommon::FormatReading(value));
}

Quantity QuantityOf(const CalibrationRecord& record, Electrode::Kind kind) {
    if (kind == Electrode::Kind::pH)
        return Quantity::pH;
    return record.StdUnit == 0 ? Quantity::ppm : Quantity::mol_l;
}

} // namespace

std::optional<StandardsRange> StandardsOf(const CalibrationRecord& record, Electrode::Kind kind) {
    const bool converted = kind == Electrode::Kind::pH || kind == Electrode::Kind::ion;
    if (!converted || !Measure::IsUsable(record))
        return std::nullopt;
    const auto [low, high] = std::ranges::minmax(std::span(record.Standard).first(record.Points()));
    return StandardsRange{low, high, QuantityOf(record, kind)};
}

bool IsOutside(const StandardsRange& range, const ChannelDisplay::Values& values) {
    const auto value = values[range.quantity];
    if (!value)
        return false;
    const double shown = AsShown(*value, range.quantity);
    return shown < AsShown(range.low, range.quantity) ||
           shown > AsShown(range.high, range.quantity);
}

std::string OutsideText(const StandardsRange& range) {
    return "outside its standards (" + NumberText::Plain(range.low) + " to " +
           NumberText::Plain(range.high) + " " + std::string(Quantities::Label(range.quantity)) +
           ")";
}
