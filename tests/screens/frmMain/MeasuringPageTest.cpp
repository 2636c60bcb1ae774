#include "screens/frmMain/MainScreenTest.h"

#include "link/DataAcq.h"
#include "settings/mWinInit.h"

#include <QLineEdit>
#include <QStatusBar>
#include <QTimer>

namespace {

using namespace std::chrono_literals;

class MeasuringPageTest : public MainScreenTest {
protected:
    const std::string connectionMessage = "There are some problem on connection.\n"
                                          "Click on button Start to start reading again.";

    void ExpectCells(std::size_t channel, const std::array<const char*, 5>& texts) {
        const std::array<std::size_t, 5> labels = {16, 24, 32, 64, 56}; // mV, pH, ppm, mol/l, °C
        for (std::size_t i = 0; i < labels.size(); ++i)
            EXPECT_EQ(CellText(labels[i] + channel), texts[i]) << "label " << labels[i] + channel;
    }

    QLabel& Cell(std::size_t index) { return Element<QLabel>(*form, "lblEntry", index); }
    QColor TitleColour() { return Cell(47).palette().color(QPalette::WindowText); }
    bool ReadTimerRuns() { return form->findChild<QTimer*>("tmrRead")->isActive(); }

    void FailLink() {
        TimeOut();
        platform.dialogs.ExpectMessage(connectionMessage, exclamation);
        Tick(*form, "tmrRead");
    }
};

} // namespace

TEST_F(MeasuringPageTest, Bears_the_title_of_the_channel_count) {
    OpenMeasuring();
    EXPECT_EQ(form->windowTitle(), "4-Channel Vantrel : Data Acquisition");
    form.reset();
    mWinInit::HardwareSettings.ChannelCount = 8;
    OpenMeasuring();
    EXPECT_EQ(form->windowTitle(), "8-Channel Vantrel: Data Acquisition");
}

TEST_F(MeasuringPageTest, Names_each_channels_electrode_and_sensor) {
    mWinInit::ChannelSetup[3] = {};
    OpenMeasuring();
    EXPECT_EQ(Find<QLabel>(*form, "lblElectrode_0").text(), "Ca");
    EXPECT_EQ(Find<QLabel>(*form, "lblSerialNo_0").text(), "CA-1");
    EXPECT_EQ(Find<QLabel>(*form, "lblSensor_0").text(), "1");
    EXPECT_EQ(Find<QLabel>(*form, "lblElectrode_3").text(), "None");
    EXPECT_EQ(Find<QLabel>(*form, "lblSerialNo_3").text(), "N/A");
    EXPECT_EQ(Find<QLabel>(*form, "lblSensor_3").text(), "0");
}

TEST_F(MeasuringPageTest, Shows_the_rows_of_the_channels_in_use_only) {
    OpenMeasuring();
    EXPECT_TRUE(Cell(19).isVisibleTo(form.get()));
    for (const std::size_t index : {20U, 28U, 39U, 60U, 68U, 71U})
        EXPECT_FALSE(Cell(index).isVisibleTo(form.get())) << index;
    form.reset();
    mWinInit::HardwareSettings.ChannelCount = 8;
    OpenMeasuring();
    for (const std::size_t index : {20U, 28U, 39U, 60U, 68U, 71U})
        EXPECT_TRUE(Cell(index).isVisibleTo(form.get())) << index;
}

TEST_F(MeasuringPageTest, Entering_starts_the_reading_and_is_busy_until_the_first_averages) {
    Open();
    const auto before = link->Requests();
    Click(*form, "cmdPage", frmMain::switchPage);
    EXPECT_EQ(link->Requests(), before + 1);
    EXPECT_EQ(RunButton(), "&Record");
    EXPECT_EQ(Find<QLabel>(*form, "lblRec").text(), "0");
    EXPECT_EQ(platform.desktop.pointer, platform::MousePointer::hourglass);
    Tick(*form, "tmrRead");
    EXPECT_EQ(platform.desktop.pointer, platform::MousePointer::hourglass);
    ExpectCells(0, {"", "", "", "", ""});
    ReadFrame(frame);
    EXPECT_EQ(platform.desktop.pointer, platform::MousePointer::normal);
}

TEST_F(MeasuringPageTest, Shows_what_each_kind_of_electrode_gives) {
    Open();
    Click(*form, "chkSelect_3");
    Pick(*form, "cboEntry_19", "2");
    Click(*form, "cmdPage", frmMain::switchPage);
    ReadFrame(frame);
    // 10^(1 + 29.5 / 59) = 31.62 ppm; 31.62 / 40078 = 7.89E-04 mol/l; sensor 1 at a table row.
    ExpectCells(0, {"188.5", "", "31.6", "7.89E-04", "25.0"});
    // (59 - 177.5) * 3 / -177.5 + 4 = 6.003
    ExpectCells(1, {"59.0", "6.00", "", "", "20.0"});
    ExpectCells(2, {"230.0", "", "", "", ""});
    ExpectCells(3, {"-12.3", "", "", "", "20.0"});
}

