#include "app/Mcommon.h"
#include "base/CodePage.h"
#include "base/Electrode.h"
#include "base/NumberText.h"
#include "chem/Measure.h"
#include "files/FileOpr.h"
#include "platform/Platform.h"
#include "platform/qt/EntryText.h"
#include "platform/qt/Text.h"
#include "screens/SimultCalib/SimultCalib.h"
#include "screens/controls/BusyPointer.h"
#include "screens/controls/WheelFilter.h"
#include "screens/frmCalib/frmCalib.h"
#include "screens/frmMain/frmMain.h"
#include "settings/SetupEntries.h"
#include "settings/mWinInit.h"
#include "ui_frmMain.h"

#include <QShortcut>
#include <QSignalBlocker>

#include <algorithm>

namespace {

// Offsets of the channels' boxes in their control arrays.
constexpr int serialNoBox = 4;
constexpr int refSerialNoBox = 12;
constexpr int refTypeBox = 8;
constexpr int tempSensorBox = 16;

constexpr std::array<const char*, 4> referenceTypes = {"None", "Ag/AgCl", "Ag/AgCl double junction",
                                                       "Calomel"};

mWinInit::ChannelSetupRecord& SetupOf(int channel) {
    return mWinInit::ChannelSetup[static_cast<std::size_t>(channel)];
}

std::string TextOf(const QLineEdit& box) {
    return Text::FromQt(box.text());
}

int ChannelCount() {
    return mWinInit::HardwareSettings.ChannelCount;
}

/// The averaging number in a box: what its leading number says where that is usable, else the one
/// in force.
std::int16_t AveragingOr(std::int16_t inForce, const std::string& text) {
    const std::int16_t typed = NumberText::LeadingInteger(text);
    const bool usable = typed >= SetupChecks::minAveraging && typed <= SetupChecks::maxAveraging;
    return usable ? typed : inForce;
}

} // namespace

void frmMain::FillLists() {
    for (int i = 0; i < maxChannels; ++i) {
        for (std::size_t name = 0; name < Electrode::types.size(); ++name)
            cboEntry(i).addItem(Text::ToQt(Electrode::types[name].name), static_cast<int>(name));
        for (const char* type : referenceTypes)
            cboEntry(refTypeBox + i).addItem(type);
        cboEntry(tempSensorBox + i).addItem("None", 0);
        for (int sensor = 1; sensor <= tempSensorCount; ++sensor)
            cboEntry(tempSensorBox + i).addItem(QString::number(sensor), sensor);
    }
    ui_->cboAcqr->addItems({"Manual", "Automatic"});
}

void frmMain::PrepareSetupPage() {
    for (const int index : {0, 1, 2, 3})
        AcceptCodePageOnly(txtEntry(index));
    TakeWheelOnlyWithFocus(*ui_->scrSetup);
    // A mnemonic in the frame's title would go to the box of the frame that had the focus last.
    auto* toProject = new QShortcut(Qt::ALT | Qt::Key_D, ui_->scrSetup);
    connect(toProject, &QShortcut::activated, this, [this] { Form_KeyDown(Qt::Key_D); });
    txtEntry(2).installEventFilter(this);
    txtEntry(3).installEventFilter(this);
    for (int i = 0; i < maxChannels; ++i) {
        AcceptFieldTextOnly(txtEntry(serialNoBox + i));
        AcceptFieldTextOnly(txtEntry(refSerialNoBox + i));
        AcceptFieldTextOnly(txtMolarMass(i));
        AcceptFieldTextOnly(cboEntry(refTypeBox + i));
        const std::array<QWidget*, 9> row = {&chkSelect(i),
                                             &cboEntry(i),
                                             &txtEntry(serialNoBox + i),
                                             &txtMolarMass(i),
                                             &cboEntry(refTypeBox + i),
                                             &txtEntry(refSerialNoBox + i),
                                             &cboEntry(tempSensorBox + i),
                                             &lblCalibDate(i),
                                             &cmdCalib(i)};
        for (QWidget* control : row)
            control->setVisible(i < ChannelCount());
    }
    ui_->txtExperimentDate->setLocale(QLocale::c()); // month names are English everywhere
}

/// A prompt is replaced by what is typed, as if it were not there.
void frmMain::SelectPrompt(QLineEdit& box) {
    if (!SetupChecks::IsFilled(Text::FromQt(box.text())))
        QTimer::singleShot(0, &box, &QLineEdit::selectAll); // after the click has set its cursor
}

