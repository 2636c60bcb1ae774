#include "files/DiskForecast.h"

#include "base/CodePage.h"
#include "base/NumberText.h"
#include "platform/Platform.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

namespace FileOpr {

namespace {

double Bytes(std::uint64_t bytes) {
    return static_cast<double>(bytes);
}

/// How many bytes of records the disks can take.
double RoomForRecords(const RunOnDisk& run, const platform::DiskRoom& targetRoom) {
    if (run.direct)
        return Bytes(targetRoom.free_bytes);
    const auto temporaryRoom = platform::Current().files.RoomOfDisk(run.temporaryFile);
    const double afterCopying = Bytes(targetRoom.free_bytes) - Bytes(run.waitingBytes);
    if (temporaryRoom.disk == targetRoom.disk)
        return afterCopying / 2;
    return std::min(Bytes(temporaryRoom.free_bytes), afterCopying);
}

/// "18.3 GB", in the disk makers' powers of ten.
std::string SizeText(std::uint64_t bytes) {
    constexpr std::array<std::string_view, 5> units = {"bytes", "kB", "MB", "GB", "TB"};
    constexpr double step = 1000;
    double size = Bytes(bytes);
    std::size_t unit = 0;
    for (; size >= step && unit + 1 < units.size(); ++unit)
        size /= step;
    const auto number = static_cast<float>(size);
    return (unit == 0 ? NumberText::Plain(number)
                      : NumberText::Format(number, NumberText::Pattern::oneDecimal)) +
           " " + std::string(units[unit]);
}

} // namespace

DiskForecast ForecastRoom(const RunOnDisk& run) {
    constexpr double secondsPerHour = 3600;
    const auto targetRoom = platform::Current().files.RoomOfDisk(run.target);
    const double records =
        std::max(RoomForRecords(run, targetRoom), 0.0) / static_cast<double>(run.recordBytes);
    // A record comes when whole seconds have passed.
    const double period_s = std::ceil(static_cast<double>(run.period_s));
    return {targetRoom.free_bytes, records * period_s / secondsPerHour};
}

std::size_t RecordBytes(const MeasurementFormat::RunRows& rows, std::size_t channelCount) {
    constexpr std::int32_t anyNumber = 100'000;
    const auto record = MeasurementFormat::BuildRecord(anyNumber, {}, {}, {}, channelCount);
    return MeasurementFormat::RecordText(record, rows, channelCount).size();
}

std::string RoomText(double hours) {
    if (hours < 1)
        return "room on the disk for less than an hour";
    const std::string number =
        NumberText::Format(static_cast<float>(std::floor(hours)), NumberText::Pattern::oneDecimal);
    const std::string whole = number.substr(0, number.find('.'));
    return "room on the disk for " + whole + (whole == "1" ? " hour" : " hours");
}

std::string TargetToolTip(const std::filesystem::path& target,
                          const std::optional<DiskForecast>& forecast) {
    std::string text = CodePage::NameOf(target);
    if (!forecast)
        return text;
    return text + "\n" + SizeText(forecast->free_bytes) + " free, " + RoomText(forecast->hours);
}

std::string RoomWatch::Add(const DiskForecast& forecast) {
    const bool isShort = forecast.hours < enoughHours;
    if (std::exchange(said_, isShort) || !isShort)
        return {};
    return "At this period there is " + RoomText(forecast.hours) + ".";
}

} // namespace FileOpr
