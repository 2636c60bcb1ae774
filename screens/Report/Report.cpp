#include "screens/Report/Report.h"

#include "app/Mcommon.h"
#include "base/NumberText.h"
#include "files/MeasurementLines.h"
#include "platform/Platform.h"
#include "platform/qt/Text.h"
#include "report/GraphSpan.h"
#include "report/PrintJob.h"
#include "report/RecentFiles.h"
#include "report/Selection.h"
#include "report/WholeRun.h"
#include "screens/Report/ReportLists.h"
#include "screens/controls/LineListView.h"
#include "screens/controls/Placement.h"
#include "screens/controls/Wiring.h"
#include "screens/frmCommon/frmCommon.h"
#include "screens/frmPrint/frmPrint.h"
#include "screens/frmSrch/frmSrch.h"
#include "ui_Report.h"

#include <QCloseEvent>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QScopeGuard>
#include <QScrollBar>
#include <QShortcut>
#include <QTimer>

namespace {

constexpr auto placeApplication = "Report";
constexpr auto placeSection = "Window";
constexpr auto helpFile = "ViewHlp.txt";
constexpr auto widestColumn = "+1.33E+13"; // of the header box
constexpr int headLines = 4;
constexpr double zoomStep = 1.25;
/// What another handler's record or flush may bring into the list before that handler goes on.
constexpr std::uint64_t readAtOnce_bytes = std::uint64_t{64} * 1024;

} // namespace

Report::Report(FileOpr::MeasuringRun& run, QWidget* parent)
    : QMainWindow(parent), run_(run), ui_(std::make_unique<Ui::Report>()),
      live_(run, [this] { guard_.Within(*this, "DynUpdate", [this] { FileGrown(); }); }) {
    ui_->setupUi(this);
    lists_ = std::make_unique<ReportLists>(*ui_->Pages, *ui_->stkLists, file_.pages);
    guard_("Report - Form_Load", [this] { Form_Load(); });
    WireControls();
    WireMenus();
}

Report::~Report() = default;

void Report::Form_Load() {
    FitHead();
    ui_->TabStrip->addTab("&Graph");
    ui_->TabStrip->addTab("&Table");
    ui_->TabStrip->setExpanding(false);
    ui_->mnuView->setToolTipsVisible(true);
    ui_->picWholeRun->Attach(file_, shown_, *ui_->graSpan);
    ResetPages();
    AllowMenus();
    Mcommon::FitOntoScreen(*this);
    RestorePlace();
}

/// Whole lines, and room for the scroll bar below them.
void Report::FitHead() {
    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    QPlainTextEdit& head = *ui_->txtHead;
    head.setFont(fixed);
    const QFontMetrics metrics(fixed);
    const double beside = 2 * (head.frameWidth() + head.document()->documentMargin());
    const int lines_px = metrics.lineSpacing() * headLines + static_cast<int>(beside);
    head.setMinimumHeight(lines_px); // where the form is small, the bar lies over the last line
    head.setMaximumHeight(lines_px + head.horizontalScrollBar()->sizeHint().height());
    head.setTabStopDistance(metrics.horizontalAdvance(widestColumn));
}

void Report::RestorePlace() {
    const platform::UserStore& store = platform::Current().userStore;
    const std::string left = store.GetSetting(placeApplication, placeSection, "Left", "");
    const std::string top = store.GetSetting(placeApplication, placeSection, "Top", "");
    if (!left.empty() && !top.empty())
        Mcommon::MoveOntoScreen(*this, NumberText::LeadingInteger(left),
                                NumberText::LeadingInteger(top));
}

