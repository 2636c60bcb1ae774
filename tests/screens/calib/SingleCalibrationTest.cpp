#include "screens/calib/SingleCalibration.h"
#include "link/DataAcq.h"
#include "settings/mWinInit.h"

#include <QComboBox>
#include <QPointer>
#include <QTest>

namespace {

CalibrationRecord TwoPoints() {
    CalibrationRecord record;
    record.CalibrationDate = "10:12 07.Mar.2003";
    record.PointCount = 2;
    record.StdUnit = 1;
    record.Standard = {0.001F, 0.01F};
    record.CaliData = {-55.34F, 2.1F};
    record.Slope = {57.4F};
    return record;
}

} // namespace

// ---- Loading ---------------------------------------------------------------------------------

TEST_F(SingleCalibration, Every_control_of_the_arrays_is_there) {
    Open(pHChannel);
    const std::vector<int> points = {0, 1, 2, 3, 4, 5};
    EXPECT_EQ(IndicesOf(*form, "txtEntry"), points);
    EXPECT_EQ(IndicesOf(*form, "lblReading"), points);
    EXPECT_EQ(IndicesOf(*form, "cmdSys"), (std::vector<int>{0, 1, 2, 3, 4}));
    EXPECT_NE(form->findChild<QTimer*>("tmrRead"), nullptr);
    EXPECT_NE(form->findChild<QWidget*>("picPage"), nullptr);
}

TEST_F(SingleCalibration, A_pH_electrode_gets_pH_prompts_and_no_units) {
    Open(pHChannel);
    EXPECT_EQ(Text("lblTitle"), "Electrode Calibration");
    EXPECT_EQ(Text("txtEntry_0"), "< Type pH value here >");
    EXPECT_EQ(Text("txtEntry_5"), "< Type pH value here >");
    EXPECT_EQ(Text("lblInfo_3"), "Calibration Point:");
    EXPECT_FALSE(Find<QComboBox>(*form, "cboUnits").isVisible());
    EXPECT_TRUE(Measure::IsPHMode);
}

TEST_F(SingleCalibration, An_ion_electrode_gets_ppm_prompts_and_both_units) {
    Measure::IsPHMode = true;
    Open(firstCa);
    EXPECT_EQ(Text("txtEntry_0"), "< Type ppm here >");
    EXPECT_EQ(Text("lblInfo_3"), "Standards:");
    auto& units = Find<QComboBox>(*form, "cboUnits");
    EXPECT_TRUE(units.isVisible());
    ASSERT_EQ(units.count(), 2);
    EXPECT_EQ(units.itemText(0), "Concentration (ppm)");
    EXPECT_EQ(units.itemText(1), "Concentration (mol/l)");
    EXPECT_EQ(units.currentIndex(), 0);
    EXPECT_FALSE(Measure::IsPHMode);
}

TEST_F(SingleCalibration, From_2_to_6_points_are_offered_and_as_many_rows_shown) {
    Open(firstCa);
    auto& counts = Find<QComboBox>(*form, "cboCalibPtrs");
    ASSERT_EQ(counts.count(), 5);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(counts.itemText(i), QString::number(i + 2));
    EXPECT_EQ(counts.currentText(), "2");
    EXPECT_FALSE(Element<QLineEdit>(*form, "txtEntry", 2).isVisible());
    Pick(*form, "cboCalibPtrs", "6");
    EXPECT_TRUE(Element<QLineEdit>(*form, "txtEntry", 5).isVisible());
}

TEST_F(SingleCalibration, A_channel_without_calibration_shows_None_for_its_date) {
    Open(clChannel);
    EXPECT_EQ(Text("lblInfo_0"), "Channel 4");
    EXPECT_EQ(Text("lblInfo_1"), "Cl");
    EXPECT_EQ(Text("lblInfo_2"), "None");
}

TEST_F(SingleCalibration, A_stored_calibration_is_loaded_into_the_fields) {
    Stored(firstCa) = TwoPoints();
    Stored(firstCa).PointCount = 3;
    Stored(firstCa).Standard[2] = 0.1F;
    Stored(firstCa).CaliData[2] = 60;
    Open(firstCa);
    EXPECT_EQ(Find<QComboBox>(*form, "cboCalibPtrs").currentText(), "3");
    EXPECT_EQ(Find<QComboBox>(*form, "cboUnits").currentIndex(), 1);
    EXPECT_EQ(Text("lblInfo_2"), "10:12 07.Mar.2003");
    EXPECT_EQ(Text("txtEntry_0"), "0.001");
    EXPECT_EQ(Text("lblReading_0"), "-55.3");
    EXPECT_EQ(Text("txtEntry_2"), "0.1");
    EXPECT_EQ(Text("lblReading_2"), "60.0");
    EXPECT_EQ(Text("txtEntry_3"), "< Type mol/l here >");
    EXPECT_EQ(MainCaption(), "&Read") << "old points are offered for reading anew";
}

