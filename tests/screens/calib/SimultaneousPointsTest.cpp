#include "screens/calib/SimultaneousPoints.h"
#include "link/DataAcq.h"
#include "settings/mWinInit.h"

#include <QComboBox>
#include <QTabBar>
#include <QTest>

namespace {
constexpr const char* averagingPrompt = "Input new averaging number for the calibration.";
}

// ---- Labels and units ------------------------------------------------------------------------

TEST_F(SimultaneousPoints, The_point_labels_follow_the_unit) {
    OpenWith({firstCa, secondCa});
    EXPECT_EQ(Text("lblDat_0"), "ppm:");
    Pick(*form, "cboUnits", "Concentration (mol/l)");
    EXPECT_EQ(Text("lblDat_0"), "mol/l:");
    EXPECT_EQ(Text("lblDat_5"), "mol/l:");
}

TEST_F(SimultaneousPoints, PH_electrodes_have_pH_labels_and_no_units) {
    mWinInit::ChannelSetup[clChannel].Electrode = "H (pH)";
    Measure::IsPHMode = false;
    OpenWith({pHChannel, clChannel});
    EXPECT_TRUE(Measure::IsPHMode);
    EXPECT_EQ(Text("lblDat_0"), "pH:");
    EXPECT_EQ(Text("lblInfo_1"), "Calibration Point:");
    EXPECT_FALSE(Find<QComboBox>(*form, "cboUnits").isVisible());
}

TEST_F(SimultaneousPoints, Another_unit_converts_the_typed_standards) {
    OpenWith({firstCa, secondCa});
    Type(*form, "txtDat_0", "400.78");
    Pick(*form, "cboUnits", "Concentration (mol/l)");
    EXPECT_EQ(Text("txtDat_0"), "1.00E-02");
    EXPECT_EQ(Text("txtDat_1"), "");
    EXPECT_EQ(Stored(firstCa).StdUnit, 0.0F) << "the unit is stored with the result";
}

TEST_F(SimultaneousPoints, A_unit_that_a_tool_chooses_before_the_channels_is_in_force_after) {
    form = std::make_unique<SimultCalib>();
    Show(*form);
    Find<QComboBox>(*form, "cboUnits").setCurrentIndex(1);
    for (const std::size_t channel : {firstCa, secondCa})
        Element<QCheckBox>(*form, "chkSimult", channel).click();
    Click(*form, "cmdSys", SimultCalib::nextButton);
    EXPECT_EQ(Find<QComboBox>(*form, "cboUnits").currentText(), "Concentration (mol/l)");
    EXPECT_EQ(Text("lblDat_0"), "mol/l:");
}

TEST_F(SimultaneousPoints, A_standard_that_a_tool_sets_is_that_of_the_point_to_read) {
    OpenWith({firstCa, secondCa});
    Element<QLineEdit>(*form, "txtDat", 1).setText("10");
    Click(*form, "cmdSys", SimultCalib::mainButton);
    EXPECT_EQ(Caption(*form, SimultCalib::mainButton), "&Record");
    FrameArrives(129, 108);
    EXPECT_EQ(Signal(firstCa, 1), "129.0");
    EXPECT_EQ(Signal(firstCa, 0), "");
}

// ---- Reading ---------------------------------------------------------------------------------

TEST_F(SimultaneousPoints, A_standard_is_demanded) {
    OpenWith({firstCa, secondCa});
    for (const char* text : {"", "ten", "1,5"}) {
        Type(*form, "txtDat_0", text);
        platform.dialogs.ExpectMessage("Manual data entry required", exclamation);
        Click(*form, "cmdSys", SimultCalib::mainButton);
        EXPECT_EQ(Caption(*form, SimultCalib::mainButton), "&Read");
        EXPECT_EQ(FocusName(*form), "txtDat_0");
        EXPECT_EQ(link->Requests(), 0U);
    }
}

TEST_F(SimultaneousPoints, Read_starts_a_series_and_each_tick_shows_every_chosen_channel) {
    mWinInit::HardwareSettings.AveragingForCalibration = 3;
    OpenWith({firstCa, secondCa});
    Type(*form, "txtDat_0", "1");
    Click(*form, "cmdSys", SimultCalib::mainButton);
    EXPECT_EQ(Caption(*form, SimultCalib::mainButton), "&Record");
    EXPECT_TRUE(Hourglass());
    EXPECT_EQ(DataAcq::Reader().AverageCount, 3);
    EXPECT_EQ(Find<QTimer>(*form, "tmrRead").interval(), 50);
    FrameArrives(100, 80.5);
    EXPECT_EQ(Signal(firstCa, 0), "100.0");
    EXPECT_EQ(Signal(secondCa, 0), "80.5");
    EXPECT_EQ(Signal(pHChannel, 0), "");
    EXPECT_FALSE(Hourglass());
    EXPECT_EQ(Find<QTimer>(*form, "tmrRead").interval(), 1500);
}

