#include "screens/frmMain/ChannelRows.h"

#include "base/Electrode.h"
#include "platform/qt/EntryText.h"
#include "platform/qt/Text.h"
#include "settings/SetupEntries.h"
#include "settings/mWinInit.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array<const char*, 4> referenceTypes = {"None", "Ag/AgCl", "Ag/AgCl double junction",
                                                       "Calomel"};

mWinInit::ChannelSetupRecord& SetupOf(int channel) {
    return mWinInit::ChannelSetup[static_cast<std::size_t>(channel)];
}

std::string TextOf(const QLineEdit& box) {
    return Text::FromQt(box.text());
}

} // namespace

ChannelRows::ChannelRows(const QWidget& page)
    : chkSelect(page, "chkSelect"), cboEntry(page, "cboEntry"), txtEntry(page, "txtEntry"),
      txtMolarMass(page, "txtMolarMass"), lblCalibDate(page, "lblCalibDate"),
      cmdCalib(page, "cmdCalib") {}

void ChannelRows::Prepare() {
    FillLists();
    for (int i = 0; i < maxChannels; ++i)
        PrepareRow(i);
}

void ChannelRows::FillLists() const {
    for (int i = 0; i < maxChannels; ++i) {
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

void ChannelRows::PrepareRow(int channel) const {
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
    for (QWidget* control : row)
        control->setVisible(channel < mWinInit::HardwareSettings.ChannelCount);
}

void ChannelRows::Show(int channel) {
    const mWinInit::ChannelSetupRecord& setup = SetupOf(channel);
    const std::string_view name =
        setup.Electrode.empty() ? Electrode::noneName : std::string_view(setup.Electrode);
    QComboBox& electrodes = cboEntry(electrode + channel);
    electrodes.setCurrentIndex(electrodes.findText(Text::ToQt(name)));
    txtEntry(serialNo + channel).setText(Text::ToQt(setup.SerialNo));
    txtMolarMass(channel).setText(Text::ToQt(SetupEntries::MolarMassText(setup.MolarMass)));
    cboEntry(refType + channel).setCurrentText(Text::ToQt(setup.RefType));
    txtEntry(refSerialNo + channel).setText(Text::ToQt(setup.RefSerialNo));
    QComboBox& sensors = cboEntry(tempSensor + channel);
    sensors.setCurrentIndex(std::max(sensors.findData(setup.TempSensor), 0));
    lblCalibDate(channel).setText(Text::ToQt(SetupEntries::CalibrationDateCell(channel)));
}

void ChannelRows::Store(int channel) const {
    mWinInit::ChannelSetupRecord& setup = SetupOf(channel);
    const int chosen = cboEntry(electrode + channel).currentIndex();
    if (chosen >= 0) // else a name that the list lacks, which stays as it is
        setup.Electrode = Electrode::types[static_cast<std::size_t>(chosen)].name;
    setup.SerialNo = TextOf(txtEntry(serialNo + channel));
    setup.RefType = Text::FromQt(cboEntry(refType + channel).currentText());
    setup.RefSerialNo = TextOf(txtEntry(refSerialNo + channel));
    setup.MolarMass =
        SetupChecks::MolarMass(TextOf(txtMolarMass(channel))).value_or(setup.MolarMass);
    setup.TempSensor =
        static_cast<std::int16_t>(cboEntry(tempSensor + channel).currentData().toInt());
}

SetupChecks::ChannelEntry ChannelRows::EntryOf(int channel) const {
    SetupChecks::ChannelEntry entry;
    entry.selected = chkSelect(channel).isChecked();
    entry.electrode = cboEntry(electrode + channel).currentIndex();
    entry.serialNo = TextOf(txtEntry(serialNo + channel));
    entry.molarMass = TextOf(txtMolarMass(channel));
    entry.pointCount = mWinInit::Calibration[static_cast<std::size_t>(channel)].PointCount;
    return entry;
}

void ChannelRows::ElectrodeChosen(int channel) {
    const std::string chosen = Text::FromQt(cboEntry(electrode + channel).currentText());
    const std::string before = SetupOf(channel).Electrode;
    if (chosen == before)
        return;
    SetupEntries::ChooseElectrode(chosen, static_cast<std::int16_t>(channel));
    Show(channel);
    if (before.empty() || before == Electrode::noneName)
        chkSelect(channel).setChecked(true);
}