TEST_F(SingleCalibration, Opening_takes_the_hourglass_of_the_setup_page_away) {
    platform.desktop.SetMousePointer(platform::MousePointer::hourglass);
    Open(firstCa);
    EXPECT_FALSE(Hourglass());
}

// ---- Reading ---------------------------------------------------------------------------------

TEST_F(SingleCalibration, A_standard_that_is_no_number_is_refused_and_nothing_changes) {
    Open(firstCa);
    for (const char* text : {"ten", "0,5", ""}) {
        Type(*form, "txtEntry_0", text);
        platform.dialogs.ExpectMessage("Input not correct.", exclamation);
        Click(*form, "cmdSys", frmCalib::mainButton);
        EXPECT_EQ(MainCaption(), "&Read");
        EXPECT_EQ(FocusName(*form), "txtEntry_0");
        EXPECT_EQ(Text("lblReading_0"), "");
        EXPECT_EQ(link->Requests(), 0U);
    }
}

TEST_F(SingleCalibration, A_prompt_is_no_standard) {
    Open(firstCa);
    platform.dialogs.ExpectMessage("Input not correct.", exclamation);
    Click(*form, "cmdSys", frmCalib::mainButton);
    EXPECT_EQ(MainCaption(), "&Read");
}

TEST_F(SingleCalibration, Read_starts_a_series_with_the_calibration_average) {
    mWinInit::HardwareSettings.AveragingForCalibration = 7;
    Open(firstCa);
    Type(*form, "txtEntry_0", "10");
    Click(*form, "cmdSys", frmCalib::mainButton);
    EXPECT_EQ(MainCaption(), "&Record");
    EXPECT_EQ(Text("lblReading_0"), "0.0");
    EXPECT_TRUE(Hourglass());
    EXPECT_EQ(DataAcq::Reader().AverageCount, 7);
    EXPECT_FALSE(DataAcq::Reader().AveragePrimed);
    EXPECT_TRUE(DataAcq::Reader().ReadingEnabled);
    EXPECT_EQ(link->Requests(), 1U);
}

TEST_F(SingleCalibration, The_reader_runs_fast_until_the_instrument_has_been_heard) {
    Open(firstCa);
    Type(*form, "txtEntry_0", "10");
    Click(*form, "cmdSys", frmCalib::mainButton);
    auto& timer = Find<QTimer>(*form, "tmrRead");
    EXPECT_TRUE(timer.isActive());
    EXPECT_EQ(timer.interval(), 50);
    ReadingArrives(*form, 12.3);
    EXPECT_EQ(timer.interval(), 1500);
    Click(*form, "cmdSys", frmCalib::mainButton);
    Type(*form, "txtEntry_1", "100");
    Click(*form, "cmdSys", frmCalib::mainButton);
    EXPECT_EQ(timer.interval(), 1500);
}

TEST_F(SingleCalibration, A_tick_before_the_first_frame_shows_nothing) {
    Open(firstCa);
    Type(*form, "txtEntry_0", "10");
    Click(*form, "cmdSys", frmCalib::mainButton);
    Tick(*form, "tmrRead");
    EXPECT_EQ(Text("lblReading_0"), "0.0");
    EXPECT_TRUE(Hourglass());
    EXPECT_EQ(DataAcq::Reader().ConnectionState, 0);
}

TEST_F(SingleCalibration, Recording_before_any_reading_has_arrived_does_nothing) {
    Open(firstCa);
    Type(*form, "txtEntry_0", "10");
    Click(*form, "cmdSys", frmCalib::mainButton);
    Click(*form, "cmdSys", frmCalib::mainButton);
    EXPECT_EQ(MainCaption(), "&Record");
    EXPECT_TRUE(Find<QTimer>(*form, "tmrRead").isActive());
    EXPECT_EQ(Text("lblReading_0"), "0.0");
}

