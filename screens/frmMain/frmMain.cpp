#include "screens/frmMain/frmMain.h"

#include "app/Mcommon.h"
#include "base/RunTimeError.h"
#include "base/Version.h"
#include "files/FileOpr.h"
#include "files/MeasuringRun.h"
#include "link/CommPort.h"
#include "platform/Platform.h"
#include "platform/qt/Text.h"
#include "screens/Report/RecentMenu.h"
#include "screens/controls/BusyPointer.h"
#include "screens/controls/Placement.h"
#include "screens/controls/Wiring.h"
#include "screens/frmMain/RecordSafety.h"
#include "screens/frmMain/RecordingGroup.h"
#include "screens/frmSplash/frmSplash.h"
#include "settings/WindowSize.h"
#include "settings/mWinInit.h"
#include "ui_frmMain.h"

#include <QAction>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QScopeGuard>
#include <QTimer>

#include <algorithm>
#include <limits>

namespace {

QString CaptionOf(frmMain::Page page) {
    const int channels = mWinInit::HardwareSettings.ChannelCount;
    const QString product = QString("%1-Channel Vantrel").arg(channels);
    if (page == frmMain::Page::setup)
        return product + ": Setup";
    // The blank before the colon belongs to the title of the 4-channel program.
    return product + (channels == 8 ? ": Data Acquisition" : " : Data Acquisition");
}

const char* CaptionOf(MeasuringPage::RunState state) {
    switch (state) {
    case MeasuringPage::RunState::start:
        return "&Start";
    case MeasuringPage::RunState::record:
        return "&Record";
    case MeasuringPage::RunState::stop:
        return "&Stop";
    }
    return "";
}

std::int16_t Coordinate(int pixels) {
    return static_cast<std::int16_t>(std::clamp<int>(pixels,
                                                     std::numeric_limits<std::int16_t>::min(),
                                                     std::numeric_limits<std::int16_t>::max()));
}

} // namespace

frmMain::frmMain(FileOpr::MeasuringRun& recorded, QWidget* parent)
    : QMainWindow(parent), run_(recorded), ui_(std::make_unique<Ui::frmMain>()) {
    ui_->setupUi(this);
    cmdPage = ControlArray<QPushButton>(*this, "cmdPage");
    mnuFileItem = ControlArray<QAction>(*this, "mnuFileItem");
    mnuHelp = ControlArray<QAction>(*this, "mnuHelp");
    ConnectEvents();
    guard_("frmMain - Form_Load", [this] { Form_Load(); });
}

frmMain::~frmMain() = default;

void frmMain::ConnectEvents() {
    const Wiring wire(*this, guard_, "frmMain");
    wire(cmdPage, &QPushButton::clicked, "cmdPage", &frmMain::cmdPage_Click);
    wire(mnuFileItem, &QAction::triggered, "mnuFile", &frmMain::mnuFileItem_Click);
    wire(ui_->mnuRecent, &QMenu::aboutToShow, "mnuRecent", &frmMain::mnuRecent_Show);
    wire(ui_->mnuRecent, &QMenu::triggered, "mnuRecent", &frmMain::mnuRecent_Click);
    wire(mnuHelp, &QAction::triggered, "mnuHelp", &frmMain::mnuHelp_Click);
    wire(ui_->pgeMeasure, &MeasuringPage::RunChanged, "RunChanged", &frmMain::ShowRun);
    wire(ui_->pgeMeasure, &MeasuringPage::StatusChanged, "StatusChanged", &frmMain::ShowStatus);
    connect(ui_->pgeMeasure, &MeasuringPage::AveragingChanged, ui_->pgeSetup,
            &SetupPage::ShowAveragingForMeasurement);
    connect(ui_->pgeSetup, &SetupPage::PortSettingsRequested, this,
            &frmMain::PortSettingsRequested);
    connect(&history_, &HistoryWindow::AgesChanged, ui_->pgeSetup, &SetupPage::ShowAges);
    const Wiring history(history_, guard_, "frmMain");
    history(ui_->mnuHistory, &QAction::triggered, "mnuHistory", &HistoryWindow::Show);
    history(ui_->pgeSetup, &SetupPage::HistoryRequested, "HistoryRequested",
            &HistoryWindow::ShowElectrodeOf);
}

