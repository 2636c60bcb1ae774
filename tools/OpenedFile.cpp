#include "tools/OpenedFile.h"

#include "base/CodePage.h"
#include "base/RunTimeError.h"
#include "files/MeasuringRun.h"
#include "report/ReportLoader.h"
#include "report/SilentView.h"
#include "report/WholeRun.h"

namespace tools {

void Load(const std::filesystem::path& file, Mreport::ViewedFile& viewed) {
    const FileOpr::MeasuringRun run;
    Mreport::ShownGraph shown;
    Mreport::SilentView<Mreport::SilentGraph> view(0);
    Mreport::ReportLoader(run, viewed, shown, view).ViewFile(file);
    if (!viewed.header.hasElectrodes && Mreport::WholeRun::Records(viewed.pages) == 0)
        throw RunTimeError("Reading " + CodePage::NameOf(file) + ": This is no measurement file");
}

std::string Utf8(std::string_view text) {
    return CodePage::ToUtf8(text);
}

std::string NameOf(const std::filesystem::path& file) {
    const auto name = file.u8string();
    return {name.begin(), name.end()};
}

} // namespace tools
