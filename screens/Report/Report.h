#pragma once

#include "files/LiveReport.h"
#include "files/MeasuringRun.h"
#include "report/ReportLoader.h"
#include "report/ReportView.h"
#include "screens/Report/ReportExport.h"
#include "screens/controls/EventGuard.h"

#include <QMainWindow>
#include <QPointer>

#include <filesystem>
#include <memory>

namespace Ui {
class Report;
}
class QAction;
class ReportLists;
class frmSrch;

/// The viewer of one measurement file: its lines as list pages and its values as a graph. Loading
/// runs inside ViewFile while events go on; the form must not be deleted before it has returned,
/// and it refuses to close until then.
class Report : public QMainWindow, private Mreport::ReportView {
    Q_OBJECT

public:
    enum FileItem { openFile, printReport, exportRecords, exportGraph, closeReport };
    enum ViewItem { selectChannels, graphView, tableView, zoomIn, zoomOut, wholeSpan };
    enum ToolItem { calculator, notepad, findRecord, copyLines, selectAllLines };
    enum UpdateItem { updateList, automaticUpdate };
    enum View { graphTab, tableTab }; ///< of TabStrip

    /// The run is what may be recorded meanwhile; it must outlive the viewer.
    explicit Report(FileOpr::MeasuringRun& run, QWidget* parent = nullptr);
    ~Report() override;

    /// Opens a measurement file in the viewer.
    void ViewFile(const std::filesystem::path& fileName);

    /// The update menu can be used: an automatic run goes on. Ending it ends the automatic update.
    void SetUpdateEnabled(bool enabled);

    /// No load and no export runs.
    bool IsIdle() const;

    const Mreport::ViewedFile& File() const { return file_; }
    const Mreport::ShownGraph& Shown() const { return shown_; }

Q_SIGNALS:
    /// The viewer shows this file from now on.
    void FileShown(const std::filesystem::path& fileName);

    /// The viewer has been closed.
    void Closed();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void Form_Load();
    void FitHead();
    void WireControls();
    void WireMenus();
    void Form_KeyDown(int keyCode);
    bool Form_QueryUnload();
    void Form_Unload();
    void Form_Activate();
    void RestorePlace();

    void mnuFileItem_Click(int Index);
    void mnuRecent_Click(QAction* item);
    void mnuRecent_Show();
    void mnuViewItem_Click(int Index);
    void mnuToolItem_Click(int Index);
    void mnuUpdateItem_Click(int Index);
    void mnuHelp_Click();
    void mnuBack_Click();
    void TabStrip_Click(int tab);
    void Pages_Click(int page);
    void HScroll_Change(int value);
    void HScroll_Scroll(int value);
    void HScroll_Release();
    void graReport_Click(int set, int point);
    void graReport_MouseMove(int set, int point);
    void picWholeRun_QuantityChosen(Quantity quantity);
    void picWholeRun_PageSpanWanted(int page, Mreport::PageRecord end);
    void picWholeRun_RecordWanted(std::int64_t place, std::uint64_t offset);
    void picWholeRun_DrawsSpanChanged();

    void OpenFile(const std::filesystem::path& fileName);
    void OpenThroughDialog();
    void Print();
    void ExportRecords();
    void ExportGraphPicture();
    void SelectChannels();
    void Zoom(double factor);
    void FindRecord();
    void FindNext();
    void GoTo(int page, int line);
    void ShowInGraph(Mreport::FileRecord record);
    void ShowView(bool table);
    void AllowMenus();
    void FileGrown();
    void TakeWhatIsNew();
    void NoticeLive();
    void NoticeDamage();
    /// False, and it is said, while a load or an export runs.
    bool Refuse(std::string_view message);
    /// The channel or sensor of a set; 0 where there is none.
    int SeriesNumber(int set) const;
    QString Caption() const;

    void ShowCaption(const std::filesystem::path& file) override;
    void ResetPages() override;
    void ShowHead(const std::string& headerLines) override;
    void ShowStatus(const std::string& text) override;
    void PageAdded(int page, bool selectNew) override;
    void LinesAdded() override;
    void SelectShownPage() override;
    void SetScroll(const Mreport::ScrollLimits& limits) override;
    Mreport::PageRecord ScrollValue() const override;
    Mreport::ReportGraph& Graph() override;
    void GraphDrawn(Mreport::FileRecord firstRecord) override;

    FileOpr::MeasuringRun& run_;
    EventGuard guard_{"Unexpected error - "};
    std::unique_ptr<Ui::Report> ui_;
    Mreport::ViewedFile file_;
    Mreport::ShownGraph shown_;
    Mreport::ReportLoader loader_{run_, file_, shown_, *this};
    ReportExport export_{file_};
    std::unique_ptr<ReportLists> lists_;
    QPointer<frmSrch> search_;
    Mreport::FileRecord firstRecord_{1}; ///< that point 1 of the graph stands for
    bool updateEnabled_ = true;
    FileOpr::LiveReport live_;
};
