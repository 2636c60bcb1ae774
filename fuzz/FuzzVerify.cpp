// Any bytes as a measurement file that is verified, sealed, and held against the seal again when a
// byte of it has changed.

#include "NullPlatform.h"

#include "report/LineScanner.h"
#include "report/Seal.h"
#include "report/Verify.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

constexpr std::uint64_t slice = 100; ///< so that each input is taken in many

FileOpr::MeasurementHeader HeaderOf(const std::string& bytes) {
    FileOpr::MeasurementHeader header;
    for (std::size_t begin = 0; begin < bytes.size();) {
        const std::size_t end = std::min(bytes.find('\n', begin), bytes.size());
        header.TakeLine(std::string_view(bytes).substr(begin, end - begin));
        begin = end + 1;
    }
    return header;
}

void Verify(const std::string& bytes) {
    Mreport::MemorySource source(bytes);
    Mreport::Verification verification(source, bytes.size(), HeaderOf(bytes));
    while (verification.Step(slice))
        fuzz::Require(verification.Share() >= 0 && verification.Share() <= 1);
    const auto result = verification.Result();
    fuzz::Require(result.diverged >= static_cast<std::int64_t>(result.divergences.size()));
    fuzz::Require(!Mreport::VerdictText(result).empty());
}

Mreport::SealCheck::State Held(const std::string& bytes, const Mreport::Seal& seal) {
    Mreport::MemorySource source(bytes);
    Mreport::SealCheck check(source, seal);
    while (check.Step(slice)) {
    }
    fuzz::Require(!check.Text().empty());
    return check.Result();
}

void SealAndChange(std::string bytes, std::size_t any) {
    using State = Mreport::SealCheck::State;
    Mreport::MemorySource source(bytes);
    Mreport::Sealing sealing(source, bytes.size(), static_cast<std::int64_t>(any % 1000));
    while (sealing.Step(slice)) {
    }
    const auto seal =
        Mreport::ReadSeal(Mreport::SealText({"21.Nov.2026 14:30:07", sealing.Points()}, "run.4ch"));
    fuzz::Require(seal.has_value() && seal->points == sealing.Points());
    fuzz::Require(Held(bytes, *seal) == State::unchanged);
    fuzz::Require(Held(bytes + "x", *seal) == State::grown);
    if (bytes.empty())
        return;
    bytes[any % bytes.size()] ^= 1;
    fuzz::Require(Held(bytes, *seal) == State::changed);
}

const fuzz::NullPlatform platform;

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(fuzz::Text(data, size));
    Verify(bytes);
    SealAndChange(bytes, size == 0 ? 0 : data[0] * 257U);
    if (const auto seal = Mreport::ReadSeal(bytes))
        Held("any file", *seal);
    return 0;
}
