#include "LinkTest.h"

#include "screens/frmSimulated/frmSimulated.h"
#include "screens/support/ScreenTest.h"
#include "settings/mWinInit.h"
#include "simulator/Faults.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>

#include <algorithm>

namespace fs = std::filesystem;

namespace {

/// The port screen starts the real simulated instrument, found in the search path.
class SimulatedSession : public LinkTest {
protected:
    SimulatedSession() {
        qputenv("PATH", VANTREL_PROGRAM_FOLDER);
        // Whatever this computer has: of the first eight numbers only COM6 is free.
        for (int number = 1; number <= 16; ++number)
            if (number != freePort)
                LinkPort(number, "/dev/no such device");
    }
    ~SimulatedSession() override { qputenv("PATH", path); }

    static constexpr int freePort = 6;

    fs::path LinkOfPort(int number) const {
        return platform.places.ConfigurationFolder() / "ports" / ("com" + std::to_string(number));
    }

    void Click(const char* button) { QTest::mouseClick(&The<QPushButton>(button), Qt::LeftButton); }

    void Show() {
        StartProgram();
        form->show();
    }

    void UseSimulated() {
        Show();
        Click("cmdSimulated");
        ASSERT_TRUE(WaitFor([] { return CommPort::PortNumber() == freePort; }))
            << The<QLineEdit>("txtStatus").text().toStdString();
        ASSERT_TRUE(WaitFor([this] { return Answer().startsWith("The instrument answered: "); }))
            << Answer().toStdString();
    }

    QString Answer() { return The<QLabel>("lblAnswer").text(); }
    QString Status() { return The<QLineEdit>("txtStatus").text(); }

    /// The window beside the port screen, opened by the same button.
    frmSimulated& Window() {
        Click("cmdSimulated");
        return The<frmSimulated>("frmSimulated");
    }

    template <class Control>
    Control& In(frmSimulated& window, const QString& name) {
        auto* const control = window.findChild<Control*>(name);
        if (!control)
            throw std::runtime_error("no control " + name.toStdString());
        return *control;
    }

    void Press(frmSimulated& window, frmSimulated::Button button) {
        QTest::mouseClick(&In<QPushButton>(window, "cmdBtn_" + QString::number(button)),
                          Qt::LeftButton);
    }

    bool Says(frmSimulated& window, const QString& text) {
        return WaitFor(
            [&] { return In<QPlainTextEdit>(window, "txtAnswer").toPlainText().contains(text); });
    }

