#pragma once

#include "base/Channels.h"
#include "base/Quantity.h"
#include "chem/ChannelDisplay.h"
#include "files/MeasurementRecord.h"
#include "screens/controls/ControlArray.h"

#include <QLabel>
#include <QObject>

#include <array>

/// The measuring page's table: a row of labels for each channel, whose figures grow with it.
class ReadingsTable : public QObject {
    Q_OBJECT

public:
    /// Where the channels' cells begin in lblEntry; the title that blinks is one of it, too.
    enum Label { mV = 16, pH = 24, ppm = 32, title = 47, celsius = 56, mol_l = 64 };

    /// Gathers the labels of the page, which owns the table.
    explicit ReadingsTable(QWidget& page);

    /// Fixes the cells' room and hides the rows beyond the channel count.
    void Prepare();

    /// Names the channel's electrode and sensor; what is not selected is greyed.
    void ShowSetup(int channel, bool selected);

    void Show(int channel, const ChannelDisplay::Cells& cells);

    /// The texts that stand in the cells.
    const FileOpr::DisplayedChannels& Displayed() const { return displayed_; }

    void BlinkTitle(bool red);
    bool IsTitleRed() const { return titleRed_; }

    /// Takes up a palette that has changed.
    void ShowColours();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void FixRoom(QLabel& cell) const;
    void FitFigures(QSize cellSize);

    QWidget& page_;
    ControlArray<QLabel> lblEntry;
    ControlArray<QLabel> lblChannel;
    ControlArray<QLabel> lblElectrode;
    ControlArray<QLabel> lblSerialNo;
    ControlArray<QLabel> lblSensor;
    FileOpr::DisplayedChannels displayed_;
    std::array<PerQuantity<bool>, maxChannels> errorShown_{};
    bool titleRed_ = false;
};