void frmMain::Form_Load() {
    lblLink_ = new QLabel(this);
    lblLink_->setObjectName("lblLink");
    ui_->statusbar->addPermanentWidget(lblLink_);

    ui_->pgeSetup->Load(run_.dialog);
    ui_->pgeMeasure->Load(run_);
    ShowPage(Page::setup);
    linkObserver_ = CommPort::ObserveLink([this] { ShowLink(); });
    ShowLink();

    resize(FirstSize());
    Mcommon::FitOntoScreen(*this);
    Mcommon::MoveOntoScreen(*this, mWinInit::WindowX, mWinInit::WindowY);
    FileOpr::SetDataFolder();
    run_.currentMeasurementPath = run_.GetTempFile();
}

/// As remembered; at first large enough for both pages in the desktop's font.
QSize frmMain::FirstSize() const {
    if (const auto remembered = mWinInit::LoadWindowSize())
        return {remembered->width, remembered->height};
    const QSize around = sizeHint() - ui_->stkPages->sizeHint();
    const QSize pages = ui_->pgeSetup->WholeSize().expandedTo(ui_->pgeMeasure->WholeSize());
    return size().expandedTo(pages + around);
}

void frmMain::ShowLink() {
    ui_->pgeSetup->ShowPort();
    lblLink_->setText(Text::ToQt(CommPort::LinkText()));
    const QString reason = CommPort::PortOK() ? QString() : Text::ToQt(CommPort::StatusText());
    if (lblLink_->toolTip() == reason) // as it is at every frame
        return;
    lblLink_->setToolTip(reason);
    lblLink_->setAccessibleDescription(reason);
}

void frmMain::ShowStatus(const QString& text) {
    ui_->statusbar->ShowText(text);
}

void frmMain::ShowPage(Page page) {
    page_ = page;
    const bool measuring = page == Page::measuring;
    ui_->stkPages->setCurrentIndex(measuring ? 1 : 0);
    cmdPage(switchPage).setText(measuring ? "< &Back" : "&Measure >");
    for (const std::size_t index : {run, report, averaging})
        cmdPage(index).setVisible(measuring);
    ShowCaption();
}

void frmMain::ShowCaption() {
    QString caption = CaptionOf(page_);
    if (page_ == Page::measuring && !run_.targetFile.empty())
        caption += " - " + Text::FromPath(run_.targetFile.filename());
    setWindowTitle(caption);
}

/// Brings the run button, and what must not be touched during an automatic run, to the state of
/// reading and recording.
void frmMain::ShowRun() {
    const MeasuringPage::RunState state = ui_->pgeMeasure->State();
    cmdPage(run).setText(CaptionOf(state));
    cmdPage(switchPage).setEnabled(state != MeasuringPage::RunState::stop);
    mnuFileItem(newFile).setEnabled(state != MeasuringPage::RunState::stop);
    ShowCaption();
}

void frmMain::cmdPage_Click(std::size_t Index) {
    if (ui_->pgeMeasure->IsBusy() && Index != switchPage && Index != leave)
        return;
    switch (Index) {
    case switchPage:
        SwitchPage();
        break;
    case run:
        ui_->pgeMeasure->RunPressed();
        break;
    case report:
        ui_->pgeMeasure->RecordingControls().ShowReport();
        break;
    case leave:
        close();
        break;
    case averaging:
        ui_->pgeMeasure->AveragingPressed();
        break;
    default:
        break;
    }
}

void frmMain::SwitchPage() {
    if (page_ == Page::measuring)
        LeaveMeasuringPage();
    else if (ui_->pgeSetup->IsComplete())
        EnterMeasuringPage();
}

void frmMain::EnterMeasuringPage() {
    ui_->pgeSetup->StoreEntries();
    ShowPage(Page::measuring);
    MeasuringPage::Selection selected{};
    for (std::size_t i = 0; i < mWinInit::ChannelsInUse(); ++i)
        selected[i] = ui_->pgeSetup->IsSelected(i);
    ui_->pgeMeasure->Enter(selected);
    cmdPage(run).setFocus(Qt::OtherFocusReason);
}

