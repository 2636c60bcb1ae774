#include "screens/frmMain/frmMain.h"

#include "app/Mcommon.h"
#include "base/CodePage.h"
#include "base/NumberText.h"
#include "base/RunTimeError.h"
#include "base/Version.h"
#include "files/FileOpr.h"
#include "files/Recovery.h"
#include "link/CommPort.h"
#include "platform/Platform.h"
#include "platform/qt/EntryText.h"
#include "platform/qt/Text.h"
#include "screens/Report/Report.h"
#include "screens/controls/BusyPointer.h"
#include "screens/controls/Placement.h"
#include "screens/frmSplash/frmSplash.h"
#include "settings/mWinInit.h"
#include "ui_frmMain.h"

#include <QAction>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QResizeEvent>
#include <QScopeGuard>

#include <algorithm>
#include <limits>

namespace {

constexpr int readInterval_ms = 500;
constexpr int timeInterval_ms = 250;

// Elements of cmdPage.
constexpr int switchButton = 0;
constexpr int runButton = 1;
constexpr int reportButton = 2;
constexpr int exitButton = 3;
constexpr int averagingButton = 4;

// Elements of the help menu.
constexpr int helpItem = 0;
constexpr int aboutItem = 2;

QString CaptionOf(frmMain::Page page) {
    const int channels = mWinInit::HardwareSettings.ChannelCount;
    const QString product = QString("%1-Channel Vantrel").arg(channels);
    if (page == frmMain::Page::setup)
        return product + ": Setup";
    // The blank before the colon belongs to the title of the 4-channel program.
    return product + (channels == 8 ? ": Data Acquisition" : " : Data Acquisition");
}

std::int16_t Coordinate(int pixels) {
    return static_cast<std::int16_t>(std::clamp<int>(pixels,
                                                     std::numeric_limits<std::int16_t>::min(),
                                                     std::numeric_limits<std::int16_t>::max()));
}

} // namespace

frmMain::frmMain(QWidget* parent)
    : QMainWindow(parent), ui_(std::make_unique<Ui::frmMain>()), tmrRead(this), tmrTime(this) {
    ui_->setupUi(this);
    cmdPage = ControlArray<QPushButton>(*this, "cmdPage");
    cmdCalib = ControlArray<QPushButton>(*this, "cmdCalib");
    txtEntry = ControlArray<QLineEdit>(*this, "txtEntry");
    txtMolarMass = ControlArray<QLineEdit>(*this, "txtMolarMass");
    cboEntry = ControlArray<QComboBox>(*this, "cboEntry");
    chkSelect = ControlArray<QCheckBox>(*this, "chkSelect");
    lblEntry = ControlArray<QLabel>(*this, "lblEntry");
    lblCalibDate = ControlArray<QLabel>(*this, "lblCalibDate");
    lblChannel = ControlArray<QLabel>(*this, "lblChannel");
    lblElectrode = ControlArray<QLabel>(*this, "lblElectrode");
    lblSerialNo = ControlArray<QLabel>(*this, "lblSerialNo");
    lblSensor = ControlArray<QLabel>(*this, "lblSensor");
    mnuHelp = ControlArray<QAction>(*this, "mnuHelp");
    ConnectEvents();
    guard_("frmMain - Form_Load", [this] { Form_Load(); });
}

frmMain::~frmMain() {
    // These tell this form of their end, so they must go while it is whole.
    delete calibration_;
    delete report_;
}

