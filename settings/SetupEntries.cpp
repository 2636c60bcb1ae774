#include "settings/SetupEntries.h"

#include "base/DateText.h"
#include "base/Electrode.h"
#include "base/NumberText.h"
#include "settings/mWinInit.h"

#include <array>

namespace SetupEntries {

namespace {

constexpr std::size_t dayLength = 11; ///< of "dd.mmm.yyyy"
constexpr std::string_view notAvailable = "N/A";

/// The number that the digits are; nothing where a character is none.
std::optional<int> Digits(std::string_view text) {
    int value = 0;
    for (const char c : text) {
        if (c < '0' || c > '9')
            return std::nullopt;
        value = value * 10 + (c - '0');
    }
    return value;
}

int DaysInMonth(int year, int month) {
    constexpr std::array<int, 12> days = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? 29 : days[static_cast<std::size_t>(month - 1)];
}

} // namespace

std::optional<Day> DayOf(std::string_view dateText) {
    if (dateText.size() < dayLength)
        return std::nullopt;
    const std::string_view text = dateText.substr(dateText.size() - dayLength);
    const auto day = Digits(text.substr(0, 2));
    const int month = DateText::MonthOf(text.substr(3, 3));
    const auto year = Digits(text.substr(7));
    if (text[2] != '.' || text[6] != '.' || month == 0)
        return std::nullopt;
    // What is no number is below every number.
    if (year < 1 || day < 1 || *day > DaysInMonth(*year, month))
        return std::nullopt;
    return Day{*year, month, *day};
}

std::string OnDay(std::string_view dateText, const Day& day) {
    const std::string date = DateText::Date({.year = day.year, .month = day.month, .day = day.day});
    if (!DayOf(dateText))
        return "00:00:00 " + date;
    return std::string(dateText.substr(0, dateText.size() - dayLength)) + date;
}

std::string DateCell(std::string_view dateText) {
    if (!DayOf(dateText))
        return std::string(notAvailable);
    return std::string(dateText.substr(dateText.size() - dayLength));
}

std::string CalibrationDateCell(std::size_t channel) {
    const CalibrationRecord& record = mWinInit::Calibration[channel];
    return record.PointCount < 1 ? std::string(notAvailable) : DateCell(record.CalibrationDate);
}

std::string MolarMassText(float molarMass_g_per_mol) {
    return molarMass_g_per_mol == 0 ? std::string(notAvailable)
                                    : NumberText::Plain(molarMass_g_per_mol);
}

void ChooseElectrode(std::string_view electrode, std::size_t channel) {
    mWinInit::ChannelSetupRecord& setup = mWinInit::ChannelSetup[channel];
    setup.MolarMass = 0; // an entry that the library lacks leaves it as it was
    mWinInit::LoadCalibrationInfo(std::string(electrode), channel);
    setup.Electrode = electrode;
    if (setup.MolarMass == 0)
        setup.MolarMass = Electrode::MolarMass(electrode);
}

} // namespace SetupEntries
