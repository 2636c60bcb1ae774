#include "screens/frmMain/SetupPage.h"

#include "app/Mcommon.h"
#include "base/CodePage.h"
#include "base/Electrode.h"
#include "base/NumberText.h"
#include "base/PortName.h"
#include "chem/Measure.h"
#include "files/MeasurementDialog.h"
#include "history/Notes.h"
#include "link/CommPort.h"
#include "platform/Platform.h"
#include "platform/qt/EntryText.h"
#include "platform/qt/Text.h"
#include "screens/SimultCalib/SimultCalib.h"
#include "screens/controls/BusyPointer.h"
#include "screens/controls/ListLabels.h"
#include "screens/controls/WheelFilter.h"
#include "screens/controls/Wiring.h"
#include "screens/frmCalib/frmCalib.h"
#include "settings/SetupEntries.h"
#include "settings/mWinInit.h"
#include "ui_SetupPage.h"

#include <QEvent>
#include <QShortcut>
#include <QSignalBlocker>
#include <QTimer>

#include <algorithm>

namespace {

std::string TextOf(const QLineEdit& box) {
    return Text::FromQt(box.text());
}

/// The averaging number in a box: what its leading number says where that is usable, else the one
/// in force.
std::int16_t AveragingOr(std::int16_t inForce, const std::string& text) {
    const std::int16_t typed = NumberText::LeadingInteger(text);
    const bool usable = typed >= SetupChecks::minAveraging && typed <= SetupChecks::maxAveraging;
    return usable ? typed : inForce;
}

std::unique_ptr<Ui::SetupPage> SetUp(SetupPage& page) {
    auto ui = std::make_unique<Ui::SetupPage>();
    ui->setupUi(&page);
    LabelLists(page);
    return ui;
}

} // namespace

SetupPage::SetupPage(QWidget* parent) : QWidget(parent), ui_(SetUp(*this)), rows_(*this) {
    tmrAge_.setParent(this);
    tmrAge_.setObjectName("tmrAge");
    tmrAge_.start(std::chrono::minutes(1));
    ConnectEvents();
}

SetupPage::~SetupPage() {
    delete calibration_; // tells this page of its end, so it must go while the page is whole
}

void SetupPage::ConnectEvents() {
    const Wiring wire(*this, guard_, "frmMain");
    wire(rows_.cmdCalib, &QPushButton::clicked, "cmdCalib", &SetupPage::cmdCalib_Click);
    // Both: the same electrode chosen again is no change, and a change made by an assistive tool or
    // by code is no click. Choosing twice is as choosing once.
    wire(rows_.cboEntry, &QComboBox::activated, "cboEntry", &SetupPage::cboEntry_Click);
    wire(rows_.cboEntry, &QComboBox::currentIndexChanged, "cboEntry", &SetupPage::cboEntry_Click);
    wire(ui_->cmdSimult, &QPushButton::clicked, "cmdSimult", &SetupPage::cmdSimult_Click);
    wire(&tmrAge_, &QTimer::timeout, "tmrAge", &SetupPage::ShowAges);
    wire(rows_.lblCalibDate, &QWidget::customContextMenuRequested, "lblCalibDate",
         &SetupPage::lblCalibDate_Menu);
    wire(ui_->cmdBrowse, &QPushButton::clicked, "cmdBrowse", &SetupPage::cmdBrowse_Click);
    // dateChanged, since a date is typed, stepped or picked; showing one blocks the signal.
    wire(ui_->txtExperimentDate, &QDateEdit::dateChanged, "txtExperimentDate",
         &SetupPage::txtExperimentDate_Change);
    connect(ui_->cmdPort, &QPushButton::clicked, this, &SetupPage::PortSettingsRequested);
}

void SetupPage::Load(FileOpr::MeasurementDialog& dialog) {
    dialog_ = &dialog;
    rows_.Prepare();
    PrepareBoxes();
    ShowRecords();
}

void SetupPage::PrepareBoxes() {
    for (const std::size_t box :
         {averagingForCalibration, averagingForMeasurement, project, analyst})
        AcceptCodePageOnly(rows_.txtEntry(box));
    TakeWheelOnlyWithFocus(*ui_->scrSetup);
    // A mnemonic in the frame's title would go to the box of the frame that had the focus last.
    auto* toProject = new QShortcut(Qt::ALT | Qt::Key_D, ui_->scrSetup);
    connect(toProject, &QShortcut::activated, this, [this] { FocusBoxOf(Qt::Key_D); });
    rows_.txtEntry(project).installEventFilter(this);
    rows_.txtEntry(analyst).installEventFilter(this);
    ui_->txtExperimentDate->setLocale(QLocale::c()); // month names are English everywhere
}

