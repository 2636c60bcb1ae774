#include "link/DataAcq.h"
#include "screens/SimultCalib/SimultCalib.h"
#include "screens/calib/CalibTest.h"
#include "settings/mWinInit.h"

#include <QCheckBox>
#include <QComboBox>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTabBar>
#include <QTableWidget>
#include <QTest>

#include <algorithm>
#include <cmath>

namespace {

constexpr const char* quitQuestion = "Calibration is not completed, quit anyway?";
constexpr const char* averagingPrompt = "Input new averaging number for the calibration.";
constexpr char separator = '\x0F';

class SimultaneousPoints : public CalibTest {
protected:
    void OpenWith(std::initializer_list<int> channels) {
        form = std::make_unique<SimultCalib>();
        Show(*form);
        for (const int channel : channels)
            Element<QCheckBox>(*form, "chkSimult", channel).click();
        Click(*form, "cmdSys", SimultCalib::nextButton);
    }

    /// mV of the two Ca electrodes.
    void FrameArrives(double first_mV, double second_mV) {
        Arrive({0, 250, static_cast<int>(std::lround(first_mV * 10)), 250,
                static_cast<int>(std::lround(second_mV * 10)), 250, 0, 250});
        Tick(*form, "tmrRead");
    }

    void RecordPoint(int point, const QString& standard, double first_mV, double second_mV) {
        Type(*form, "txtDat_" + QString::number(point), standard);
        Click(*form, "cmdSys", SimultCalib::mainButton);
        FrameArrives(first_mV, second_mV);
        Click(*form, "cmdSys", SimultCalib::mainButton);
    }

    /// Two standards, up to the summary.
    void CalibrateCa() {
        OpenWith({firstCa, secondCa});
        RecordPoint(0, "1", 100, 80);
        RecordPoint(1, "10", 129, 108.5);
    }

    /// Goes through the summaries of all channels; the button then leads back.
    void SeeEverySummary() {
        while (Caption(*form, SimultCalib::nextButton) == "&Next >")
            Click(*form, "cmdSys", SimultCalib::nextButton);
    }

    /// From the last summary to the choice of the channels.
    void GoBackToTheChannels() {
        SeeEverySummary();
        Click(*form, "cmdSys", SimultCalib::nextButton);
        Click(*form, "cmdSys", SimultCalib::nextButton);
        EXPECT_EQ(Page(), "fraChoice");
    }

    void ExpectQuestion(std::int16_t answer) {
        platform.dialogs.ExpectMessage(quitQuestion,
                                       Style(platform::style::yesNo, platform::style::exclamation,
                                             platform::style::defaultButton2),
                                       answer);
    }

    std::string Text(const QString& name) const { return TextOf(*form, name); }
    std::string Signal(int channel, int point) const {
        return Text("lblSig_" + QString::number(point * 8 + channel));
    }
    QString Page() const {
        return Find<QStackedWidget>(*form, "picPage").currentWidget()->objectName();
    }

    std::unique_ptr<SimultCalib> form;
};

} // namespace

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
    for (const int channel : {firstCa, secondCa})
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
    for (const int channel : {firstCa, secondCa, pHChannel, clChannel})
        Element<QCheckBox>(*form, "chkSimult", channel).click();
    Click(*form, "cmdSys", SimultCalib::nextButton);
    EXPECT_EQ(Text("txtDat_0"), "");
    EXPECT_EQ(Signal(pHChannel, 0), "");
    EXPECT_EQ(Text("lblInfo_0"), "Electrode: Cl");
}

// ---- Summary, closing ------------------------------------------------------------------------

TEST_F(SimultaneousPoints, The_last_point_shows_a_summary_of_each_channel_one_after_another) {
    CalibrateCa();
    EXPECT_EQ(Page(), "fraSummary");
    EXPECT_EQ(Text("lblTitle"), "Calibration Summary");
    const auto& tabs = Find<QTabBar>(*form, "tabChannel");
    ASSERT_EQ(tabs.count(), 2);
    Settle();
    EXPECT_GE(tabs.height(), tabs.tabRect(0).height());
    EXPECT_EQ(tabs.tabText(0), "Channel 2");
    const auto& slopes = Find<QTableWidget>(*form, "lstSlopes");
    EXPECT_EQ(slopes.item(0, 1)->text(), "29.0");
    EXPECT_EQ(Caption(*form, SimultCalib::nextButton), "&Next >");
    Click(*form, "cmdSys", SimultCalib::nextButton);
    EXPECT_EQ(tabs.currentIndex(), 1);
    EXPECT_EQ(slopes.item(0, 1)->text(), "28.5");
    EXPECT_EQ(Caption(*form, SimultCalib::nextButton), "< &Back");
    Click(*form, "cmdSys", SimultCalib::nextButton);
    EXPECT_EQ(Page(), "fraPoints");
    EXPECT_EQ(Caption(*form, SimultCalib::mainButton), "Contin&ue");
    form->close();
    EXPECT_EQ(Stored(firstCa).PointCount, 2);
}

