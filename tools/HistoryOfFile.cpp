#include "tools/HistoryOfFile.h"

#include "base/CodePage.h"
#include "base/RunTimeError.h"
#include "history/Log.h"
#include "report/HistorySeal.h"

namespace tools {

std::optional<SealFound> CheckHistory(const Options& options, const std::filesystem::path& file,
                                      const Mreport::ViewedFile& viewed) {
    if (!History::CanBeKept())
        return std::nullopt;
    const auto history = options.history.value_or(History::UsualFile());
    std::error_code missing;
    if (!std::filesystem::exists(history, missing)) {
        if (options.history)
            throw RunTimeError("Opening " + CodePage::NameOf(history) + ": File not found");
        return std::nullopt;
    }
    try {
        const auto seal = Mreport::SealFromHistory(*History::OpenStoreToRead(history), file);
        return seal ? std::optional(HeldAgainst(*seal, viewed)) : std::nullopt;
    } catch (const RunTimeError& error) {
        return SealFound{false, error.what()};
    }
}

} // namespace tools
