#include "history/CalibrationEntry.h"

#include "app/Mcommon.h"
#include "base/Electrode.h"
#include "base/NumberText.h"
#include "chem/CalibrationFit.h"
#include "chem/StandardEntry.h"
#include "settings/mWinInit.h"

namespace History {

namespace {

constexpr std::string_view separator = "; ";

std::string PointsText(const CalibrationRecord& record) {
    std::string text;
    for (std::size_t j = 0; j < record.Points(); ++j)
        text.append(j == 0 ? "" : separator)
            .append(NumberText::Plain(record.Standard[j]))
            .append(" ")
            .append(NumberText::Plain(record.CaliData[j]));
    return text;
}

std::string SlopesText(const CalibrationRecord& record) {
    std::string text;
    for (std::size_t s = 0; s + 1 < record.Points(); ++s)
        text.append(s == 0 ? "" : separator).append(Mcommon::FormatReading(record.Slope[s]));
    return text;
}

std::string UnitText(const CalibrationRecord& record, bool isPH) {
    if (isPH)
        return "pH";
    return UnitOf(record.StdUnit) == StandardUnit::ppm ? "ppm" : "mol/l";
}

std::string Text(const std::optional<float>& value, NumberText::Pattern pattern) {
    return value ? NumberText::Format(*value, pattern) : std::string();
}

std::string TextFor(const Entry& entry, const CalibrationRecord& record, const std::string& unit,
                    const CalibrationFit& fit) {
    std::string text = entry.electrode + " in channel " + std::to_string(*entry.channel + 1) +
                       ", " + std::to_string(record.Points()) + " points in " + unit;
    if (fit.percent)
        text += ", " + Text(fit.percent, NumberText::Pattern::oneDecimal) + " % of theory";
    return text;
}

std::string Fact(const Entry& entry, std::string_view name) {
    return FactOf(entry.data, name).value_or("");
}

std::optional<float> NumberFact(const Entry& entry, std::string_view name) {
    return NumberText::StrictSingle(Fact(entry, name));
}

} // namespace

Entry EntryOfCalibration(std::size_t channel, const std::string& temperature_celsius) {
    const auto& setup = mWinInit::ChannelSetup.at(channel);
    const auto& record = mWinInit::Calibration.at(channel);
    const bool isPH = Electrode::KindOf(setup.Electrode) == Electrode::Kind::pH;
    const CalibrationFit fit = FitOf(record, setup.Electrode);
    const std::string unit = UnitText(record, isPH);
    Entry entry;
    entry.kind = Kind::calibration;
    entry.channel = static_cast<int>(channel);
    entry.electrode = setup.Electrode;
    entry.serialNo = setup.SerialNo;
    entry.data = DataOf({{"reference", setup.RefType},
                         {"reference serial number", setup.RefSerialNo},
                         {"unit", unit},
                         {"points", PointsText(record)},
                         {"slopes", SlopesText(record)},
                         {"percent of theory", Text(fit.percent, NumberText::Pattern::oneDecimal)},
                         {"offset mV", fit.offset_mV ? NumberText::Plain(*fit.offset_mV) : ""},
                         {"temperature", temperature_celsius}});
    entry.text = TextFor(entry, record, unit, fit);
    return entry;
}

PastCalibration CalibrationOf(const Entry& entry) {
    PastCalibration past;
    past.at = entry.at;
    past.channel = entry.channel;
    past.electrode = entry.electrode;
    past.serialNo = entry.serialNo;
    past.reference = Fact(entry, "reference");
    past.referenceSerialNo = Fact(entry, "reference serial number");
    past.unit = Fact(entry, "unit");
    past.points = Fact(entry, "points");
    past.slopes = Fact(entry, "slopes");
    past.slope_percent = NumberFact(entry, "percent of theory");
    past.offset_mV = NumberFact(entry, "offset mV");
    past.temperature_celsius = Fact(entry, "temperature");
    past.analyst = entry.analyst;
    return past;
}

} // namespace History