TEST_F(SimultaneousPoints, Closing_stores_every_channel_with_the_date_with_seconds) {
    CalibrateCa();
    SeeEverySummary();
    QSignalSpy stored(form.get(), &SimultCalib::CalibrationStored);
    Click(*form, "cmdSys", SimultCalib::finishButton);
    EXPECT_FALSE(form->isVisible());
    ASSERT_EQ(stored.count(), 2);
    EXPECT_EQ(stored[0][0].toInt(), firstCa);
    EXPECT_EQ(stored[1][0].toInt(), secondCa);
    EXPECT_EQ(Stored(firstCa).CalibrationDate, "14:05:33 07.Mar.2003");
    EXPECT_EQ(Stored(firstCa).CaliData[1], 129.0F);
    EXPECT_EQ(Stored(firstCa).Slope[0], 29.0F);
    EXPECT_EQ(Stored(secondCa).CaliData[1], 108.5F);
    EXPECT_EQ(Stored(secondCa).Slope[0], 28.5F);
    EXPECT_EQ(Stored(secondCa).Standard[1], 10.0F);
    EXPECT_EQ(LibraryLine(secondCa), std::string("14:05:33 07.Mar.2003") + separator + "2" +
                                         separator + "0" + separator + "1;80" + separator +
                                         "10;108.5");
    EXPECT_EQ(Stored(clChannel).PointCount, 0);
}

TEST_F(SimultaneousPoints, An_uncompleted_calibration_asks_and_stores_nothing) {
    OpenWith({firstCa, secondCa});
    RecordPoint(0, "1", 100, 80);
    ExpectQuestion(platform::button::no);
    QTest::keyClick(form.get(), Qt::Key_Escape);
    EXPECT_TRUE(form->isVisible());
    ExpectQuestion(platform::button::yes);
    Click(*form, "cmdSys", SimultCalib::closeButton);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(Stored(firstCa), CalibrationRecord());
    EXPECT_EQ(LibraryLine(firstCa), "");
}

TEST_F(SimultaneousPoints, Incorrect_data_is_said_once_and_not_stored) {
    OpenWith({firstCa, secondCa});
    RecordPoint(0, "0", 100, 80);
    platform.dialogs.ExpectMessage("Incorrect calibration data encountered.", exclamation);
    RecordPoint(1, "10", 129, 108);
    EXPECT_EQ(Page(), "fraSummary");
    EXPECT_TRUE(Find<QLabel>(*form, "lblIncorrect").isVisible());
    EXPECT_FALSE(Element<QAbstractButton>(*form, "cmdSys", SimultCalib::mainButton).isEnabled());
    ExpectQuestion(platform::button::yes);
    form->close();
    EXPECT_EQ(Stored(firstCa).PointCount, 0);
}

TEST_F(SimultaneousPoints, A_change_after_the_summary_needs_a_new_one) {
    CalibrateCa();
    Find<QTabBar>(*form, "tabChannel").setCurrentIndex(1);
    Click(*form, "cmdSys", SimultCalib::nextButton);
    Type(*form, "txtDat_1", "100");
    ExpectQuestion(platform::button::no);
    form->close();
    Click(*form, "cmdSys", SimultCalib::mainButton);
    EXPECT_EQ(Page(), "fraSummary");
    SeeEverySummary();
    form->close();
    EXPECT_EQ(Stored(firstCa).Standard[1], 100.0F);
    EXPECT_EQ(Stored(firstCa).Slope[0], 14.5F);
}

TEST_F(SimultaneousPoints, Finish_waits_until_the_summary_of_each_channel_has_been_shown) {
    CalibrateCa();
    EXPECT_FALSE(Element<QAbstractButton>(*form, "cmdSys", SimultCalib::finishButton).isVisible());
    ExpectQuestion(platform::button::no);
    QTest::keyClick(form.get(), Qt::Key_Escape);
    EXPECT_EQ(Stored(firstCa).PointCount, 0);
    Find<QTabBar>(*form, "tabChannel").setCurrentIndex(1); // the tab itself does it, too
    EXPECT_TRUE(Element<QAbstractButton>(*form, "cmdSys", SimultCalib::finishButton).isVisible());
    Click(*form, "cmdSys", SimultCalib::finishButton);
    EXPECT_EQ(Stored(secondCa).PointCount, 2);
}

TEST_F(SimultaneousPoints, Summaries_of_a_changed_calibration_must_be_seen_anew) {
    CalibrateCa();
    SeeEverySummary();
    Click(*form, "cmdSys", SimultCalib::nextButton);
    Type(*form, "txtDat_1", "100");
    Click(*form, "cmdSys", SimultCalib::mainButton);
    EXPECT_EQ(Page(), "fraSummary");
    EXPECT_FALSE(Element<QAbstractButton>(*form, "cmdSys", SimultCalib::finishButton).isVisible());
    ExpectQuestion(platform::button::yes);
    form->close();
    EXPECT_EQ(Stored(firstCa).PointCount, 0);
}

