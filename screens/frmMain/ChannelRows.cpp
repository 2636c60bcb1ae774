#include "screens/frmMain/ChannelRows.h"

#include "base/Electrode.h"
#include "platform/Platform.h"
#include "platform/qt/EntryText.h"
#include "platform/qt/Text.h"
#include "screens/controls/Colours.h"
#include "screens/controls/ValueLabel.h"
#include "settings/SetupEntries.h"
#include "settings/mWinInit.h"

#include <QSignalBlocker>

#include <algorithm>
#include <array>

namespace {

constexpr std::array<const char*, 4> referenceTypes = {"None", "Ag/AgCl", "Ag/AgCl double junction",
                                                       "Calomel"};

mWinInit::ChannelSetupRecord& EnteredSetup(std::size_t channel) {
    return mWinInit::ChannelSetup[channel];
}

std::string TextOf(const QLineEdit& box) {
    return Text::FromQt(box.text());
}

void StoreText(std::string& stored, const QString& entered) {
    if (entered != Text::ToQt(stored))
        stored = Text::FromQt(entered);
}

} // namespace

ChannelRows::ChannelRows(const QWidget& page)
    : chkSelect(page, "chkSelect"), cboEntry(page, "cboEntry"), txtEntry(page, "txtEntry"),
      txtMolarMass(page, "txtMolarMass"), lblCalibDate(page, "lblCalibDate"),
      cmdCalib(page, "cmdCalib") {}

void ChannelRows::Prepare() {
    FillLists();
    for (std::size_t i = 0; i < maxChannels; ++i)
        PrepareRow(i);
}

void ChannelRows::FillLists() const {
    for (std::size_t i = 0; i < maxChannels; ++i) {
        const QSignalBlocker quiet(cboEntry(electrode + i)); // a first entry chooses itself
        for (std::size_t name = 0; name < Electrode::types.size(); ++name)
            cboEntry(electrode + i)
                .addItem(Text::ToQt(Electrode::types[name].name), static_cast<int>(name));
        for (const char* type : referenceTypes)
            cboEntry(refType + i).addItem(type);
        cboEntry(tempSensor + i).addItem("None", 0);
        for (int sensor = 1; sensor <= tempSensorCount; ++sensor)
            cboEntry(tempSensor + i).addItem(QString::number(sensor), sensor);
    }
}

void ChannelRows::PrepareRow(std::size_t channel) const {
    AcceptFieldTextOnly(txtEntry(serialNo + channel));
    AcceptFieldTextOnly(txtEntry(refSerialNo + channel));
    AcceptFieldTextOnly(txtMolarMass(channel));
    AcceptFieldTextOnly(cboEntry(refType + channel));
    const std::array<QWidget*, 9> row = {&chkSelect(channel),
                                         &cboEntry(electrode + channel),
                                         &txtEntry(serialNo + channel),
                                         &txtMolarMass(channel),
                                         &cboEntry(refType + channel),
                                         &txtEntry(refSerialNo + channel),
                                         &cboEntry(tempSensor + channel),
                                         &lblCalibDate(channel),
                                         &cmdCalib(channel)};
    lblCalibDate(channel).setContextMenuPolicy(Qt::CustomContextMenu);
    for (QWidget* control : row)
        control->setVisible(channel < mWinInit::ChannelsInUse());
}

void ChannelRows::Show(std::size_t channel) {
    const mWinInit::ChannelSetupRecord& setup = EnteredSetup(channel);
    {
        const QSignalBlocker quiet(cboEntry(electrode + channel)); // showing one is not choosing it
        cboEntry(electrode + channel).setCurrentIndex(ElectrodeIndex(channel));
    }
    txtEntry(serialNo + channel).setText(Text::ToQt(setup.SerialNo));
    txtMolarMass(channel).setText(Text::ToQt(SetupEntries::MolarMassText(setup.MolarMass)));
    cboEntry(refType + channel).setCurrentText(Text::ToQt(setup.RefType));
    txtEntry(refSerialNo + channel).setText(Text::ToQt(setup.RefSerialNo));
    cboEntry(tempSensor + channel).setCurrentIndex(SensorIndex(channel));
    ShowAge(channel, mWinInit::LoadCalibrationAges());
}