TEST_F(SingleCalibration, A_tick_shows_the_channels_own_mV) {
    Open(secondCa);
    Type(*form, "txtEntry_0", "10");
    Click(*form, "cmdSys", frmCalib::mainButton);
    Arrive({1000, 250, 2000, 250, -553, 250, 4000, 250});
    Tick(*form, "tmrRead");
    EXPECT_EQ(Text("lblReading_0"), "-55.3");
    EXPECT_FALSE(Hourglass());
}

TEST_F(SingleCalibration, The_shown_value_is_the_moving_average) {
    mWinInit::HardwareSettings.AveragingForCalibration = 2;
    Open(firstCa);
    ReadPoint(0, "10", 10);
    EXPECT_EQ(Text("lblReading_0"), "10.0");
    ReadingArrives(*form, 20);
    EXPECT_EQ(Text("lblReading_0"), "15.0");
    ReadingArrives(*form, 20);
    EXPECT_EQ(Text("lblReading_0"), "20.0");
}

TEST_F(SingleCalibration, Record_keeps_the_value_and_goes_to_the_next_point) {
    Open(firstCa);
    RecordPoint(0, "10", 12.3);
    EXPECT_EQ(Text("lblReading_0"), "12.3");
    EXPECT_EQ(MainCaption(), "&Read");
    EXPECT_FALSE(Find<QTimer>(*form, "tmrRead").isActive());
    EXPECT_FALSE(DataAcq::Reader().ReadingEnabled);
    EXPECT_EQ(FocusName(*form), "txtEntry_1");
}

TEST_F(SingleCalibration, Recording_the_last_point_moves_the_focus_to_the_buttons) {
    Open(firstCa);
    RecordPoint(0, "10", 12.3);
    RecordPoint(1, "100", 41.9);
    EXPECT_EQ(MainCaption(), "Contin&ue");
    EXPECT_EQ(FocusName(*form), "cmdSys_0");
}

TEST_F(SingleCalibration, The_keyboard_alone_calibrates) {
    Open(pHChannel);
    EXPECT_EQ(FocusName(*form), "txtEntry_0");
    const auto typeAndRead = [this](const char* standard, double potential_mV) {
        QTest::keyClicks(form->focusWidget(), standard);
        QTest::keyClick(form->focusWidget(), Qt::Key_Return); // reads
        ReadingArrives(*form, potential_mV);
        QTest::keyClick(form->focusWidget(), Qt::Key_Return); // records
    };
    typeAndRead("4", 177.5);
    EXPECT_EQ(FocusName(*form), "txtEntry_1");
    typeAndRead("7", 0);
    EXPECT_EQ(Text("txtEntry_0"), "4") << "what is typed takes the prompt's place";
    QTest::keyClick(form->focusWidget(), Qt::Key_Return); // shows the summary
    EXPECT_EQ(Text("lblTitle"), "Calibration Summary");
    QTest::keyClick(form->focusWidget(), Qt::Key_Return); // stores and closes
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(Stored(pHChannel).Slope[0], -59.2F);
}

TEST_F(SingleCalibration, While_a_point_is_read_the_others_wait) {
    Open(firstCa);
    ReadPoint(0, "10", 12.3);
    EXPECT_FALSE(Element<QLineEdit>(*form, "txtEntry", 1).isEnabled());
    EXPECT_TRUE(Element<QLineEdit>(*form, "txtEntry", 0).isReadOnly());
    EXPECT_FALSE(Find<QComboBox>(*form, "cboCalibPtrs").isEnabled());
    Click(*form, "cmdSys", frmCalib::mainButton);
    EXPECT_TRUE(Element<QLineEdit>(*form, "txtEntry", 1).isEnabled());
    EXPECT_FALSE(Element<QLineEdit>(*form, "txtEntry", 0).isReadOnly());
    EXPECT_TRUE(Find<QComboBox>(*form, "cboCalibPtrs").isEnabled());
}

TEST_F(SingleCalibration, The_cursor_chooses_the_point_to_read) {
    Open(firstCa);
    Pick(*form, "cboCalibPtrs", "3");
    Element<QLineEdit>(*form, "txtEntry", 2).setFocus();
    ReadPoint(2, "1000", 70);
    EXPECT_EQ(Text("lblReading_2"), "70.0");
    EXPECT_EQ(Text("lblReading_0"), "");
    Click(*form, "cmdSys", frmCalib::mainButton);
    EXPECT_EQ(FocusName(*form), "txtEntry_0") << "points left out come next";
}