TEST_F(SimultaneousPoints, Record_is_ignored_while_the_hourglass_stands) {
    OpenWith({firstCa, secondCa});
    Type(*form, "txtDat_0", "1");
    Click(*form, "cmdSys", SimultCalib::mainButton);
    Tick(*form, "tmrRead");
    Click(*form, "cmdSys", SimultCalib::mainButton);
    EXPECT_EQ(Caption(*form, SimultCalib::mainButton), "&Record");
    EXPECT_TRUE(Find<QTimer>(*form, "tmrRead").isActive());
    FrameArrives(100, 80);
    Click(*form, "cmdSys", SimultCalib::mainButton);
    EXPECT_EQ(Caption(*form, SimultCalib::mainButton), "&Read");
    EXPECT_EQ(FocusName(*form), "txtDat_1");
    EXPECT_FALSE(DataAcq::Reader().ReadingEnabled);
    EXPECT_EQ(Signal(firstCa, 0), "100.0");
}

TEST_F(SimultaneousPoints, The_stop_button_ends_a_reading_without_recording) {
    OpenWith({firstCa, secondCa});
    EXPECT_FALSE(Element<QAbstractButton>(*form, "cmdSys", SimultCalib::stopButton).isEnabled());
    Type(*form, "txtDat_0", "1");
    Click(*form, "cmdSys", SimultCalib::mainButton);
    FrameArrives(100, 80);
    Click(*form, "cmdSys", SimultCalib::stopButton);
    EXPECT_EQ(Caption(*form, SimultCalib::mainButton), "&Read");
    EXPECT_FALSE(Find<QTimer>(*form, "tmrRead").isActive());
    EXPECT_FALSE(DataAcq::Reader().ReadingEnabled);
    EXPECT_FALSE(Hourglass());
    EXPECT_EQ(Signal(firstCa, 0), "");
}

TEST_F(SimultaneousPoints, A_failed_link_says_so_once_and_keeps_the_recorded_points) {
    OpenWith({firstCa, secondCa});
    RecordPoint(0, "1", 100, 80);
    Type(*form, "txtDat_1", "10");
    Click(*form, "cmdSys", SimultCalib::mainButton);
    TimeOut();
    platform.dialogs.ExpectMessage(connectionMessage, exclamation);
    Tick(*form, "tmrRead");
    EXPECT_EQ(Caption(*form, SimultCalib::mainButton), "&Read");
    EXPECT_EQ(Signal(firstCa, 0), "100.0");
    EXPECT_EQ(Signal(firstCa, 1), "");
    Click(*form, "cmdSys", SimultCalib::mainButton);
    FrameArrives(129, 108);
    Click(*form, "cmdSys", SimultCalib::mainButton);
    EXPECT_EQ(Page(), "fraSummary");
    SeeEverySummary();
    form->close();
}

TEST_F(SimultaneousPoints, The_keyboard_alone_calibrates) {
    OpenWith({firstCa, secondCa});
    for (const char* standard : {"1", "10"}) {
        QTest::keyClicks(form->focusWidget(), standard);
        QTest::keyClick(form->focusWidget(), Qt::Key_Return);
        FrameArrives(std::string(standard) == "1" ? 100 : 129, 80);
        QTest::keyClick(form->focusWidget(), Qt::Key_Return);
    }
    EXPECT_EQ(Page(), "fraSummary");
    QTest::keyClick(form->focusWidget(), Qt::Key_Return); // shows the second channel's summary
    EXPECT_EQ(Find<QTabBar>(*form, "tabChannel").currentIndex(), 1);
    EXPECT_TRUE(form->isVisible());
    QTest::keyClick(form->focusWidget(), Qt::Key_Return); // stores and closes
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(Stored(firstCa).PointCount, 2);
}

TEST_F(SimultaneousPoints, Each_channel_has_its_own_stability_mark) {
    OpenWith({firstCa, secondCa});
    Type(*form, "txtDat_0", "1");
    Click(*form, "cmdSys", SimultCalib::mainButton);
    for (int i = 0; i < 10; ++i)
        FrameArrives(100, 80 + i);
    EXPECT_EQ(Text("lblMark_1"), "steady");
    EXPECT_EQ(Text("lblMark_2"), "drifting");
}

// ---- Averaging number ------------------------------------------------------------------------

