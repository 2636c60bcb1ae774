#include "screens/Report/Report.h"

#include "app/Mcommon.h"
#include "files/MeasurementLines.h"
#include "report/RecentFiles.h"
#include "report/WholeRun.h"
#include "screens/Report/RecentMenu.h"
#include "screens/Report/ReportPlace.h"
#include "screens/Report/ReportTools.h"
#include "screens/Report/WholeRunPanel.h"
#include "screens/controls/GraphControl.h"
#include "screens/controls/LineListView.h"
#include "screens/controls/Placement.h"
#include "screens/controls/ValueLabel.h"
#include "screens/controls/Wiring.h"
#include "screens/frmCommon/frmCommon.h"
#include "screens/frmVerify/frmVerify.h"
#include "ui_Report.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QScopeGuard>
#include <QShortcut>

#include <array>

namespace {

constexpr double zoomStep = 1.25;

std::unique_ptr<Ui::Report> SetUp(QMainWindow& form) {
    auto ui = std::make_unique<Ui::Report>();
    ui->setupUi(&form);
    return ui;
}

} // namespace

Report::Report(FileOpr::MeasuringRun& run, QWidget* parent)
    : QMainWindow(parent), run_(run), ui_(SetUp(*this)), menus_(*this),
      lists_(*ui_->Pages, *ui_->stkLists, file_.pages),
      output_({*this, file_, shown_, *ui_->picGraph, *ui_->lblStatus}), search_(file_, *this),
      view_(file_, shown_, {*this, *ui_->txtHead, *ui_->lblStatus, *ui_->picGraph, lists_}),
      loader_(run_, file_, shown_, view_), follower_(run_, file_, loader_) {
    guard_("Report - Form_Load", [this] { Form_Load(); });
    WireControls();
    WireParts();
    WireMenus();
}

Report::~Report() = default;

void Report::Form_Load() {
    ui_->TabStrip->addTab("&Graph");
    ui_->TabStrip->addTab("&Table");
    ui_->TabStrip->addTab("&Records");
    ui_->TabStrip->setExpanding(false);
    ui_->picGraph->Attach(file_, shown_);
    ui_->tblRecords->Attach(file_);
    view_.ResetPages();
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
    wire(graph, &GraphPage::ThumbMoved, "HScroll", &Report::HScroll_Scroll);
    wire(graph, &GraphPage::ThumbReleased, "HScroll", &Report::HScroll_Release);
    wire(graph, &GraphPage::PointClicked, "graReport", &Report::graReport_Click);
    wire(graph, &GraphPage::PageWanted, "graOverview", &Report::GraphPageWanted);
    wire(graph, &GraphPage::RecordWanted, "graOverview", &Report::RecordWanted);
    wire(graph, &GraphPage::Told, "graReport", &Report::TellInfo);
    auto* next = new QShortcut(QKeySequence::FindNext, this);
    wire(next, &QShortcut::activated, "mnuToolItem", &Report::FindNext);
}

void Report::WireParts() {
    const Wiring wire(*this, guard_, "Report");
    wire(&view_, &LoadView::FileShown, "ViewFile", &Report::TakeFile);
    wire(&view_, &LoadView::FileGone, "ViewFile", &Report::ForgetFile);
    wire(&view_, &LoadView::LinesCame, "FillList", &Report::LinesCame);
    wire(&view_, &LoadView::RecordsRead, "FillList", &Report::RecordsRead);
    wire(ui_->tblRecords, &RecordTableView::RecordChosen, "tblRecords", &Report::RecordChosen);
    wire(&search_, &ReportSearch::RecordFound, "frmSrch", &Report::GoTo);
    wire(&follower_, &RunFollower::Grown, "DynUpdate", &Report::FileGrown);
    wire(&follower_, &RunFollower::LiveChanged, "DynUpdate", &Report::AllowMenus);
    wire(&follower_, &RunFollower::BegunAnew, "ViewFile", &Report::FileBegunAnew);
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
    if (verify_)
        verify_->Stop();
    auto failed = qScopeGuard([&run] { // the old file has stayed, or a part of the new one
        if (!run.IsOpen())
            run.FileReady();
    });
    loader_.ViewFile(fileName);
    failed.dismiss();
    run.FileGrown(); // by what was recorded during the load
    AllowMenus();
    NoticeDamage();
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
    delete verify_;
    ui_->tblRecords->Forget();
    ShowView(graphTab);
    AllowMenus();
}

void Report::FileGrown() {
    ui_->picGraph->Run().FileGrown();
    LinesCame();
}

void Report::LinesCame() {
    if (ui_->tblRecords->isVisible())
        ui_->tblRecords->FileGrown();
}

/// Shows a record of the compact table as the file has it.
void Report::RecordChosen(int page, int line) {
    GoTo(page, line);
    ShowView(tableTab);
}

void Report::FileBegunAnew() {
    OpenFile(file_.path);
}

void Report::NoticeDamage() {
    if (file_.pages.Damaged())
        ShowValue(*ui_->lblStatus,
                  "The file has become shorter since it was loaded; what is gone is shown blank.");
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
    delete verify_;
    ui_->picGraph->Run().Clear();
    ReportPlace::Remember(*this);
    file_ = {};
    shown_ = {};
    view_.ResetPages();
    ui_->txtHead->clear();
    ui_->txtInfo->clear();
    ui_->picGraph->Graph().SetGraphTitle({});
    setWindowTitle("Report");
}

