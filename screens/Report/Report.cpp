#include "screens/Report/Report.h"

#include "app/Mcommon.h"
#include "platform/Platform.h"
#include "platform/qt/Text.h"
#include "report/GraphSpan.h"
#include "report/PrintJob.h"
#include "report/RecentFiles.h"
#include "report/Selection.h"
#include "report/WholeRun.h"
#include "screens/controls/ControlArray.h"
#include "screens/controls/LineListView.h"
#include "screens/controls/Placement.h"
#include "screens/controls/Wiring.h"
#include "screens/frmSrch/frmSrch.h"
#include "ui_Report.h"

#include <QCloseEvent>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QShortcut>
#include <QTimer>

namespace {

constexpr auto placeApplication = "Report";
constexpr auto placeSection = "Window";
constexpr auto widestFirstColumn = "Rec. 31000";
constexpr auto widestColumn = "+1.33E+13";
constexpr int headLines = 4;
constexpr int tableTab = 1;

} // namespace

Report::Report(FileOpr::MeasuringRun& run, QWidget* parent)
    : QMainWindow(parent), run_(run), ui_(std::make_unique<Ui::Report>()) {
    ui_->setupUi(this);
    guard_("Report - Form_Load", [this] { Form_Load(); });
    ConnectMenus();
    ConnectControls();
}

Report::~Report() = default;

void Report::Form_Load() {
    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    ui_->txtHead->setFont(fixed);
    const QFontMetrics metrics(fixed);
    ui_->txtHead->setFixedHeight(metrics.lineSpacing() * headLines + 8);
    ui_->txtHead->setTabStopDistance(metrics.horizontalAdvance(widestColumn));
    ui_->TabStrip->addTab("&Graph");
    ui_->TabStrip->addTab("&Table");
    ui_->Pages->setUsesScrollButtons(true);
    ui_->Pages->setExpanding(false);
    ui_->TabStrip->setExpanding(false);
    ui_->picWholeRun->Attach(file_, shown_, *ui_->graSpan);
    ResetPages();
    AllowMenus();
    Mcommon::FitOntoScreen(*this);
    RestorePlace();
}

void Report::RestorePlace() {
    const platform::UserStore& store = platform::Current().userStore;
    const std::string left = store.GetSetting(placeApplication, placeSection, "Left", "");
    const std::string top = store.GetSetting(placeApplication, placeSection, "Top", "");
    if (!left.empty() && !top.empty())
        Mcommon::MoveOntoScreen(*this, std::atoi(left.c_str()), std::atoi(top.c_str()));
}

void Report::ConnectControls() {
    connect(ui_->TabStrip, &QTabBar::currentChanged, this,
            [this](int tab) { guard_("Report - TabStrip", [this, tab] { TabStrip_Click(tab); }); });
    connect(ui_->Pages, &QTabBar::currentChanged, this,
            [this](int page) { guard_("Report - Pages", [this, page] { Pages_Click(page); }); });
    connect(ui_->HScroll, &QScrollBar::valueChanged, this, [this](int value) {
        guard_("Report - HScroll", [this, value] { HScroll_Change(value); });
    });
    connect(ui_->HScroll, &QScrollBar::sliderMoved, this,
            [this](int value) { HScroll_Scroll(value); });
    connect(ui_->HScroll, &QScrollBar::sliderReleased, this, [this] { setWindowTitle(Caption()); });
    connect(ui_->graReport, &GraphControl::PointClicked, this, [this](int set, int point) {
        guard_("Report - graReport", [this, set, point] { graReport_Click(set, point); });
    });
    connect(ui_->graReport, &GraphControl::PointHovered, this,
            [this](int set, int point) { graReport_MouseMove(set, point); });
    const Wiring wire(*this, guard_, "Report");
    WholeRunPanel* run = ui_->picWholeRun;
    auto* next = new QShortcut(QKeySequence::FindNext, this);
    wire(next, &QShortcut::activated, "mnuToolItem", &Report::FindNext);
    wire(run, &WholeRunPanel::QuantityChosen, "cboQuantity", &Report::picWholeRun_QuantityChosen);
    wire(run, &WholeRunPanel::PageSpanWanted, "graOverview", &Report::picWholeRun_PageSpanWanted);
    wire(run, &WholeRunPanel::RecordWanted, "graOverview", &Report::picWholeRun_RecordWanted);
    connect(run, &WholeRunPanel::DrawsSpanChanged, this, [this, run] {
        ui_->graReport->setVisible(!run->DrawsSpan());
        ui_->graSpan->setVisible(run->DrawsSpan());
    });
    connect(run, &WholeRunPanel::CursorsTold, ui_->txtInfo, &QLineEdit::setText);
}

bool Report::IsIdle() const {
    return loader_.Idle() && !exporting_;
}

bool Report::Refuse(std::string_view message) {
    if (IsIdle())
        return false;
    Mcommon::MessageBoxEx(std::string(message), platform::style::okOnly,
                          platform::style::information);
    return true;
}

void Report::ViewFile(const std::filesystem::path& fileName) {
    guard_("Report - ViewFile", [this, &fileName] { OpenFile(fileName); });
}

void Report::OpenFile(const std::filesystem::path& fileName) {
    if (Refuse(Mreport::busyText))
        return;
    if (search_)
        search_->Forget();
    ui_->picWholeRun->Clear();
    if (search_)
        search_->StopSearch();
    // Where the new file cannot be opened, the old one stays.
    const auto ready = qScopeGuard([this] { ui_->picWholeRun->FileReady(); });
    loader_.ViewFile(fileName);
    FollowLive();
    AllowMenus();
    NoticeDamage();
}

