#include "app/Mcommon.h"
#include "base/CodePage.h"
#include "platform/Platform.h"
#include "platform/qt/Text.h"
#include "report/CsvExport.h"
#include "report/RecentFiles.h"
#include "screens/Report/Report.h"
#include "screens/controls/ControlArray.h"
#include "screens/controls/GraphExport.h"
#include "screens/controls/LineListView.h"
#include "screens/frmCommon/frmCommon.h"
#include "screens/frmPrint/frmPrint.h"
#include "screens/frmSrch/frmSrch.h"
#include "ui_Report.h"

namespace {

constexpr auto helpFile = "ViewHlp.txt";
constexpr double zoomStep = 1.25;

// Entries of the menus' arrays.
constexpr int fileOpen = 0;
constexpr int filePrint = 1;
constexpr int fileExportRecords = 2;
constexpr int fileExportGraph = 3;
constexpr int viewSelect = 0;
constexpr int viewGraph = 1;
constexpr int viewTable = 2;
constexpr int viewZoomIn = 3;
constexpr int viewZoomOut = 4;
constexpr int toolCalculator = 0;
constexpr int toolNotepad = 1;
constexpr int toolFind = 2;
constexpr int toolCopy = 3;
constexpr int updateAutomatic = 1;

/// The shown file's name with another ending, beside it.
std::filesystem::path Proposal(const std::filesystem::path& shown, const char* extension) {
    return shown.filename().replace_extension(extension);
}

std::optional<std::filesystem::path> AskTarget(const std::filesystem::path& shown,
                                               const std::string& title, const char* extension,
                                               const std::string& filter) {
    platform::FileDialogRequest request;
    request.kind = platform::FileDialogRequest::Kind::save;
    request.title = title;
    request.fileName =
        CodePage::FromPath(Proposal(shown, extension)).value_or(std::string("report.") + extension);
    request.defaultExtension = extension;
    request.filter = filter;
    request.initialFolder = shown.parent_path();
    auto chosen = platform::Current().dialogs.ChooseFile(request);
    if (chosen && !chosen->has_extension())
        chosen->replace_extension(extension);
    return chosen;
}

} // namespace

void Report::ConnectMenus() {
    const auto connectArray = [this](const QString& name, const std::string& location,
                                     void (Report::*handler)(int)) {
        ControlArray<QAction>(*this, name)
            .Connect(*this, &QAction::triggered, [this, location, handler](int index) {
                guard_(location, [this, handler, index] { (this->*handler)(index); });
            });
    };
    connectArray("mnuFileItem", "Report - mnuFileItem", &Report::mnuFileItem_Click);
    connectArray("mnuViewItem", "Report - mnuViewItem", &Report::mnuViewItem_Click);
    connectArray("mnuToolItem", "Report - mnuToolItem", &Report::mnuToolItem_Click);
    connectArray("mnuUpdateItem", "Report - mnuUpdateItem", &Report::mnuUpdateItem_Click);
    connect(ui_->mnuRecent, &QMenu::aboutToShow, this, [this] { mnuRecent_Show(); });
    connect(ui_->mnuHelp, &QAction::triggered, this,
            [this] { guard_("Report - mnuHelp", [this] { mnuHelp_Click(); }); });
    connect(ui_->mnuBack, &QAction::triggered, this, [this] { close(); });
}

void Report::mnuFileItem_Click(int Index) {
    switch (Index) {
    case fileOpen:
        return OpenThroughDialog();
    case filePrint:
        return Print();
    case fileExportRecords:
        return ExportRecords();
    case fileExportGraph:
        return ExportGraphPicture();
    default:
        close();
    }
}

void Report::OpenThroughDialog() {
    if (Refuse(Mreport::busyText))
        return;
    std::filesystem::path file;
    if (run_.dialog.ShowFileDialog(file, FileOpr::DialogMode::open))
        OpenFile(file);
}

void Report::mnuRecent_Show() {
    ui_->mnuRecent->clear();
    const auto files = RecentFiles::List();
    for (const auto& file : files) {
        // An ampersand of the name is no mnemonic.
        QAction* item = ui_->mnuRecent->addAction(Text::FromPath(file).replace("&", "&&"));
        connect(item, &QAction::triggered, this, [this, file] { mnuRecent_Click(file); });
    }
    if (files.empty())
        ui_->mnuRecent->addAction(tr("No file yet"))->setEnabled(false);
}