TEST_F(MeasuringPageTest, A_channel_calibrated_in_mol_per_litre_shows_both_concentrations) {
    mWinInit::Calibration[0].StdUnit = 1;
    mWinInit::Calibration[0].Standard = {0.0001F, 0.001F, 0.01F};
    OpenReading();
    // 10^(-3 + 0.5) = 3.162E-03 mol/l; times 40078 = 126.7 ppm.
    ExpectCells(0, {"188.5", "", "126.7", "3.16E-03", "25.0"});
}

TEST_F(MeasuringPageTest, An_unselected_channel_stays_blank) {
    Open();
    Click(*form, "chkSelect_0");
    Click(*form, "cmdPage", frmMain::switchPage);
    ReadFrame(frame);
    ExpectCells(0, {"", "", "", "", ""});
    ExpectCells(1, {"59.0", "6.00", "", "", "20.0"});
}

TEST_F(MeasuringPageTest, Shows_the_moving_average) {
    mWinInit::HardwareSettings.AveragingForMeasurement = 2;
    OpenMeasuring();
    ReadFrame({0, 0, 0, 0, 1000, 0, 0, 0});
    EXPECT_EQ(CellText(18), "100.0");
    ReadFrame({0, 0, 0, 0, 2000, 0, 0, 0});
    EXPECT_EQ(CellText(18), "150.0");
    Tick(*form, "tmrRead");
    EXPECT_EQ(CellText(18), "200.0");
}

TEST_F(MeasuringPageTest, A_reading_of_0_mV_is_shown_as_0_whatever_came_before) {
    for (const std::int16_t averaging : std::initializer_list<std::int16_t>{1, 2}) {
        mWinInit::HardwareSettings.AveragingForMeasurement = averaging;
        OpenMeasuring();
        for (const int tenths : {9999, -4567, 123, 1, 7458})
            ReadFrame({tenths, 7458, tenths, 7996, tenths, 0, 0, 0});
        for (int i = 0; i < averaging; ++i)
            ReadFrame({0, 7458, 0, 7996, 0, 0, 0, 0});
        ExpectCells(1, {"0.0", "7.00", "", "", "20.0"}); // the point of pH 7 is hit exactly
        EXPECT_EQ(CellText(16), "0.0");
        EXPECT_EQ(CellText(18), "0.0");
        form.reset();
    }
}

TEST_F(MeasuringPageTest,
       A_negative_result_is_an_error_told_by_text_and_weight_not_by_colour_alone) {
    OpenReading();
    const QColor normal = Cell(33).palette().color(QPalette::WindowText);
    ReadFrame({1885, 7458, 5000, 7996, 2300, 9000, -123, 9000}); // pH -1.45
    ExpectCells(1, {"500.0", "", "Error", "Error", "20.0"});
    EXPECT_TRUE(Cell(33).font().bold());
    EXPECT_NE(Cell(33).palette().color(QPalette::WindowText), normal);
    ReadFrame(frame);
    ExpectCells(1, {"59.0", "6.00", "", "", "20.0"});
    EXPECT_FALSE(Cell(33).font().bold());
    EXPECT_EQ(Cell(33).palette().color(QPalette::WindowText), normal);
}

TEST_F(MeasuringPageTest, A_failed_conversion_leaves_the_others_and_says_why) {
    Open();
    Click(*form, "chkSelect_1"); // an ion channel is the last converted: logarithmic scale
    Click(*form, "cmdPage", frmMain::switchPage);
    ReadFrame({1885, 9800, 590, 7996, 2300, 9000, -123, 9000}); // beyond the row of 0 °C
    ExpectCells(0, {"188.5", "", "31.6", "7.89E-04", "Error"});
    EXPECT_TRUE(
        form->statusBar()->currentMessage().startsWith("Converting temperature sensor 1: "));
    ReadFrame(frame);
    EXPECT_EQ(CellText(56), "25.0");
    EXPECT_EQ(form->statusBar()->currentMessage(), "");
}

TEST_F(MeasuringPageTest, The_reason_of_a_failed_conversion_goes_with_the_readings) {
    Open();
    Click(*form, "chkSelect_1");
    Click(*form, "cmdPage", frmMain::switchPage);
    ReadFrame({1885, 9800, 590, 7996, 2300, 9000, -123, 9000});
    ASSERT_NE(form->statusBar()->currentMessage(), "");
    Click(*form, "cmdPage", frmMain::switchPage);
    EXPECT_EQ(form->statusBar()->currentMessage(), "");
}