/// Registers the viewer for the records that are written while it shows their file.
void Report::FollowLive() {
    live_.reset();
    if (file_.viewingLiveFile)
        live_.emplace(run_,
                      [this] { guard_.Within(*this, "DynUpdate", [this] { LiveRecord(); }); });
}

void Report::LiveRecord() {
    if (!run_.IsFollowing()) // the record waits in the temporary file
        return;
    if (file_.BegunAnew()) // loaded when the record's own handler has ended
        QTimer::singleShot(0, this, [this] { ViewFile(file_.path); });
    else
        loader_.LiveRecord();
    ui_->picWholeRun->FileGrown();
}

/// The shown file stops being live when the measuring page is left, and is so again on return.
void Report::CheckWhetherLive() {
    const bool live = run_.IsLiveFile(file_.path);
    if (!IsIdle() || live == file_.viewingLiveFile)
        return;
    if (!live)
        loader_.SetAutoUpdate(false);
    file_.viewingLiveFile = live;
    FollowLive();
    AllowMenus();
}

void Report::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        guard_("Report - Form_Activate", [this] { CheckWhetherLive(); });
}

void Report::NoticeDamage() {
    if (file_.pages.Damaged())
        ui_->lblStatus->setText(
            tr("The file has become shorter since it was loaded; what is gone is shown blank."));
}

void Report::AllowMenus() {
    const bool file = !file_.path.empty();
    const ControlArray<QAction> fileItems(*this, "mnuFileItem");
    for (const int item : {1, 2, 3})
        fileItems(item).setEnabled(file);
    ui_->mnuToolItem_2->setEnabled(file);
    ui_->mnuViewItem_0->setEnabled(file && !file_.viewingLiveFile);
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
    exportStopped_ = true;
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
    live_.reset();
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

void Report::ResetPages() {
    ShowView(false);
    const QSignalBlocker quiet(ui_->Pages);
    while (ui_->Pages->count() > 0)
        ui_->Pages->removeTab(ui_->Pages->count() - 1);
    ui_->Pages->addTab("List &1");
    for (LineListView* list : lstData_)
        delete list;
    lstData_.clear();
    AddList();
    ui_->graReport->SetLeftTitle("mV");
    ui_->graReport->SetNumSets(0);
    ui_->graReport->SetDataReset(Mreport::graph::resetAllData);
    ui_->graReport->SetDrawMode(Mreport::graph::draw);
    AllowMenus();
}

LineListView* Report::AddList() {
    const int page = static_cast<int>(lstData_.size());
    auto* list = new LineListView;
    list->setObjectName("lstData_" + QString::number(page));
    list->setAccessibleName(tr("Lines of list %1").arg(page + 1));
    list->SetTabStops(widestFirstColumn, widestColumn);
    list->SetSource([this, page] { return static_cast<int>(file_.pages.LineCount(page)); },
                    [this, page](int line) {
                        return Text::ToQt(file_.pages.Shown(page, static_cast<std::size_t>(line)));
                    });
    lstData_.push_back(list);
    ui_->stkLists->addWidget(list);
    return list;
}

void Report::ShowHead(const std::string& headerLines) {
    ui_->txtHead->setPlainText(Text::ToQt(headerLines));
    ui_->graReport->SetGraphTitle(Mreport::ReportTitle(file_, Mreport::PrintKind::graph));
}

void Report::ShowStatus(const std::string& text) {
    ui_->lblStatus->setText(Text::ToQt(text));
}

void Report::PageAdded(int page, bool selectNew) {
    AddList();
    const QSignalBlocker quiet(ui_->Pages);
    ui_->Pages->addTab("List &" + QString::number(page + 1));
    if (!selectNew)
        return;
    ui_->Pages->setCurrentIndex(page);
    ui_->stkLists->setCurrentIndex(page);
}

void Report::LinesAdded() {
    lstData_.back()->LinesChanged();
    if (shown_.shownPageIndex < static_cast<int>(lstData_.size()))
        List(shown_.shownPageIndex).LinesChanged();
}

void Report::SelectShownPage() {
    const QSignalBlocker quiet(ui_->Pages);
    ui_->Pages->setCurrentIndex(shown_.shownPageIndex);
    ui_->stkLists->setCurrentIndex(shown_.shownPageIndex);
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

void Report::ShowView(bool table) {
    ui_->picMode->setVisible(table);
    ui_->picGraph->setVisible(!table);
    const QSignalBlocker quiet(ui_->TabStrip);
    ui_->TabStrip->setCurrentIndex(table ? tableTab : 0);
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
    if (page < 0 || page >= static_cast<int>(lstData_.size()))
        return;
    ui_->stkLists->setCurrentIndex(page);
    List(page).LinesChanged();
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
    setWindowTitle(Caption() + " [End With Record " +
                   QString::number(Mreport::GraphRange(file_, shown_).InFile({value}).number) +
                   "]");
}

std::string Report::PointInfo(int set, int point) const {
    const auto series = Mreport::Series(file_, shown_);
    if (set < 1 || set > static_cast<int>(series.size()))
        return {};
    const double value = ui_->graReport->DataGetAmp(static_cast<std::int16_t>(set),
                                                    static_cast<std::int16_t>(point));
    return Mreport::PointText(shown_.unitCode, series[static_cast<std::size_t>(set - 1)],
                              std::int64_t{firstRecord_.number} + point - 1, value);
}

void Report::graReport_Click(int set, int point) {
    const std::string text = PointInfo(set, point);
    if (!text.empty())
        Mcommon::MessageBoxEx(text, platform::style::okOnly, platform::style::information);
}

void Report::graReport_MouseMove(int set, int point) {
    ui_->txtInfo->setText(Text::ToQt(PointInfo(set, point)));
}