void frmMain::ShowSetup() {
    const auto& hardware = mWinInit::HardwareSettings;
    txtEntry(0).setText(QString::number(hardware.AveragingForCalibration));
    txtEntry(1).setText(QString::number(hardware.AveragingForMeasurement));
    txtEntry(2).setText(Text::ToQt(mWinInit::ProjectInfo.ProjectName));
    txtEntry(3).setText(Text::ToQt(mWinInit::ProjectInfo.Experimentator));
    ui_->txtPortNumber->setValue(hardware.HardwarePortNumber);
    ui_->txtDataFolder->setText(Text::ToQt(mWinInit::ProjectInfo.MeasurementFileLocation));
    ShowExperimentDate();
    for (int i = 0; i < maxChannels; ++i) {
        ShowChannel(i);
        chkSelect(i).setChecked(i < ChannelCount() &&
                                cboEntry(i).currentIndex() != Electrode::noneIndex);
    }
}

void frmMain::ShowExperimentDate() {
    const QSignalBlocker quiet(ui_->txtExperimentDate); // showing a date is not choosing it
    const auto day = SetupEntries::DayOf(mWinInit::ProjectInfo.ExperimentDate);
    // The lowest date stands for a date that is absent, and reads "N/A".
    ui_->txtExperimentDate->setDate(day ? QDate(day->year, day->month, day->day)
                                        : ui_->txtExperimentDate->minimumDate());
}

void frmMain::txtExperimentDate_Change(QDate date) {
    std::string& stored = mWinInit::ProjectInfo.ExperimentDate;
    if (date == ui_->txtExperimentDate->minimumDate())
        stored.clear();
    else
        stored = SetupEntries::OnDay(stored, {date.year(), date.month(), date.day()});
}

void frmMain::ShowChannel(int channel) {
    const mWinInit::ChannelSetupRecord& setup = SetupOf(channel);
    const std::string_view electrode =
        setup.Electrode.empty() ? Electrode::noneName : std::string_view(setup.Electrode);
    cboEntry(channel).setCurrentIndex(cboEntry(channel).findText(Text::ToQt(electrode)));
    txtEntry(serialNoBox + channel).setText(Text::ToQt(setup.SerialNo));
    txtMolarMass(channel).setText(Text::ToQt(SetupEntries::MolarMassText(setup.MolarMass)));
    cboEntry(refTypeBox + channel).setCurrentText(Text::ToQt(setup.RefType));
    txtEntry(refSerialNoBox + channel).setText(Text::ToQt(setup.RefSerialNo));
    const int sensor = cboEntry(tempSensorBox + channel).findData(setup.TempSensor);
    cboEntry(tempSensorBox + channel).setCurrentIndex(std::max(sensor, 0));
    lblCalibDate(channel).setText(Text::ToQt(SetupEntries::CalibrationDateCell(channel)));
}

void frmMain::StoreEntries() {
    auto& hardware = mWinInit::HardwareSettings;
    hardware.AveragingForCalibration =
        AveragingOr(hardware.AveragingForCalibration, TextOf(txtEntry(0)));
    hardware.AveragingForMeasurement =
        AveragingOr(hardware.AveragingForMeasurement, TextOf(txtEntry(1)));
    hardware.HardwarePortNumber = static_cast<std::int16_t>(ui_->txtPortNumber->value());
    mWinInit::ProjectInfo.ProjectName = TextOf(txtEntry(2));
    mWinInit::ProjectInfo.Experimentator = TextOf(txtEntry(3));
    for (int i = 0; i < ChannelCount(); ++i)
        StoreChannel(i);
}

void frmMain::StoreChannel(int channel) {
    mWinInit::ChannelSetupRecord& setup = SetupOf(channel);
    const int electrode = cboEntry(channel).currentIndex();
    if (electrode >= 0) // else a name that the list lacks, which stays as it is
        setup.Electrode = Electrode::types[static_cast<std::size_t>(electrode)].name;
    setup.SerialNo = TextOf(txtEntry(serialNoBox + channel));
    setup.RefType = Text::FromQt(cboEntry(refTypeBox + channel).currentText());
    setup.RefSerialNo = TextOf(txtEntry(refSerialNoBox + channel));
    setup.MolarMass =
        SetupChecks::MolarMass(TextOf(txtMolarMass(channel))).value_or(setup.MolarMass);
    setup.TempSensor =
        static_cast<std::int16_t>(cboEntry(tempSensorBox + channel).currentData().toInt());
}

