#include "screens/frmMain/MainScreenTest.h"

#include "files/MeasurementReader.h"
#include "link/CommPort.h"
#include "screens/frmPortSettings/frmPortSettings.h"
#include "support/InstrumentProcess.h"

#include <QTest>

namespace {

namespace fs = std::filesystem;

/// The measuring page and the simulated instrument, a program of its own, over a pseudo-terminal
/// and with the forms' own timers.
class InstrumentMeasuring : public MainScreenTest {
protected:
    InstrumentMeasuring() {
        link.reset();
        const auto home = platform.folder.Path() / "home";
        fs::create_directories(home);
        instrument = std::make_unique<InstrumentProcess>(
            home, std::vector<std::string>{"--ideal", "--fast"});
        fs::create_directories(platform.places.ConfigurationFolder() / "ports");
        fs::create_symlink(instrument->Link(),
                           platform.places.ConfigurationFolder() / "ports" / "com1");
        port = std::make_unique<frmPortSettings>();
        CommPort::fncInitializeComPort();
    }
    ~InstrumentMeasuring() override { form.reset(); }

    bool WaitForValues() {
        return QTest::qWaitFor(
            [this] { return platform.desktop.pointer == platform::MousePointer::normal; }, 10000);
    }

    std::unique_ptr<InstrumentProcess> instrument;
    std::unique_ptr<frmPortSettings> port;
};

} // namespace

TEST_F(InstrumentMeasuring, Shows_and_records_what_the_instrument_sends) {
    OpenMeasuring();
    ASSERT_TRUE(WaitForValues());
    EXPECT_EQ(CellText(56), "25.0"); // the simulated sensors stand at 25 degrees
    EXPECT_NE(CellText(16), "");
    const auto target = AnswerSaveDialog("run.4ch");
    Click(*form, "cmdPage", frmMain::run);
    Click(*form, "cmdPage", frmMain::switchPage);
    const auto file = FileOpr::ReadMeasurementFile(target);
    ASSERT_EQ(file.records.size(), 1U);
    EXPECT_EQ(file.records[0].cells[0][Quantity::celsius], "25.0        ");
}

TEST_F(InstrumentMeasuring, An_instrument_that_falls_silent_is_read_again_after_Start) {
    OpenMeasuring();
    ASSERT_TRUE(WaitForValues());
    platform.dialogs.ExpectMessage("There are some problem on connection.\n"
                                   "Click on button Start to start reading again.",
                                   exclamation);
    instrument->Command("fault silence");
    ASSERT_TRUE(QTest::qWaitFor([this] { return RunButton() == "&Start"; }, 10000));
    instrument->Command("fault none");
    Click(*form, "cmdPage", frmMain::run);
    EXPECT_EQ(RunButton(), "&Record");
    EXPECT_TRUE(WaitForValues());
}

TEST_F(InstrumentMeasuring, The_status_line_tells_the_present_after_failures_and_after_Back) {
    const auto linkText = [this] { return Find<QLabel>(*form, "lblLink").text(); };
    const std::string connectionMessage = "There are some problem on connection.\n"
                                          "Click on button Start to start reading again.";
    const auto waitForFailure = [this] {
        return QTest::qWaitFor([this] { return RunButton() == "&Start"; }, 10000);
    };
    instrument->Command("unplug");
    platform.dialogs.ExpectMessage(connectionMessage, exclamation);
    OpenMeasuring();
    ASSERT_TRUE(waitForFailure());
    EXPECT_EQ(linkText(), "COM1, 9600 bit/s: not open");

    instrument->Command("replug");
    Click(*form, "cmdPage", frmMain::run);
    EXPECT_EQ(linkText(), "COM1, 9600 bit/s: waiting for the instrument");
    ASSERT_TRUE(WaitForValues());
    EXPECT_EQ(linkText(), "COM1, 9600 bit/s: the instrument answers");
    Click(*form, "cmdPage", frmMain::switchPage);
    EXPECT_EQ(linkText(), "COM1, 9600 bit/s: open") << "nobody asks it any more";

    platform.dialogs.ExpectMessage(connectionMessage, exclamation);
    instrument->Command("fault silence");
    Click(*form, "cmdPage", frmMain::switchPage);
    ASSERT_TRUE(waitForFailure());
    EXPECT_EQ(linkText(), "COM1, 9600 bit/s: no connection");
    Click(*form, "cmdPage", frmMain::switchPage);
    EXPECT_EQ(linkText(), "COM1, 9600 bit/s: not open") << "a failed start gives the port back";

    instrument->Command("fault none");
    port->show();
    Click(*port, "cmdOK");
    EXPECT_EQ(linkText(), "COM1, 9600 bit/s: open") << "after a successful test";
    Click(*port, "cmdCancel");

    Click(*form, "cmdPage", frmMain::switchPage);
    ASSERT_TRUE(WaitForValues());
    EXPECT_EQ(linkText(), "COM1, 9600 bit/s: the instrument answers");
}

TEST_F(InstrumentMeasuring, A_reading_of_0_mV_is_shown_and_recorded_as_0_whatever_came_before) {
    mWinInit::HardwareSettings.AveragingForMeasurement = 3;
    instrument->Command("solution 2 H (pH) 4.01");
    OpenMeasuring();
    ASSERT_TRUE(WaitForValues());
    for (const char* before : {"10.3", "1.7", "8.88"}) {
        instrument->Command(std::string("solution 2 H (pH) ") + before);
        ASSERT_TRUE(QTest::qWaitFor([this] { return CellText(17) != "0.0"; }, 10000));
        instrument->Command("solution 2 H (pH) 7");
        EXPECT_TRUE(QTest::qWaitFor([this] { return CellText(17) == "0.0"; }, 10000))
            << "after pH " << before << ": " << CellText(17).toStdString();
    }
    const auto target = AnswerSaveDialog("run.4ch");
    Click(*form, "cmdPage", frmMain::run);
    Click(*form, "cmdPage", frmMain::switchPage);
    const auto file = FileOpr::ReadMeasurementFile(target);
    ASSERT_EQ(file.records.size(), 1U);
    EXPECT_EQ(file.records[0].cells[1][Quantity::mV], "0.0         ");
}