void Report::WireControls() {
    const Wiring wire(*this, guard_, "Report");
    wire(ui_->TabStrip, &QTabBar::currentChanged, "TabStrip", &Report::TabStrip_Click);
    wire(ui_->Pages, &QTabBar::currentChanged, "Pages", &Report::Pages_Click);
    wire(ui_->HScroll, &QScrollBar::valueChanged, "HScroll", &Report::HScroll_Change);
    wire(ui_->HScroll, &QScrollBar::sliderMoved, "HScroll", &Report::HScroll_Scroll);
    wire(ui_->HScroll, &QScrollBar::sliderReleased, "HScroll", &Report::HScroll_Release);
    wire(ui_->graReport, &GraphControl::PointClicked, "graReport", &Report::graReport_Click);
    wire(ui_->graReport, &GraphControl::PointHovered, "graReport", &Report::graReport_MouseMove);
    WholeRunPanel* run = ui_->picWholeRun;
    auto* next = new QShortcut(QKeySequence::FindNext, this);
    wire(next, &QShortcut::activated, "mnuToolItem", &Report::FindNext);
    wire(run, &WholeRunPanel::QuantityChosen, "cboQuantity", &Report::picWholeRun_QuantityChosen);
    wire(run, &WholeRunPanel::PageSpanWanted, "graOverview", &Report::picWholeRun_PageSpanWanted);
    wire(run, &WholeRunPanel::RecordWanted, "graOverview", &Report::picWholeRun_RecordWanted);
    wire(run, &WholeRunPanel::DrawsSpanChanged, "graOverview",
         &Report::picWholeRun_DrawsSpanChanged);
    connect(run, &WholeRunPanel::CursorsTold, ui_->txtInfo, &QLineEdit::setText);
}

void Report::WireMenus() {
    const Wiring wire(*this, guard_, "Report");
    const auto wireArray = [this, &wire](const char* name, void (Report::*handler)(int)) {
        wire(ControlArray<QAction>(*this, name), &QAction::triggered, name, handler);
    };
    wireArray("mnuFileItem", &Report::mnuFileItem_Click);
    wireArray("mnuViewItem", &Report::mnuViewItem_Click);
    wireArray("mnuToolItem", &Report::mnuToolItem_Click);
    wireArray("mnuUpdateItem", &Report::mnuUpdateItem_Click);
    wire(ui_->mnuRecent, &QMenu::aboutToShow, "mnuRecent", &Report::mnuRecent_Show);
    wire(ui_->mnuRecent, &QMenu::triggered, "mnuFileItem", &Report::mnuRecent_Click);
    wire(ui_->mnuHelp, &QAction::triggered, "mnuHelp", &Report::mnuHelp_Click);
    wire(ui_->mnuBack, &QAction::triggered, "mnuBack", &Report::mnuBack_Click);
}

bool Report::IsIdle() const {
    return loader_.Idle() && !export_.Running();
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
    ui_->picWholeRun->Clear();
    if (search_)
        search_->StopSearch();
    // Where the new file cannot be opened, the old one stays.
    const auto ready = qScopeGuard([this] { ui_->picWholeRun->FileReady(); });
    loader_.ViewFile(fileName);
    AllowMenus();
    NoticeDamage();
}

/// A record has been written, or the temporary file has been flushed; it runs within the handler
/// that did it.
void Report::FileGrown() {
    if (!run_.IsTarget(file_.path))
        return;
    if (file_.BegunAnew()) {
        QTimer::singleShot(0, this, [this] { ViewFile(file_.path); });
        return;
    }
    NoticeLive();
    const std::uint64_t bytes = loader_.NewBytes();
    if (bytes > readAtOnce_bytes)
        QTimer::singleShot(0, this, [this] { TakeWhatIsNew(); });
    else if (bytes > 0)
        loader_.LiveRecord();
    ui_->picWholeRun->FileGrown();
}

void Report::TakeWhatIsNew() {
    guard_("FillList", [this] { loader_.ReadNew(); });
    ui_->picWholeRun->FileGrown();
}

/// The shown file stops being live when the measuring page is left, and is so again on return.
void Report::NoticeLive() {
    const bool live = run_.IsLiveFile(file_.path);
    if (!IsIdle() || live == file_.viewingLiveFile)
        return;
    if (!live)
        loader_.SetAutoUpdate(false);
    file_.viewingLiveFile = live;
    AllowMenus();
}

void Report::Form_Activate() {
    NoticeLive();
    FileGrown();
}

void Report::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        guard_("Report - Form_Activate", [this] { Form_Activate(); });
}

void Report::NoticeDamage() {
    if (file_.pages.Damaged())
        ui_->lblStatus->setText(
            "The file has become shorter since it was loaded; what is gone is shown blank.");
}

