#include "history/Histories.h"
#include "history/Log.h"
#include "program/theMain.h"
#include "screens/support/ScreenTest.h"

#include <QApplication>

namespace {

namespace fs = std::filesystem;

class HistoryStart : public ScreenTest {
protected:
    HistoryStart() { LeadFirstPortNowhere(); }
    static QWidget& Form(const char* name) {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->objectName() == name)
                return *window;
        throw std::runtime_error("no form");
    }
    /// All but the beginning, of the file itself.
    std::vector<std::string> Noted() const {
        History::Wish wish;
        wish.after = 1;
        return TextsOf(*History::OpenStore(file), wish);
    }

    const fs::path file = History::UsualFile();
};

TEST_F(HistoryStart, The_program_begins_a_history_and_takes_down_what_the_analyst_changes) {
    theMain::Program program;
    program.Main();
    EXPECT_TRUE(fs::exists(file));
    Click(Form("frmSplash"), "cmdCommand1");
    QWidget& form = Form("frmMain");
    Type(form, "txtEntry_3", "Kim");
    Type(form, "txtEntry_0", "5");
    platform.dialogs.ExpectMessage("Invalid selection of electrodes to do calibration.",
                                   platform::style::okOnly + platform::style::information);
    Click(form, "cmdSimult");
    EXPECT_EQ(Noted(), (std::vector<std::string>{
                           R"(Analyst: "Kim", was "< Please type the name of analyst >")",
                           R"(Averaging for calibration: "5", was "2")"}));
}

TEST_F(HistoryStart, A_damaged_history_is_told_when_the_main_screen_is_shown) {
    WriteBytes(file, std::string(5000, 'x'));
    theMain::Program program;
    program.Main();
    EXPECT_EQ(platform.dialogs.beeps, 0);
    platform.dialogs.ExpectAnyMessage(exclamation);
    Click(Form("frmSplash"), "cmdCommand1");
    Settle();
    EXPECT_NE(platform.dialogs.lastMessage.find("The history was damaged"), std::string::npos);
}

TEST_F(HistoryStart, A_history_that_cannot_be_kept_is_told_once_and_the_program_works) {
    fs::create_directories(file); // a folder has its name
    theMain::Program program;
    program.Main();
    platform.dialogs.ExpectAnyMessage(exclamation);
    Click(Form("frmSplash"), "cmdCommand1");
    Settle();
    EXPECT_NE(platform.dialogs.lastMessage.find("The history cannot be kept at this time"),
              std::string::npos);
    EXPECT_TRUE(Form("frmMain").isVisible());
}

} // namespace
