#include "tools/HistoryOfFile.h"

#include "base/CodePage.h"
#include "base/RunTimeError.h"
#include "history/Log.h"
#include "report/HistorySeal.h"

#include <iostream>

namespace tools {

namespace {

/// Where it is; nothing where there is none. Throws RunTimeError for one that was named.
std::optional<std::filesystem::path> PlaceOfHistory(const Options& options) {
    if (!History::CanBeKept())
        return std::nullopt;
    const auto history = options.history.value_or(History::UsualFile());
    std::error_code missing;
    if (std::filesystem::exists(history, missing))
        return history;
    if (options.history)
        throw RunTimeError("Opening " + CodePage::NameOf(history) + ": File not found");
    return std::nullopt;
}

} // namespace

std::optional<SealFound> CheckHistory(const Options& options, const std::filesystem::path& file,
                                      const Mreport::ViewedFile& viewed) {
    const auto history = PlaceOfHistory(options);
    if (!history)
        return std::nullopt;
    try {
        const auto seal = Mreport::SealFromHistory(*History::OpenStoreToRead(*history), file);
        return seal ? std::optional(HeldAgainst(*seal, viewed)) : std::nullopt;
    } catch (const RunTimeError& error) {
        return SealFound{false, error.what()};
    }
}

std::unique_ptr<History::Log> InstallHistory(const Options& options) {
    const auto history = PlaceOfHistory(options);
    if (!history)
        return nullptr;
    return std::make_unique<History::Log>(*history, [](const std::string& message) {
        std::cerr << "vantrel-file: " << CodePage::ToUtf8(message) << '\n';
    });
}

} // namespace tools
