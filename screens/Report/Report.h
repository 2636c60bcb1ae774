#pragma once

#include "files/MeasuringRun.h"
#include "report/ReportLoader.h"
#include "screens/Report/LoadView.h"
#include "screens/Report/ReportLists.h"
#include "screens/Report/ReportMenus.h"
#include "screens/Report/ReportOutput.h"
#include "screens/Report/ReportSearch.h"
#include "screens/Report/ReportVerify.h"
#include "screens/Report/ReportViews.h"
#include "screens/Report/RunFollower.h"
#include "screens/controls/EventGuard.h"

#include <QMainWindow>

#include <filesystem>
#include <memory>

namespace Ui {
class Report;
}

/// The viewer of one measurement file: its lines as list pages and its values as a graph. Loading
/// runs inside ViewFile while events go on; the form must not be deleted before it has returned,
/// and it refuses to close until then.
class Report : public QMainWindow {
    Q_OBJECT

public:
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

    /// A viewer of its own is wanted for this file.
    void NewWindowWanted(const std::filesystem::path& fileName);

    /// The viewer has been closed.
    void Closed();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void Form_Load();
    void WireControls();
    void WireParts();
    void WireViews();
    void WireMenus();
    void Form_KeyDown(int keyCode);
    bool Form_QueryUnload();
    void Form_Unload();

    void mnuFileItem_Click(std::size_t Index);
    void mnuRecent_Click(QAction* item);
    void mnuRecent_Show();
    void mnuViewItem_Click(std::size_t Index);
    void mnuToolItem_Click(std::size_t Index);
    void mnuUpdateItem_Click(std::size_t Index);
    void mnuHelp_Click();
    void mnuBack_Click();
    void TabStrip_Click(int tab);
    void Pages_Click(int page);
    void graReport_Click(const std::string& text);
    void TellInfo(const QString& text);
    void GraphSpanWanted(Mreport::PageRecord end);
    void GraphPageWanted(int page);
    void TakeFile(const std::filesystem::path& fileName);
    void ForgetFile();
    void FileGrown();
    void RecordsRead();
    void tblRecords_RecordChosen(const Mreport::LinePlace& place);
    void FileBegunAnew();
    void FindNext();

    void OpenFile(const std::filesystem::path& fileName);
    std::optional<std::filesystem::path> AskForFile();
    void SelectChannels();
    void AllowMenus();
    /// False, and it is said, while a load or an export runs.
    bool Refuse(std::string_view message);

    FileOpr::MeasuringRun& run_;
    EventGuard guard_{"Unexpected error - "};
    Mreport::ViewedFile file_;
    Mreport::ShownGraph shown_;
    std::unique_ptr<Ui::Report> ui_;
    ReportMenus menus_;
    ReportLists lists_;
    ReportViews views_;
    ReportOutput output_;
    ReportSearch search_;
    ReportVerify verify_;
    LoadView loadView_;
    Mreport::ReportLoader loader_;
    RunFollower follower_;
    bool updateEnabled_ = true;
};