TEST_F(SimultaneousPoints, A_channel_unticked_after_the_summary_is_not_stored) {
    CalibrateCa();
    GoBackToTheChannels();
    Element<QCheckBox>(*form, "chkSimult", secondCa).click();
    ExpectQuestion(platform::button::yes);
    form->close();
    EXPECT_EQ(Stored(firstCa), CalibrationRecord());
    EXPECT_EQ(Stored(secondCa), CalibrationRecord());
}

TEST_F(SimultaneousPoints, Going_back_to_the_channels_counts_as_no_summary_shown) {
    CalibrateCa();
    GoBackToTheChannels();
    ExpectQuestion(platform::button::no);
    form->close();
    Click(*form, "cmdSys", SimultCalib::nextButton);
    EXPECT_EQ(Caption(*form, SimultCalib::mainButton), "Contin&ue") << "the points are kept";
    ExpectQuestion(platform::button::no);
    form->close();
    Click(*form, "cmdSys", SimultCalib::mainButton);
    SeeEverySummary();
    form->close();
    EXPECT_EQ(Stored(secondCa).PointCount, 2);
}

TEST_F(SimultaneousPoints, A_third_channel_after_the_summary_has_to_be_read) {
    mWinInit::ChannelSetup[clChannel].Electrode = "Ca";
    CalibrateCa();
    GoBackToTheChannels();
    Element<QCheckBox>(*form, "chkSimult", clChannel).click();
    Click(*form, "cmdSys", SimultCalib::nextButton);
    EXPECT_EQ(Caption(*form, SimultCalib::mainButton), "&Read");
    ExpectQuestion(platform::button::yes);
    form->close();
    EXPECT_EQ(Stored(firstCa).PointCount, 0);
}

TEST_F(SimultaneousPoints, A_box_that_a_tool_unticks_on_the_summary_takes_its_channel_out) {
    CalibrateCa();
    SeeEverySummary();
    Element<QCheckBox>(*form, "chkSimult", secondCa).setChecked(false);
    EXPECT_EQ(Page(), "fraChoice") << "the choice is made anew";
    ExpectQuestion(platform::button::yes);
    form->close();
    EXPECT_EQ(Stored(firstCa).PointCount, 0);
    EXPECT_EQ(Stored(secondCa).PointCount, 0);
}

TEST_F(SimultaneousPoints, A_box_that_a_tool_changes_while_a_point_is_read_ends_the_reading) {
    OpenWith({firstCa, secondCa});
    Type(*form, "txtDat_0", "1");
    Click(*form, "cmdSys", SimultCalib::mainButton);
    Element<QCheckBox>(*form, "chkSimult", secondCa).setChecked(false);
    EXPECT_EQ(Page(), "fraChoice");
    EXPECT_FALSE(Find<QTimer>(*form, "tmrRead").isActive());
    EXPECT_FALSE(Hourglass());
}

TEST_F(SimultaneousPoints, Fewer_points_leave_the_stored_entries_behind_them) {
    for (const int channel : {firstCa, secondCa}) {
        Stored(channel).PointCount = 3;
        Stored(channel).Standard = {2, 20, 200};
        Stored(channel).CaliData = {1, 30, 59};
        Stored(channel).Slope = {29, 29};
    }
    CalibrateCa();
    SeeEverySummary();
    form->close();
    EXPECT_EQ(Stored(secondCa).PointCount, 2);
    EXPECT_EQ(Stored(secondCa).Standard[1], 10.0F);
    EXPECT_EQ(Stored(secondCa).Standard[2], 200.0F);
    EXPECT_EQ(Stored(secondCa).CaliData[2], 59.0F);
    EXPECT_EQ(Stored(firstCa).Slope[1], 29.0F);
}

TEST_F(SimultaneousPoints, Print_prints_a_page_for_each_channel) {
    CalibrateCa();
    EXPECT_EQ(Caption(*form, SimultCalib::mainButton), "&Print");
    Click(*form, "cmdSys", SimultCalib::mainButton);
    ASSERT_EQ(platform.printing.documents.size(), 1U);
    const auto& document = platform.printing.documents[0];
    EXPECT_EQ(document.PageNumber(), 2);
    const auto onPage = [&](int page, const std::string& text) {
        return std::ranges::any_of(document.texts, [&](const auto& item) {
            return item.page == page && item.text == text;
        });
    };
    EXPECT_TRUE(onPage(1, "Channel 2"));
    EXPECT_TRUE(onPage(1, "14:05:33 07.Mar.2003"));
    EXPECT_TRUE(onPage(2, "Channel 3"));
    EXPECT_TRUE(onPage(2, "108.5"));
    SeeEverySummary();
    form->close();
}
