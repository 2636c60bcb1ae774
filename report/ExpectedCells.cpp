#include "report/ExpectedCells.h"

#include "app/Mcommon.h"
#include "base/NumberText.h"
#include "chem/ChannelDisplay.h"
#include "chem/Measure.h"
#include "chem/ReadingImage.h"
#include "files/MeasurementLines.h"

#include <algorithm>
#include <limits>

namespace Mreport {

namespace {

using HeaderCells = FileOpr::MeasurementHeader::Channel;

constexpr std::string_view noCalibration = "the header holds no calibration of this channel";
constexpr std::string_view unreadable = "the calibration in the header cannot be read";
constexpr std::string_view cutName = "the electrode's name fills its cell and may be cut off";
constexpr std::string_view molarUnit = "mol/L"; ///< as a header spells it

/// Reads the header's points; false where one is no number or they are not 2 to 6.
bool ReadPoints(const HeaderCells& cells, CalibrationRecord& record) {
    record.PointCount = NumberText::StrictInteger(cells.pointCount).value_or(0);
    if (!Measure::IsUsable(record))
        return false;
    for (std::size_t k = 0; k < record.Points(); ++k) {
        const auto standard = NumberText::StrictSingle(cells.standard[k]);
        const auto potential_mV = NumberText::StrictSingle(cells.caliData[k]);
        if (!standard || !potential_mV)
            return false;
        record.Standard[k] = *standard;
        record.CaliData[k] = *potential_mV;
    }
    return true;
}

ChannelDisplay::ChannelState StateOf(const HeaderChannel& channel) {
    ChannelDisplay::ChannelState state;
    state.kind = channel.kind;
    state.stdUnit = channel.record.StdUnit;
    state.molarMass_g_per_mol = channel.molarMass_g_per_mol;
    return state;
}

void TakeTexts(PerQuantity<ExpectedCell>& expected, const ChannelDisplay::ChannelState& state) {
    const auto shown = ChannelDisplay::Compose(state);
    for (const auto& row : Quantities::table) {
        expected[row.quantity].blank |= shown[row.quantity].text.empty();
        expected[row.quantity].error |= shown[row.quantity].error;
    }
}

/// The cells of all values from one to another: their texts ascend with them.
void TakeValues(PerQuantity<ExpectedCell>& expected, const HeaderChannel& channel,
                const NumberInterval& converted) {
    ChannelDisplay::ChannelState low = StateOf(channel);
    ChannelDisplay::ChannelState high = low;
    low.converted = static_cast<float>(converted.low);
    high.converted = static_cast<float>(converted.high);
    TakeTexts(expected, low);
    TakeTexts(expected, high);
    if (converted.high < 0)
        return;
    low.converted = std::max(*low.converted, 0.0F); // below, the display says "Error"
    const auto from = ChannelDisplay::ValuesOf(low);
    const auto to = ChannelDisplay::ValuesOf(high);
    for (const auto& row : Quantities::table)
        if (row.quantity != Quantity::mV && from[row.quantity])
            expected[row.quantity].values.push_back(
                {*from[row.quantity],
                 to[row.quantity].value_or(std::numeric_limits<float>::max())});
}

std::string ValueText(double value, Quantity quantity) {
    const auto single = static_cast<float>(value);
    return quantity == Quantity::pH ? NumberText::Format(single, NumberText::Pattern::twoDecimals)
                                    : Mcommon::FormatReading(single);
}

} // namespace

std::optional<Quantity> HeaderChannel::OtherUnit() const {
    if (kind != Electrode::Kind::ion)
        return std::nullopt;
    return record.StdUnit == 0 ? Quantity::mol_l : Quantity::ppm;
}

HeaderChannel ChannelOf(const FileOpr::MeasurementHeader& header, std::size_t channel) {
    const HeaderCells& cells = header.channels[channel];
    HeaderChannel found;
    found.kind = Electrode::KindOf(cells.electrode);
    if (found.kind == Electrode::Kind::none || found.kind == Electrode::Kind::redox)
        return found;
    found.record.StdUnit = cells.stdUnit == molarUnit ? 1.0F : 0.0F;
    found.molarMass_g_per_mol = static_cast<float>(Electrode::MolarMass(cells.electrode));
    if (cells.electrode.size() >= MeasurementTexts::cellWidth)
        found.whyNot = cutName;
    else if (MeasurementLines::IsMissing(cells.pointCount))
        found.whyNot = noCalibration;
    else if (!ReadPoints(cells, found.record))
        found.whyNot = unreadable;
    return found;
}

PerQuantity<ExpectedCell> ExpectedCells(const HeaderChannel& channel,
                                        const NumberInterval& potential_mV) {
    PerQuantity<ExpectedCell> expected;
    const bool isPH = channel.kind == Electrode::Kind::pH;
    if (!isPH && channel.kind != Electrode::Kind::ion) {
        TakeTexts(expected, StateOf(channel));
        return expected;
    }
    const ReadingImage image = ImageOf(channel.record, isPH, potential_mV);
    for (const NumberInterval& values : image.values)
        TakeValues(expected, channel, values);
    if (image.mayFail) {
        ChannelDisplay::ChannelState failed = StateOf(channel);
        failed.conversionFailed = true;
        TakeTexts(expected, failed);
    }
    return expected;
}

std::string ExpectedText(const ExpectedCell& cell, Quantity quantity) {
    if (cell.values.empty())
        return cell.error ? "Error" : "no value";
    const auto low = std::ranges::min(cell.values, {}, &NumberInterval::low).low;
    const auto high = std::ranges::max(cell.values, {}, &NumberInterval::high).high;
    const std::string from = ValueText(low, quantity);
    const std::string to = ValueText(high, quantity);
    return from == to ? from : from + " to " + to;
}

} // namespace Mreport