TEST_F(MeasuringPageTest, The_title_blinks_red_and_black_while_reading) {
    OpenMeasuring();
    Tick(*form, "tmrRead");
    EXPECT_EQ(TitleColour(), QColor(255, 0, 0));
    Tick(*form, "tmrRead");
    EXPECT_EQ(TitleColour(), QColor(0, 0, 0));
    Tick(*form, "tmrRead");
    FailLink();
    EXPECT_EQ(TitleColour(), QColor(0, 0, 0));
}

TEST_F(MeasuringPageTest, The_title_stands_still_for_a_user_who_wants_less_motion) {
    platform.desktop.lessMotion = true;
    OpenMeasuring();
    for (int tick = 0; tick < 3; ++tick) {
        Tick(*form, "tmrRead");
        EXPECT_EQ(TitleColour(), QColor(255, 0, 0)) << tick;
    }
    FailLink();
    EXPECT_EQ(TitleColour(), QColor(0, 0, 0));
}

TEST_F(MeasuringPageTest, A_tick_during_a_tick_does_nothing) {
    mWinInit::HardwareSettings.AveragingForMeasurement = 3;
    OpenMeasuring();
    Arrive(frame);
    platform.clock.step = 1ms;
    int inner = 0;
    platform.desktop.onEvents = [this, &inner] {
        ++inner;
        Tick(*form, "tmrRead");
    };
    Tick(*form, "tmrRead");
    EXPECT_GT(inner, 0);
    EXPECT_EQ(TitleColour(), QColor(255, 0, 0)) << "toggled more than once";
    EXPECT_EQ(CellText(16), "188.5");
}

TEST_F(MeasuringPageTest, The_clock_shows_seconds_without_a_leading_zero_of_the_hour) {
    platform.clock.now = {2003, 3, 7, 9, 5, 3};
    OpenMeasuring();
    EXPECT_EQ(Find<QLabel>(*form, "panTime").text(), "9:05:03 07.Mar.2003");
    platform.clock.now.second = 4;
    Tick(*form, "tmrTime");
    EXPECT_EQ(Find<QLabel>(*form, "panTime").text(), "9:05:04 07.Mar.2003");
}

TEST_F(MeasuringPageTest, The_timers_have_the_intervals_of_reading_and_clock) {
    OpenMeasuring();
    EXPECT_EQ(form->findChild<QTimer*>("tmrRead")->interval(), 500);
    EXPECT_EQ(form->findChild<QTimer*>("tmrTime")->interval(), 250);
}

TEST_F(MeasuringPageTest, A_failed_link_says_so_once_and_offers_to_start) {
    OpenReading();
    link->IntervalTicks();
    FailLink();
    EXPECT_EQ(RunButton(), "&Start");
    EXPECT_FALSE(ReadTimerRuns());
    EXPECT_EQ(platform.desktop.pointer, platform::MousePointer::normal);
    EXPECT_EQ(CellText(16), "188.5");
}

TEST_F(MeasuringPageTest, A_failure_before_the_first_frame_ends_the_busy_pointer) {
    OpenMeasuring();
    FailLink();
    EXPECT_EQ(platform.desktop.pointer, platform::MousePointer::normal);
    EXPECT_EQ(RunButton(), "&Start");
}

TEST_F(MeasuringPageTest, Start_reads_again) {
    OpenMeasuring();
    FailLink();
    const auto before = link->Requests();
    Click(*form, "cmdPage", frmMain::run);
    EXPECT_EQ(RunButton(), "&Record");
    EXPECT_EQ(link->Requests(), before + 1);
    EXPECT_EQ(platform.desktop.pointer, platform::MousePointer::hourglass);
    ReadFrame(frame);
    EXPECT_EQ(CellText(16), "188.5");
}

TEST_F(MeasuringPageTest, A_device_that_was_unplugged_is_reopened_by_Start) {
    OpenReading();
    link->serial.Unplug();
    platform.dialogs.ExpectMessage(connectionMessage, exclamation);
    Tick(*form, "tmrRead");
    link->serial.ports.insert(1);
    Click(*form, "cmdPage", frmMain::run);
    EXPECT_TRUE(link->serial.PortOpen());
    ReadFrame(frame);
    EXPECT_EQ(platform.desktop.pointer, platform::MousePointer::normal);
}

TEST_F(MeasuringPageTest, While_busy_run_report_and_averaging_do_nothing) {
    OpenMeasuring();
    for (const std::size_t index : {frmMain::run, frmMain::report, frmMain::averaging})
        Click(*form, "cmdPage", index);
    EXPECT_EQ(RunButton(), "&Record");
    EXPECT_TRUE(platform.dialogs.events.empty());
}