SetupChecks::Entries frmMain::EntriesNow() const {
    SetupChecks::Entries entries;
    entries.averagingForCalibration = TextOf(txtEntry(0));
    entries.averagingForMeasurement = TextOf(txtEntry(1));
    entries.projectName = TextOf(txtEntry(2));
    entries.analyst = TextOf(txtEntry(3));
    entries.channelCount = mWinInit::HardwareSettings.ChannelCount;
    for (int i = 0; i < ChannelCount(); ++i) {
        const auto position = static_cast<std::size_t>(i);
        SetupChecks::ChannelEntry& channel = entries.channels[position];
        channel.selected = chkSelect(i).isChecked();
        channel.electrode = cboEntry(i).currentIndex();
        channel.serialNo = TextOf(txtEntry(serialNoBox + i));
        channel.molarMass = TextOf(txtMolarMass(i));
        channel.pointCount = mWinInit::Calibration[position].PointCount;
    }
    return entries;
}

bool frmMain::SetupIsComplete() {
    const auto finding = SetupChecks::FirstFinding(EntriesNow());
    if (!finding)
        return true;
    Mcommon::MessageBoxEx(finding->message, platform::style::okOnly, platform::style::information);
    QWidget& control = ControlOf(*finding);
    control.setFocus(Qt::OtherFocusReason);
    ui_->scrSetup->ensureWidgetVisible(&control);
    return false;
}

QWidget& frmMain::ControlOf(const SetupChecks::Finding& finding) {
    using SetupChecks::Box;
    switch (finding.box) {
    case Box::averagingForCalibration:
        return txtEntry(0);
    case Box::averagingForMeasurement:
        return txtEntry(1);
    case Box::projectName:
        return txtEntry(2);
    case Box::analyst:
        return txtEntry(3);
    case Box::electrode:
        return cboEntry(finding.channel);
    case Box::serialNo:
        return txtEntry(serialNoBox + finding.channel);
    case Box::molarMass:
        return txtMolarMass(finding.channel);
    case Box::calibrate:
        return cmdCalib(finding.channel);
    case Box::select:
        break;
    }
    return chkSelect(finding.channel);
}

void frmMain::cboEntry_Click(int Index) {
    if (Index >= maxChannels) // reference types and sensors are stored with the page
        return;
    const std::string chosen = Text::FromQt(cboEntry(Index).currentText());
    const std::string before = SetupOf(Index).Electrode;
    if (chosen == before)
        return;
    SetupEntries::ChooseElectrode(chosen, static_cast<std::int16_t>(Index));
    ShowChannel(Index);
    if (before.empty() || before == Electrode::noneName)
        chkSelect(Index).setChecked(true);
}

template <class Screen>
void frmMain::ShowCalibration() {
    auto* screen = new Screen(this);
    calibration_ = screen;
    screen->setAttribute(Qt::WA_DeleteOnClose);
    screen->setWindowModality(Qt::WindowModal);
    connect(screen, &Screen::CalibrationStored, this, [this](int channel) {
        guard_("frmMain - CalibrationStored", [this, channel] { ShowChannel(channel); });
    });
    connect(screen, &QObject::destroyed, this, [this] {
        // The simultaneous calibration lets the averaging number be changed.
        txtEntry(0).setText(QString::number(mWinInit::HardwareSettings.AveragingForCalibration));
    });
    screen->move(ui_->stkPages->mapToGlobal(QPoint(0, 0)));
    screen->show();
}

void frmMain::cmdCalib_Click(int Index) {
    const BusyPointer busy;
    StoreEntries();
    Measure::ChannelToCalibrate = static_cast<std::int16_t>(Index);
    ShowCalibration<frmCalib>();
}

void frmMain::cmdSimult_Click() {
    BusyPointer busy;
    StoreEntries();
    if (SetupChecks::HasSimultaneousPair()) {
        ShowCalibration<SimultCalib>();
        return;
    }
    busy.End();
    Mcommon::MessageBoxEx("Invalid selection of electrodes to do calibration.",
                          platform::style::okOnly, platform::style::information);
}

void frmMain::cmdBrowse_Click() {
    platform::FileDialogRequest request;
    request.kind = platform::FileDialogRequest::Kind::folder;
    request.title = "Data Folder";
    request.initialFolder = CodePage::ToPath(mWinInit::ProjectInfo.MeasurementFileLocation);
    const auto chosen = platform::Current().dialogs.ChooseFile(request);
    if (!chosen)
        return;
    const auto folder = CodePage::FromPath(*chosen);
    if (!folder) {
        Mcommon::MessageBoxEx("The name of this folder holds characters that the settings file "
                              "cannot store. Please choose another folder.",
                              platform::style::okOnly, platform::style::exclamation);
        return;
    }
    mWinInit::ProjectInfo.MeasurementFileLocation = *folder;
    FileOpr::lastFolder = *chosen;
    ui_->txtDataFolder->setText(Text::ToQt(*folder));
}