void Report::AllowMenus() {
    const bool file = !file_.path.empty();
    const ControlArray<QAction> fileItems(*this, "mnuFileItem");
    for (const int item : {printReport, exportRecords, exportGraph})
        fileItems(item).setEnabled(file);
    ui_->mnuToolItem_2->setEnabled(file);
    const bool recording = file_.viewingLiveFile && updateEnabled_;
    ui_->mnuViewItem_0->setEnabled(file && !recording);
    ui_->mnuViewItem_0->setToolTip(recording ? "Not while records are written into this file"
                                             : "What the graph shows");
    for (const auto& [index, item] : ControlArray<QAction>(*this, "mnuUpdateItem"))
        item->setEnabled(updateEnabled_ && file_.viewingLiveFile);
    ui_->mnuUpdateItem_1->setChecked(shown_.autoUpdate);
    ui_->HScroll->setVisible(!shown_.autoUpdate);
}

void Report::SetUpdateEnabled(bool enabled) {
    updateEnabled_ = enabled;
    if (!enabled && shown_.autoUpdate)
        guard_("Report - mnuUpdateItem", [this] { loader_.SetAutoUpdate(false); });
    AllowMenus();
}

void Report::keyPressEvent(QKeyEvent* event) {
    Form_KeyDown(event->key());
    QMainWindow::keyPressEvent(event);
}

void Report::Form_KeyDown(int keyCode) {
    if (keyCode != Qt::Key_Escape)
        return;
    loader_.RequestStop();
    export_.RequestStop();
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
    delete search_;
    ui_->picWholeRun->Clear();
    platform::UserStore& store = platform::Current().userStore;
    store.SaveSetting(placeApplication, placeSection, "Left", std::to_string(pos().x()));
    store.SaveSetting(placeApplication, placeSection, "Top", std::to_string(pos().y()));
    file_ = {};
    shown_ = {};
    ResetPages();
    ui_->txtHead->clear();
    ui_->txtInfo->clear();
    ui_->graReport->SetGraphTitle({});
    setWindowTitle("Report");
    AllowMenus();
}

QString Report::Caption() const {
    return "Report - " + Text::FromPath(file_.path);
}

void Report::ShowCaption(const std::filesystem::path& file) {
    setWindowTitle(Caption());
    RecentFiles::Add(file);
    Q_EMIT FileShown(file);
}

/// The file shown before has gone, and with it what was found in it.
void Report::ResetPages() {
    if (search_)
        search_->Forget();
    ShowView(false);
    lists_->Reset();
    ui_->graReport->SetEmptyText({});
    ui_->graReport->SetLeftTitle("mV");
    ui_->graReport->SetNumSets(0);
    ui_->graReport->SetDataReset(Mreport::graph::resetAllData);
    ui_->graReport->SetDrawMode(Mreport::graph::draw);
    AllowMenus();
}

void Report::ShowHead(const std::string& headerLines) {
    ui_->txtHead->setPlainText(Text::ToQt(headerLines));
    ui_->graReport->SetGraphTitle(Mreport::ReportTitle(file_, Mreport::PrintKind::graph));
}

void Report::ShowStatus(const std::string& text) {
    ui_->lblStatus->setText(Text::ToQt(text));
}

void Report::PageAdded(int /*page*/, bool selectNew) {
    lists_->Add(selectNew);
}

void Report::LinesAdded() {
    lists_->Newest().LinesChanged();
    if (lists_->Has(shown_.shownPageIndex))
        lists_->At(shown_.shownPageIndex).LinesChanged();
}

void Report::SelectShownPage() {
    lists_->Show(shown_.shownPageIndex);
}

void Report::SetScroll(const Mreport::ScrollLimits& limits) {
    ui_->HScroll->setPageStep(static_cast<int>(Mreport::spanLength));
    ui_->HScroll->setRange(limits.min, limits.max);
    if (limits.value)
        ui_->HScroll->setValue(*limits.value);
}

Mreport::PageRecord Report::ScrollValue() const {
    return {ui_->HScroll->value()};
}

Mreport::ReportGraph& Report::Graph() {
    return *ui_->graReport;
}

void Report::GraphDrawn(Mreport::FileRecord firstRecord) {
    firstRecord_ = firstRecord;
    ui_->graReport->SetEmptyText(Text::ToQt(Mreport::EmptyGraphText(file_, shown_)));
    const Mreport::PageRange range = Mreport::GraphRange(file_, shown_);
    const std::int32_t first = std::max(range.InPage(firstRecord).number, 1);
    const std::int32_t end = std::min(first + Mreport::spanLength - 1, range.recordsInPage);
    ui_->picWholeRun->PageSpanDrawn(shown_.graphPageIndex, {end}, end - first + 1);
}

/// F3: the search again, from the record found last.
void Report::FindNext() {
    if (file_.path.empty())
        return;
    if (search_ && search_->isVisible())
        search_->FindNext();
    else
        FindRecord();
}