void Report::mnuRecent_Click(const std::filesystem::path& file) {
    guard_("Report - mnuFileItem", [this, &file] {
        if (Refuse(Mreport::busyText))
            return;
        if (!Mcommon::FileExists(file))
            RecentFiles::Remove(file);
        OpenFile(file);
    });
}

void Report::Print() {
    if (Refuse(Mreport::loadingText))
        return;
    frmPrint form(file_, shown_, this);
    form.exec();
}

void Report::ExportRecords() {
    if (Refuse(Mreport::loadingText))
        return;
    const auto file =
        AskTarget(file_.path, "Export Records", "csv", "Comma-separated values (*.csv)|*.csv");
    if (!file)
        return;
    exporting_ = true;
    exportStopped_ = false;
    const auto done = qScopeGuard([this] { exporting_ = false; });
    ui_->lblStatus->setText(tr("Exporting records... [Press ESC to stop exporting]"));
    ui_->lblStatus->repaint();
    const auto records = Mreport::ExportCsv(file_, *file, [this] { return exportStopped_; });
    ui_->lblStatus->setText(exportStopped_ ? tr("Ready")
                                           : tr("Ready: %1 records exported").arg(records));
}

void Report::ExportGraphPicture() {
    if (Refuse(Mreport::loadingText))
        return;
    const auto file =
        AskTarget(file_.path, "Export Graph", "png",
                  "Picture (*.png)|*.png|Vector graphic (*.svg)|*.svg|PDF document (*.pdf)|*.pdf");
    if (file)
        ExportGraph(*ui_->graReport, Text::FromPath(*file));
}

void Report::mnuViewItem_Click(int Index) {
    switch (Index) {
    case viewSelect:
        return SelectChannels();
    case viewGraph:
    case viewTable:
        ui_->TabStrip->setCurrentIndex(Index == viewTable ? 1 : 0);
        return ShowView(Index == viewTable);
    case viewZoomIn:
        return Zoom(zoomStep);
    case viewZoomOut:
        return Zoom(1 / zoomStep);
    default:
        ui_->picWholeRun->BackToPageSpan();
        ui_->graReport->ResetZoom();
    }
}

/// Above 1: closer.
void Report::Zoom(double factor) {
    if (ui_->picWholeRun->DrawsSpan())
        ui_->picWholeRun->ZoomSpan(1 / factor);
    else
        ui_->graReport->Zoom(factor);
}

void Report::SelectChannels() {
    if (Refuse(Mreport::loadingText))
        return;
    frmCommon form(file_, shown_, *ui_->graReport, this);
    form.Redraw = [this] { loader_.Redraw(ScrollValue()); };
    if (form.exec() == QDialog::Accepted)
        ui_->picWholeRun->FileReady();
}

void Report::mnuToolItem_Click(int Index) {
    switch (Index) {
    case toolCalculator:
        return platform::Current().desktop.ShowCalculator();
    case toolNotepad:
        return platform::Current().desktop.ShowNotepad();
    case toolFind:
        return FindRecord();
    case toolCopy:
        return List(ui_->stkLists->currentIndex()).CopySelection();
    default:
        List(ui_->stkLists->currentIndex()).SelectAll();
    }
}

void Report::FindRecord() {
    if (!search_) {
        search_ = new frmSrch(file_, this);
        connect(search_, &frmSrch::RecordFound, this,
                [this](int page, int line) { GoTo(page, line); });
    }
    search_->show();
    search_->raise();
    search_->activateWindow();
}

/// Brings a record that was found into the list view.
void Report::GoTo(int page, int line) {
    if (page >= static_cast<int>(lstData_.size()))
        return;
    ui_->Pages->setCurrentIndex(page);
    List(page).LinesChanged();
    List(page).SetCurrentLine(line);
}

void Report::mnuUpdateItem_Click(int Index) {
    const auto shown = qScopeGuard([this] { AllowMenus(); }); // the check mark as it is now
    const auto grown = qScopeGuard([this] { ui_->picWholeRun->FileGrown(); });
    if (Index != updateAutomatic)
        loader_.UpdateList();
    else if (!Refuse(Mreport::loadingText))
        loader_.SetAutoUpdate(ui_->mnuUpdateItem_1->isChecked());
}

void Report::mnuHelp_Click() {
    platform::Current().desktop.ShowHelpText(platform::Current().places.ProgramFolder() / helpFile);
}