    const QByteArray path = qgetenv("PATH");
};

TEST_F(SimulatedSession, Is_the_port_in_use_on_a_free_number_and_the_port_test_is_answered) {
    UseSimulated();

    EXPECT_EQ(Status(), "The simulated instrument is COM6 until this program ends.");
    EXPECT_EQ(The<QComboBox>("cboPort").currentText(), "COM6");
    EXPECT_TRUE(The<QLabel>("lblDevice").text().endsWith(" - simulated instrument"));
    EXPECT_TRUE(QString::fromStdString(CommPort::LinkText()).startsWith("COM6 (simulated), 9600"));

    Click("cmdOK");
    EXPECT_EQ(Status(), "The test on Comm6 is successful.");
    EXPECT_TRUE(WaitFor([this] { return Answer().startsWith("The instrument answered: E1 "); }));
    EXPECT_TRUE(Transfer());
}

TEST_F(SimulatedSession, Keeps_nothing_unless_the_user_tests_its_port) {
    UseSimulated();
    CommPort::ClosePort();
    EXPECT_EQ(platform.userStore.values["CommPort/Startup/PortNumber"], "1");
}

TEST_F(SimulatedSession, Tested_by_the_user_its_port_is_kept_as_any_other) {
    UseSimulated();
    Click("cmdOK");
    CommPort::ClosePort();
    EXPECT_EQ(platform.userStore.values["CommPort/Startup/PortNumber"], "6");
}

TEST_F(SimulatedSession, Ends_with_the_program_and_leaves_no_link_behind) {
    UseSimulated();
    ASSERT_TRUE(fs::is_symlink(LinkOfPort(freePort)));
    const fs::path device = fs::read_symlink(LinkOfPort(freePort));

    form.reset();

    EXPECT_FALSE(fs::is_symlink(LinkOfPort(freePort)));
    EXPECT_FALSE(fs::exists(LinkOfPort(freePort).string() + ".control"));
    EXPECT_FALSE(fs::exists(device)) << "the process is still there";
    EXPECT_EQ(fs::read_symlink(LinkOfPort(1)), "/dev/no such device") << "a link of the user's";
}

TEST_F(SimulatedSession, Another_solution_changes_the_reading) {
    UseSimulated();
    auto& window = Window();
    EXPECT_EQ(window.windowTitle(), "Simulated Instrument on COM6");
    EXPECT_EQ(In<QComboBox>(window, "cboElectrode_1").currentText(), "H (pH)");
    ASSERT_TRUE(Transfer());
    const float atPH7 = CommPort::Readings()[2];

    In<QLineEdit>(window, "txtAmount_1").setText("4");
    Press(window, frmSimulated::apply);

    EXPECT_TRUE(Says(window, "Channel 2, H (pH) electrode in pH 4, 25.0 C: goes to "));
    EXPECT_FALSE(In<QPlainTextEdit>(window, "txtAnswer").toPlainText().contains("Channel 1"))
        << "what has not changed was sent again";
    // Three units of pH are about 177 mV; the electrode takes its time.
    EXPECT_TRUE(WaitFor([&] { return Transfer() && CommPort::Readings()[2] - atPH7 > 100; }));
}

TEST_F(SimulatedSession, Another_electrode_comes_in_a_solution_that_it_responds_to) {
    UseSimulated();
    auto& window = Window();

    In<QComboBox>(window, "cboElectrode_0").setCurrentText("Redox");
    EXPECT_EQ(In<QComboBox>(window, "cboContent_0").currentText(), "Redox");
    EXPECT_EQ(In<QComboBox>(window, "cboUnit_0").currentText(), "mV");
    EXPECT_FALSE(In<QComboBox>(window, "cboUnit_0").isEnabled());
    In<QLineEdit>(window, "txtTemperature_0").setText("30");
    Press(window, frmSimulated::apply);

    EXPECT_TRUE(Says(window, "Channel 1, Redox electrode in Redox 220 mV, 30.0 C: goes to "));
}

TEST_F(SimulatedSession, The_electrodes_of_the_setup_page_are_plugged_in) {
    mWinInit::ChannelSetup[0].Electrode = "F";
    mWinInit::ChannelSetup[1].Electrode = "Redox";
    UseSimulated();
    auto& window = Window();

    EXPECT_EQ(In<QComboBox>(window, "cboElectrode_0").currentText(), "F");
    EXPECT_EQ(In<QComboBox>(window, "cboContent_0").currentText(), "F");
    EXPECT_EQ(In<QLineEdit>(window, "txtAmount_0").text(), "10");
    EXPECT_EQ(In<QComboBox>(window, "cboUnit_0").currentText(), "ppm");
    ASSERT_TRUE(Transfer());
    EXPECT_NEAR(CommPort::Readings()[2], 220, 10);
}

TEST_F(SimulatedSession, What_the_instrument_refuses_is_shown_and_sent_again_when_it_is_mended) {
    UseSimulated();
    auto& window = Window();

    In<QLineEdit>(window, "txtAmount_0").setText("0,5");
    Press(window, frmSimulated::apply);
    EXPECT_TRUE(Says(window, "Refused: Concentration of Ca: \"0,5\" is not a number"));

    In<QLineEdit>(window, "txtAmount_0").setText("0.5");
    Press(window, frmSimulated::apply);
    EXPECT_TRUE(Says(window, "Ca 0.5 ppm"));
}

TEST_F(SimulatedSession, A_fault_spoils_as_many_answers_as_were_asked_for) {
    UseSimulated();
    auto& window = Window();

    auto& faults = In<QComboBox>(window, "cboFault");
    faults.setCurrentIndex(faults.findData("silence"));
    EXPECT_FALSE(In<QLineEdit>(window, "txtSeconds").isEnabled());
    In<QSpinBox>(window, "txtTimes").setValue(1);
    Press(window, frmSimulated::setFault);
    ASSERT_TRUE(Says(window, "Fault: silence, 1 time"));

    CommPort::TransferOnce();
    QTest::qWait(50);
    ShortenTimeout();
    ASSERT_TRUE(WaitForEnd());
    EXPECT_EQ(CommPort::State(), LinkState::failed);
    EXPECT_TRUE(Transfer());
}

TEST_F(SimulatedSession, The_cable_is_pulled_and_put_back) {
    UseSimulated();
    auto& window = Window();

    Press(window, frmSimulated::putCableBack);
    EXPECT_TRUE(Says(window, "Refused: The cable is in already"));
    Press(window, frmSimulated::pullCable);
    EXPECT_TRUE(Says(window, "The cable is out"));
    EXPECT_TRUE(WaitFor([] { return !CommPort::PortOK(); })) << "the loss is not seen";

    Press(window, frmSimulated::putCableBack);
    EXPECT_TRUE(Says(window, "The cable is in: "));
    CommPort::BeginReading();
    EXPECT_TRUE(WaitFor([] { return CommPort::State() == LinkState::answered; }));
    CommPort::EndReading();
}

TEST_F(SimulatedSession, Every_fault_of_the_simulator_is_offered_and_every_one_offered_is_known) {
    UseSimulated();
    auto& window = Window();
    auto& offered = In<QComboBox>(window, "cboFault");

    const auto known = simulator::FaultNames();
    ASSERT_EQ(offered.count(), static_cast<int>(known.size()));
    for (const auto& fault : known) {
        const int at = offered.findData(QString::fromLatin1(fault.name.data()));
        ASSERT_GE(at, 0) << fault.name;
        offered.setCurrentIndex(at);
        EXPECT_EQ(In<QLineEdit>(window, "txtSeconds").isEnabled(), fault.takesSeconds)
            << fault.name;
    }
}

TEST_F(SimulatedSession, Ended_by_its_window_it_gives_the_former_port_back) {
    UseSimulated();

    Press(Window(), frmSimulated::endInstrument);

    EXPECT_TRUE(WaitFor([] { return CommPort::PortNumber() == 1; }));
    EXPECT_EQ(Status(), "The simulated instrument has ended.");
    EXPECT_EQ(The<QPushButton>("cmdSimulated").text(), "&Use the Simulated Instrument");
    EXPECT_FALSE(fs::is_symlink(LinkOfPort(freePort)));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(form->findChild<frmSimulated*>(), nullptr);
}

TEST_F(SimulatedSession, A_screen_that_reads_does_not_go_on_with_another_instrument) {
    UseSimulated();
    auto& window = Window();
    CommPort::BeginReading();
    ASSERT_TRUE(WaitFor([] { return CommPort::State() == LinkState::answered; }));

    Press(window, frmSimulated::endInstrument);

    EXPECT_TRUE(WaitFor([] { return CommPort::HasFailed(); }));
    EXPECT_EQ(CommPort::PortNumber(), freePort);
    CommPort::EndReading();
    form->hide();
    form->show();
    EXPECT_EQ(CommPort::PortNumber(), 1);
}

TEST_F(SimulatedSession, A_screen_that_waits_for_it_gives_the_former_port_back_when_it_is_left) {
    UseSimulated();
    auto& window = Window();
    CommPort::GoOnAfterFailure(true);
    CommPort::BeginReading();
    ASSERT_TRUE(WaitFor([] { return CommPort::State() == LinkState::answered; }));
    Press(window, frmSimulated::endInstrument);
    ASSERT_TRUE(WaitFor([this] { return Status() == "The simulated instrument has ended."; }));
    EXPECT_TRUE(CommPort::IsLost());
    EXPECT_EQ(CommPort::PortNumber(), freePort);

    CommPort::EndReading();
    CommPort::ShowPresentStatus(); // as the screen does that is left
    EXPECT_EQ(CommPort::PortNumber(), 1);
}

TEST_F(SimulatedSession, Can_be_used_again_after_its_end) {
    UseSimulated();
    Press(Window(), frmSimulated::endInstrument);
    ASSERT_TRUE(WaitFor([] { return CommPort::PortNumber() == 1; }));

    Click("cmdSimulated");

    EXPECT_TRUE(WaitFor([] { return CommPort::PortNumber() == freePort; }));
    EXPECT_TRUE(Transfer());
}

TEST_F(SimulatedSession, Where_every_number_is_taken_that_is_said_and_no_link_is_touched) {
    LinkPort(freePort, "/dev/no such device");
    Show();
    platform.dialogs.ExpectMessage("No port number is left for the simulated instrument: behind "
                                   "each of COM1 to COM16 stands a device or a link.",
                                   boxStyle);

    Click("cmdSimulated");

    EXPECT_EQ(fs::read_symlink(LinkOfPort(freePort)), "/dev/no such device");
    EXPECT_TRUE(The<QPushButton>("cmdSimulated").isEnabled());
}

TEST_F(SimulatedSession, Where_the_program_is_not_installed_that_is_said) {
    qputenv("PATH", "");
    Show();
    platform.dialogs.ExpectMessage(
        "The program vantrel-instrument was not found, neither beside this program nor in the "
        "search path. On Linux it is installed with this program.",
        boxStyle);

    Click("cmdSimulated");

    EXPECT_EQ(CommPort::PortNumber(), 1);
    EXPECT_TRUE(The<QPushButton>("cmdSimulated").isEnabled());
}

TEST_F(SimulatedSession, What_keeps_it_from_starting_is_said_in_its_own_words) {
    fs::create_directories(LinkOfPort(freePort).string() + ".control");
    Show();
    platform.dialogs.ExpectAnyMessage(boxStyle);

    Click("cmdSimulated");

    EXPECT_TRUE(WaitFor([this] { return Status() == "The simulated instrument has ended."; }));
    EXPECT_NE(platform.dialogs.lastMessage.find("there is a file of that name"), std::string::npos)
        << platform.dialogs.lastMessage;
    EXPECT_TRUE(The<QPushButton>("cmdSimulated").isEnabled());
}

TEST_F(SimulatedSession, Its_window_can_be_used_by_keyboard_and_read_aloud_and_fits) {
    UseSimulated();
    EXPECT_TRUE(SharedMnemonics(*form).empty());
    auto& window = Window();
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(ControlsWithoutName(window).empty());
    EXPECT_TRUE(SharedMnemonics(window).empty());
    ExpectFitsAtDoubleScale(window);
    ExpectRestsInEverySize(window);
}

} // namespace
