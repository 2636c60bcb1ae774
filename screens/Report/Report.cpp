#include "screens/Report/Report.h"

#include "app/Mcommon.h"
#include "report/RecentFiles.h"
#include "screens/Report/RecentMenu.h"
#include "screens/Report/ReportPlace.h"
#include "screens/Report/ReportTools.h"
#include "screens/Report/WholeRunPanel.h"
#include "screens/controls/GraphControl.h"
#include "screens/controls/LineListView.h"
#include "screens/controls/Placement.h"
#include "screens/controls/Wiring.h"
#include "screens/frmCommon/frmCommon.h"
#include "ui_Report.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QScopeGuard>
#include <QShortcut>

namespace {

std::unique_ptr<Ui::Report> SetUp(QMainWindow& form) {
    auto ui = std::make_unique<Ui::Report>();
    ui->setupUi(&form);
    return ui;
}

} // namespace

Report::Report(FileOpr::MeasuringRun& run, QWidget* parent)
    : QMainWindow(parent), run_(run), ui_(SetUp(*this)), menus_(*this),
      lists_(*ui_->Pages, *ui_->stkLists, file_.pages),
      views_(file_, {*ui_->TabStrip, *ui_->Pages, *ui_->picGraph, *ui_->picMode, *ui_->tblRecords},
             lists_, menus_),
      output_({*this, file_, shown_, *ui_->picGraph, *ui_->lblStatus}), search_(file_, *this),
      verify_(file_, *this),
      loadView_(file_, shown_, {*this, *ui_->txtHead, *ui_->lblStatus, *ui_->picGraph, lists_}),
      loader_(run_, file_, shown_, loadView_), follower_(run_, file_, loader_) {
    guard_("Report - Form_Load", [this] { Form_Load(); });
    WireControls();
    WireParts();
    WireViews();
    WireMenus();
}

Report::~Report() = default;

void Report::Form_Load() {
    ui_->picGraph->Attach(file_, shown_);
    ui_->tblRecords->Attach(file_);
    loadView_.ResetPages();
    ForgetFile();
    Mcommon::FitOntoScreen(*this);
    ReportPlace::Restore(*this);
}

void Report::WireControls() {
    const Wiring wire(*this, guard_, "Report");
    wire(ui_->TabStrip, &QTabBar::currentChanged, "TabStrip", &Report::TabStrip_Click);
    wire(ui_->Pages, &QTabBar::currentChanged, "Pages", &Report::Pages_Click);
    GraphPage* graph = ui_->picGraph;
    wire(graph, &GraphPage::SpanWanted, "HScroll", &Report::GraphSpanWanted);
    wire(graph, &GraphPage::PointClicked, "graReport", &Report::graReport_Click);
    wire(graph, &GraphPage::PageWanted, "graOverview", &Report::GraphPageWanted);
    wire(graph, &GraphPage::Told, "graReport", &Report::TellInfo);
    auto* next = new QShortcut(QKeySequence::FindNext, this);
    wire(next, &QShortcut::activated, "mnuToolItem", &Report::FindNext);
}

void Report::WireParts() {
    const Wiring wire(*this, guard_, "Report");
    wire(&loadView_, &LoadView::FileShown, "ViewFile", &Report::TakeFile);
    wire(&loadView_, &LoadView::FileGone, "ViewFile", &Report::ForgetFile);
    wire(&loadView_, &LoadView::RecordsRead, "FillList", &Report::RecordsRead);
    wire(ui_->tblRecords, &RecordTableView::RecordChosen, "tblRecords",
         &Report::tblRecords_RecordChosen);
    wire(&follower_, &RunFollower::Grown, "DynUpdate", &Report::FileGrown);
    wire(&follower_, &RunFollower::LiveChanged, "DynUpdate", &Report::AllowMenus);
    wire(&follower_, &RunFollower::BegunAnew, "ViewFile", &Report::FileBegunAnew);
}

void Report::WireViews() {
    const Wiring wire(views_, guard_, "Report");
    wire(ui_->picGraph, &GraphPage::RecordWanted, "graOverview", &ReportViews::BringRecordAt);
    wire(&search_, &ReportSearch::RecordFound, "frmSrch", &ReportViews::BringRecord);
    wire(&verify_, &ReportVerify::RecordWanted, "frmVerify", &ReportViews::BringRecordAt);
    wire(&loadView_, &LoadView::LinesCame, "FillList", &ReportViews::FileGrown);
    const Wiring caption(loadView_, guard_, "Report");
    caption(ui_->picGraph, &GraphPage::ThumbMoved, "HScroll", &LoadView::CaptionSpanEnd);
    caption(ui_->picGraph, &GraphPage::ThumbReleased, "HScroll", &LoadView::CaptionFile);
}