/// As the selection dialog's acceptance, with the channels that can have the quantity.
void Report::picWholeRun_QuantityChosen(Quantity quantity) {
    Mreport::Selection selection(file_, shown_);
    selection.ChooseUnit(quantity);
    selection.Accept(shown_);
    ui_->graReport->SetNumSets(selection.CheckedCount());
    ui_->graReport->SetLeftTitle(selection.UnitName());
    loader_.Redraw(ScrollValue());
    ui_->picWholeRun->FileReady();
}

void Report::picWholeRun_PageSpanWanted(int page, Mreport::PageRecord end) {
    if (!shown_.autoUpdate) { // the live graph stays with the newest records
        if (page != shown_.graphPageIndex) {
            loader_.SelectPage(page);
            SelectShownPage();
        }
        ui_->HScroll->setValue(end.number);
    }
    ui_->picWholeRun->BackToPageSpan();
}

/// Brings the record into graph and list.
void Report::picWholeRun_RecordWanted(std::int64_t place, std::uint64_t offset) {
    const auto at = Mreport::WholeRun::PlaceInLists(file_.pages, place);
    if (!at)
        return;
    GoTo(at->page, static_cast<int>(file_.pages.LineAt(at->page, offset)));
    ui_->picWholeRun->BringIntoSpan(place);
}

void Report::picWholeRun_DrawsSpanChanged() {
    const bool span = ui_->picWholeRun->DrawsSpan();
    ui_->graReport->setVisible(!span);
    ui_->graSpan->setVisible(span);
}

void Report::ShowView(bool table) {
    ui_->picMode->setVisible(table);
    ui_->picGraph->setVisible(!table);
    const QSignalBlocker quiet(ui_->TabStrip);
    ui_->TabStrip->setCurrentIndex(table ? tableTab : graphTab);
    ui_->mnuViewItem_1->setChecked(!table);
    ui_->mnuViewItem_2->setChecked(table);
    for (QAction* item : {ui_->mnuViewItem_3, ui_->mnuViewItem_4, ui_->mnuViewItem_5})
        item->setEnabled(!table);
    for (QAction* item : {ui_->mnuToolItem_3, ui_->mnuToolItem_4})
        item->setEnabled(table);
}

void Report::TabStrip_Click(int tab) {
    ShowView(tab == tableTab);
    AllowMenus();
    if (tab == tableTab)
        SelectShownPage();
    NoticeDamage();
}

void Report::Pages_Click(int page) {
    if (!lists_->Has(page))
        return;
    lists_->Show(page);
    lists_->At(page).LinesChanged();
    ui_->picWholeRun->BackToPageSpan();
    loader_.SelectPage(page);
    NoticeDamage();
}

void Report::HScroll_Change(int value) {
    if (shown_.scrollGuard)
        return;
    ui_->picWholeRun->BackToPageSpan();
    loader_.Redraw({value});
    NoticeDamage();
}

/// While the thumb is dragged the caption tells where the span will end.
void Report::HScroll_Scroll(int value) {
    const Mreport::FileRecord end = Mreport::GraphRange(file_, shown_).InFile({value});
    setWindowTitle(Caption() + " [End With Record " + QString::number(end.number) + "]");
}

void Report::HScroll_Release() {
    setWindowTitle(Caption());
}

int Report::SeriesNumber(int set) const {
    const auto series = Mreport::Series(file_, shown_);
    return set >= 1 && set <= static_cast<int>(series.size())
               ? series[static_cast<std::size_t>(set - 1)]
               : 0;
}

void Report::graReport_Click(int set, int point) {
    const int number = SeriesNumber(set);
    if (number == 0)
        return;
    const double value = ui_->graReport->DataGetAmp(static_cast<std::int16_t>(set),
                                                    static_cast<std::int16_t>(point));
    Mcommon::Inform(Mreport::PointText(shown_.unitCode, number,
                                       std::int64_t{firstRecord_.number} + point - 1, value));
}

void Report::graReport_MouseMove(int set, int point) {
    const int number = SeriesNumber(set);
    if (number == 0)
        return ui_->txtInfo->clear();
    const double value = ui_->graReport->DataGetAmp(static_cast<std::int16_t>(set),
                                                    static_cast<std::int16_t>(point));
    ui_->txtInfo->setText(Text::ToQt(Mreport::PointInfo(
        shown_.unitCode, number, std::int64_t{firstRecord_.number} + point - 1, value)));
}

