#pragma once

#include "chem/MeasuringCycle.h"
#include "files/Recording.h"
#include "screens/controls/ControlArray.h"
#include "screens/controls/EventGuard.h"
#include "settings/SetupChecks.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDate>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPointer>
#include <QPushButton>
#include <QTimer>

#include <array>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

class QAction;
class QKeyEvent;
class Report;

namespace Ui {
class frmMain;
}

/// The data acquisition screen: setup page and measuring page.
class frmMain : public QMainWindow {
    Q_OBJECT

public:
    explicit frmMain(QWidget* parent = nullptr);
    ~frmMain() override;

    enum class Page { setup = 1, measuring = 2 };
    Page ShownPage() const { return page_; }

Q_SIGNALS:
    /// "Port..." was pressed.
    void PortSettingsRequested();

    /// The program may end: leaving was confirmed, all is saved and the port is closed.
    void Ended();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // The form (frmMain.cpp).
    void Form_Load();
    void ConnectEvents();
    bool Form_KeyDown(int key);
    void Form_QueryUnload(bool& cancel);
    void OfferRecovery();
    void ShowPage(Page page);
    void ShowCaption();
    void ShowLink();
    void cmdPage_Click(int Index);
    void mnuHelp_Click(int Index);
    void FinishWork();
    bool RecordsAreSafe();

    // The setup page (frmMain_setup.cpp).
    void FillLists();
    void PrepareSetupPage();
    void SelectPrompt(QLineEdit& box);
    void ShowSetup();
    void ShowChannel(int channel);
    void ShowExperimentDate();
    void StoreEntries();
    void StoreChannel(int channel);
    SetupChecks::Entries EntriesNow() const;
    bool SetupIsComplete();
    QWidget& ControlOf(const SetupChecks::Finding& finding);
    void cboEntry_Click(int Index);
    void cmdCalib_Click(int Index);
    void cmdSimult_Click();
    void cmdBrowse_Click();
    void txtExperimentDate_Change(QDate date);
    template <class Screen>
    void ShowCalibration();

    // Reading and showing (frmMain_measure.cpp).
    void PrepareMeasuringPage();
    void FitFigures(QSize cellSize);
    void EnterMeasuringPage();
    void LeaveMeasuringPage();
    void ShowChannelLabels();
    void StartReading();
    void StopReading();
    void BeginSeries();
    void EndWaiting();
    void tmrRead_Timer();
    void BlinkTitle(bool red);
    void ReadAndShow();
    void ShowColours();
    void ShowProblem(const QString& problem);
    void ShowCells(int channel, const ChannelDisplay::Cells& cells);
    void ReadingFailed();
    void AskAveraging();

    // Recording (frmMain_record.cpp).
    void tmrTime_Timer();
    void RunButtonPressed();
    void RecordPressed();
    void StopPressed();
    void ShowOutcome(const FileOpr::Recording::Outcome& outcome);
    void ShowRunState();
    FileOpr::Recording::Entry EntryToRecord() const;
    void ShowLiveReport();
    void ReportShows(const std::filesystem::path& file);

    bool Busy() const;

    std::unique_ptr<Ui::frmMain> ui_;
    EventGuard guard_{"Unexpected Error - "};
    ControlArray<QPushButton> cmdPage;
    ControlArray<QPushButton> cmdCalib;
    ControlArray<QLineEdit> txtEntry;
    ControlArray<QLineEdit> txtMolarMass;
    ControlArray<QComboBox> cboEntry;
    ControlArray<QCheckBox> chkSelect;
    ControlArray<QLabel> lblEntry;
    ControlArray<QLabel> lblCalibDate;
    ControlArray<QLabel> lblChannel;
    ControlArray<QLabel> lblElectrode;
    ControlArray<QLabel> lblSerialNo;
    ControlArray<QLabel> lblSensor;
    ControlArray<QAction> mnuHelp;
    QTimer tmrRead;
    QTimer tmrTime;
    QLabel* lblLink_ = nullptr; ///< port and link state, in the status bar

    Page page_ = Page::setup;
    bool ended_ = false;
    bool unloading_ = false; ///< the closing question is open
    bool recoveryOffered_ = false;
    std::shared_ptr<void> linkObserver_;

    std::optional<MeasuringCycle::Source> cycle_; ///< while the measuring page is shown
    bool reading_ = false;                        ///< the read timer reads; "&Start" is not wanted
    bool valuesShown_ = false;                    ///< since reading began
    bool waiting_ = false; ///< the hourglass stands for the first set of a series
    bool readTickAtWork_ = false;
    bool timeTickAtWork_ = false;
    bool titleRed_ = false;
    QString problemShown_; ///< why a position could not be converted
    std::array<PerQuantity<bool>, maxChannels> errorShown_{};

    FileOpr::DisplayedChannels displayed_; ///< the texts that the page shows
    FileOpr::Recording recording_;
    QPointer<QWidget> calibration_;
    QPointer<Report> report_;
    std::filesystem::path reportFile_; ///< what the report shows
    bool openingReport_ = false;
};
