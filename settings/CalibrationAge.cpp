#include "settings/CalibrationAge.h"

#include "base/NumberText.h"
#include "platform/Platform.h"
#include "settings/SetupEntries.h"
#include "settings/StoredLines.h"
#include "settings/mWinInit.h"

#include <algorithm>
#include <chrono>

namespace mWinInit {

namespace {

const std::string ageSection = "Calibration Age";
const std::string pHKey = "pH Hours";
const std::string ionKey = "Ion Hours";
const std::string redoxKey = "Redox Hours";

int ReadHours(const std::string& key) {
    const int hours = platform::Current().profile.GetInt(ageSection, key, 0);
    return hours > CalibrationAges::longest_hours ? 0 : std::max(hours, 0);
}

int LimitOf(Electrode::Kind kind, const CalibrationAges& ages) {
    switch (kind) {
    case Electrode::Kind::pH:
        return ages.pH_hours;
    case Electrode::Kind::ion:
        return ages.ion_hours;
    case Electrode::Kind::redox:
        return ages.redox_hours;
    case Electrode::Kind::none:
        break;
    }
    return 0;
}

using Minutes = std::chrono::sys_time<std::chrono::minutes>;

Minutes MinuteOf(int year, int month, int day, int hour, int minute) {
    using namespace std::chrono;
    return sys_days(std::chrono::year(year) / std::chrono::month(static_cast<unsigned>(month)) /
                    std::chrono::day(static_cast<unsigned>(day))) +
           hours(hour) + minutes(minute);
}

/// Of a stored "hh:mm dd.mmm.yyyy", with seconds or without.
std::optional<Minutes> MinuteOf(std::string_view dateText) {
    const auto day = SetupEntries::DayOf(dateText); // which alone takes 11 characters
    if (!day || dateText[2] != ':')
        return std::nullopt;
    return MinuteOf(day->year, day->month, day->day, NumberText::LeadingInteger(dateText),
                    NumberText::LeadingInteger(dateText.substr(3)));
}

} // namespace

CalibrationAges LoadCalibrationAges() {
    return {ReadHours(pHKey), ReadHours(ionKey), ReadHours(redoxKey)};
}

std::vector<std::string> SaveCalibrationAges(const CalibrationAges& ages) {
    LineWriter writer;
    const auto write = [&writer](const std::string& key, int hours) {
        writer.WriteLine(ageSection, key, NumberText::Plain(std::int32_t{hours}));
    };
    write(pHKey, ages.pH_hours);
    write(ionKey, ages.ion_hours);
    write(redoxKey, ages.redox_hours);
    return writer.TakeMessages();
}

std::optional<int> AgePassed_hours(std::size_t channel, const CalibrationAges& ages,
                                   const LocalTime& now) {
    const CalibrationRecord& record = Calibration.at(channel);
    const int limit_hours = LimitOf(Electrode::KindOf(ChannelSetup.at(channel).Electrode), ages);
    const auto calibrated = MinuteOf(record.CalibrationDate);
    if (limit_hours == 0 || record.PointCount < 1 || !calibrated)
        return std::nullopt;
    const auto age = MinuteOf(now.year, now.month, now.day, now.hour, now.minute) - *calibrated;
    return age > std::chrono::hours(limit_hours) ? std::optional(limit_hours) : std::nullopt;
}

} // namespace mWinInit
