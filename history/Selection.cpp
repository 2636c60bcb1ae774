#include "history/Selection.h"

#include "base/Letters.h"

#include <algorithm>

namespace History {

namespace {

Wish Calibrations(const KnownElectrode& electrode) {
    Wish wish;
    wish.kind = Kind::calibration;
    wish.electrode = electrode.electrode;
    wish.serialNo = electrode.serialNo;
    return wish;
}

bool Holds(const NumberedEntry& numbered, const std::string& text) {
    const Entry& entry = numbered.entry;
    return std::ranges::any_of(
        std::array<std::string_view, 7>{NameOf(entry.kind), entry.text, entry.electrode,
                                        entry.serialNo, entry.file, entry.analyst, entry.user},
        [&text](std::string_view field) { return Letters::Contains(field, text); });
}

} // namespace

std::vector<KnownElectrode> CalibratedElectrodes(Log& log) {
    std::vector<KnownElectrode> electrodes;
    Wish wish;
    wish.kind = Kind::calibration;
    wish.newestFirst = true;
    for (const auto& [number, entry] : log.Entries(wish)) {
        const KnownElectrode electrode{entry.electrode, entry.serialNo};
        if (std::ranges::find(electrodes, electrode) == electrodes.end())
            electrodes.push_back(electrode);
    }
    return electrodes;
}

std::vector<PastCalibration> CalibrationsOf(Log& log, const KnownElectrode& electrode) {
    std::vector<PastCalibration> calibrations;
    for (const auto& [number, entry] : log.Entries(Calibrations(electrode)))
        calibrations.push_back(CalibrationOf(entry));
    return calibrations;
}

std::optional<PastCalibration> LastCalibrationOf(Log& log, const KnownElectrode& electrode) {
    Wish wish = Calibrations(electrode);
    wish.newestFirst = true;
    wish.most = 1;
    const auto found = log.Entries(wish);
    return found.empty() ? std::nullopt : std::optional(CalibrationOf(found.front().entry));
}

std::vector<NumberedEntry> EventsWith(Log& log, const Wish& wish, const std::string& text) {
    auto events = log.Entries(wish);
    if (!text.empty())
        std::erase_if(events, [&text](const NumberedEntry& event) { return !Holds(event, text); });
    return events;
}

} // namespace History