void frmMain::ConnectEvents() {
    cmdPage.Connect(*this, &QPushButton::clicked, [this](int Index) {
        guard_("frmMain - cmdPage", [this, Index] { cmdPage_Click(Index); });
    });
    cmdCalib.Connect(*this, &QPushButton::clicked, [this](int Index) {
        guard_("frmMain - cmdCalib", [this, Index] { cmdCalib_Click(Index); });
    });
    cboEntry.Connect(*this, &QComboBox::activated, [this](int Index) {
        guard_("frmMain - cboEntry", [this, Index] { cboEntry_Click(Index); });
    });
    mnuHelp.Connect(*this, &QAction::triggered, [this](int Index) {
        guard_("frmMain - mnuHelp", [this, Index] { mnuHelp_Click(Index); });
    });
    connect(ui_->cmdSimult, &QPushButton::clicked, this,
            [this] { guard_("frmMain - cmdSimult", [this] { cmdSimult_Click(); }); });
    connect(ui_->cmdBrowse, &QPushButton::clicked, this,
            [this] { guard_("frmMain - cmdBrowse", [this] { cmdBrowse_Click(); }); });
    connect(ui_->cmdPort, &QPushButton::clicked, this, &frmMain::PortSettingsRequested);
    // dateChanged, since a date is typed, stepped or picked; showing one blocks the signal.
    connect(ui_->txtExperimentDate, &QDateEdit::dateChanged, this, [this](QDate date) {
        guard_("frmMain - txtExperimentDate", [this, date] { txtExperimentDate_Change(date); });
    });
    connect(&tmrRead, &QTimer::timeout, this,
            [this] { guard_("frmMain - tmrRead", [this] { tmrRead_Timer(); }); });
    connect(&tmrTime, &QTimer::timeout, this,
            [this] { guard_("frmMain - tmrTime", [this] { tmrTime_Timer(); }); });
}

void frmMain::Form_Load() {
    tmrRead.setObjectName("tmrRead");
    tmrRead.setInterval(readInterval_ms);
    tmrTime.setObjectName("tmrTime");
    tmrTime.setInterval(timeInterval_ms);

    lblLink_ = new QLabel(this);
    lblLink_->setObjectName("lblLink");
    ui_->statusbar->addPermanentWidget(lblLink_);

    FillLists();
    PrepareSetupPage();
    PrepareMeasuringPage();
    ShowSetup();
    ShowPage(Page::setup);
    linkObserver_ = CommPort::ObserveLink([this] { ShowLink(); });
    ShowLink();

    Mcommon::FitOntoScreen(*this);
    Mcommon::MoveOntoScreen(*this, mWinInit::WindowX, mWinInit::WindowY);
    FileOpr::SetDataFolder();
    FileOpr::currentMeasurementPath = FileOpr::GetTempFile();
}

void frmMain::ShowLink() {
    ui_->fraPort->setTitle(QString("Communications Port (COM%1)").arg(CommPort::PortNumber));
    lblLink_->setText(Text::ToQt(CommPort::LinkText()));
}

void frmMain::ShowPage(Page page) {
    page_ = page;
    const bool measuring = page == Page::measuring;
    ui_->stkPages->setCurrentWidget(measuring ? ui_->pgeMeasure : ui_->pgeSetup);
    cmdPage(switchButton).setText(measuring ? "< &Back" : "&Measure >");
    for (const int index : {runButton, reportButton, averagingButton})
        cmdPage(index).setVisible(measuring);
    cmdPage(runButton).setText("&Record");
    ShowCaption();
}

void frmMain::ShowCaption() {
    QString caption = CaptionOf(page_);
    if (page_ == Page::measuring && !FileOpr::targetFile.empty())
        caption += " - " + Text::FromPath(FileOpr::targetFile.filename());
    setWindowTitle(caption);
}

bool frmMain::Busy() const {
    // The pointer may have been taken away meanwhile, by a report that was loaded.
    return waiting_ ||
           platform::Current().desktop.GetMousePointer() == platform::MousePointer::hourglass;
}

void frmMain::cmdPage_Click(int Index) {
    if (Busy() && Index != switchButton && Index != exitButton)
        return;
    switch (Index) {
    case switchButton:
        if (page_ == Page::measuring)
            LeaveMeasuringPage();
        else if (SetupIsComplete())
            EnterMeasuringPage();
        break;
    case runButton:
        RunButtonPressed();
        break;
    case reportButton:
        ShowLiveReport();
        break;
    case exitButton:
        close();
        break;
    case averagingButton:
        AskAveraging();
        break;
    default:
        break;
    }
}

void frmMain::mnuHelp_Click(int Index) {
    if (Index == helpItem) {
        const char* const text = page_ == Page::setup ? "SetupHlp.txt" : "AcqurHlp.txt";
        platform::Current().desktop.ShowHelpText(platform::Current().places.ProgramFolder() / text);
    } else if (Index == aboutItem) {
        frmSplash about(std::string(theMain::versionText), this);
        about.exec();
    }
}

