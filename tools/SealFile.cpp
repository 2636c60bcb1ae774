#include "tools/SealFile.h"

#include "base/CodePage.h"
#include "base/RunTimeError.h"
#include "report/Seal.h"

#include <fstream>
#include <sstream>

namespace tools {

namespace {

constexpr std::uint64_t wholeFile = ~std::uint64_t{0} / 2;

Mreport::Seal Read(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    const auto seal = stream && text ? Mreport::ReadSeal(text.str()) : std::nullopt;
    if (!seal)
        throw RunTimeError("Reading " + CodePage::NameOf(file) + ": This is no seal");
    return *seal;
}

} // namespace

std::optional<SealFound> CheckSeal(const std::filesystem::path& file,
                                   const Mreport::ViewedFile& viewed) {
    const auto beside = Mreport::SealBeside(file);
    std::error_code missing;
    if (!std::filesystem::exists(beside, missing))
        return std::nullopt;
    Mreport::SealCheck check(viewed.pages.Source(), Read(beside));
    check.Step(wholeFile);
    return SealFound{check.Result() == Mreport::SealCheck::State::changed, check.Text()};
}

} // namespace tools
