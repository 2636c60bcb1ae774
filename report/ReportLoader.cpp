#include "report/ReportLoader.h"

#include "app/Mcommon.h"
#include "base/NumberText.h"
#include "files/MeasurementLines.h"
#include "platform/Platform.h"
#include "report/ChannelHeader.h"
#include "report/GraphSpan.h"
#include "report/LiveGraph.h"

#include <algorithm>
#include <memory>

namespace Mreport {

namespace {

constexpr std::string_view readyText = "Ready";
constexpr std::int32_t firstDrawingAt = 51; // records
constexpr std::chrono::milliseconds lastProgressShown{100};
constexpr unsigned linesPerClockRead = 16; // of a load; some microseconds
constexpr std::uint64_t percent = 100;

std::string ProgressText(std::uint64_t bytesRead, std::uint64_t fileLength) {
    const float fraction =
        fileLength == 0 ? 1.0F : static_cast<float>(bytesRead) / static_cast<float>(fileLength);
    return "Loading data, " +
           NumberText::Format(std::min(fraction, 1.0F), NumberText::Pattern::percent) +
           " complete. [Press ESC to stop loading]";
}

} // namespace

/// A load at work: the flags and the mouse pointer are restored however it ends.
class ReportLoader::Running {
public:
    explicit Running(ReportLoader& loader) : loader_(loader) {
        loader_.idle_ = false;
        loader_.stopRequested_ = false;
        loading = true;
        platform::Current().desktop.SetMousePointer(platform::MousePointer::hourglass);
    }
    ~Running() {
        loader_.idle_ = true;
        loading = false;
        reloadInProgress = false;
        platform::Current().desktop.SetMousePointer(platform::MousePointer::normal);
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

private:
    ReportLoader& loader_;
};

void ReportLoader::RequestStop() {
    if (!idle_)
        stopRequested_ = true;
}

void ReportLoader::ViewFile(const std::filesystem::path& fileName) {
    if (!idle_) {
        Mcommon::MessageBoxEx(std::string(busyText), platform::style::okOnly,
                              platform::style::information);
        return;
    }
    Mcommon::errorLocation = "Report - ViewFile";
    ViewSource(fileName, std::make_unique<FileSource>(fileName));
}

void ReportLoader::ViewSource(const std::filesystem::path& fileName,
                              std::unique_ptr<TextSource> source) {
    const Running running(*this);
    viewedFile = fileName;
    view_.ShowCaption(fileName);
    viewingLiveFile = reloadInProgress = IsLiveFile(fileName);
    autoUpdate = false;
    unitCode = Quantity::mV;
    lastPageIndex = graphPageIndex = shownPageIndex = 0;
    recordsInPage = pageFirstRecordOffset = linesPerRecord = 0;
    pages.Open(std::move(source));
    view_.ResetPages();
    view_.Graph().SetNumSets(GetChanInfo());
    FillList(true);
    restUnread_ = stopRequested_;
    if (viewingLiveFile && !restUnread_) // what was recorded during the load
        CatchUp();
}

LineScanner ReportLoader::MakeScanner() {
    pages.ReopenLastLine();
    LineScanner scanner(pages.Source(), pages.NextOffset());
    scanner.onLongLine = [this] {
        Mcommon::LetEventsRun();
        return stopRequested_;
    };
    return scanner;
}

void ReportLoader::LetEventsRun() {
    // The clock is read once for several lines, a matter of microseconds: read for each, it would
    // take as long as the reading itself.
    if (lineTick_++ % linesPerClockRead == 0)
        Mcommon::LetEventsRun();
}

void ReportLoader::AddLine(const ScannedLine& line) {
    if (!pages.AddLine(line))
        return;
    ++lastPageIndex;
    view_.PageAdded(lastPageIndex, false);
}

std::int16_t ReportLoader::GetChanInfo() {
    Mcommon::errorLocation = "GetChanInfo";
    LineScanner scanner = MakeScanner();
    ChannelHeader header;
    ScannedLine line;
    bool recordLine = false;
    while (!stopRequested_ && scanner.Next(line)) {
        LetEventsRun();
        AddLine(line);
        // Only the comment line behind it tells a record from a header line that looks like one.
        if (recordLine && MeasurementLines::IsComment(line.text))
            break;
        recordLine = MeasurementLines::IsRecordStart(line.text);
        if (!recordLine)
            header.TakeLine(pages.Decoded(line.text));
    }
    const std::int16_t sets = header.Finish();
    view_.ShowHead(header.Head());
    return sets;
}

void ReportLoader::FillList(bool firstLoad) {
    Mcommon::errorLocation = "FillList";
    workingLines_ = std::max<std::size_t>(pages.LineCount(lastPageIndex), 1) - 1;
    if (firstLoad) {
        recordsRead_ = 0;
        bytesRead_ = nextProgress_ = 0;
        fileLength_ = pages.Source().Size();
        graphDrawn_ = false;
    }
    ReadRecords(firstLoad);
    view_.LinesAdded();
    if (firstLoad)
        FinishFirstLoad();
    else
        FinishReload();
}

void ReportLoader::ReadRecords(bool firstLoad) {
    LineScanner scanner = MakeScanner();
    ScannedLine line;
    for (;;) {
        LetEventsRun();
        if (firstLoad && stopRequested_)
            return;
        if (!scanner.Next(line))
            return;
        if (firstLoad)
            ShowProgress(line.length);
        if (MeasurementLines::IsSeparator(line.text) && !TakeSeparator(scanner, line, firstLoad))
            return;
        AddLine(line);
        ++workingLines_;
    }
}

/// A separator closes a record and may end its page; `line` is then the next page's first line.
/// False when the separator was the file's last line.
bool ReportLoader::TakeSeparator(LineScanner& scanner, ScannedLine& line, bool firstLoad) {
    if (firstLoad)
        CountRecord();
    if (workingLines_ + pageMargin <= maxPageLines)
        return true;
    AddLine(line);
    if (!scanner.Next(line))
        return false;
    CreateNewPage(false);
    workingLines_ = 0;
    recordsRead_ = 0;
    return true;
}

void ReportLoader::CountRecord() {
    ++recordsRead_;
    if (graphPageIndex == lastPageIndex) {
        recordsInPage = recordsRead_;
        ResetScroll(false);
    }
    if (lastPageIndex == 0 && recordsRead_ == firstDrawingAt && !viewingLiveFile)
        DrawFirst();
}

void ReportLoader::DrawFirst() {
    graphDrawn_ = true;
    view_.GraphDrawn(InitGraphDraw(view_.Graph()).firstRecord);
    view_.LinesAdded();
}

void ReportLoader::ShowProgress(std::uint64_t length) {
    bytesRead_ += length;
    if (bytesRead_ < nextProgress_)
        return;
    const std::uint64_t step = std::max<std::uint64_t>(fileLength_ / percent, 1);
    const std::uint64_t half = step / 2; // a percentage is rounded, it changes between two steps
    nextProgress_ = ((bytesRead_ + half) / step + 1) * step - half;
    view_.ShowStatus(ProgressText(bytesRead_, fileLength_));
    view_.LinesAdded();
}

void ReportLoader::FinishFirstLoad() {
    std::int32_t lastRecord = 0;
    PageRecordRange(graphPageIndex, lastRecord);
    CountLinesPerRecord();
    ResetScroll(false);
    if (!graphDrawn_)
        DrawFirst();
    if (!stopRequested_) {
        view_.ShowStatus(ProgressText(fileLength_, fileLength_));
        Mcommon::Wait(lastProgressShown);
    }
    view_.ShowStatus(std::string(readyText));
}

void ReportLoader::FinishReload() {
    graphPageIndex = viewingLiveFile ? lastPageIndex : std::int16_t{0};
    shownPageIndex = graphPageIndex;
    std::int32_t lastRecord = 0;
    recordsRead_ = PageRecordRange(graphPageIndex, lastRecord);
    CountLinesPerRecord();
    ResetScroll(true);
    view_.SelectShownPage();
}

void ReportLoader::CreateNewPage(bool selectNew) {
    Mcommon::errorLocation = "CreateNewPage";
    pages.NewPage();
    ++lastPageIndex;
    view_.PageAdded(lastPageIndex, selectNew);
    Mcommon::errorLocation = "FillList";
}

void ReportLoader::ResetScroll(bool setValue) {
    scrollGuard = true;
    view_.SetScroll(Mreport::ResetScroll(setValue));
    scrollGuard = false;
}

void ReportLoader::Redraw(std::int32_t endRecord) {
    // The live graph grows with the file's first 50 records and then keeps its width.
    const std::int32_t records = autoUpdate ? recordsInPage + pageFirstRecordOffset : recordsInPage;
    const std::int32_t span = std::clamp(records, 0, spanLength);
    view_.GraphDrawn(UpdateGraph(view_.Graph(), endRecord, span, autoUpdate).firstRecord);
}

void ReportLoader::SelectPage(int page) {
    shownPageIndex = static_cast<std::int16_t>(page);
    if (page == graphPageIndex || autoUpdate) // the live graph stays with the newest page
        return;
    graphPageIndex = shownPageIndex;
    std::int32_t lastRecord = 0;
    PageRecordRange(page, lastRecord);
    ResetScroll(true);
    Redraw(view_.ScrollValue());
}

void ReportLoader::SetAutoUpdate(bool on) {
    if (autoUpdate == on)
        return;
    autoUpdate = on;
    if (on) {
        if (restUnread_)
            ReadRest();
        CatchUp();
        FollowNewestPage();
    }
    std::int32_t lastRecord = 0;
    PageRecordRange(graphPageIndex, lastRecord);
    ResetScroll(true);
    Redraw(recordsInPage);
}

void ReportLoader::UpdateList() {
    if (!idle_) {
        Mcommon::MessageBoxEx(std::string(busyText), platform::style::okOnly,
                              platform::style::information);
        return;
    }
    ReadRest();
    Redraw(view_.ScrollValue());
    Mcommon::MessageBoxEx("The list has been updated.", platform::style::okOnly,
                          platform::style::information);
}

/// Reads from where the last load ended, letting events run.
void ReportLoader::ReadRest() {
    const Running running(*this);
    reloadInProgress = true;
    view_.ShowStatus("Please be patient, loading data...");
    view_.ShowStatus("Loading...");
    FillList(false);
    restUnread_ = false;
    view_.ShowStatus(std::string(readyText));
}

/// Takes the few records that have been written to the file since it was read, in one go.
void ReportLoader::CatchUp() {
    workingLines_ = std::max<std::size_t>(pages.LineCount(lastPageIndex), 1) - 1;
    LineScanner scanner = MakeScanner();
    ScannedLine line;
    while (scanner.Next(line)) {
        if (MeasurementLines::IsSeparator(line.text) && !TakeSeparator(scanner, line, false))
            break;
        AddLine(line);
        ++workingLines_;
    }
    view_.LinesAdded();
}

void ReportLoader::FollowNewestPage() {
    graphPageIndex = shownPageIndex = lastPageIndex;
    view_.SelectShownPage();
}

void ReportLoader::LiveRecord(std::int32_t record, const std::array<float, maxChannels>& values) {
    if (!idle_ || !viewingLiveFile || restUnread_) // a load reads the record itself
        return;
    const std::int16_t newestPage = lastPageIndex;
    CatchUp();
    if (autoUpdate && lastPageIndex != newestPage) {
        FollowNewestPage();
        std::int32_t lastRecord = 0;
        PageRecordRange(graphPageIndex, lastRecord);
    }
    if (linesPerRecord == 0)
        CountLinesPerRecord();
    if (autoUpdate) {
        view_.GraphDrawn(DynUpdate(view_.Graph(), record, values).firstRecord);
        ResetScroll(true);
    } else if (graphPageIndex == lastPageIndex) {
        std::int32_t lastRecord = 0;
        PageRecordRange(graphPageIndex, lastRecord);
        ResetScroll(false);
    }
    ContinueWhenFull(record);
}

void ReportLoader::ContinueWhenFull(std::int32_t record) {
    if (!PageIsFull())
        return;
    CreateNewPage(autoUpdate);
    if (autoUpdate)
        ContinueOnNewPage(record);
}

} // namespace Mreport