void ChannelRows::ShowAges() const {
    const auto ages = mWinInit::LoadCalibrationAges();
    for (std::size_t i = 0; i < mWinInit::ChannelsInUse(); ++i)
        ShowAge(i, ages);
}

void ChannelRows::ShowAge(std::size_t channel, const mWinInit::CalibrationAges& ages) const {
    const auto passed_hours =
        mWinInit::AgePassed_hours(channel, ages, platform::Current().clock.Now());
    QLabel& label = lblCalibDate(channel);
    ShowValue(label,
              Text::ToQt(SetupEntries::CalibrationDateCell(channel) + (passed_hours ? " !" : "")));
    Colours::MarkCaution(label, passed_hours.has_value());
    const QString hint = "A right click shows the calibrations of this electrode";
    label.setToolTip(passed_hours ? QString("More than %1 hours ago. ").arg(*passed_hours) + hint
                                  : hint);
}

/// The list's entry for the electrode of the channel's record; -1 for a name that it lacks.
int ChannelRows::ElectrodeIndex(std::size_t channel) const {
    const std::string& name = EnteredSetup(channel).Electrode;
    return cboEntry(electrode + channel)
        .findText(Text::ToQt(name.empty() ? Electrode::noneName : std::string_view(name)));
}

/// "None" for a sensor that there is none of.
int ChannelRows::SensorIndex(std::size_t channel) const {
    return std::max(cboEntry(tempSensor + channel).findData(EnteredSetup(channel).TempSensor), 0);
}

/// The list must show an entry.
std::string_view ChannelRows::ChosenElectrode(std::size_t channel) const {
    return Electrode::types[cboEntry(electrode + channel).currentData().toUInt()].name;
}

/// What still stands as it was shown is kept as it was loaded, also where the list or the box
/// cannot show it.
void ChannelRows::Store(std::size_t channel) const {
    mWinInit::ChannelSetupRecord& setup = EnteredSetup(channel);
    const int chosen = cboEntry(electrode + channel).currentIndex();
    if (chosen >= 0 && chosen != ElectrodeIndex(channel))
        setup.Electrode = ChosenElectrode(channel);
    StoreText(setup.SerialNo, txtEntry(serialNo + channel).text());
    StoreText(setup.RefType, cboEntry(refType + channel).currentText());
    StoreText(setup.RefSerialNo, txtEntry(refSerialNo + channel).text());
    const std::string molarMass = TextOf(txtMolarMass(channel));
    if (molarMass != SetupEntries::MolarMassText(setup.MolarMass))
        setup.MolarMass = SetupChecks::MolarMass(molarMass).value_or(setup.MolarMass);
    const QComboBox& sensors = cboEntry(tempSensor + channel);
    if (sensors.currentIndex() != SensorIndex(channel))
        setup.TempSensor = static_cast<std::int16_t>(sensors.currentData().toInt());
}

SetupChecks::ChannelEntry ChannelRows::EntryOf(std::size_t channel) const {
    SetupChecks::ChannelEntry entry;
    entry.selected = chkSelect(channel).isChecked();
    entry.electrode = cboEntry(electrode + channel).currentIndex();
    entry.serialNo = TextOf(txtEntry(serialNo + channel));
    entry.molarMass = TextOf(txtMolarMass(channel));
    entry.pointCount = mWinInit::Calibration[channel].PointCount;
    return entry;
}

QWidget& ChannelRows::ControlOf(const SetupChecks::Finding& finding) const {
    using SetupChecks::Box;
    switch (finding.box) {
    case Box::electrode:
        return cboEntry(electrode + finding.channel);
    case Box::serialNo:
        return txtEntry(serialNo + finding.channel);
    case Box::molarMass:
        return txtMolarMass(finding.channel);
    case Box::calibrate:
        return cmdCalib(finding.channel);
    default:
        return chkSelect(finding.channel);
    }
}

void ChannelRows::ElectrodeChosen(std::size_t channel) {
    const int chosen = cboEntry(electrode + channel).currentIndex();
    if (chosen < 0)
        return;
    const bool wasUnused =
        Electrode::KindOf(EnteredSetup(channel).Electrode) == Electrode::Kind::none;
    SetupEntries::ChooseElectrode(ChosenElectrode(channel), channel);
    Show(channel);
    if (wasUnused && chosen != Electrode::noneIndex)
        chkSelect(channel).setChecked(true);
}