void Report::mnuFileItem_Click(int Index) {
    switch (Index) {
    case openFile:
        return OpenThroughDialog();
    case printReport:
        return Print();
    case exportRecords:
        return ExportRecords();
    case exportGraph:
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
    for (const auto& file : RecentFiles::List()) {
        const QString name = Text::FromPath(file);
        // An ampersand of the name is no mnemonic.
        ui_->mnuRecent->addAction(QString(name).replace("&", "&&"))->setData(name);
    }
    if (ui_->mnuRecent->isEmpty())
        ui_->mnuRecent->addAction("No file yet")->setEnabled(false);
}

void Report::mnuRecent_Click(QAction* item) {
    const std::filesystem::path file = Text::ToPath(item->data().toString());
    if (Refuse(Mreport::busyText))
        return;
    if (!Mcommon::FileExists(file))
        RecentFiles::Remove(file);
    OpenFile(file);
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
    auto failed = qScopeGuard([this] { ui_->lblStatus->setText("Ready"); });
    const auto begun = [this] {
        ui_->lblStatus->setText("Exporting records... [Press ESC to stop exporting]");
        ui_->lblStatus->repaint();
    };
    if (const auto outcome = export_.WriteRecords(begun))
        ui_->lblStatus->setText(*outcome);
    failed.dismiss();
}

void Report::ExportGraphPicture() {
    if (Refuse(Mreport::loadingText))
        return;
    auto failed = qScopeGuard([this] { ui_->lblStatus->setText("Ready"); });
    if (const auto outcome = export_.WriteGraph(*ui_->graReport))
        ui_->lblStatus->setText(*outcome);
    failed.dismiss();
}

void Report::mnuViewItem_Click(int Index) {
    switch (Index) {
    case selectChannels:
        return SelectChannels();
    case graphView:
    case tableView:
        ui_->TabStrip->setCurrentIndex(Index == tableView ? tableTab : graphTab);
        return ShowView(Index == tableView);
    case zoomIn:
        return Zoom(zoomStep);
    case zoomOut:
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
    case calculator:
        return platform::Current().desktop.ShowCalculator();
    case notepad:
        return platform::Current().desktop.ShowNotepad();
    case findRecord:
        return FindRecord();
    case copyLines:
        return lists_->InFront().CopySelection();
    default:
        lists_->InFront().SelectAll();
    }
}

void Report::FindRecord() {
    if (!search_) {
        search_ = new frmSrch(file_, this);
        const Wiring wire(*this, guard_, "Report");
        wire(search_.data(), &frmSrch::RecordFound, "frmSrch", &Report::GoTo);
    }
    search_->show();
    search_->raise();
    search_->activateWindow();
}

/// Brings a record that was found into the list and the graph.
void Report::GoTo(int page, int line) {
    if (!lists_->Has(page))
        return;
    ui_->Pages->setCurrentIndex(page);
    LineListView& list = lists_->At(page);
    list.LinesChanged();
    list.SetCurrentLine(line, Mreport::CountLinesPerRecord(file_.pages) - 1);
    const std::string text = file_.pages.Text(page, static_cast<std::size_t>(line));
    ShowInGraph({MeasurementLines::RecordNumber(text)});
}

void Report::ShowInGraph(Mreport::FileRecord record) {
    if (shown_.autoUpdate) // the graph stays with the newest records
        return;
    const int place = Mreport::GraphRange(file_, shown_).InPage(record).number;
    const int end = ui_->HScroll->value();
    if (place <= end - Mreport::spanLength || place > end)
        ui_->HScroll->setValue(place + Mreport::spanLength / 2);
}

void Report::mnuUpdateItem_Click(int Index) {
    const auto shown = qScopeGuard([this] { AllowMenus(); }); // the check mark as it is now
    const auto grown = qScopeGuard([this] { ui_->picWholeRun->FileGrown(); });
    if (Index != automaticUpdate)
        loader_.UpdateList();
    else if (!Refuse(Mreport::loadingText))
        loader_.SetAutoUpdate(ui_->mnuUpdateItem_1->isChecked());
}

void Report::mnuHelp_Click() {
    platform::Current().desktop.ShowHelpText(platform::Current().places.ProgramFolder() / helpFile);
}

void Report::mnuBack_Click() {
    close();
}
