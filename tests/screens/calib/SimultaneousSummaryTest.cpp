#include "screens/calib/SimultaneousPoints.h"
#include "settings/mWinInit.h"

#include <QSignalSpy>
#include <QTabBar>
#include <QTableWidget>
#include <QTest>

#include <algorithm>

namespace {
constexpr char separator = '\x0F';
}

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

TEST_F(SimultaneousPoints, Finish_waits_for_the_third_channel_s_summary_too) {
    mWinInit::ChannelSetup[clChannel].Electrode = "Ca";
    OpenWith({firstCa, secondCa, clChannel});
    RecordPoint(0, "1", 100, 80);
    RecordPoint(1, "10", 129, 108.5);
    Find<QTabBar>(*form, "tabChannel").setCurrentIndex(1);
    EXPECT_FALSE(Element<QAbstractButton>(*form, "cmdSys", SimultCalib::finishButton).isVisible());
    Find<QTabBar>(*form, "tabChannel").setCurrentIndex(2);
    EXPECT_TRUE(Element<QAbstractButton>(*form, "cmdSys", SimultCalib::finishButton).isVisible());
}

TEST_F(SimultaneousPoints, PH_electrodes_keep_their_stored_unit) {
    for (const std::size_t channel : {firstCa, secondCa}) {
        mWinInit::ChannelSetup[channel].Electrode = "H (pH)";
        Stored(channel).StdUnit = 1;
    }
    OpenWith({firstCa, secondCa});
    RecordPoint(0, "4", 177.5, 178);
    RecordPoint(1, "7", 0, 1);
    SeeEverySummary();
    form->close();
    EXPECT_EQ(Stored(firstCa).PointCount, 2);
    EXPECT_EQ(Stored(firstCa).StdUnit, 1.0F);
    EXPECT_EQ(Stored(secondCa).StdUnit, 1.0F);
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
    for (const std::size_t channel : {firstCa, secondCa}) {
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
