#include "base/CodePage.h"
#include "base/RunTimeError.h"
#include "report/Seal.h"
#include "report/VerifyResult.h"
#include "report/WholeRun.h"
#include "tools/Commands.h"
#include "tools/OpenedFile.h"

#include <iostream>

namespace tools {

namespace {

void RefuseExisting(const Options& options, const std::filesystem::path& target) {
    std::error_code missing;
    if (!options.force && std::filesystem::exists(target, missing))
        throw RunTimeError("Writing " + CodePage::NameOf(target) +
                           ": The file is there already; --force replaces it");
}

std::vector<Mreport::SealPoint> PointsOf(const Mreport::ViewedFile& viewed, std::int64_t records) {
    Mreport::TextSource& source = viewed.pages.Source();
    Mreport::Sealing sealing(source, source.Size(), records);
    sealing.Step(wholeFile);
    return sealing.Points();
}

} // namespace

int MakeSeal(const Options& options, const std::filesystem::path& file, JsonArray& answers) {
    const auto target = Mreport::SealBeside(file);
    RefuseExisting(options, target);
    Mreport::ViewedFile viewed;
    Load(file, viewed);
    const std::int64_t records = Mreport::WholeRun::Records(viewed.pages);
    const auto seal = Mreport::SaveSeal(target, file, PointsOf(viewed, records));
    if (options.json)
        answers.Add(Json()
                        .Text("file", NameOf(file))
                        .Text("seal", NameOf(target))
                        .Text("sealed", seal.sealedAt)
                        .Number("records", records)
                        .Number("bytes", static_cast<std::int64_t>(seal.points.back().length))
                        .Text("sha256", seal.points.back().sha256)
                        .Object());
    else
        std::cout << NameOf(target) << ": " << Mreport::Grouped(records)
                  << (records == 1 ? " record sealed\n" : " records sealed\n");
    return fine;
}

} // namespace tools
