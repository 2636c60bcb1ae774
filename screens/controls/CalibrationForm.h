#pragma once

#include "chem/CalibrationSession.h"
#include "chem/StabilityMark.h"
#include "link/ReadingSeries.h"
#include "report/PrintCalibSummary.h"
#include "screens/controls/ControlArray.h"
#include "screens/controls/EventGuard.h"
#include "screens/controls/FormTimer.h"

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What the two calibration screens have in common: the session, the reading of a point, the
/// entry fields of the standards, closing and storing.
class CalibrationForm : public QDialog {
    Q_OBJECT

public:
    /// Escape and the window's close button ask as the close buttons do.
    void reject() override;

Q_SIGNALS:
    /// The calibration of a channel (0-based) has been stored.
    void CalibrationStored(int channel);

protected:
    /// `name` is the form's own, for the error message box; `complaint` is shown where a standard
    /// is no number.
    CalibrationForm(std::string name, std::string complaint, QWidget* parent);
    ~CalibrationForm() override;

    virtual void cboCalibPtrs_Click() = 0;
    virtual void cboUnits_Click() = 0;
    virtual void cmdSys_Click(int Index) = 0;

    /// Asks where something would be lost and stores what is finished; false keeps the form open.
    virtual bool Form_QueryUnload() = 0;

    /// Shows buttons, fields and readings as the session stands.
    virtual void ShowState() = 0;

    /// Steps of the main button that differ between the forms.
    virtual void RecordPoint() = 0;
    virtual void ShowSummary() = 0;
    virtual void PrintSummary() = 0;

    /// The cursor has come into the entry field of a point.
    virtual void EntryEntered(int point) = 0;

    /// The text of an entry field has changed.
    virtual void EntryChanged() = 0;

    /// Runs a handler under the form's guard.
    void Guarded(const std::string& handler, const std::function<void()>& work) const;

    /// Takes the controls that every calibration form has, once its interface is set up, fills the
    /// lists and sees to it that the form fits its screen. `entries` are the fields of the
    /// standards, one per point.
    void TakeControls(const ControlArray<QLineEdit>& entries);

    /// Lets those controls call their handlers. Comes last, so that loading calls none.
    void ConnectControls();

    QLineEdit& Entry(int point) const { return *entries_.at(static_cast<std::size_t>(point)); }
    void FocusEntry(int point);

    /// Takes the standards of all points from their fields; shows the complaint and goes to the
    /// first that is no number.
    bool TakeAllStandards();

    /// What the main button reads and does, on the summary page or before it.
    std::string_view MainCaption(bool onSummary) const;
    void MainButton(bool onSummary);

    /// Brings the typed standards into the unit chosen in the list; where that is impossible, says
    /// why and puts the list back.
    void ChangeUnit(const std::string& electrode, float molarMass_g_per_mol);

    /// Selects an entry without telling the list's handler.
    static void Select(QComboBox& list, int index);

    /// Shows the one button or the other.
    static void OfferFinish(bool finish, QPushButton& finishButton, QPushButton& closeButton);

    void StopReading();
    void RestartAveraging();

    /// "steady" or "drifting" while a value is there, empty otherwise.
    QString MarkText(int channel) const;
    static void ShowMark(QLabel& label, const QString& text);

    /// While a point is read, its field can be read only and those of the others wait.
    void ShowEntryState(int point, bool chosen);

    std::int16_t Ask(const std::string& question);
    void ShowHelp() const;
    void Store(int channel, CalibrationRecord record, const std::string& date);

    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

    QComboBox* cboCalibPtrs = nullptr;
    QComboBox* cboUnits = nullptr;
    ControlArray<QLabel> lblInfo;
    ControlArray<QLabel> lblPoint;
    ControlArray<QLabel> lblMark;
    ControlArray<QPushButton> cmdSys;
    QTimer tmrRead;

    CalibrationSession session_;
    bool boxOpen_ = false; ///< a box of this form waits for its answer

private:
    void FillPointCounts();
    void FillUnits();
    void ConnectEntry(QLineEdit& entry);
    bool TakeStandard(int point);
    void BeginReading();
    void tmrRead_Timer();
    void ShowAverages(std::span<const float, cyclePositions> averages);
    void StartMarks();
    void tmrElapsed_Timer();
    bool CanConvert(float molarMass_g_per_mol) const;

    std::string name_;
    std::string complaint_;
    EventGuard guard_{"Unexpected Error - "};
    FormTimer readTimer_{tmrRead};
    ReadingSeries series_{readTimer_};
    std::array<StabilityMark, maxChannels> marks_;
    std::vector<QLineEdit*> entries_;
    QLabel* lblElapsed = nullptr; ///< shows the time since "&Read" while a point is read
    QTimer tmrElapsed;
    bool closeWanted_ = false;
};