TEST_F(MeasuringPageTest, A_new_averaging_number_restarts_the_average) {
    OpenReading();
    platform.dialogs.ExpectInput("Input new averaging number for the measuring.", "1", " 3 ");
    Click(*form, "cmdPage", frmMain::averaging);
    EXPECT_EQ(mWinInit::HardwareSettings.AveragingForMeasurement, 3);
    EXPECT_EQ(Find<QLabel>(*form, "lblAverage").text(), "3");
    EXPECT_EQ(Find<QLineEdit>(*form, "txtEntry_1").text(), "3");
    EXPECT_EQ(platform.desktop.pointer, platform::MousePointer::hourglass);
    EXPECT_FALSE(DataAcq::Reader().AveragePrimed);
    Tick(*form, "tmrRead");
    EXPECT_TRUE(DataAcq::Reader().AveragePrimed);
    EXPECT_EQ(DataAcq::Reader().AverageCount, 3);
    EXPECT_EQ(platform.desktop.pointer, platform::MousePointer::normal);
}

TEST_F(MeasuringPageTest, An_empty_averaging_answer_changes_nothing) {
    OpenReading();
    platform.dialogs.ExpectInput("Input new averaging number for the measuring.", "1", "  ");
    Click(*form, "cmdPage", frmMain::averaging);
    EXPECT_EQ(mWinInit::HardwareSettings.AveragingForMeasurement, 1);
    EXPECT_EQ(platform.desktop.pointer, platform::MousePointer::normal);
    EXPECT_TRUE(DataAcq::Reader().AveragePrimed);
}

TEST_F(MeasuringPageTest, An_averaging_answer_out_of_range_is_refused_with_the_range) {
    OpenReading();
    for (const char* answer : {"0", "1001", "many", "-2"}) {
        platform.dialogs.ExpectInput("Input new averaging number for the measuring.", "1", answer);
        platform.dialogs.ExpectMessage("The averaging number must be a whole number from 1 to "
                                       "1000.",
                                       information);
        Click(*form, "cmdPage", frmMain::averaging);
    }
    EXPECT_EQ(mWinInit::HardwareSettings.AveragingForMeasurement, 1);
}

TEST_F(MeasuringPageTest, An_averaging_answer_while_not_reading_starts_nothing) {
    OpenMeasuring();
    FailLink();
    platform.dialogs.ExpectInput("Input new averaging number for the measuring.", "1", "4");
    Click(*form, "cmdPage", frmMain::averaging);
    EXPECT_EQ(mWinInit::HardwareSettings.AveragingForMeasurement, 4);
    EXPECT_EQ(platform.desktop.pointer, platform::MousePointer::normal);
}

TEST_F(MeasuringPageTest, Back_ends_the_reading_and_shows_the_setup_page) {
    OpenReading();
    Click(*form, "cmdPage", frmMain::switchPage);
    EXPECT_EQ(form->ShownPage(), frmMain::Page::setup);
    EXPECT_EQ(form->windowTitle(), "4-Channel Vantrel: Setup");
    EXPECT_FALSE(ReadTimerRuns());
    EXPECT_FALSE(DataAcq::Reader().ReadingEnabled);
    EXPECT_FALSE(link->interval.Enabled());
}

TEST_F(MeasuringPageTest, Back_before_the_first_averages_ends_the_busy_pointer) {
    OpenMeasuring();
    Click(*form, "cmdPage", frmMain::switchPage);
    EXPECT_EQ(platform.desktop.pointer, platform::MousePointer::normal);
}

TEST_F(MeasuringPageTest, Entering_again_shows_no_value_of_the_last_time) {
    OpenReading();
    Click(*form, "cmdPage", frmMain::switchPage);
    Click(*form, "cmdPage", frmMain::switchPage);
    ExpectCells(0, {"", "", "", "", ""});
}

TEST_F(MeasuringPageTest, The_status_line_names_port_and_link) {
    OpenReading();
    const QString text = Find<QLabel>(*form, "lblLink").text();
    EXPECT_TRUE(text.startsWith("COM1, 9600 bit/s")) << text.toStdString();
    link->IntervalTicks();
    FailLink();
    EXPECT_NE(Find<QLabel>(*form, "lblLink").text(), text);
}

TEST_F(MeasuringPageTest, Help_shows_the_text_of_the_measuring_page) {
    OpenMeasuring();
    Choose(*form, "mnuHelp_0");
    ASSERT_EQ(platform.desktop.helpShown.size(), 1U);
    EXPECT_EQ(platform.desktop.helpShown[0], platform.places.ProgramFolder() / "AcqurHlp.txt");
}
