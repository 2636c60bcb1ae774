#include "screens/frmMain/MainScreenTest.h"

#include "link/CommPort.h"
#include "screens/controls/TrendGraph.h"
#include "settings/MeasuringChoices.h"
#include "settings/StoredLimits.h"

#include <QCheckBox>
#include <QStatusBar>
#include <QTest>

namespace {

using namespace std::chrono_literals;

/// What the measuring page tells of its readings beside their values.
class ReadingMarks : public MainScreenTest {
protected:
    QLabel& Cell(std::size_t index) { return Element<QLabel>(*form, "lblEntry", index); }
    QString Mark(std::size_t channel) {
        return Element<QLabel>(*form, "lblMark", channel).text().simplified();
    }
    QString Status() { return form->statusBar()->currentMessage(); }
    QColor ColourOf(const QLabel& cell) { return cell.palette().color(cell.foregroundRole()); }

    /// Readings at the pace of the page; the first electrode's rises by this each time.
    void ReadOften(int count, int rise_tenths) {
        for (int i = 0; i < count; ++i) {
            platform.clock.monotonic += 500ms;
            ReadFrame({1885 + i * rise_tenths, 7458, 590, 7996, 2300, 9000, -123, 9000});
        }
    }

    void FailLink() {
        link->IntervalTicks();
        TimeOut();
        platform.dialogs.ExpectMessage("There are some problem on connection.\n"
                                       "Click on button Start to start reading again.",
                                       exclamation);
        Tick(*form, "tmrRead");
    }
};

} // namespace

TEST_F(ReadingMarks,
       A_channel_is_steady_within_a_fifth_of_a_millivolt_for_as_long_as_in_calibration) {
    OpenMeasuring();
    ReadOften(27, 0); // ten readings of a calibration, 1.5 s apart, span 13.5 s
    EXPECT_NE(Mark(0), "steady");
    ReadOften(1, 0);
    EXPECT_EQ(Mark(0), "steady");
    EXPECT_EQ(Mark(3), "") << "not in use";
}

TEST_F(ReadingMarks, A_drifting_channel_tells_its_drift_in_the_unit_of_its_standards) {
    OpenMeasuring();
    ReadOften(28, 5); // 1 mV a second, 59 mV a decade
    EXPECT_TRUE(Mark(0).startsWith('+')) << Mark(0).toStdString();
    EXPECT_TRUE(Mark(0).endsWith(" ppm/min")) << Mark(0).toStdString();
    EXPECT_EQ(Mark(1), "steady");
}

TEST_F(ReadingMarks, The_drift_is_known_after_five_seconds_of_reading) {
    OpenMeasuring();
    ReadOften(10, 5);
    EXPECT_EQ(Mark(0), "drifting") << "4.5 s";
    ReadOften(1, 5);
    EXPECT_TRUE(Mark(0).endsWith(" ppm/min")) << Mark(0).toStdString();
}

TEST_F(ReadingMarks, A_value_outside_its_standards_is_amber_and_says_so) {
    OpenReading();
    const QColor normal = ColourOf(Cell(32));
    EXPECT_EQ(Cell(32).toolTip(), "");
    ReadFrame({2500, 7458, 590, 7996, 2300, 9000, -123, 9000}); // beyond 100 ppm at 218 mV
    EXPECT_NE(ColourOf(Cell(32)), normal);
    EXPECT_EQ(Cell(32).toolTip(), "outside its standards (1 to 100 ppm)");
    EXPECT_EQ(Cell(32).accessibleDescription(), Cell(32).toolTip());
    EXPECT_EQ(Status(), "Channel 1: outside its standards (1 to 100 ppm)");
    EXPECT_EQ(ColourOf(Cell(16)), normal) << "the potential has no standards";
    ReadFrame(frame);
    EXPECT_EQ(ColourOf(Cell(32)), normal);
    EXPECT_EQ(Status(), "");
}

