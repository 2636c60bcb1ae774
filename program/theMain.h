#pragma once

#include "base/Version.h"
#include "files/MeasuringRun.h"
#include "history/LinkNotes.h"
#include "history/Log.h"
#include "program/ModalGate.h"
#include "screens/controls/EventGuard.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class frmMain;
class frmPortSettings;
class frmSplash;

/// Start-up and main flow.
namespace theMain {

inline constexpr short channelCount = 4;

/// The forms that live as long as the program.
class Program {
public:
    Program();
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Shows the splash at once, then loads the settings and the hidden main screen and opens the
    /// port. The splash's button shows the main screen. What fails is said in a message box.
    void Main();

    /// A measurement file that the report viewer shows once the splash is left.
    void ShowFile(const std::filesystem::path& file) { file_ = file; }

private:
    void LoadForms();
    void AwaitPainting();
    void ConnectForms();
    void OpenHistory();
    void TellOfHistory(const std::string& message);

    void Continue();

    ModalGate modalGate_;
    std::filesystem::path file_;
    EventGuard guard_{"Unexpected Error - "};
    std::optional<History::Log> history_; ///< outlives all that it takes down
    std::optional<History::LinkNotes> linkNotes_;
    std::vector<std::string> toTell_; ///< when the main screen is shown
    FileOpr::MeasuringRun run_;       ///< outlives the screens that record and show it
    std::unique_ptr<frmSplash> splash_;
    std::unique_ptr<frmPortSettings> port_; ///< outlives the screens that read over it
    std::unique_ptr<frmMain> main_;
};

} // namespace theMain