bool SetupPage::eventFilter(QObject* watched, QEvent* event) {
    auto* box = qobject_cast<QLineEdit*>(watched);
    if (event->type() == QEvent::FocusIn && box != nullptr)
        SelectPrompt(*box);
    return QWidget::eventFilter(watched, event);
}

/// A prompt is replaced by what is typed, as if it were not there.
void SetupPage::SelectPrompt(QLineEdit& box) {
    if (!SetupChecks::IsFilled(TextOf(box)))
        QTimer::singleShot(0, &box, &QLineEdit::selectAll); // after the click has set its cursor
}

void SetupPage::ShowRecords() {
    const auto& hardware = mWinInit::HardwareSettings;
    const auto& txtEntry = rows_.txtEntry;
    txtEntry(averagingForCalibration).setText(QString::number(hardware.AveragingForCalibration));
    txtEntry(averagingForMeasurement).setText(QString::number(hardware.AveragingForMeasurement));
    txtEntry(project).setText(Text::ToQt(mWinInit::ProjectInfo.ProjectName));
    txtEntry(analyst).setText(Text::ToQt(mWinInit::ProjectInfo.Experimentator));
    ui_->txtPortNumber->setValue(ShownPortNumber());
    ui_->txtDataFolder->setText(Text::ToQt(mWinInit::ProjectInfo.MeasurementFileLocation));
    ShowExperimentDate();
    for (std::size_t i = 0; i < maxChannels; ++i) {
        rows_.Show(i);
        const int electrode = rows_.cboEntry(ChannelRows::electrode + i).currentIndex();
        rows_.chkSelect(i).setChecked(i < mWinInit::ChannelsInUse() &&
                                      electrode != Electrode::noneIndex);
    }
}

/// The hardware's port number as its box can show it.
int SetupPage::ShownPortNumber() const {
    return std::clamp<int>(mWinInit::HardwareSettings.HardwarePortNumber,
                           ui_->txtPortNumber->minimum(), ui_->txtPortNumber->maximum());
}

void SetupPage::ShowExperimentDate() {
    const QSignalBlocker quiet(ui_->txtExperimentDate); // showing a date is not choosing it
    const auto day = SetupEntries::DayOf(mWinInit::ProjectInfo.ExperimentDate);
    // The lowest date stands for a date that is absent, and reads "N/A".
    ui_->txtExperimentDate->setDate(day ? QDate(day->year, day->month, day->day)
                                        : ui_->txtExperimentDate->minimumDate());
}

QSize SetupPage::WholeSize() const {
    return ui_->picSetup->minimumSizeHint();
}

void SetupPage::ShowPort() {
    ui_->fraPort->setTitle(
        QString("Communications Port (%1)").arg(Text::ToQt(PortName::Of(CommPort::PortNumber()))));
}

void SetupPage::ShowAges() {
    rows_.ShowAges();
}

void SetupPage::ShowAveragingForMeasurement(const QString& text) {
    rows_.txtEntry(averagingForMeasurement).setText(text);
}

void SetupPage::txtExperimentDate_Change(QDate date) {
    std::string& stored = mWinInit::ProjectInfo.ExperimentDate;
    if (date == ui_->txtExperimentDate->minimumDate())
        stored.clear();
    else
        stored = SetupEntries::OnDay(stored, {date.year(), date.month(), date.day()});
}

void SetupPage::StoreEntries() {
    auto& hardware = mWinInit::HardwareSettings;
    const auto& txtEntry = rows_.txtEntry;
    hardware.AveragingForCalibration =
        AveragingOr(hardware.AveragingForCalibration, TextOf(txtEntry(averagingForCalibration)));
    hardware.AveragingForMeasurement =
        AveragingOr(hardware.AveragingForMeasurement, TextOf(txtEntry(averagingForMeasurement)));
    if (ui_->txtPortNumber->value() != ShownPortNumber())
        hardware.HardwarePortNumber = static_cast<std::int16_t>(ui_->txtPortNumber->value());
    mWinInit::ProjectInfo.ProjectName = TextOf(txtEntry(project));
    mWinInit::ProjectInfo.Experimentator = TextOf(txtEntry(analyst));
    for (std::size_t i = 0; i < mWinInit::ChannelsInUse(); ++i)
        rows_.Store(i);
    History::NoteSettings();
}

SetupChecks::Entries SetupPage::EntriesNow() const {
    const auto& txtEntry = rows_.txtEntry;
    SetupChecks::Entries entries;
    entries.averagingForCalibration = TextOf(txtEntry(averagingForCalibration));
    entries.averagingForMeasurement = TextOf(txtEntry(averagingForMeasurement));
    entries.projectName = TextOf(txtEntry(project));
    entries.analyst = TextOf(txtEntry(analyst));
    entries.channelCount = mWinInit::ChannelsInUse();
    for (std::size_t i = 0; i < mWinInit::ChannelsInUse(); ++i)
        entries.channels[i] = rows_.EntryOf(i);
    return entries;
}