void frmMain::LeaveMeasuringPage() {
    ui_->pgeMeasure->Leave();
    CommPort::ShowPresentStatus();
    ShowPage(Page::setup);
    cmdPage(switchPage).setFocus(Qt::OtherFocusReason);
}

void frmMain::mnuFileItem_Click(std::size_t Index) {
    if (Index == newFile)
        ui_->pgeMeasure->RecordingControls().NewFile();
    else if (Index == exitProgram)
        close();
    else if (std::filesystem::path file;
             run_.dialog.ShowFileDialog(file, FileOpr::DialogMode::open))
        OpenReport(file);
}

void frmMain::mnuRecent_Show() {
    RecentMenu::Fill(*ui_->mnuRecent);
}

void frmMain::mnuRecent_Click(QAction* item) {
    OpenReport(RecentMenu::Choose(*item));
}

void frmMain::OpenReport(const std::filesystem::path& file) {
    guard_("frmMain - OpenReport",
           [this, &file] { ui_->pgeMeasure->RecordingControls().OpenReport(file); });
}

void frmMain::mnuHelp_Click(std::size_t Index) {
    if (Index == helpText) {
        const char* const text = page_ == Page::setup ? "SetupHlp.txt" : "AcqurHlp.txt";
        platform::Current().desktop.ShowHelpText(platform::Current().places.ProgramFolder() / text);
    } else if (Index == about) {
        frmSplash box(std::string(theMain::versionText), this);
        box.exec();
    }
}

void frmMain::keyPressEvent(QKeyEvent* event) {
    if (event->modifiers() == Qt::AltModifier && ui_->pgeSetup->FocusBoxOf(event->key()))
        return;
    QMainWindow::keyPressEvent(event);
}

void frmMain::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    if (std::exchange(recoveryOffered_, true))
        return;
    // Once the desktop has drawn its frame around it.
    QTimer::singleShot(0, this, [this] { Mcommon::FitOntoScreen(*this); });
    // After the form has been painted, so that the question stands before its window.
    QTimer::singleShot(0, this, [this] {
        guard_("frmMain - OfferRecovery", [this] { OfferRecovery(run_.dialog, guard_); });
    });
}

void frmMain::closeEvent(QCloseEvent* event) {
    bool cancel = true; // stays so when the handler fails
    guard_("frmMain - Form_QueryUnload", [this, &cancel] { Form_QueryUnload(cancel); });
    event->setAccepted(!cancel);
    if (!cancel && !std::exchange(ended_, true))
        Q_EMIT Ended();
}

void frmMain::Form_QueryUnload(bool& cancel) {
    cancel = !ended_;
    if (ended_ || std::exchange(unloading_, true))
        return;
    const auto done = qScopeGuard([this] { unloading_ = false; });
    if (!Mcommon::Ask("Are you sure you want to exit?", Mcommon::EnterMeans::no))
        return;
    if (!ui_->pgeMeasure->RecordingControls().CloseReport())
        return;
    BusyPointer busy;
    const bool wasReading = ui_->pgeMeasure->EndWork();
    SaveSettings();
    if (!RecordsAreSafe(run_)) {
        busy.End();
        if (wasReading)
            ui_->pgeMeasure->StartReading();
        return;
    }
    run_.ReleaseTempFile();
    CommPort::ClosePort();
    cancel = false;
}

void frmMain::EndSession() {
    if (ended_)
        return;
    KeepSettings();
    try {
        run_.FlushTempFile();
    } catch (const RunTimeError&) {
        // The temporary file stays, and its records are offered at the next start.
    }
}

/// Returns what could not be kept, for the analyst.
std::vector<std::string> frmMain::KeepSettings() {
    mWinInit::WindowX = Coordinate(pos().x());
    mWinInit::WindowY = Coordinate(pos().y());
    ui_->pgeSetup->StoreEntries();
    std::vector<std::string> messages = mWinInit::SaveSettings();
    if (messages.empty()) // else the file is full or cannot be written, which has been said
        messages = mWinInit::SaveWindowSize({normalGeometry().width(), normalGeometry().height()});
    if (messages.empty())
        messages = ui_->pgeMeasure->SaveChoices();
    return messages;
}

void frmMain::SaveSettings() {
    for (const std::string& message : KeepSettings())
        Mcommon::Warn(message);
}