TEST_F(SingleCalibration, An_emptied_field_asks_again) {
    Open(firstCa);
    Type(*form, "txtEntry_0", "");
    EXPECT_EQ(Text("txtEntry_0"), "");
    Element<QLineEdit>(*form, "txtEntry", 1).setFocus();
    EXPECT_EQ(Text("txtEntry_0"), "< Type ppm here >");
}

// ---- Clear -----------------------------------------------------------------------------------

TEST_F(SingleCalibration, Clear_stops_a_reading_and_empties_its_label) {
    Open(firstCa);
    ReadPoint(0, "10", 12.3);
    Click(*form, "cmdSys", frmCalib::secondButton);
    EXPECT_EQ(MainCaption(), "&Read");
    EXPECT_EQ(Text("lblReading_0"), "");
    EXPECT_FALSE(Find<QTimer>(*form, "tmrRead").isActive());
    EXPECT_FALSE(DataAcq::Reader().ReadingEnabled);
    EXPECT_FALSE(Hourglass());
    EXPECT_EQ(Text("txtEntry_0"), "10");
}

TEST_F(SingleCalibration, Clear_takes_a_recorded_point_back_so_that_it_is_read_again) {
    Open(firstCa);
    RecordPoint(0, "10", 12.3);
    RecordPoint(1, "100", 41.9);
    Element<QLineEdit>(*form, "txtEntry", 0).setFocus();
    EXPECT_EQ(MainCaption(), "Contin&ue");
    Click(*form, "cmdSys", frmCalib::secondButton);
    EXPECT_EQ(Text("lblReading_0"), "");
    EXPECT_EQ(Text("lblReading_1"), "41.9");
    EXPECT_EQ(MainCaption(), "&Read");
}

// ---- Link ------------------------------------------------------------------------------------

TEST_F(SingleCalibration, A_failed_link_says_so_once_and_keeps_the_recorded_points) {
    Open(firstCa);
    RecordPoint(0, "10", 12.3);
    Type(*form, "txtEntry_1", "100");
    Click(*form, "cmdSys", frmCalib::mainButton);
    TimeOut();
    platform.dialogs.ExpectMessage(connectionMessage, exclamation);
    Tick(*form, "tmrRead");
    EXPECT_EQ(MainCaption(), "&Read");
    EXPECT_FALSE(Find<QTimer>(*form, "tmrRead").isActive());
    EXPECT_FALSE(DataAcq::Reader().ReadingEnabled);
    EXPECT_FALSE(Hourglass());
    EXPECT_EQ(Text("lblReading_0"), "12.3");
    EXPECT_EQ(Text("lblReading_1"), "");

    Click(*form, "cmdSys", frmCalib::mainButton);
    ReadingArrives(*form, 41.9);
    EXPECT_EQ(Text("lblReading_1"), "41.9");
    Click(*form, "cmdSys", frmCalib::mainButton);
    EXPECT_EQ(MainCaption(), "Contin&ue");
}

TEST_F(SingleCalibration, A_link_that_fails_after_values_leaves_the_point_unrecorded) {
    Open(firstCa);
    ReadPoint(0, "10", 12.3);
    link->IntervalTicks();
    TimeOut();
    platform.dialogs.ExpectMessage(connectionMessage, exclamation);
    Tick(*form, "tmrRead");
    EXPECT_EQ(Text("lblReading_0"), "");
    EXPECT_EQ(MainCaption(), "&Read");
}

TEST_F(SingleCalibration, No_connection_message_comes_on_top_of_an_open_question) {
    Open(firstCa);
    ReadPoint(0, "10", 12.3);
    link->IntervalTicks();
    TimeOut();
    platform.dialogs.ExpectMessage(quitQuestion, quitStyle, platform::button::no);
    bool ticked = false;
    platform.dialogs.whileMessageIsOpen = [&] {
        Tick(*form, "tmrRead");
        ticked = true;
    };
    form->close();
    platform.dialogs.whileMessageIsOpen = nullptr;
    EXPECT_TRUE(ticked);
    platform.dialogs.ExpectMessage(connectionMessage, exclamation);
    Tick(*form, "tmrRead");
}

// ---- Help, advice ----------------------------------------------------------------------------

TEST_F(SingleCalibration, Help_shows_the_calibration_help_text) {
    Open(firstCa);
    Click(*form, "cmdSys", frmCalib::helpButton);
    ASSERT_EQ(platform.desktop.helpShown.size(), 1U);
    EXPECT_EQ(platform.desktop.helpShown[0], platform.places.ProgramFolder() / "CalibHlp.txt");
}

