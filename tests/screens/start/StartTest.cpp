#include "base/RunTimeError.h"
#include "link/CommPort.h"
#include "program/theMain.h"
#include "screens/frmSplash/frmSplash.h"
#include "screens/support/ScreenTest.h"
#include "settings/mWinInit.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPalette>
#include <QTest>

#include <filesystem>
#include <utility>

namespace {

namespace fs = std::filesystem;

/// Starts the program on a computer without instrument, settings or data folder.
class StartTest : public ScreenTest {
protected:
    StartTest() { LeadFirstPortNowhere(); }

    /// The form of the program, hidden or shown; null where there is none.
    static QWidget* Form(const char* name) {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->objectName() == name)
                return window;
        return nullptr;
    }

    QLabel& Line(std::size_t index) {
        return Element<QLabel>(*Form("frmSplash"), "lblLabel", index);
    }

    theMain::Program program;
};

TEST_F(StartTest, The_splash_is_shown_before_the_settings_are_loaded) {
    bool looked = false;
    platform.desktop.onEvents = [&] {
        QCoreApplication::processEvents();
        if (std::exchange(looked, true))
            return;
        EXPECT_TRUE(Form("frmSplash")->isVisible());
        EXPECT_EQ(Form("frmMain"), nullptr);
        EXPECT_EQ(mWinInit::ProjectInfo.ProjectName, "");
        EXPECT_EQ(platform.desktop.pointer, platform::MousePointer::hourglass);
    };
    program.Main();
    EXPECT_TRUE(looked);
    EXPECT_EQ(mWinInit::ProjectInfo.ProjectName, mWinInit::projectPlaceholder);
    EXPECT_EQ(platform.desktop.pointer, platform::MousePointer::normal);
}

TEST_F(StartTest, The_main_screen_is_loaded_but_hidden_until_the_splash_s_button) {
    program.Main();
    ASSERT_NE(Form("frmMain"), nullptr);
    EXPECT_FALSE(Form("frmMain")->isVisible());
    Click(*Form("frmSplash"), "cmdCommand1");
    EXPECT_TRUE(Form("frmMain")->isVisible());
    EXPECT_FALSE(Form("frmSplash")->isVisible());
}

TEST_F(StartTest, The_splash_is_painted_and_takes_no_input_while_the_settings_are_loaded) {
    int looks = 0;
    platform.desktop.onEvents = [&] {
        QCoreApplication::processEvents();
        if (Form("frmSplash") == nullptr || mWinInit::ProjectInfo.ProjectName != "")
            return;
        ++looks;
        QTest::mouseClick(&Find<QAbstractButton>(*Form("frmSplash"), "cmdCommand1"),
                          Qt::LeftButton);
        QTest::keyClick(Form("frmSplash"), Qt::Key_Return);
    };
    program.Main();
    EXPECT_GE(looks, 1);
    EXPECT_TRUE(qobject_cast<frmSplash*>(Form("frmSplash"))->IsPainted());
    EXPECT_TRUE(Form("frmSplash")->isVisible()) << "pressed too early";
    Click(*Form("frmSplash"), "cmdCommand1");
    EXPECT_TRUE(Form("frmMain")->isVisible());
}

TEST_F(StartTest, What_was_pressed_while_the_port_was_opened_was_pressed_in_vain) {
    bool pressed = false;
    platform.desktop.onEvents = [&] {
        QCoreApplication::processEvents();
        const auto* splash = qobject_cast<frmSplash*>(Form("frmSplash"));
        if (splash == nullptr || !splash->IsPainted() || std::exchange(pressed, true))
            return;
        auto* button = &Find<QAbstractButton>(*splash, "cmdCommand1"); // comes to it later
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease})
            QCoreApplication::postEvent(button, new QKeyEvent(type, Qt::Key_Space, {}));
    };
    program.Main();
    platform.desktop.onEvents = nullptr;
    Settle();
    EXPECT_TRUE(pressed);
    EXPECT_TRUE(Form("frmSplash")->isVisible());
    EXPECT_FALSE(Form("frmMain")->isVisible());
}

