#pragma once

#include "screens/controls/ControlArray.h"
#include "settings/CalibrationAge.h"
#include "settings/SetupChecks.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

/// The setup page's row of each channel: between its controls and the working records.
class ChannelRows {
public:
    /// Where a channel's controls begin in the control arrays.
    enum TextBox { serialNo = 4, refSerialNo = 12 };
    enum List { electrode = 0, refType = 8, tempSensor = 16 };

    /// Gathers the controls of the page.
    explicit ChannelRows(const QWidget& page);

    /// Fills the lists and hides the rows beyond the channel count.
    void Prepare();

    void Show(std::size_t channel);
    void Store(std::size_t channel) const;

    /// The row as it stands, for the checks.
    SetupChecks::ChannelEntry EntryOf(std::size_t channel) const;

    /// The control that a finding about a channel points at.
    QWidget& ControlOf(const SetupChecks::Finding& finding) const;

    /// Marks the calibrations that are older than their limits.
    void ShowAges() const;

    /// An electrode was chosen, the same again or another, by hand or by an assistive tool: what
    /// the library holds for it comes into the row.
    void ElectrodeChosen(std::size_t channel);

    ControlArray<QCheckBox> chkSelect;
    ControlArray<QComboBox> cboEntry;
    ControlArray<QLineEdit> txtEntry; ///< the project's and the hardware's boxes come before
    ControlArray<QLineEdit> txtMolarMass;
    ControlArray<QLabel> lblCalibDate;
    ControlArray<QPushButton> cmdCalib;

private:
    void FillLists() const;
    void PrepareRow(std::size_t channel) const;
    void ShowAge(std::size_t channel, const mWinInit::CalibrationAges& ages) const;
    int ElectrodeIndex(std::size_t channel) const;
    std::string_view ChosenElectrode(std::size_t channel) const;
    int SensorIndex(std::size_t channel) const;
};
