#include "base/CodePage.h"
#include "base/RunTimeError.h"
#include "report/CsvExport.h"
#include "tools/Commands.h"
#include "tools/OpenedFile.h"

#include <iostream>

namespace tools {

namespace {

constexpr std::string_view standardOutput = "-";

void WriteToStandardOutput(const Mreport::ViewedFile& viewed, Mreport::CsvReader reader) {
    const auto write = [](std::string_view text) {
        std::cout.write(text.data(), static_cast<std::streamsize>(text.size()));
        if (!std::cout)
            throw RunTimeError("Writing to standard output: it takes no more");
    };
    Mreport::WriteCsv(viewed, reader, write, [] { return false; });
    if (!std::cout.flush())
        throw RunTimeError("Writing to standard output: it takes no more");
}

std::filesystem::path TargetOf(const Options& options, const std::filesystem::path& file) {
    auto target = options.output ? std::filesystem::path(*options.output) : file;
    if (!options.output)
        target.replace_extension(".csv");
    std::error_code missing;
    if (std::filesystem::equivalent(target, file, missing))
        throw RunTimeError("Writing " + CodePage::NameOf(target) +
                           ": This is the measurement file itself");
    if (!options.force && std::filesystem::exists(target, missing))
        throw RunTimeError("Writing " + CodePage::NameOf(target) +
                           ": The file is there already; --force replaces it");
    return target;
}

} // namespace

int Csv(const Options& options, const std::filesystem::path& file, JsonArray&) {
    const auto reader =
        options.spreadsheet ? Mreport::CsvReader::spreadsheet : Mreport::CsvReader::any;
    const bool toOutput = options.output == standardOutput;
    const auto target = toOutput ? std::filesystem::path() : TargetOf(options, file);
    Mreport::ViewedFile viewed;
    Load(file, viewed);
    if (toOutput) {
        WriteToStandardOutput(viewed, reader);
        return fine;
    }
    const auto records = Mreport::ExportCsv(viewed, target, reader, [] { return false; });
    std::cout << NameOf(target) << ": " << records << (records == 1 ? " record\n" : " records\n");
    return fine;
}

} // namespace tools
