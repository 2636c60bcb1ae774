#pragma once

#include "base/Channels.h"
#include "screens/controls/EventGuard.h"
#include "screens/frmMain/ChannelRows.h"
#include "settings/SetupChecks.h"

#include <QDate>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <array>
#include <memory>

namespace FileOpr {
class MeasurementDialog;
}
namespace Ui {
class SetupPage;
}

/// The page on which the analyst states what is connected to which channel.
class SetupPage : public QWidget {
    Q_OBJECT

public:
    /// Elements of txtEntry that are not a channel's.
    enum TextBox { averagingForCalibration, averagingForMeasurement, project, analyst };

    explicit SetupPage(QWidget* parent = nullptr);
    ~SetupPage() override;

    /// Fills the lists and shows the working records. The dialog starts in the folder that is
    /// chosen here; it must outlive the page.
    void Load(FileOpr::MeasurementDialog& dialog);

    /// The room in which nothing of it is out of sight.
    QSize WholeSize() const;

    /// Names the port in use.
    void ShowPort();

    /// Marks the calibrations that are older than their limits at this moment.
    void ShowAges();

    void ShowAveragingForMeasurement(const QString& text);

    /// Brings the entries into the working records.
    void StoreEntries();

    /// Checks the entries; shows the first finding and goes to its box.
    bool IsComplete();

    bool IsSelected(std::size_t channel) const { return rows_.chkSelect(channel).isChecked(); }

    /// Moves the focus to the box of an Alt + letter; false where the letter has none.
    bool FocusBoxOf(int key);

Q_SIGNALS:
    /// "Port..." was pressed.
    void PortSettingsRequested();

    /// The calibrations of the electrode in this channel (0-based) are wanted.
    void HistoryRequested(std::size_t channel);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ConnectEvents();
    void PrepareBoxes();
    void SelectPrompt(QLineEdit& box);
    void ShowRecords();
    int ShownPortNumber() const;
    void ShowExperimentDate();
    SetupChecks::Entries EntriesNow() const;
    QWidget& ControlOf(const SetupChecks::Finding& finding);
    void cboEntry_Click(std::size_t Index);
    void cmdCalib_Click(std::size_t Index);
    void cmdSimult_Click();
    void cmdBrowse_Click();
    void lblCalibDate_Menu(std::size_t Index);
    void txtExperimentDate_Change(QDate date);
    void ShowStored(std::size_t channel);
    void CalibrationClosed();
    template <class Screen>
    void ShowCalibration(Screen* screen);

    std::unique_ptr<Ui::SetupPage> ui_;
    FileOpr::MeasurementDialog* dialog_ = nullptr; ///< from Load on
    EventGuard guard_{"Unexpected Error - "};
    ChannelRows rows_;
    QPointer<QWidget> calibration_;
    QTimer tmrAge_;
};