bool SetupPage::IsComplete() {
    const auto finding = SetupChecks::FirstFinding(EntriesNow());
    if (!finding)
        return true;
    Mcommon::Inform(finding->message);
    QWidget& control = ControlOf(*finding);
    control.setFocus(Qt::OtherFocusReason);
    ui_->scrSetup->ensureWidgetVisible(&control);
    return false;
}

QWidget& SetupPage::ControlOf(const SetupChecks::Finding& finding) {
    using SetupChecks::Box;
    switch (finding.box) {
    case Box::averagingForCalibration:
        return rows_.txtEntry(averagingForCalibration);
    case Box::averagingForMeasurement:
        return rows_.txtEntry(averagingForMeasurement);
    case Box::projectName:
        return rows_.txtEntry(project);
    case Box::analyst:
        return rows_.txtEntry(analyst);
    default:
        return rows_.ControlOf(finding);
    }
}

bool SetupPage::FocusBoxOf(int key) {
    const std::array<std::pair<int, QWidget*>, 5> boxes = {
        {{Qt::Key_P, &rows_.cboEntry(ChannelRows::electrode)},
         {Qt::Key_N, &rows_.txtEntry(averagingForCalibration)},
         {Qt::Key_T, &rows_.cboEntry(ChannelRows::refType)},
         {Qt::Key_R, &rows_.txtEntry(ChannelRows::refSerialNo)},
         {Qt::Key_D, &rows_.txtEntry(project)}}};
    for (const auto& [letter, box] : boxes) {
        if (letter != key || !box->isVisibleTo(window()))
            continue;
        box->setFocus(Qt::ShortcutFocusReason);
        return true;
    }
    return false;
}

void SetupPage::cboEntry_Click(std::size_t Index) {
    if (Index < maxChannels) // reference types and sensors are stored with the page
        rows_.ElectrodeChosen(Index);
}

template <class Screen>
void SetupPage::ShowCalibration(Screen* screen) {
    calibration_ = screen;
    screen->setAttribute(Qt::WA_DeleteOnClose);
    screen->setWindowModality(Qt::WindowModal);
    const Wiring wire(*this, guard_, "frmMain");
    wire(screen, &Screen::CalibrationStored, "CalibrationStored", &SetupPage::ShowStored);
    wire(screen, &QObject::destroyed, "CalibrationClosed", &SetupPage::CalibrationClosed);
    screen->move(mapToGlobal(QPoint(0, 0)));
    screen->show();
}

void SetupPage::ShowStored(std::size_t channel) {
    rows_.Show(channel);
}

/// The simultaneous calibration lets the averaging number be changed.
void SetupPage::CalibrationClosed() {
    rows_.txtEntry(averagingForCalibration)
        .setText(QString::number(mWinInit::HardwareSettings.AveragingForCalibration));
    CommPort::ShowPresentStatus();
}

void SetupPage::cmdCalib_Click(std::size_t Index) {
    const BusyPointer busy;
    StoreEntries();
    ShowCalibration(new frmCalib(Index, this));
}

void SetupPage::cmdSimult_Click() {
    BusyPointer busy;
    StoreEntries();
    if (SetupChecks::HasSimultaneousPair()) {
        ShowCalibration(new SimultCalib(this));
        return;
    }
    busy.End();
    Mcommon::Inform("Invalid selection of electrodes to do calibration.");
}

/// The electrode and the serial number count as they stand in the row.
void SetupPage::lblCalibDate_Menu(std::size_t Index) {
    rows_.Store(Index);
    Q_EMIT HistoryRequested(Index);
}

void SetupPage::cmdBrowse_Click() {
    platform::FileDialogRequest request;
    request.kind = platform::FileDialogRequest::Kind::folder;
    request.title = "Data Folder";
    request.initialFolder = CodePage::ToPath(mWinInit::ProjectInfo.MeasurementFileLocation);
    const auto chosen = platform::Current().dialogs.ChooseFile(request);
    if (!chosen)
        return;
    const auto folder = CodePage::FromPath(*chosen);
    if (!folder) {
        Mcommon::Warn("The name of this folder holds characters that the settings file cannot "
                      "store. Please choose another folder.");
        return;
    }
    mWinInit::ProjectInfo.MeasurementFileLocation = *folder;
    dialog_->lastFolder = *chosen;
    ui_->txtDataFolder->setText(Text::ToQt(*folder));
}
