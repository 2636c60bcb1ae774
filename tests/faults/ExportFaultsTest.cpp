#include "base/RunTimeError.h"
#include "faults/FailingCalls.h"
#include "report/CsvExport.h"
#include "report/support/LoadedReport.h"
#include "support/FilesIn.h"

namespace {

namespace fs = std::filesystem;
using FailingCalls::Fault;

class ExportFaults : public LoadedReport, public testing::WithParamInterface<Fault> {
protected:
    static constexpr const char* older = "an older export\r\n";

    ExportFaults() { View(MeasurementText().File(300)); }

    fs::path Target() const { return platform.folder.Path() / "out.csv"; }

    void Export() {
        Mreport::ExportCsv(viewed, Target(), Mreport::CsvReader::any, [] { return false; });
    }

    std::size_t FilesBesideTarget() const { return FilesIn(platform.folder.Path()); }
};

} // namespace

TEST_P(ExportFaults, Whichever_call_fails_the_file_is_the_older_one_or_the_whole_new_one) {
    Export();
    const std::string whole = ReadBytes(Target());
    const auto exportTold = [this] {
        try {
            Export();
        } catch (const RunTimeError& error) {
            ::_exit(std::string(error.what()).empty() ? 1 : 0); // not finished
        }
    };
    const int calls = FailingCalls::InChild(exportTold).calls;
    ASSERT_GT(calls, 4);
    const std::size_t files = FilesBesideTarget();
    for (int failing = 1; failing <= calls; ++failing) {
        SCOPED_TRACE("call " + std::to_string(failing));
        WriteBytes(Target(), older);
        const auto result = FailingCalls::InChild(exportTold, failing, GetParam());
        const std::string bytes = ReadBytes(Target());
        EXPECT_TRUE(bytes == whole || (bytes == older && !result.finished)) << bytes.substr(0, 80);
        if (GetParam() != Fault::end && GetParam() != Fault::gone) {
            EXPECT_EQ(FilesBesideTarget(), files) << "half an export left behind";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(EachFault, ExportFaults, testing::ValuesIn(FailingCalls::allFaults),
                         [](const auto& fault) { return FailingCalls::NameOf(fault.param); });