void frmMain::keyPressEvent(QKeyEvent* event) {
    if (event->modifiers() == Qt::AltModifier && Form_KeyDown(event->key()))
        return;
    QMainWindow::keyPressEvent(event);
}

bool frmMain::Form_KeyDown(int key) {
    const std::array<std::pair<int, QWidget*>, 5> boxes = {{{Qt::Key_P, &cboEntry(0)},
                                                            {Qt::Key_N, &txtEntry(0)},
                                                            {Qt::Key_T, &cboEntry(8)},
                                                            {Qt::Key_R, &txtEntry(12)},
                                                            {Qt::Key_D, &txtEntry(2)}}};
    for (const auto& [letter, box] : boxes) {
        if (letter != key || !box->isVisibleTo(this))
            continue;
        box->setFocus(Qt::ShortcutFocusReason);
        return true;
    }
    return false;
}

void frmMain::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    if (std::exchange(recoveryOffered_, true))
        return;
    // After the form has been painted, so that the question stands before its window.
    QTimer::singleShot(0, this,
                       [this] { guard_("frmMain - OfferRecovery", [this] { OfferRecovery(); }); });
}

void frmMain::OfferRecovery() {
    for (FileOpr::UnfinishedRecording& recording : FileOpr::FindUnfinishedRecordings()) {
        const std::string target =
            recording.target.empty() ? "" : CodePage::NameOf(recording.target);
        const std::string prompt =
            "A recording was interrupted before its records reached their file.\n\nRecords: " +
            NumberText::Plain(recording.records) + ", the last at " + recording.lastTimeStamp +
            (target.empty() ? "" : "\nFile: " + target) +
            "\n\nBring the records into the file now? Otherwise they are offered again at the "
            "next start.";
        if (Mcommon::MessageBoxEx(prompt, platform::style::yesNo, platform::style::question) !=
            platform::button::yes)
            continue;
        if (recording.target.empty() &&
            !FileOpr::ShowFileDialog(recording.target, FileOpr::DialogMode::save))
            continue;
        guard_("frmMain - OfferRecovery", [&recording] { FileOpr::Recover(recording); });
    }
}

void frmMain::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) // the controls take the palette after their form
        QTimer::singleShot(0, this, [this] { ShowColours(); });
}

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize && qobject_cast<QLabel*>(watched) != nullptr)
        FitFigures(static_cast<QResizeEvent*>(event)->size());
    auto* box = qobject_cast<QLineEdit*>(watched);
    if (event->type() == QEvent::FocusIn && box != nullptr)
        SelectPrompt(*box);
    return QMainWindow::eventFilter(watched, event);
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
    using namespace platform::style;
    if (Mcommon::MessageBoxEx("Are you sure you want to exit?", yesNo, question, defaultButton2) !=
        platform::button::yes)
        return;
    if (report_ && !report_->close()) // it is loading and has said so
        return;
    BusyPointer busy;
    const bool wasReading = reading_;
    FinishWork();
    if (!RecordsAreSafe()) {
        busy.End();
        if (wasReading)
            StartReading();
        ShowRunState();
        return;
    }
    FileOpr::ReleaseTempFile();
    CommPort::ClosePort();
    cancel = false;
}

/// Ends reading and recording and writes the settings.
void frmMain::FinishWork() {
    mWinInit::WindowX = Coordinate(pos().x());
    mWinInit::WindowY = Coordinate(pos().y());
    StopReading();
    recording_.Stop();
    StoreEntries();
    for (const std::string& message : mWinInit::SaveSettings())
        Mcommon::MessageBoxEx(message, platform::style::okOnly, platform::style::exclamation);
}

/// Moves what the temporary file holds into the target. Where that fails, the analyst decides
/// whether to leave all the same.
bool frmMain::RecordsAreSafe() {
    try {
        FileOpr::FlushTempFile();
        return true;
    } catch (const RunTimeError& error) {
        using namespace platform::style;
        return Mcommon::MessageBoxEx(std::string(error.what()) +
                                         "\n\nAre you sure you want to exit? The records will be "
                                         "offered again at the next start.",
                                     yesNo, exclamation, defaultButton2) == platform::button::yes;
    }
}