TEST_F(ReadingMarks, Three_readings_outside_the_limits_turn_the_cell_red_with_one_sound) {
    ChannelLimits limits;
    limits[2] = {100.0F, 200.0F, Quantity::mV};
    mWinInit::SaveLimits(limits);
    OpenMeasuring();
    const int before = platform.dialogs.beeps;
    ReadFrame(frame); // 230 mV
    ReadFrame(frame);
    EXPECT_EQ(platform.dialogs.beeps, before);
    const QColor background = Cell(18).palette().color(QPalette::Base);
    ReadFrame(frame);
    ReadFrame(frame);
    EXPECT_EQ(platform.dialogs.beeps, before + 1);
    EXPECT_NE(Cell(18).palette().color(QPalette::Base), background);
    EXPECT_EQ(ColourOf(Cell(18)), QColor(Qt::white));
    EXPECT_TRUE(Status().contains("Channel 3: outside its limits (100 to 200 mV) since 14:05:33"))
        << Status().toStdString();
    QTest::mouseClick(&Cell(18), Qt::LeftButton);
    EXPECT_EQ(Cell(18).palette().color(QPalette::Base), background);
    EXPECT_EQ(CellText(18), "230.0");
}

TEST_F(ReadingMarks,
       Alarms_are_acknowledged_from_the_keyboard_by_a_button_that_is_there_with_them) {
    ChannelLimits limits;
    limits[0] = {0.0F, 1.0F, Quantity::mV};
    limits[2] = {100.0F, 200.0F, Quantity::mV};
    mWinInit::SaveLimits(limits);
    OpenMeasuring();
    auto& button = Find<QPushButton>(*form, "cmdAcknowledge");
    ReadFrame(frame);
    ReadFrame(frame);
    const QColor background = Cell(16).palette().color(QPalette::Base);
    EXPECT_FALSE(button.isVisible());
    ReadFrame(frame);
    ASSERT_TRUE(button.isVisible());
    EXPECT_NE(Cell(16).palette().color(QPalette::Base), background);
    EXPECT_EQ(SharedMnemonics(*form), std::vector<std::string>());
    QTest::keyClick(form.get(), Qt::Key_K, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !button.isVisible(); })); // it is seen pressed first
    EXPECT_EQ(Cell(16).palette().color(QPalette::Base), background);
    EXPECT_EQ(Cell(18).palette().color(QPalette::Base), background);
    EXPECT_FALSE(button.isVisible());
    ReadFrame(frame);
    EXPECT_FALSE(button.isVisible()) << "acknowledged until the values have come back";
}

TEST_F(ReadingMarks, After_a_failure_the_values_turn_grey_and_the_last_reading_is_named) {
    OpenReading();
    const QColor normal = ColourOf(Cell(16));
    FailLink();
    EXPECT_EQ(CellText(16), "188.5");
    EXPECT_NE(ColourOf(Cell(16)), normal);
    EXPECT_EQ(Status(), "last reading 14:05:33");
    Click(*form, "cmdPage", frmMain::run);
    ReadFrame(frame);
    EXPECT_EQ(ColourOf(Cell(16)), normal);
    EXPECT_EQ(Status(), "");
}

TEST_F(ReadingMarks, What_a_failure_has_left_in_the_status_goes_with_the_page) {
    OpenReading();
    FailLink();
    ASSERT_NE(Status(), "");
    Click(*form, "cmdPage", frmMain::switchPage);
    EXPECT_EQ(Status(), "");
}

TEST_F(ReadingMarks, No_channel_is_steady_while_nothing_is_read) {
    OpenReading();
    Click(*form, "chkResume");
    ReadOften(28, 0);
    ASSERT_EQ(Mark(0), "steady");
    link->IntervalTicks();
    TimeOut();
    Tick(*form, "tmrRead");
    EXPECT_EQ(Mark(0), "") << "the instrument is silent";
    link->IntervalTicks();
    ReadOften(28, 0);
    ASSERT_EQ(Mark(0), "steady");
    Click(*form, "chkResume");
    FailLink();
    EXPECT_EQ(Mark(0), "") << "reading has ended";
    Click(*form, "cmdPage", frmMain::run);
    ReadFrame(frame);
    EXPECT_EQ(Mark(0), "drifting");
}

TEST_F(ReadingMarks, A_port_that_cannot_be_opened_is_told_with_its_reason) {
    Open();
    link->serial.ports = {};
    link->serial.openError = "Opening COM1: in use by another program: vantrel (process 7)";
    platform.dialogs.ExpectMessage("There are some problem on connection.\n"
                                   "Click on button Start to start reading again.",
                                   exclamation);
    link->serial.SetPortOpen(false);
    Click(*form, "cmdPage", frmMain::switchPage);
    Tick(*form, "tmrRead");
    EXPECT_EQ(Status(), "Opening COM1: in use by another program: vantrel (process 7)");
    auto& port = Find<QLabel>(*form, "lblLink");
    EXPECT_EQ(port.toolTip(), Status());
    link->serial.ports = {1};
    Click(*form, "cmdPage", frmMain::run);
    ReadFrame(frame);
    EXPECT_EQ(Status(), "");
    EXPECT_EQ(port.toolTip(), "");
}

