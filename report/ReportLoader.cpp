#include "report/ReportLoader.h"

#include "app/Mcommon.h"
#include "base/NumberText.h"
#include "base/RunTimeError.h"
#include "files/MeasurementLines.h"
#include "platform/Platform.h"
#include "report/ChannelHeader.h"
#include "report/GraphSpan.h"
#include "report/LiveGraph.h"

#include <algorithm>
#include <limits>
#include <memory>

namespace Mreport {

namespace {

constexpr std::string_view readyText = "Ready";
constexpr std::int32_t firstDrawingAt = 51; // records
constexpr std::chrono::milliseconds lastProgressShown{100};
constexpr unsigned linesPerClockRead = 64; // of a load; some microseconds
constexpr std::uint64_t percent = 100;

std::string ProgressText(std::uint64_t bytesRead, std::uint64_t fileLength) {
    const float fraction =
        fileLength == 0 ? 1.0F : static_cast<float>(bytesRead) / static_cast<float>(fileLength);
    return "Loading data, " +
           NumberText::Format(std::min(fraction, 1.0F), NumberText::Pattern::percent) +
           " complete. [Press ESC to stop loading]";
}

} // namespace

/// A load at work: the state and the mouse pointer are restored however it ends.
class ReportLoader::Running {
public:
    explicit Running(ReportLoader& loader) : loader_(loader) {
        loader_.state_ = State::loading;
        platform::Current().desktop.SetMousePointer(platform::MousePointer::hourglass);
    }
    ~Running() {
        loader_.state_ = State::idle;
        platform::Current().desktop.SetMousePointer(platform::MousePointer::normal);
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

private:
    ReportLoader& loader_;
};

void ReportLoader::RequestStop() {
    if (state_ == State::loading)
        state_ = State::stopping;
}

bool ReportLoader::RefuseWhileLoading() const {
    if (Idle())
        return false;
    Mcommon::Inform(busyText);
    return true;
}

void ReportLoader::ViewFile(const std::filesystem::path& fileName) {
    if (RefuseWhileLoading())
        return;
    Mcommon::errorLocation = "Report - ViewFile";
    ViewSource(fileName, std::make_unique<FileSource>(fileName));
}

void ReportLoader::ViewSource(const std::filesystem::path& fileName,
                              std::unique_ptr<TextSource> source) {
    const Running running(*this);
    file_.path = fileName;
    view_.ShowCaption(fileName);
    file_.viewingLiveFile = run_.IsLiveFile(fileName);
    shown_ = ShownGraph();
    filler_.Reset();
    file_.pages.Open(std::move(source));
    fileLength_ = file_.pages.Source().Size();
    view_.ResetPages();
    restUnread_ = true;
    view_.Graph().SetNumSets(GetChanInfo());
    FillList(true);
    if (!restUnread_)
        CatchUpAfterLoad();
}

/// What was recorded during the load.
void ReportLoader::CatchUpAfterLoad() {
    const std::int32_t before = GraphRange(file_, shown_).recordsInPage;
    CatchUp();
    if (GraphRange(file_, shown_).recordsInPage == before)
        return;
    ResetScroll(false);
    if (before < spanLength)
        DrawFirst();
}

/// ESC has ended the load before the length that the file had when it began.
bool ReportLoader::StoppedShort() const {
    return state_ == State::stopping && file_.pages.NextOffset() < fileLength_;
}

LineScanner ReportLoader::MakeScanner() {
    file_.pages.ReopenLastLine();
    LineScanner scanner(file_.pages.Source(), file_.pages.NextOffset());
    scanner.onLongLine = [this] {
        Mcommon::LetEventsRun();
        return state_ == State::stopping;
    };
    return scanner;
}

/// The clock is read once for several lines, a matter of microseconds: read for each, it would take
/// as long as the reading itself.
void ReportLoader::LetEventsRun() {
    if (linesToClockRead_ > 0)
        return;
    linesToClockRead_ = linesPerClockRead;
    Mcommon::LetEventsRun();
}

RecordWalk::Step ReportLoader::AddLine(const ScannedLine& line) {
    linesToClockRead_ -= 1;
    const ReportPages::Added added = filler_.TakeLine(line);
    if (added.newPage)
        view_.PageAdded(file_.LastPageIndex(), false);
    return added.step;
}

int ReportLoader::GetChanInfo() {
    Mcommon::errorLocation = "GetChanInfo";
    LineScanner scanner = MakeScanner();
    ChannelHeader header(file_, shown_);
    ScannedLine line;
    while (state_ != State::stopping && scanner.Next(line)) {
        LetEventsRun();
        if (AddLine(line) == RecordWalk::Step::begins)
            break;
        if (!MeasurementLines::IsRecordStart(line.text))
            header.TakeLine(file_.pages.Decoded(line.text));
    }
    const int sets = header.Finish();
    view_.ShowHead(header.Head());
    return sets;
}

void ReportLoader::FillList(bool firstLoad) {
    Mcommon::errorLocation = "FillList";
    filler_.Resume();
    if (firstLoad) {
        recordsRead_ = 0;
        bytesRead_ = nextProgress_ = 0;
        graphDrawn_ = false;
    }
    ReadRecords(firstLoad);
    restUnread_ = firstLoad && StoppedShort();
    view_.LinesAdded();
    if (firstLoad)
        FinishFirstLoad();
    else
        FinishReload();
}

/// Where the medium fails, what has been read stays, and the file is followed no more.
void ReportLoader::ReadRecords(bool firstLoad) {
    restUnread_ = true;
    try {
        ReadLines(firstLoad);
    } catch (const RunTimeError&) {
        view_.LinesAdded();
        view_.ShowStatus(std::string(readyText));
        throw;
    }
    restUnread_ = false;
}

void ReportLoader::ReadLines(bool firstLoad) {
    LineScanner scanner = MakeScanner();
    ScannedLine line;
    for (;;) {
        LetEventsRun();
        if (firstLoad && state_ == State::stopping)
            return;
        if (TakeRecord(scanner, firstLoad))
            continue;
        if (!scanner.Next(line))
            return;
        if (firstLoad)
            ShowProgress(line.length);
        TakeLine(line, firstLoad);
    }
}

void ReportLoader::TakeLine(const ScannedLine& line, bool firstLoad) {
    if (filler_.PageEnded()) {
        CreateNewPage(false);
        recordsRead_ = 0;
    }
    if (AddLine(line) == RecordWalk::Step::ends && firstLoad)
        CountRecord();
}

/// A record at once, where it looks like those before and the progress that is shown does not
/// change within it.
bool ReportLoader::TakeRecord(LineScanner& scanner, bool firstLoad) {
    const std::uint64_t limit =
        firstLoad ? nextProgress_ - bytesRead_ : std::numeric_limits<std::uint64_t>::max();
    const auto record = filler_.TakeRecord(scanner, limit);
    if (!record)
        return false;
    linesToClockRead_ -= static_cast<int>(record->lines);
    bytesRead_ += record->length;
    if (firstLoad)
        CountRecord();
    return true;
}

void ReportLoader::CountRecord() {
    ++recordsRead_;
    if (shown_.graphPageIndex == file_.LastPageIndex())
        ResetScroll(false);
    if (file_.LastPageIndex() == 0 && recordsRead_ == firstDrawingAt && !file_.viewingLiveFile)
        DrawFirst();
}

void ReportLoader::DrawFirst() {
    graphDrawn_ = true;
    view_.GraphDrawn(InitGraphDraw(view_.Graph(), file_, shown_).firstRecord);
    view_.LinesAdded();
}

void ReportLoader::ShowProgress(std::uint64_t length) {
    bytesRead_ += length;
    if (bytesRead_ < nextProgress_)
        return;
    const std::uint64_t step = std::max<std::uint64_t>(fileLength_ / percent, 1);
    const std::uint64_t half = step / 2; // a percentage is rounded, it changes between two steps
    nextProgress_ = ((bytesRead_ + half) / step + 1) * step - half;
    view_.ShowProgress(ProgressText(bytesRead_, fileLength_));
    view_.LinesAdded();
}

void ReportLoader::FinishFirstLoad() {
    ResetScroll(false);
    if (!graphDrawn_)
        DrawFirst();
    view_.FileRead();
    if (state_ != State::stopping) {
        view_.ShowStatus(ProgressText(fileLength_, fileLength_));
        Mcommon::Wait(lastProgressShown);
    }
    view_.ShowStatus(std::string(readyText));
}

void ReportLoader::FinishReload() {
    shown_.graphPageIndex = file_.viewingLiveFile ? file_.LastPageIndex() : 0;
    shown_.shownPageIndex = shown_.graphPageIndex;
    ResetScroll(true);
    view_.SelectShownPage();
}

void ReportLoader::CreateNewPage(bool selectNew) {
    Mcommon::errorLocation = "CreateNewPage";
    filler_.NewPage();
    view_.PageAdded(file_.LastPageIndex(), selectNew);
    Mcommon::errorLocation = "FillList";
}

void ReportLoader::ResetScroll(bool setValue) {
    shown_.scrollGuard = true;
    view_.SetScroll(Mreport::ResetScroll(file_, shown_, setValue));
    shown_.scrollGuard = false;
}

void ReportLoader::Redraw(PageRecord endRecord) {
    const PageRange range = GraphRange(file_, shown_);
    // The live graph grows with the file's first 50 records and then keeps its width.
    const std::int32_t records =
        shown_.autoUpdate ? range.InFile(range.Last()).number : range.recordsInPage;
    const Span span{shown_.graphPageIndex, endRecord, std::clamp(records, 0, spanLength),
                    shown_.autoUpdate};
    view_.GraphDrawn(UpdateGraph(view_.Graph(), file_, shown_, span).firstRecord);
}

void ReportLoader::SelectPage(int page) {
    shown_.shownPageIndex = page;
    if (page == shown_.graphPageIndex || shown_.autoUpdate) // the live graph stays with the newest
        return;
    shown_.graphPageIndex = page;
    ResetScroll(true);
    Redraw(view_.ScrollValue());
}

void ReportLoader::SetAutoUpdate(bool on) {
    if (shown_.autoUpdate == on)
        return;
    shown_.autoUpdate = on;
    if (on) {
        if (restUnread_)
            ReadRest();
        CatchUp();
        FollowNewestPage();
    }
    ResetScroll(true);
    Redraw(GraphRange(file_, shown_).Last());
}

void ReportLoader::UpdateList() {
    if (RefuseWhileLoading())
        return;
    ReadRest();
    Redraw(view_.ScrollValue());
    Mcommon::Inform("The list has been updated.");
}

/// Reads from where the last load ended, letting events run.
void ReportLoader::ReadRest() {
    const Running running(*this);
    view_.ShowStatus("Please be patient, loading data...");
    view_.ShowStatus("Loading...");
    FillList(false);
    view_.ShowStatus(std::string(readyText));
}

std::uint64_t ReportLoader::NewBytes() {
    if (!MayCatchUp())
        return 0;
    const std::uint64_t size = file_.pages.Source().Size();
    return size - std::min(size, file_.pages.NextOffset());
}

void ReportLoader::ReadNew() {
    if (!MayCatchUp())
        return;
    const Running running(*this);
    view_.ShowStatus("Loading...");
    filler_.Resume();
    ReadRecords(false);
    view_.LinesAdded();
    if (shown_.autoUpdate)
        FollowNewestPage();
    ResetScroll(shown_.autoUpdate);
    if (shown_.autoUpdate)
        Redraw(GraphRange(file_, shown_).Last());
    view_.ShowStatus(std::string(readyText));
}

/// Takes the few records that have been written to the file since it was read, in one go.
void ReportLoader::CatchUp() {
    filler_.Resume();
    restUnread_ = true;
    LineScanner scanner = MakeScanner();
    ScannedLine line;
    while (scanner.Next(line))
        TakeLine(line, false);
    restUnread_ = false;
    view_.LinesAdded();
}

void ReportLoader::FollowNewestPage() {
    shown_.graphPageIndex = shown_.shownPageIndex = file_.LastPageIndex();
    view_.SelectShownPage();
}

/// Of the graph's page, or the last one before a page that has none yet.
FileRecord ReportLoader::NewestOfGraph() const {
    const PageRange range = GraphRange(file_, shown_);
    return range.InFile(range.Last());
}

void ReportLoader::LiveRecord() {
    if (!MayCatchUp()) // a load reads the record itself
        return;
    const int newestPage = file_.LastPageIndex();
    const FileRecord before = NewestOfGraph();
    CatchUp();
    if (shown_.autoUpdate)
        FollowLive(before, newestPage);
    else if (shown_.graphPageIndex >= newestPage) // it may have got its last records
        ResetScroll(false);
    ContinueWhenFull();
}

/// Shows what the list has caught up with behind the record that the live graph ended with.
void ReportLoader::FollowLive(FileRecord before, int newestPage) {
    if (file_.LastPageIndex() != newestPage)
        FollowNewestPage();
    const FileRecord newest = NewestOfGraph();
    if (newest.number - 1 == before.number)
        view_.GraphDrawn(DynUpdate(view_.Graph(), file_, shown_, newest).firstRecord);
    else if (newest != before) // several at once
        Redraw(GraphRange(file_, shown_).Last());
    ResetScroll(true);
}

void ReportLoader::ContinueWhenFull() {
    if (!PageIsFull(file_.pages))
        return;
    CreateNewPage(shown_.autoUpdate);
    if (shown_.autoUpdate)
        shown_.graphPageIndex = shown_.shownPageIndex = file_.LastPageIndex();
}

} // namespace Mreport
