#include "report/ReportLoader.h"

#include "app/Mcommon.h"
#include "base/RunTimeError.h"
#include "files/MeasurementLines.h"
#include "report/ChannelHeader.h"
#include "report/LiveGraph.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace Mreport {

namespace {

constexpr std::string_view readyText = "Ready";
constexpr std::int32_t firstDrawingAt = 51; // records
constexpr std::chrono::milliseconds lastProgressShown{100};

} // namespace

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
    const LoadState::AtWork atWork(load_);
    file_.path = fileName;
    view_.ShowCaption(fileName);
    file_.viewingLiveFile = run_.IsLiveFile(fileName);
    shown_ = ShownGraph();
    filler_.Reset();
    file_.pages.Open(std::move(source));
    progress_.Begin(file_.pages.Source().Size());
    view_.ResetPages();
    restUnread_ = true;
    view_.Graph().SetNumSets(GetChanInfo());
    FillList();
    if (!restUnread_)
        CatchUpAfterLoad();
}

/// What was recorded during the load.
void ReportLoader::CatchUpAfterLoad() {
    const std::int32_t before = GraphRange(file_, shown_).recordsInPage;
    CatchUp();
    if (GraphRange(file_, shown_).recordsInPage == before)
        return;
    records_.FitScroll();
    if (before < spanLength)
        DrawFirst();
}

/// ESC has ended the load before the length that the file had when it began.
bool ReportLoader::StoppedShort() const {
    return load_.Stopping() && file_.pages.NextOffset() < progress_.FileLength();
}

PageReading ReportLoader::StartReading() {
    return {file_.pages, filler_, [this] {
                Mcommon::LetEventsRun();
                return load_.Stopping();
            }};
}

void ReportLoader::Note(const PageReading::Taken& taken) {
    load_.Count(taken.lines);
    if (taken.newPage)
        TellPage();
}

void ReportLoader::TellPage() {
    const std::string location = std::exchange(Mcommon::errorLocation, "CreateNewPage");
    view_.PageAdded(file_.LastPageIndex());
    Mcommon::errorLocation = location;
}

int ReportLoader::GetChanInfo() {
    Mcommon::errorLocation = "GetChanInfo";
    PageReading reading = StartReading();
    ChannelHeader header(file_, shown_);
    while (!load_.Stopping()) {
        load_.LetEventsRun();
        const auto line = reading.TakeLine();
        if (line)
            Note(*line);
        if (!line || line->step == RecordWalk::Step::begins)
            break;
        if (!MeasurementLines::IsRecordStart(line->text))
            header.TakeLine(file_.pages.Decoded(line->text));
    }
    const int sets = header.Finish();
    view_.ShowHead(header.Head());
    return sets;
}

void ReportLoader::FillList() {
    Mcommon::errorLocation = "FillList";
    recordsRead_ = 0;
    graphDrawn_ = false;
    KeepWhatIsRead([this] { ReadFile(); });
    restUnread_ = StoppedShort();
    view_.LinesAdded();
    FinishLoad();
}

/// Where the medium fails, what has been read stays, and the file is followed no more.
void ReportLoader::KeepWhatIsRead(const std::function<void()>& read) {
    restUnread_ = true;
    try {
        read();
    } catch (const RunTimeError&) {
        view_.LinesAdded();
        view_.ShowStatus(std::string(readyText));
        throw;
    }
    restUnread_ = false;
}

/// Up to its end or ESC. A record at once does not reach beyond the progress that is shown.
void ReportLoader::ReadFile() {
    PageReading reading = StartReading();
    for (;;) {
        load_.LetEventsRun();
        if (load_.Stopping())
            return;
        const auto taken = reading.Take(progress_.UntilNext());
        if (!taken)
            return;
        Note(*taken);
        ShowProgress(taken->length);
        if (taken->step == RecordWalk::Step::ends)
            CountRecord();
    }
}

void ReportLoader::ShowProgress(std::uint64_t length) {
    const auto text = progress_.Take(length);
    if (!text)
        return;
    view_.ShowProgress(*text);
    records_.FitScroll();
    view_.LinesAdded();
}

void ReportLoader::CountRecord() {
    ++recordsRead_;
    if (recordsRead_ == firstDrawingAt && file_.LastPageIndex() == 0 && !file_.viewingLiveFile)
        DrawFirst();
}

void ReportLoader::DrawFirst() {
    graphDrawn_ = true;
    records_.FitScroll();
    records_.DrawFirst();
    view_.LinesAdded();
}

void ReportLoader::FinishLoad() {
    records_.FitScroll();
    if (!graphDrawn_)
        DrawFirst();
    view_.FileRead();
    if (!load_.Stopping()) {
        view_.ShowStatus(progress_.Whole());
        Mcommon::Wait(lastProgressShown);
    }
    view_.ShowStatus(std::string(readyText));
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
    records_.ResetScroll();
    records_.DrawNewest();
}

void ReportLoader::UpdateList() {
    if (RefuseWhileLoading())
        return;
    ReadRest();
    records_.DrawAtScroll();
    Mcommon::Inform("The list has been updated.");
}

/// What the file has got behind the lines that have been read, letting events run.
void ReportLoader::ReadOn() {
    KeepWhatIsRead([this] {
        PageReading reading = StartReading();
        load_.LetEventsRun();
        while (const auto taken = reading.Take()) {
            Note(*taken);
            load_.LetEventsRun();
        }
    });
    view_.LinesAdded();
}

/// The same, even where the last load has been stopped; a live file is then shown from its newest
/// page, any other from its first.
void ReportLoader::ReadRest() {
    const LoadState::AtWork atWork(load_);
    view_.ShowStatus("Please be patient, loading data...");
    view_.ShowStatus("Loading...");
    Mcommon::errorLocation = "FillList";
    ReadOn();
    records_.BringToFront(file_.viewingLiveFile ? file_.LastPageIndex() : 0);
    records_.ResetScroll();
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
    const LoadState::AtWork atWork(load_);
    view_.ShowStatus("Loading...");
    ReadOn();
    if (shown_.autoUpdate) {
        FollowNewestPage();
        records_.ResetScroll();
        records_.DrawNewest();
    } else {
        records_.FitScroll();
    }
    view_.ShowStatus(std::string(readyText));
}

/// Takes the few records that have been written to the file since it was read, in one go.
void ReportLoader::CatchUp() {
    restUnread_ = true;
    PageReading reading = StartReading();
    while (const auto taken = reading.Take())
        Note(*taken);
    restUnread_ = false;
    view_.LinesAdded();
}

void ReportLoader::FollowNewestPage() {
    records_.BringToFront(file_.LastPageIndex());
}

void ReportLoader::LiveRecord() {
    if (!MayCatchUp()) // a load reads the record itself
        return;
    const int newestPage = file_.LastPageIndex();
    const FileRecord before = records_.Newest();
    CatchUp();
    if (shown_.autoUpdate)
        records_.Follow(before);
    else if (shown_.graphPageIndex >= newestPage) // it may have got its last records
        records_.FitScroll();
    ContinueWhenFull();
}

void ReportLoader::ContinueWhenFull() {
    if (!PageIsFull(file_.pages))
        return;
    filler_.NewPage();
    TellPage();
    if (shown_.autoUpdate)
        FollowNewestPage();
}

} // namespace Mreport
