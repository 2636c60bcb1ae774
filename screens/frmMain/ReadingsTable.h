#pragma once

#include "base/Channels.h"
#include "base/Quantity.h"
#include "chem/ChannelDisplay.h"
#include "files/MeasurementRecord.h"
#include "screens/controls/ControlArray.h"
#include "screens/controls/MarkLabel.h"
#include "screens/frmMain/ReadingWatch.h"

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
    void ShowSetup(std::size_t channel, bool selected);

    void Show(std::size_t channel, const ChannelDisplay::Cells& cells);

    /// Shows the channel's mark, and colours what lies outside standards or limits.
    void ShowWatch(std::size_t channel, const ReadingWatch::Row& row);

    /// The values are of an earlier moment: they turn grey.
    void ShowStale(bool stale);

    /// The texts that stand in the cells.
    const FileOpr::DisplayedChannels& Displayed() const { return displayed_; }

    void BlinkTitle(bool red);
    bool IsTitleRed() const { return titleRed_; }

    /// Takes up a palette that has changed.
    void ShowColours();

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// A cell was clicked whose channel's limits have been passed.
    void AlarmClicked(std::size_t channel);

private:
    /// How a cell looks, and why.
    enum class Look { normal, error, outsideStandards, alarm, stale };

    Look LookOf(std::size_t channel, Quantity quantity) const;
    void ShowLooks(std::size_t channel);
    static void ShowLook(QLabel& cell, Look look);
    void ShowReason(QLabel& cell, std::size_t channel, Look look) const;
    void ClickAlarm(const QObject* cell);
    void FixRoom(QLabel& cell) const;
    void FitFigures(QSize cellSize);

    QWidget& page_;
    ControlArray<QLabel> lblEntry;
    ControlArray<QLabel> lblChannel;
    ControlArray<QLabel> lblElectrode;
    ControlArray<QLabel> lblSerialNo;
    ControlArray<QLabel> lblSensor;
    ControlArray<MarkLabel> lblMark;
    FileOpr::DisplayedChannels displayed_;
    std::array<PerQuantity<bool>, maxChannels> errors_{};
    std::array<ReadingWatch::Row, maxChannels> watched_;
    std::array<PerQuantity<Look>, maxChannels> shown_{};
    bool stale_ = false;
    bool titleRed_ = false;
};