TEST_F(SingleCalibration, The_mark_turns_steady_after_ten_readings_and_recording_never_waits) {
    Open(firstCa);
    ReadPoint(0, "10", 12.3);
    EXPECT_EQ(Text("lblMark_0"), "drifting");
    for (int i = 0; i < 9; ++i)
        ReadingArrives(*form, 12.4);
    EXPECT_EQ(Text("lblMark_0"), "steady");
    ReadingArrives(*form, 12.8);
    EXPECT_EQ(Text("lblMark_0"), "drifting");
    Click(*form, "cmdSys", frmCalib::mainButton);
    EXPECT_EQ(Text("lblReading_0"), "12.8");
    EXPECT_EQ(Text("lblMark_0"), "recorded");
}

TEST_F(SingleCalibration, The_time_since_Read_is_shown_while_a_point_is_read) {
    Open(firstCa);
    Type(*form, "txtEntry_0", "10");
    Click(*form, "cmdSys", frmCalib::mainButton);
    EXPECT_EQ(Text("lblElapsed"), "0:00 since Read");
    platform.clock.monotonic += std::chrono::seconds(75);
    Tick(*form, "tmrElapsed");
    EXPECT_EQ(Text("lblElapsed"), "1:15 since Read");
    ReadingArrives(*form, 12.3);
    Click(*form, "cmdSys", frmCalib::mainButton);
    EXPECT_EQ(Text("lblElapsed"), "");
}

// ---- Closing before the summary --------------------------------------------------------------

TEST_F(SingleCalibration, An_unfinished_calibration_asks_before_it_closes) {
    Open(firstCa);
    platform.dialogs.ExpectMessage(quitQuestion, quitStyle, platform::button::no);
    form->close();
    EXPECT_TRUE(form->isVisible());
    platform.dialogs.ExpectMessage(quitQuestion, quitStyle, platform::button::no);
    QTest::keyClick(form.get(), Qt::Key_Escape);
    EXPECT_TRUE(form->isVisible());
    platform.dialogs.ExpectMessage(quitQuestion, quitStyle, platform::button::yes);
    Click(*form, "cmdSys", frmCalib::closeButton);
    EXPECT_FALSE(form->isVisible());
}

TEST_F(SingleCalibration, A_calibration_given_up_leaves_the_stored_record_as_it_was) {
    Stored(firstCa) = TwoPoints();
    const CalibrationRecord before = Stored(firstCa);
    Open(firstCa);
    Pick(*form, "cboUnits", "Concentration (ppm)");
    RecordPoint(0, "10", 12.3);
    GiveUp();
    EXPECT_EQ(Stored(firstCa), before);
    EXPECT_EQ(LibraryLine(firstCa), "");
}

TEST_F(SingleCalibration, Closing_in_the_middle_of_a_reading_ends_it) {
    Open(firstCa);
    ReadPoint(0, "10", 12.3);
    GiveUp();
    EXPECT_FALSE(Find<QTimer>(*form, "tmrRead").isActive());
    EXPECT_FALSE(DataAcq::Reader().ReadingEnabled);
    EXPECT_FALSE(Hourglass());
}

TEST_F(SingleCalibration, A_form_closed_while_a_tick_is_at_work_goes_after_the_tick) {
    Open(firstCa);
    QPointer<frmCalib> opened = form.release();
    opened->setAttribute(Qt::WA_DeleteOnClose);
    Type(*opened, "txtEntry_0", "10");
    Click(*opened, "cmdSys", frmCalib::mainButton);
    Arrive({1, 2, 3, 4, 5, 6, 7, 8});
    platform.clock.step = std::chrono::milliseconds(1); // events run at every channel
    platform.dialogs.ExpectMessage(quitQuestion, quitStyle, platform::button::yes);
    int passes = 0;
    platform.desktop.onEvents = [&] {
        if (passes++ == 0)
            opened->close();
        EXPECT_TRUE(opened && opened->isVisible());
        Settle();
    };
    Tick(*opened, "tmrRead");
    platform.desktop.onEvents = nullptr;
    EXPECT_GT(passes, 1);
    Settle();
    EXPECT_TRUE(opened.isNull());
}

TEST_F(SingleCalibration, All_points_recorded_but_no_summary_shown_stores_nothing) {
    Open(firstCa);
    RecordPoint(0, "10", 12.3);
    RecordPoint(1, "100", 41.9);
    GiveUp();
    EXPECT_EQ(Stored(firstCa).PointCount, 0);
}
