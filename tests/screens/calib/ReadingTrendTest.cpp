#include "screens/calibration/ReadingTrend.h"
#include "base/NumberText.h"
#include "chem/Measure.h"
#include "screens/SimultCalib/SimultCalib.h"
#include "screens/calib/CalibTest.h"
#include "screens/frmCalib/frmCalib.h"
#include "settings/mWinInit.h"

#include <QCheckBox>
#include <QComboBox>

namespace {

constexpr auto cycle = std::chrono::milliseconds(1500);

class CalibrationTrend : public CalibTest {
protected:
    CalibrationTrend() {
        TempSensorCalibration table;
        table.PointCount = 2;
        table.Reading = {100, 300};
        table.Temperature = {10, 30};
        mWinInit::TempSensor[0] = table;
    }

    void OpenSingle(std::size_t channel) {
        form = std::make_unique<frmCalib>(channel);
        Show(*form);
    }

    void OpenSimultaneous() {
        form = std::make_unique<SimultCalib>();
        Show(*form);
        for (const std::size_t channel : {firstCa, secondCa})
            Element<QCheckBox>(*form, "chkSimult", channel).click();
        Click(*form, "cmdSys", SimultCalib::nextButton);
    }

    /// Readings of every electrode, a cycle apart, and all temperature sensors at this reading.
    void ReadingsArrive(std::initializer_list<double> readings_mV, double sensor = 250) {
        for (const double reading_mV : readings_mV) {
            const int tenths = static_cast<int>(std::lround(reading_mV * 10));
            const int raw = static_cast<int>(std::lround(sensor * 10));
            platform.clock.monotonic += cycle;
            Arrive({tenths, raw, tenths, raw, tenths, raw, tenths, raw});
            Tick(*form, "tmrRead");
        }
        Settle();
    }

    /// The points of a channel's line: seconds since "&Read" and mV.
    std::vector<std::pair<double, double>> Line(int channel) const {
        std::vector<std::pair<double, double>> points;
        for (const QCPGraphData& point :
             *Find<ReadingTrend>(*form, "pltTrend").graph(channel)->data())
            points.emplace_back(std::round(point.key * 10) / 10, std::round(point.value * 10) / 10);
        return points;
    }

    bool IsShown() const { return Find<ReadingTrend>(*form, "pltTrend").isVisible(); }
    std::string Text(const QString& name) const { return TextOf(*form, name); }

    std::unique_ptr<QDialog> form;
};

} // namespace

TEST_F(CalibrationTrend, The_readings_of_a_point_run_from_Read_on) {
    OpenSingle(firstCa);
    EXPECT_FALSE(IsShown()) << "nothing has been read";
    Type(*form, "txtEntry_0", "10");
    Click(*form, "cmdSys", frmCalib::mainButton);
    ReadingsArrive({100, 101.5, 102});
    EXPECT_TRUE(IsShown());
    ASSERT_EQ(Line(firstCa).size(), 3U);
    EXPECT_EQ(Line(firstCa)[1], (std::pair{3.0, 101.5}));
    EXPECT_TRUE(Line(secondCa).empty()) << "another channel's reading";
    EXPECT_EQ(Find<ReadingTrend>(*form, "pltTrend").accessibleDescription(),
              "channel 2 from 100.0 to 102.0 mV");
}

TEST_F(CalibrationTrend, A_recorded_points_trend_stays_until_the_next_is_read) {
    OpenSingle(firstCa);
    Type(*form, "txtEntry_0", "10");
    Click(*form, "cmdSys", frmCalib::mainButton);
    ReadingsArrive({100, 101});
    Click(*form, "cmdSys", frmCalib::mainButton);
    EXPECT_EQ(Line(firstCa).size(), 2U);
    Type(*form, "txtEntry_1", "100");
    Click(*form, "cmdSys", frmCalib::mainButton);
    EXPECT_TRUE(Line(firstCa).empty());
    ReadingsArrive({130});
    EXPECT_EQ(Line(firstCa).size(), 1U);
}

TEST_F(CalibrationTrend, Only_the_last_ten_minutes_are_kept) {
    OpenSingle(firstCa);
    Type(*form, "txtEntry_0", "10");
    Click(*form, "cmdSys", frmCalib::mainButton);
    ReadingsArrive({100});
    platform.clock.monotonic += std::chrono::minutes(9);
    ReadingsArrive({101});
    EXPECT_EQ(Line(firstCa).size(), 2U);
    platform.clock.monotonic += std::chrono::minutes(9);
    ReadingsArrive({102});
    ASSERT_EQ(Line(firstCa).size(), 2U);
    EXPECT_EQ(Line(firstCa)[0].second, 101);
}

TEST_F(CalibrationTrend, Each_channel_has_a_line_in_a_simultaneous_calibration) {
    OpenSimultaneous();
    Type(*form, "txtDat_0", "1");
    Click(*form, "cmdSys", SimultCalib::mainButton);
    ReadingsArrive({100, 101});
    EXPECT_EQ(Line(firstCa).size(), 2U);
    EXPECT_EQ(Line(secondCa).size(), 2U);
    EXPECT_TRUE(Line(pHChannel).empty());
    const auto& plot = Find<ReadingTrend>(*form, "pltTrend");
    EXPECT_NE(plot.graph(firstCa)->pen().color(), plot.graph(secondCa)->pen().color());
}

