#include "tools/SealFile.h"

#include "report/Seal.h"

namespace tools {

namespace {

constexpr std::uint64_t wholeFile = ~std::uint64_t{0} / 2;

} // namespace

std::optional<SealFound> CheckSeal(const std::filesystem::path& file,
                                   const Mreport::ViewedFile& viewed) {
    const auto seal = Mreport::LoadSeal(Mreport::SealBeside(file));
    if (!seal)
        return std::nullopt;
    Mreport::SealCheck check(viewed.pages.Source(), *seal);
    check.Step(wholeFile);
    return SealFound{check.Result() == Mreport::SealCheck::State::changed, check.Text()};
}

} // namespace tools
