#pragma once

#include "screens/controls/ControlArray.h"
#include "screens/controls/EventGuard.h"
#include "screens/frmMain/HistoryWindow.h"

#include <QLabel>
#include <QMainWindow>
#include <QPushButton>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

class QAction;
class QKeyEvent;

namespace FileOpr {
class MeasuringRun;
}
namespace Ui {
class frmMain;
}

/// The data acquisition screen: the frame of setup page and measuring page.
class frmMain : public QMainWindow {
    Q_OBJECT

public:
    /// Elements of cmdPage.
    enum PageButton { switchPage, run, report, leave, averaging };
    /// Elements of mnuFileItem.
    enum FileItem { newFile, openReport, exitProgram };
    /// Elements of mnuHelp; the one between them is a separator.
    enum HelpItem { helpText = 0, about = 2 };

    enum class Page { setup = 1, measuring = 2 };

    /// `recorded` is what the measuring page records; it must outlive the form.
    explicit frmMain(FileOpr::MeasuringRun& recorded, QWidget* parent = nullptr);
    ~frmMain() override;

    /// Shows a measurement file in the report viewer.
    void OpenReport(const std::filesystem::path& file);

    /// The user's session ends: what is recorded goes into its file and the settings are kept,
    /// without a question, which nobody could answer. Work goes on, for the session may stay.
    void EndSession();

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

private:
    void ConnectEvents();
    void Form_Load();
    QSize FirstSize() const;
    void Form_QueryUnload(bool& cancel);
    void cmdPage_Click(std::size_t Index);
    void mnuFileItem_Click(std::size_t Index);
    void mnuRecent_Show();
    void mnuRecent_Click(QAction* item);
    void mnuHelp_Click(std::size_t Index);
    void SwitchPage();
    void EnterMeasuringPage();
    void LeaveMeasuringPage();
    void ShowPage(Page page);
    void ShowCaption();
    void ShowRun();
    void ShowLink();
    void ShowStatus(const QString& text);
    std::vector<std::string> KeepSettings();
    void SaveSettings();

    FileOpr::MeasuringRun& run_;
    std::unique_ptr<Ui::frmMain> ui_;
    EventGuard guard_{"Unexpected Error - "};
    ControlArray<QPushButton> cmdPage;
    ControlArray<QAction> mnuFileItem;
    ControlArray<QAction> mnuHelp;
    QLabel* lblLink_ = nullptr; ///< port and link state, in the status bar

    Page page_ = Page::setup;
    bool ended_ = false;
    bool unloading_ = false; ///< the closing question is open
    bool recoveryOffered_ = false;
    std::shared_ptr<void> linkObserver_;
    HistoryWindow history_{*this};
};