void Report::WireMenus() {
    const Wiring wire(*this, guard_, "Report");
    wire(menus_.mnuFileItem, &QAction::triggered, "mnuFileItem", &Report::mnuFileItem_Click);
    wire(menus_.mnuViewItem, &QAction::triggered, "mnuViewItem", &Report::mnuViewItem_Click);
    wire(menus_.mnuToolItem, &QAction::triggered, "mnuToolItem", &Report::mnuToolItem_Click);
    wire(menus_.mnuUpdateItem, &QAction::triggered, "mnuUpdateItem", &Report::mnuUpdateItem_Click);
    wire(ui_->mnuRecent, &QMenu::aboutToShow, "mnuRecent", &Report::mnuRecent_Show);
    wire(ui_->mnuRecent, &QMenu::triggered, "mnuFileItem", &Report::mnuRecent_Click);
    wire(ui_->mnuHelp, &QAction::triggered, "mnuHelp", &Report::mnuHelp_Click);
    wire(ui_->mnuBack, &QAction::triggered, "mnuBack", &Report::mnuBack_Click);
}

bool Report::IsIdle() const {
    return loader_.Idle() && !output_.Running();
}

bool Report::Refuse(std::string_view message) {
    if (IsIdle())
        return false;
    Mcommon::Inform(message);
    return true;
}

void Report::ViewFile(const std::filesystem::path& fileName) {
    guard_("Report - ViewFile", [this, &fileName] { OpenFile(fileName); });
}

void Report::OpenFile(const std::filesystem::path& fileName) {
    if (Refuse(Mreport::busyText))
        return;
    WholeRunPanel& run = ui_->picGraph->Run();
    run.Clear();
    search_.Stop();
    verify_.Stop();
    auto failed = qScopeGuard([&run] { // the old file has stayed, or a part of the new one
        if (!run.IsOpen())
            run.FileReady();
    });
    loader_.ViewFile(fileName);
    failed.dismiss();
    run.FileGrown(); // by what was recorded during the load
    AllowMenus();
    loadView_.NoticeDamage();
}

/// While the load still shows its last progress.
void Report::RecordsRead() {
    ui_->picGraph->Run().FileReady();
}

void Report::TakeFile(const std::filesystem::path& fileName) {
    RecentFiles::Add(fileName);
    Q_EMIT FileShown(fileName);
}

/// The file shown before has gone, and with it what was found in it.
void Report::ForgetFile() {
    search_.Forget();
    verify_.Close();
    ui_->tblRecords->Forget();
    views_.Show(ReportViews::graphTab);
    AllowMenus();
}

void Report::FileGrown() {
    ui_->picGraph->Run().FileGrown();
    views_.FileGrown();
}

/// Shows a record of the compact table as the file has it.
void Report::tblRecords_RecordChosen(const Mreport::LinePlace& place) {
    views_.BringRecord(place);
    views_.Show(ReportViews::tableTab);
}

void Report::FileBegunAnew() {
    OpenFile(file_.path);
}

void Report::AllowMenus() {
    menus_.Allow(file_, shown_, file_.viewingLiveFile && updateEnabled_);
    ui_->picGraph->ShowScroll(!shown_.autoUpdate);
}

void Report::SetUpdateEnabled(bool enabled) {
    updateEnabled_ = enabled;
    if (!enabled && shown_.autoUpdate)
        guard_("Report - mnuUpdateItem", [this] { loader_.SetAutoUpdate(false); });
    AllowMenus();
}

void Report::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        guard_("Report - Form_Activate", [this] { follower_.LookAgain(); });
}

/// A low form leaves the room of the header's lines to the graph.
void Report::resizeEvent(QResizeEvent* event) {
    constexpr int lowForm_px = 480;
    QMainWindow::resizeEvent(event);
    const bool low = height() < lowForm_px;
    ui_->txtHead->ShowLines(low ? 1 : 4);
    ui_->picGraph->KeepRoom(low ? 100 : 60);
}

void Report::keyPressEvent(QKeyEvent* event) {
    Form_KeyDown(event->key());
    QMainWindow::keyPressEvent(event);
}

void Report::Form_KeyDown(int keyCode) {
    if (keyCode != Qt::Key_Escape)
        return;
    loader_.RequestStop();
    output_.RequestStop();
}

void Report::closeEvent(QCloseEvent* event) {
    bool unload = false; // stays so when the handler fails
    guard_("Report - Form_QueryUnload", [this, &unload] { unload = Form_QueryUnload(); });
    event->setAccepted(unload);
    if (!unload)
        return;
    guard_("Report - Form_Unload", [this] { Form_Unload(); });
    Q_EMIT Closed();
}

