#pragma once

#include "files/MeasuringRun.h"
#include "report/LoadProgress.h"
#include "report/LoadState.h"
#include "report/PageReading.h"
#include "report/ShownRecords.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>

namespace Mreport {

/// Loads a measurement file into the list pages, letting events run all the while, and follows it
/// while it is being recorded. Must outlive a load that is running, and be outlived by what it is
/// given.
class ReportLoader {
public:
    /// `run` tells which file is being recorded.
    ReportLoader(const FileOpr::MeasuringRun& run, ViewedFile& file, ShownGraph& shown,
                 ReportView& view)
        : run_(run), file_(file), shown_(shown), view_(view), records_(file, shown, view),
          filler_(file.pages) {}

    /// Opens the file in the viewer and returns when it is loaded or ESC has stopped it. Throws
    /// RunTimeError when it cannot be opened; the file shown before then stays. Refused with a
    /// message while a load runs.
    void ViewFile(const std::filesystem::path& fileName);

    /// The same with the file's bytes already at hand.
    void ViewSource(const std::filesystem::path& fileName, std::unique_ptr<TextSource> source);

    /// Reads what the live file has got since, and draws the graph anew.
    void UpdateList();

    /// A record has just been written to the file that the viewer shows.
    void LiveRecord();

    /// Bytes that the file has got since it was read; 0 while a load runs, or where the user has
    /// ended it before the file's end.
    std::uint64_t NewBytes();

    /// Reads them, letting events run. The page that is shown stays.
    void ReadNew();

    /// Draws the graph's span that ends with this record of its page.
    void Redraw(PageRecord endRecord) { records_.DrawUpTo(endRecord); }

    /// Brings the page's records into graph and scroll bar; a graph that follows a recording stays
    /// with the newest page.
    void SelectPage(int page) { records_.SelectPage(page); }

    /// Switches the live graph on or off.
    void SetAutoUpdate(bool on);

    /// ESC: ends a running load at the next line; nothing otherwise.
    void RequestStop() { load_.RequestStop(); }

    bool Idle() const { return load_.Idle(); }

private:
    /// Reads the header up to the first record; the number of graph series.
    int GetChanInfo();
    void FillList();
    void ReadFile();
    void ShowProgress(std::uint64_t length);
    void CountRecord();
    void DrawFirst();
    void FinishLoad();
    void CatchUpAfterLoad();

    void ReadOn();
    void ReadRest();
    void CatchUp();
    void FollowNewestPage();
    void ContinueWhenFull();
    bool MayCatchUp() const { return Idle() && !restUnread_; }

    PageReading StartReading();
    void KeepWhatIsRead(const std::function<void()>& read);
    void Note(const PageReading::Taken& taken);
    void TellPage();
    bool RefuseWhileLoading() const;
    bool StoppedShort() const;

    const FileOpr::MeasuringRun& run_;
    ViewedFile& file_;
    ShownGraph& shown_;
    ReportView& view_;
    ShownRecords records_;
    PageFiller filler_;
    LoadState load_;
    LoadProgress progress_;
    bool graphDrawn_ = false;
    bool restUnread_ = false; ///< ESC or a failing medium has ended the load; what is recorded
                              ///< since does not follow on
    std::int32_t recordsRead_ = 0;
};

} // namespace Mreport