TEST_F(StartTest, Escape_and_the_close_button_leave_the_splash_where_it_is) {
    program.Main();
    qobject_cast<QDialog*>(Form("frmSplash"))->reject();
    Form("frmSplash")->close();
    EXPECT_TRUE(Form("frmSplash")->isVisible());
    EXPECT_FALSE(Form("frmMain")->isVisible());
}

TEST_F(StartTest, The_splash_names_the_product_and_the_version) {
    program.Main();
    EXPECT_EQ(Line(1).text(), "4-Channel Vantrel");
    EXPECT_EQ(Line(3).text(), "Version 6.4.44sa");
    ExpectFitsAtDoubleScale(*Form("frmSplash"));
}

TEST_F(StartTest, The_splash_s_lines_are_centred_and_two_stand_above_the_button) {
    program.Main();
    const int width = Form("frmSplash")->width();
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(Line(i).x(), (width - Line(i).width()) / 2) << i;
    const auto& button = Find<QAbstractButton>(*Form("frmSplash"), "cmdCommand1");
    EXPECT_EQ(button.x(), (width - button.width()) / 2);
    EXPECT_EQ(Line(2).y(), button.y() - button.height() - Line(2).height());
    EXPECT_EQ(Line(3).y(), Line(2).y() - Line(3).height());
}

TEST_F(StartTest, Without_settings_the_program_starts_with_their_defaults) {
    program.Main();
    EXPECT_EQ(mWinInit::HardwareSettings.ChannelCount, 4);
    EXPECT_EQ(mWinInit::HardwareSettings.HardwarePortNumber, 2);
    EXPECT_EQ(mWinInit::ProjectInfo.ExperimentDate, "14:05:33 07.Mar.2003");
    EXPECT_EQ(mWinInit::ChannelSetup[3].Electrode, "None");
    EXPECT_EQ(CommPort::BitRate(), 9600);
    EXPECT_EQ(CommPort::PortNumber(), 1);
}

TEST_F(StartTest, A_port_that_cannot_be_opened_is_told_in_the_status_and_by_no_box) {
    program.Main();
    EXPECT_FALSE(CommPort::PortOK());
    EXPECT_EQ(CommPort::StatusText().substr(0, 14), "Opening COM1: ");
    EXPECT_EQ(platform.dialogs.beeps, 0);
}

TEST_F(StartTest, The_data_folder_is_made_and_becomes_the_current_one) {
    program.Main();
    EXPECT_TRUE(fs::equivalent(fs::current_path(), mWinInit::DefaultDataFolder()));
}

TEST_F(StartTest, A_hint_in_a_box_is_readable_where_a_dark_desktop_gives_it_no_colour) {
    const QPalette before = QApplication::palette();
    QPalette dark(QColor(45, 45, 48), QColor(35, 35, 38));
    dark.setColor(QPalette::PlaceholderText, QColor(0, 0, 0, 128)); // of the light one
    QApplication::setPalette(dark);
    program.Main();
    const QPalette colours = Find<QLineEdit>(*Form("frmMain"), "txtComment").palette();
    EXPECT_GE(colours.color(QPalette::PlaceholderText).lightnessF() -
                  colours.color(QPalette::Base).lightnessF(),
              0.3F);
    EXPECT_EQ(colours.color(QPalette::Base), dark.color(QPalette::Base));
    QApplication::setPalette(before);
}

TEST_F(StartTest, A_tool_that_closes_the_main_screen_under_a_question_ends_nothing) {
    program.Main();
    Click(*Form("frmSplash"), "cmdCommand1");
    QDialog question(Form("frmMain"));
    question.setModal(true);
    question.show();
    EXPECT_FALSE(Form("frmMain")->close()); // and asks nothing over the question
    EXPECT_TRUE(Form("frmMain")->isVisible());
}

TEST_F(StartTest, A_step_that_fails_is_said_with_its_place) {
    platform.desktop.onEvents = [] { throw RunTimeError("Disk full"); };
    platform.dialogs.ExpectMessage("Unexpected Error - Disk full\nError location - theMain - Main",
                                   critical);
    program.Main();
    EXPECT_EQ(platform.desktop.pointer, platform::MousePointer::normal);
    platform.desktop.onEvents = nullptr;
}

} // namespace