TEST_F(CalibrationTrend, A_new_averaging_number_begins_the_trend_anew) {
    OpenSimultaneous();
    Type(*form, "txtDat_0", "1");
    Click(*form, "cmdSys", SimultCalib::mainButton);
    ReadingsArrive({100, 101});
    platform.dialogs.ExpectInput("Input new averaging number for the calibration.", "1", "2");
    Click(*form, "cmdSys", SimultCalib::averagingButton);
    ReadingsArrive({102});
    EXPECT_EQ(Line(firstCa).size(), 1U);
}

TEST_F(CalibrationTrend, It_folds_away_where_the_points_need_the_room) {
    OpenSingle(firstCa);
    Type(*form, "txtEntry_0", "10");
    Click(*form, "cmdSys", frmCalib::mainButton);
    ReadingsArrive({100});
    form->resize(512, 364); // 1024x768 at 200 %, less a desktop's panel
    Settle();
    EXPECT_FALSE(IsShown());
    form->resize(680, 560);
    Settle();
    EXPECT_TRUE(IsShown());
    Click(*form, "cmdSys", frmCalib::mainButton);
    form->resize(680, 400);
    Settle();
    EXPECT_TRUE(IsShown());
    Pick(*form, "cboCalibPtrs", "6");
    Settle();
    EXPECT_FALSE(IsShown()) << "six rows";
}

TEST_F(CalibrationTrend, The_forms_come_to_rest_in_every_size_while_it_takes_what_room_is_left) {
    OpenSingle(firstCa);
    Type(*form, "txtEntry_0", "10");
    Click(*form, "cmdSys", frmCalib::mainButton);
    ReadingsArrive({100});
    ExpectRestsInEverySize(*form);
    OpenSimultaneous();
    Type(*form, "txtDat_0", "1");
    Click(*form, "cmdSys", SimultCalib::mainButton);
    ReadingsArrive({100});
    ExpectRestsInEverySize(*form);
}

TEST_F(CalibrationTrend, The_temperature_of_the_channels_sensor_stands_below_its_points) {
    mWinInit::ChannelSetup[firstCa].TempSensor = 1;
    mWinInit::ChannelSetup[firstCa].Electrode = "H (pH)"; // linear between the rows
    OpenSingle(firstCa);
    EXPECT_EQ(Text("lblTemperature"), "");
    Type(*form, "txtEntry_0", "7");
    Click(*form, "cmdSys", frmCalib::mainButton);
    ReadingsArrive({0}, 250);
    EXPECT_EQ(Text("lblTemperature"), "Temperature: 25.0 °C");
    Click(*form, "cmdSys", frmCalib::mainButton);
    EXPECT_EQ(Text("lblTemperature"), "") << "no longer read";
}

TEST_F(CalibrationTrend, A_channel_without_a_sensor_shows_no_temperature) {
    OpenSingle(firstCa);
    Type(*form, "txtEntry_0", "7");
    Click(*form, "cmdSys", frmCalib::mainButton);
    ReadingsArrive({0});
    EXPECT_EQ(Text("lblTemperature"), "");
}

TEST_F(CalibrationTrend, Each_channel_shows_its_own_sensor_in_a_simultaneous_calibration) {
    mWinInit::ChannelSetup[firstCa].TempSensor = 1;
    OpenSimultaneous();
    Type(*form, "txtDat_0", "1");
    Click(*form, "cmdSys", SimultCalib::mainButton);
    ReadingsArrive({100}, 300);
    EXPECT_EQ(Text("lblTemp_1"), "30.0");
    EXPECT_EQ(Text("lblTemp_2"), "");
    EXPECT_TRUE(Find<QLabel>(*form, "lblTempCaption").isVisible());
}

TEST_F(CalibrationTrend, A_temperature_that_its_table_does_not_give_is_marked) {
    mWinInit::ChannelSetup[firstCa].TempSensor = 1;
    mWinInit::TempSensor[0].Temperature = {0, 30}; // no logarithm of 0 on the scale of ions
    OpenSimultaneous();
    Type(*form, "txtDat_0", "1");
    Click(*form, "cmdSys", SimultCalib::mainButton);
    ReadingsArrive({100}, 200);
    EXPECT_EQ(Text("lblTemp_1"), "Error");
    EXPECT_EQ(Text("lblSig_1"), "100.0");
}

TEST_F(CalibrationTrend, The_drift_stands_beside_a_reading_that_has_not_settled) {
    OpenSingle(firstCa);
    Type(*form, "txtEntry_0", "10");
    Click(*form, "cmdSys", frmCalib::mainButton);
    ReadingsArrive({100, 101, 102});
    EXPECT_EQ(Text("lblMark_0"), "drifting") << "not known after three seconds";
    ReadingsArrive({103, 104}); // 1 mV in 1.5 s, and in the time that events take on this clock
    const std::string drift = Text("lblMark_0");
    EXPECT_NEAR(NumberText::Leading(drift), 40, 0.5) << drift;
    EXPECT_TRUE(drift.starts_with('+') && drift.ends_with(" mV/min")) << drift;
}

TEST_F(CalibrationTrend, mV_stands_over_each_column_of_readings) {
    OpenSimultaneous();
    EXPECT_EQ(Text("lblHead_1"), "Channel 2\nmV");
    OpenSingle(firstCa);
    EXPECT_EQ(Text("lblInfo_4"), "mV");
}