void Report::ShowView(View view) {
    ui_->picMode->setVisible(view == tableTab);
    ui_->picGraph->setVisible(view == graphTab);
    ui_->tblRecords->setVisible(view == recordsTab);
    if (view == recordsTab)
        ui_->tblRecords->ShowFile();
    const QSignalBlocker quiet(ui_->TabStrip);
    ui_->TabStrip->setCurrentIndex(view);
    constexpr std::array items{ReportMenus::graphView, ReportMenus::tableView,
                               ReportMenus::recordsView};
    menus_.ShowView(items[view]);
}

void Report::TabStrip_Click(int tab) {
    ShowView(static_cast<View>(tab));
    AllowMenus();
    if (tab == tableTab)
        view_.SelectShownPage();
    NoticeDamage();
}

void Report::Pages_Click(int page) {
    if (!lists_.Has(page))
        return;
    lists_.Show(page);
    lists_.At(page).LinesChanged();
    ui_->picGraph->Run().BackToPageSpan();
    loader_.SelectPage(page);
    NoticeDamage();
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
    NoticeDamage();
}

void Report::GraphPageWanted(int page) {
    loader_.SelectPage(page);
    view_.SelectShownPage();
}

/// While the thumb is dragged the caption tells where the span will end.
void Report::HScroll_Scroll(Mreport::FileRecord end) {
    setWindowTitle(view_.Caption() + " [End With Record " + QString::number(end.number) + "]");
}

void Report::HScroll_Release() {
    setWindowTitle(view_.Caption());
}

/// Brings the record into graph and list.
void Report::RecordWanted(std::int64_t place, std::uint64_t offset) {
    const auto at = Mreport::WholeRun::PlaceInLists(file_.pages, place);
    if (!at)
        return;
    GoTo(at->page, static_cast<int>(file_.pages.LineAt(at->page, offset)));
    ui_->picGraph->Run().BringIntoSpan(place);
}

/// Brings a record that was found into the list and the graph.
void Report::GoTo(int page, int line) {
    if (!lists_.Has(page))
        return;
    ui_->Pages->setCurrentIndex(page);
    LineListView& list = lists_.At(page);
    list.LinesChanged();
    list.SetCurrentLine(line, Mreport::CountLinesPerRecord(file_.pages) - 1);
    ui_->tblRecords->SelectRecord(page, line);
    const std::string text = file_.pages.Text(page, static_cast<std::size_t>(line));
    ui_->picGraph->BringIntoSpan({MeasurementLines::RecordNumber(text)});
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
            PutOut(Index);
    }
}

void Report::PutOut(std::size_t fileItem) {
    switch (fileItem) {
    case ReportMenus::printReport:
        return output_.Print();
    case ReportMenus::printShownGraph:
        return output_.PrintShownGraph();
    case ReportMenus::exportRecords:
        return output_.ExportRecords();
    default:
        output_.ExportShownGraph();
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
    const std::filesystem::path file = RecentMenu::FileOf(*item);
    if (Refuse(Mreport::busyText))
        return;
    if (!Mcommon::FileExists(file))
        RecentFiles::Remove(file);
    OpenFile(file);
}

void Report::mnuViewItem_Click(std::size_t Index) {
    switch (Index) {
    case ReportMenus::selectChannels:
        return SelectChannels();
    case ReportMenus::graphView:
        return ChooseView(graphTab);
    case ReportMenus::tableView:
        return ChooseView(tableTab);
    case ReportMenus::recordsView:
        return ChooseView(recordsTab);
    case ReportMenus::zoomIn:
        return ui_->picGraph->Zoom(zoomStep);
    case ReportMenus::zoomOut:
        return ui_->picGraph->Zoom(1 / zoomStep);
    default:
        ui_->picGraph->ShowWholeSpan();
    }
}

void Report::ChooseView(View view) {
    ui_->TabStrip->setCurrentIndex(view);
    ShowView(view); // the entry stays checked, chosen twice
}

void Report::SelectChannels() {
    if (Refuse(Mreport::loadingText))
        return;
    frmCommon form(file_, shown_, ui_->picGraph->Graph(), this);
    form.Redraw = [this] { loader_.Redraw(view_.ScrollValue()); };
    if (form.exec() == QDialog::Accepted)
        ui_->picGraph->Run().FileReady();
}

void Report::mnuToolItem_Click(std::size_t Index) {
    if (Index == ReportMenus::findRecord)
        search_.Show();
    else if (Index == ReportMenus::verifyFile)
        VerifyFile();
    else if (Index == ReportMenus::copyLines && ui_->tblRecords->isVisible())
        ui_->tblRecords->CopySelection();
    else if (Index == ReportMenus::selectAllLines && ui_->tblRecords->isVisible())
        ui_->tblRecords->selectAll();
    else
        ReportTools::Run(Index, lists_);
}

void Report::VerifyFile() {
    if (Refuse(Mreport::loadingText))
        return;
    delete verify_;
    verify_ = new frmVerify(file_, this);
    const Wiring wire(*this, guard_, "Report");
    wire(verify_.data(), &frmVerify::RecordWanted, "frmVerify", &Report::RecordWanted);
    verify_->show();
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
