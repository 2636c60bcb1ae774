#include "settings/SetupChecks.h"

#include "app/Mcommon.h"
#include "base/Electrode.h"
#include "base/Letters.h"
#include "base/NumberText.h"

#include <algorithm>
#include <cctype>
#include <span>

namespace SetupChecks {

namespace {

constexpr std::string_view prompt = "< Please";

std::optional<Finding> CheckHardware(const Entries& entries) {
    const char* const message =
        "The hardware properties have not been completed yet. Please complete it before "
        "activating the measurement.";
    if (!Averaging(entries.averagingForCalibration))
        return Finding{message, Box::averagingForCalibration};
    if (!Averaging(entries.averagingForMeasurement))
        return Finding{message, Box::averagingForMeasurement};
    return std::nullopt;
}

std::optional<Finding> CheckProject(const Entries& entries) {
    const char* const message =
        "The project details have not been completely filled yet. Please complete it before "
        "activating the measurement.";
    if (!IsFilled(entries.projectName))
        return Finding{message, Box::projectName};
    if (!IsFilled(entries.analyst))
        return Finding{message, Box::analyst};
    return std::nullopt;
}

/// The first box of a channel in use that lacks its entry.
std::optional<Box> MissingBox(const ChannelEntry& channel) {
    if (!channel.selected || channel.electrode == Electrode::noneIndex)
        return std::nullopt;
    if (channel.electrode < 0)
        return Box::electrode;
    if (!IsFilled(channel.serialNo))
        return Box::serialNo;
    if (!MolarMass(channel.molarMass))
        return Box::molarMass;
    return std::nullopt;
}

std::optional<Finding> CheckBoxes(const Entries& entries) {
    for (std::size_t i = 0; i < entries.channelCount; ++i)
        if (const auto box = MissingBox(entries.channels[i]))
            return Finding{"Please complete all appropriate boxes for the selected electrode "
                           "before activating measurement",
                           *box, i};
    return std::nullopt;
}

std::optional<Finding> CheckCalibrations(const Entries& entries) {
    for (std::size_t i = 0; i < entries.channelCount; ++i) {
        const ChannelEntry& channel = entries.channels[i];
        if (!channel.selected || channel.electrode == Electrode::noneIndex ||
            channel.pointCount >= 2)
            continue;
        return Finding{"The electrode in channel " + std::to_string(i + 1) +
                           " has not been calibrated.\nYou must either calibrate it or de-select "
                           "it before continuing to measure.",
                       Box::calibrate, i};
    }
    return std::nullopt;
}

std::optional<Finding> CheckSelection(const Entries& entries) {
    if (std::ranges::any_of(std::span(entries.channels).first(entries.channelCount),
                            &ChannelEntry::selected))
        return std::nullopt;
    return Finding{"There has not channel being selected, please at least select one of those.",
                   Box::select};
}

} // namespace

std::optional<Finding> FirstFinding(const Entries& entries) {
    for (const auto check :
         {CheckHardware, CheckProject, CheckBoxes, CheckCalibrations, CheckSelection})
        if (auto finding = check(entries))
            return finding;
    return std::nullopt;
}

std::optional<std::int16_t> Averaging(std::string_view text) {
    const auto whole = NumberText::StrictInteger(text);
    if (whole < minAveraging || whole > maxAveraging) // what is no number is below every number
        return std::nullopt;
    if (NumberText::StrictSingle(text) != static_cast<float>(*whole))
        return std::nullopt;
    return whole;
}

std::optional<float> MolarMass(std::string_view text) {
    const std::string trimmed = Mcommon::TrimControl(text);
    if (trimmed.empty() || Letters::SameText(trimmed, "N/A"))
        return 0.0F;
    const auto number = NumberText::StrictSingle(trimmed);
    return number >= 0.0F ? number : std::nullopt;
}

bool IsFilled(std::string_view text) {
    return !Mcommon::TrimControl(text).empty() && text.find(prompt) == std::string_view::npos;
}

bool HasSimultaneousPair() {
    auto channels = std::span(mWinInit::ChannelSetup).first(mWinInit::ChannelsInUse());
    for (; !channels.empty(); channels = channels.subspan(1)) {
        const std::string& electrode = channels.front().Electrode;
        if (Electrode::KindOf(electrode) == Electrode::Kind::none ||
            electrode.find("mV") != std::string::npos)
            continue;
        if (std::ranges::count(channels, electrode, &mWinInit::ChannelSetupRecord::Electrode) > 1)
            return true;
    }
    return false;
}

} // namespace SetupChecks