TEST_F(ReadingMarks, An_instrument_that_is_waited_for_stops_nothing_and_shows_no_box) {
    OpenReading();
    const QColor normal = ColourOf(Cell(16));
    Click(*form, "chkResume");
    link->IntervalTicks();
    TimeOut();
    Tick(*form, "tmrRead");
    EXPECT_EQ(RunButton(), "&Record");
    EXPECT_NE(ColourOf(Cell(16)), normal);
    EXPECT_EQ(Status(), "last reading 14:05:33");
    platform.clock.now = {2003, 3, 7, 14, 7, 0};
    link->IntervalTicks();
    ReadFrame(frame);
    EXPECT_EQ(ColourOf(Cell(16)), normal);
    EXPECT_EQ(Status(), "no readings from 14:05:33 to 14:07:00");
}

TEST_F(ReadingMarks, A_choice_to_go_on_that_was_remembered_holds_without_a_click) {
    mWinInit::MeasuringChoices choices;
    choices.resume = true;
    mWinInit::SaveMeasuringChoices(choices);
    OpenReading();
    link->IntervalTicks();
    TimeOut();
    Tick(*form, "tmrRead");
    EXPECT_TRUE(CommPort::IsLost());
    EXPECT_EQ(RunButton(), "&Record");
}

TEST_F(ReadingMarks, A_choice_to_go_on_made_after_a_failure_holds_from_Start_on) {
    OpenReading();
    FailLink();
    Click(*form, "chkResume");
    Click(*form, "cmdPage", frmMain::run);
    ReadFrame(frame);
    link->IntervalTicks();
    TimeOut();
    Tick(*form, "tmrRead");
    EXPECT_TRUE(CommPort::IsLost());
    EXPECT_EQ(RunButton(), "&Record");
}

TEST_F(ReadingMarks, A_loss_that_is_over_before_the_next_tick_is_told_all_the_same) {
    OpenReading();
    Click(*form, "chkResume");
    link->IntervalTicks();
    TimeOut();
    platform.clock.now = {2003, 3, 7, 14, 5, 37};
    link->IntervalTicks();
    Arrive(frame);
    Tick(*form, "tmrRead");
    Tick(*form, "tmrRead");
    EXPECT_EQ(Status(), "no readings from 14:05:33 to 14:05:37");
}

TEST_F(ReadingMarks, The_trend_does_not_join_what_a_loss_has_parted) {
    OpenReading();
    Click(*form, "chkResume");
    ReadOften(4, 0);
    link->IntervalTicks();
    TimeOut();
    Tick(*form, "tmrRead");
    platform.clock.monotonic += 2min;
    link->IntervalTicks();
    ReadOften(4, 0);
    int parted = 0;
    for (const QCPGraphData& point : *Find<TrendGraph>(*form, "graTrend").graph(0)->data())
        parted += qIsNaN(point.value) ? 1 : 0;
    EXPECT_EQ(parted, 1);
}

TEST_F(ReadingMarks, A_gap_of_an_earlier_visit_is_told_no_more) {
    OpenReading();
    Click(*form, "chkResume");
    link->IntervalTicks();
    TimeOut();
    Tick(*form, "tmrRead");
    link->IntervalTicks();
    ReadFrame(frame);
    ASSERT_TRUE(Status().startsWith("no readings from"));
    Click(*form, "cmdPage", frmMain::switchPage);
    Click(*form, "cmdPage", frmMain::switchPage);
    ReadFrame(frame);
    EXPECT_EQ(Status(), "");
}

TEST_F(ReadingMarks, Leaving_the_page_ends_the_waiting_for_the_instrument) {
    OpenReading();
    Click(*form, "chkResume");
    link->IntervalTicks();
    TimeOut();
    Tick(*form, "tmrRead");
    ASSERT_TRUE(CommPort::IsLost());
    Click(*form, "cmdPage", frmMain::switchPage);
    EXPECT_EQ(Status(), "");
    EXPECT_FALSE(link->interval.Enabled());
}