bool Report::Form_QueryUnload() {
    return !Refuse(Mreport::busyText);
}

/// The next showing starts empty, and the file is free for others.
void Report::Form_Unload() {
    search_.Close();
    verify_.Close();
    ui_->picGraph->Run().Clear();
    ReportPlace::Remember(*this);
    file_ = {};
    shown_ = {};
    loadView_.ResetPages();
    ui_->txtHead->clear();
    ui_->txtInfo->clear();
    ui_->picGraph->Graph().SetGraphTitle({});
    setWindowTitle("Report");
}

void Report::TabStrip_Click(int tab) {
    views_.Show(static_cast<ReportViews::View>(tab));
    AllowMenus();
    if (tab == ReportViews::tableTab)
        loadView_.SelectShownPage();
    loadView_.NoticeDamage();
}

void Report::Pages_Click(int page) {
    if (!lists_.Has(page))
        return;
    lists_.Show(page);
    lists_.At(page).LinesChanged();
    ui_->picGraph->Run().BackToPageSpan();
    loader_.SelectPage(page);
    loadView_.NoticeDamage();
}

void Report::graReport_Click(const std::string& text) {
    Mcommon::Inform(text);
}

/// From its beginning, where it is longer than its box.
void Report::TellInfo(const QString& text) {
    ui_->txtInfo->setText(text);
    ui_->txtInfo->setCursorPosition(0);
    ui_->txtInfo->setToolTip(text);
}

void Report::GraphSpanWanted(Mreport::PageRecord end) {
    loader_.Redraw(end);
    loadView_.NoticeDamage();
}

void Report::GraphPageWanted(int page) {
    loader_.SelectPage(page);
    loadView_.SelectShownPage();
}

/// F3: the search again, from the record found last.
void Report::FindNext() {
    if (!file_.path.empty())
        search_.FindNext();
}

void Report::mnuFileItem_Click(std::size_t Index) {
    switch (Index) {
    case ReportMenus::openFile:
        if (const auto file = AskForFile())
            OpenFile(*file);
        return;
    case ReportMenus::openInNewWindow:
        if (const auto file = AskForFile())
            Q_EMIT NewWindowWanted(*file);
        return;
    case ReportMenus::closeReport:
        close();
        return;
    default:
        if (!Refuse(Mreport::loadingText))
            output_.PutOut(Index);
    }
}

std::optional<std::filesystem::path> Report::AskForFile() {
    std::filesystem::path file;
    if (Refuse(Mreport::busyText) || !run_.dialog.ShowFileDialog(file, FileOpr::DialogMode::open))
        return std::nullopt;
    return file;
}

void Report::mnuRecent_Show() {
    RecentMenu::Fill(*ui_->mnuRecent);
}

void Report::mnuRecent_Click(QAction* item) {
    if (!Refuse(Mreport::busyText))
        OpenFile(RecentMenu::Choose(*item));
}

void Report::mnuViewItem_Click(std::size_t Index) {
    if (Index == ReportMenus::selectChannels)
        SelectChannels();
    else
        views_.Choose(static_cast<ReportMenus::ViewItem>(Index));
}

void Report::SelectChannels() {
    if (Refuse(Mreport::loadingText))
        return;
    frmCommon form(file_, shown_, ui_->picGraph->Graph(), this);
    form.Redraw = [this] { loader_.Redraw(loadView_.ScrollValue()); };
    if (form.exec() == QDialog::Accepted)
        ui_->picGraph->Run().FileReady();
}

void Report::mnuToolItem_Click(std::size_t Index) {
    switch (Index) {
    case ReportMenus::findRecord:
        return search_.Show();
    case ReportMenus::verifyFile:
        if (!Refuse(Mreport::loadingText))
            verify_.Show();
        return;
    case ReportMenus::copyLines:
        return views_.CopySelection();
    case ReportMenus::selectAllLines:
        return views_.SelectAll();
    default:
        ReportTools::Run(Index);
    }
}

void Report::mnuUpdateItem_Click(std::size_t Index) {
    const auto shown = qScopeGuard([this] { AllowMenus(); }); // the check mark as it is now
    const auto grown = qScopeGuard([this] { FileGrown(); });
    if (Index != ReportMenus::automaticUpdate)
        loader_.UpdateList();
    else if (!Refuse(Mreport::loadingText))
        loader_.SetAutoUpdate(menus_.mnuUpdateItem(Index).isChecked());
}

void Report::mnuHelp_Click() {
    ReportTools::ShowHelp();
}

void Report::mnuBack_Click() {
    close();
}
