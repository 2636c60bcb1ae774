// Any bytes as a measurement file: pages, record ranges, search, graph spans, selection.
// The second half of the input is what is recorded while the first is viewed; then the file
// shrinks.

#include "NullPlatform.h"
#include "report/GraphSpan.h"
#include "report/RecordSearch.h"
#include "report/ReportLoader.h"
#include "report/Selection.h"
#include "report/SilentView.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace {

/// Remembers counts alone, and traps what no caller may ask for.
class CountingGraph : public Mreport::SilentGraph {
public:
    int NumSets() const override { return sets_; }
    void SetNumSets(int sets) override {
        fuzz::Require(sets >= 0 && sets <= maxChannels);
        sets_ = sets;
    }
    int NumPoints() const override { return points_; }
    void SetNumPoints(int points) override { points_ = points; }
    void SetThisSet(int set) override { fuzz::Require(set >= 1 && set <= maxChannels); }
    void SetData(int point, double) override { CheckPoint(point); }
    void SetExtra(int point, int) override { CheckPoint(point); }
    void SetLabel(int point, const std::string&) override { CheckPoint(point); }
    void SetTickEvery(int points) override { fuzz::Require(points >= 1); }

private:
    static void CheckPoint(int point) {
        fuzz::Require(point >= 1 && point <= Mreport::maxGraphPoints);
    }
    int sets_ = 0;
    int points_ = 0;
};

using NoView = Mreport::SilentView<CountingGraph>;

/// `any` chooses the spans, so that the inputs together try them all.
void DrawSpans(NoView& view, const Mreport::ViewedFile& file, Mreport::ShownGraph& shown,
               std::size_t any) {
    const auto points = static_cast<std::int32_t>(any % 1600);
    for (const auto& row : Quantities::table) {
        shown.unitCode = row.quantity;
        Mreport::UpdateGraph(
            view.graph, file, shown,
            {shown.graphPageIndex, Mreport::GraphRange(file, shown).Last(), 50, any % 2 == 0});
    }
    for (const std::int32_t end :
         {points, Mreport::GraphRange(file, shown).recordsInPage, 2'147'483'647})
        Mreport::UpdateGraph(view.graph, file, shown,
                             {shown.graphPageIndex, {end}, points, any % 3 == 0});
}

void SearchRecords(const Mreport::ViewedFile& file) {
    Mreport::RecordSearch search(file);
    for (const std::int32_t number : {0, 1, 2, 12, 2'147'483'647}) {
        search.Find({number});
        for (const auto& entry : search.Entries())
            for (const auto unit : search.Units(entry.index))
                search.ValueText(entry.index, unit);
    }
}

void ReadEveryLine(const Mreport::ViewedFile& file) {
    for (int page = 0; page < file.pages.Count(); ++page) {
        Mreport::PageRecordRange(file.pages, page);
        for (std::size_t line = 0; line < file.pages.LineCount(page); ++line)
            file.pages.Shown(page, line);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::NullPlatform platform;
    const FileOpr::MeasuringRun run;
    Mreport::ViewedFile file;
    Mreport::ShownGraph shown;
    const std::string bytes(fuzz::Text(data, size));
    NoView view(0);
    Mreport::ReportLoader loader(run, file, shown, view);
    auto source = std::make_unique<Mreport::MemorySource>(bytes.substr(0, size / 2));
    Mreport::MemorySource& bytesOfFile = *source;
    loader.ViewSource("fuzz.4ch", std::move(source));
    ReadEveryLine(file);
    bytesOfFile.Append(bytes.substr(size / 2));
    file.viewingLiveFile = true;
    loader.SetAutoUpdate(true);
    loader.LiveRecord();
    loader.SetAutoUpdate(false);
    ReadEveryLine(file);
    DrawSpans(view, file, shown, size);
    SearchRecords(file);
    Mreport::Selection selection(file, shown);
    for (const auto& row : Quantities::table)
        selection.ChooseUnit(row.quantity);
    selection.Accept(shown);
    bytesOfFile.Cut(size / 3);
    ReadEveryLine(file);
    return 0;
}
