#include "report/HistorySeal.h"

#include "base/DateText.h"
#include "history/Log.h"
#include "history/Notes.h"

#include <charconv>

namespace Mreport {

namespace {

template <class Number>
std::optional<Number> NumberFact(const std::string& data, std::string_view name) {
    const std::string text = History::FactOf(data, name).value_or("");
    Number number{};
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    return result.ec == std::errc() && !text.empty() ? std::optional(number) : std::nullopt;
}

/// The point that an entry tells of; nothing for one that tells of none.
std::optional<SealPoint> PointOf(const History::Entry& entry) {
    const auto length = NumberFact<std::uint64_t>(entry.data, "length");
    const auto record = NumberFact<std::int32_t>(entry.data, "record");
    const auto sum = History::FactOf(entry.data, "sha256");
    if (!length || !record || !sum)
        return std::nullopt;
    return SealPoint{*length, *record, *sum};
}

} // namespace

std::optional<Seal> SealFromHistory(const std::filesystem::path& file) {
    History::Log* log = History::Log::Current();
    if (log == nullptr || !History::CanBeKept())
        return std::nullopt;
    return SealFromHistory(log->Opened(), file);
}

std::optional<Seal> SealFromHistory(const History::Store& history,
                                    const std::filesystem::path& file) {
    History::Wish wish;
    wish.file = History::FileText(file);
    Seal seal;
    for (const History::Row& row : history.Rows(wish)) {
        const History::Entry entry = History::EntryOf(row).entry;
        if (History::FactOf(entry.data, "new file") == "yes")
            seal.points.clear(); // what comes is of another file of that name
        const auto point = PointOf(entry);
        if (!point)
            continue;
        if (!seal.points.empty() && point->length < seal.points.back().length)
            seal.points.clear(); // somebody has cut it, and it was read anew
        if (seal.points.empty() || point->length > seal.points.back().length)
            seal.points.push_back(*point);
        seal.sealedAt = DateText::Date(entry.at) + " " + DateText::TimeOfDay(entry.at);
    }
    return seal.points.empty() ? std::nullopt : std::optional(seal);
}

} // namespace Mreport
