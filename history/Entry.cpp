#include "history/Entry.h"

#include <algorithm>
#include <cstdio>

namespace History {

namespace {

constexpr std::string_view timePattern = "0000-00-00 00:00:00";

struct KindRow {
    Kind kind;
    std::string_view name;
};

constexpr std::array<KindRow, allKinds.size()> kindRows = {{
    {Kind::begun, "History begun"},
    {Kind::calibration, "Calibration"},
    {Kind::setting, "Setting changed"},
    {Kind::recordingBegun, "Recording begun"},
    {Kind::recordingEnded, "Recording ended"},
    {Kind::linkFailed, "Link failed"},
    {Kind::linkAnswers, "Link answers again"},
    {Kind::flushed, "Records in file"},
    {Kind::recovered, "Recovered"},
    {Kind::writeFailed, "Write failed"},
    {Kind::checked, "Check standard"},
}};

bool FitsTimePattern(std::string_view text) {
    const auto fits = [](char c, char pattern) {
        return pattern == '0' ? c >= '0' && c <= '9' : c == pattern;
    };
    return text.size() == timePattern.size() &&
           std::equal(text.begin(), text.end(), timePattern.begin(), fits);
}

int Number(std::string_view digits) {
    constexpr int base = 10;
    int value = 0;
    for (const char digit : digits)
        value = value * base + (digit - '0');
    return value;
}

/// A line end within a value would begin another fact.
std::string OnOneLine(std::string text) {
    std::ranges::replace(text, '\n', ' ');
    return text;
}

} // namespace

std::string_view NameOf(Kind kind) {
    const auto row = std::ranges::find(kindRows, kind, &KindRow::kind);
    return row == kindRows.end() ? std::string_view() : row->name;
}

std::optional<Kind> KindNamed(std::string_view name) {
    const auto row = std::ranges::find(kindRows, name, &KindRow::name);
    return row == kindRows.end() ? std::nullopt : std::optional(row->kind);
}

std::string DataOf(const Facts& facts) {
    std::string data;
    for (const auto& [name, value] : facts)
        data.append(name).append("=").append(OnOneLine(value)).append("\n");
    return data;
}

std::optional<std::string> FactOf(std::string_view data, std::string_view name) {
    while (!data.empty()) {
        const auto end = std::min(data.find('\n'), data.size());
        const std::string_view line = data.substr(0, end);
        if (line.size() > name.size() && line.starts_with(name) && line[name.size()] == '=')
            return std::string(line.substr(name.size() + 1));
        data.remove_prefix(std::min(end + 1, data.size()));
    }
    return std::nullopt;
}

std::string SortableTime(const LocalTime& time) {
    constexpr std::size_t room = 80; // of six numbers, however large
    std::array<char, room> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d:%02d", time.year, time.month,
                  time.day, time.hour, time.minute, time.second);
    return text.data();
}

std::optional<LocalTime> TimeOf(std::string_view sortable) {
    if (!FitsTimePattern(sortable))
        return std::nullopt;
    return LocalTime{Number(sortable.substr(0, 4)),  Number(sortable.substr(5, 2)),
                     Number(sortable.substr(8, 2)),  Number(sortable.substr(11, 2)),
                     Number(sortable.substr(14, 2)), Number(sortable.substr(17, 2))};
}

} // namespace History
