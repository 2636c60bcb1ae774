#include "tools/SealFile.h"

#include "tools/OpenedFile.h"

namespace tools {

std::optional<SealFound> CheckSeal(const std::filesystem::path& file,
                                   const Mreport::ViewedFile& viewed) {
    const auto seal = Mreport::LoadSeal(Mreport::SealBeside(file));
    return seal ? std::optional(HeldAgainst(*seal, viewed)) : std::nullopt;
}

SealFound HeldAgainst(const Mreport::Seal& seal, const Mreport::ViewedFile& viewed) {
    Mreport::SealCheck check(viewed.pages.Source(), seal);
    check.Step(wholeFile);
    return {check.Result() == Mreport::SealCheck::State::changed, check.Text()};
}

} // namespace tools