TEST_F(SimultaneousPoints, A_new_averaging_number_restarts_a_reading) {
    mWinInit::HardwareSettings.AveragingForCalibration = 2;
    OpenWith({firstCa, secondCa});
    Type(*form, "txtDat_0", "1");
    Click(*form, "cmdSys", SimultCalib::mainButton);
    FrameArrives(100, 80);
    platform.dialogs.ExpectInput(averagingPrompt, "2", "5");
    Click(*form, "cmdSys", SimultCalib::averagingButton);
    EXPECT_EQ(mWinInit::HardwareSettings.AveragingForCalibration, 5);
    EXPECT_EQ(DataAcq::Reader().AverageCount, 5);
    EXPECT_FALSE(DataAcq::Reader().AveragePrimed);
    EXPECT_TRUE(Hourglass());
    EXPECT_EQ(Caption(*form, SimultCalib::mainButton), "&Record");
    Click(*form, "cmdSys", SimultCalib::mainButton);
    EXPECT_EQ(Caption(*form, SimultCalib::mainButton), "&Record")
        << "the first new average is still awaited";
    FrameArrives(90, 70);
    EXPECT_EQ(Signal(firstCa, 0), "90.0") << "nothing of the old average is left";
}

TEST_F(SimultaneousPoints, An_empty_averaging_answer_keeps_the_old_number) {
    mWinInit::HardwareSettings.AveragingForCalibration = 2;
    OpenWith({firstCa, secondCa});
    platform.dialogs.ExpectInput(averagingPrompt, "2", "");
    Click(*form, "cmdSys", SimultCalib::averagingButton);
    EXPECT_EQ(mWinInit::HardwareSettings.AveragingForCalibration, 2);
    EXPECT_FALSE(Hourglass());
}

TEST_F(SimultaneousPoints, Without_a_reading_a_new_averaging_number_shows_no_hourglass) {
    OpenWith({firstCa, secondCa});
    platform.dialogs.ExpectInput(averagingPrompt, "1", "1000");
    Click(*form, "cmdSys", SimultCalib::averagingButton);
    EXPECT_EQ(mWinInit::HardwareSettings.AveragingForCalibration, 1000);
    EXPECT_FALSE(Hourglass());
}

TEST_F(SimultaneousPoints, An_averaging_number_out_of_range_is_refused) {
    OpenWith({firstCa, secondCa});
    for (const char* answer : {"0", "-3", "1001", "2.5", "many"}) {
        platform.dialogs.ExpectInput(averagingPrompt, "1", answer);
        platform.dialogs.ExpectMessage(
            "The averaging number must be a whole number from 1 to 1000.", exclamation);
        Click(*form, "cmdSys", SimultCalib::averagingButton);
        EXPECT_EQ(mWinInit::HardwareSettings.AveragingForCalibration, 1);
    }
}

TEST_F(SimultaneousPoints, Help_shows_the_calibration_help_text) {
    OpenWith({firstCa, secondCa});
    Click(*form, "cmdSys", SimultCalib::helpButton);
    ASSERT_EQ(platform.desktop.helpShown.size(), 1U);
    EXPECT_EQ(platform.desktop.helpShown[0], platform.places.ProgramFolder() / "CalibHlp.txt");
}

// ---- Back to the choice ----------------------------------------------------------------------

TEST_F(SimultaneousPoints, Back_stops_a_reading_and_the_points_recorded_stay) {
    OpenWith({firstCa, secondCa});
    RecordPoint(0, "1", 100, 80);
    Type(*form, "txtDat_1", "10");
    Click(*form, "cmdSys", SimultCalib::mainButton);
    Click(*form, "cmdSys", SimultCalib::nextButton);
    EXPECT_FALSE(Find<QTimer>(*form, "tmrRead").isActive());
    EXPECT_FALSE(Hourglass());
    Click(*form, "cmdSys", SimultCalib::nextButton);
    EXPECT_EQ(Signal(firstCa, 0), "100.0");
    EXPECT_EQ(Text("txtDat_1"), "10");
}

TEST_F(SimultaneousPoints, Another_kind_of_electrode_starts_anew) {
    mWinInit::ChannelSetup[pHChannel].Electrode = "Cl";
    OpenWith({firstCa, secondCa});
    RecordPoint(0, "1", 100, 80);
    Click(*form, "cmdSys", SimultCalib::nextButton);
    for (const std::size_t channel : {firstCa, secondCa, pHChannel, clChannel})
        Element<QCheckBox>(*form, "chkSimult", channel).click();
    Click(*form, "cmdSys", SimultCalib::nextButton);
    EXPECT_EQ(Text("txtDat_0"), "");
    EXPECT_EQ(Signal(pHChannel, 0), "");
    EXPECT_EQ(Text("lblInfo_0"), "Electrode: Cl");
}
