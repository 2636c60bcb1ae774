#include "files/HeaderDifference.h"

#include "files/SetUpRun.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

namespace {

using mWinInit::Calibration;
using mWinInit::ChannelSetup;

class HeaderDifference : public testing::Test {
protected:
    HeaderDifference() {
        SetUpRun();
        written = FileOpr::RecordsInForce();
    }
    std::string Differences() const {
        return FileOpr::HeaderDifferences(written, FileOpr::RecordsInForce(), 4);
    }

    fake::Platform platform;
    FileOpr::HeaderRecords written;
};

} // namespace

TEST_F(HeaderDifference, Unchanged_records_differ_in_nothing) {
    EXPECT_EQ(Differences(), "");
    EXPECT_EQ(FileOpr::HeaderNotice("", "run.4ch"), "");
}

TEST_F(HeaderDifference, What_the_header_tells_otherwise_is_named_by_channel) {
    mWinInit::ProjectInfo.ProjectName = "Well 8";
    ChannelSetup[0].TempSensor = 2;
    ChannelSetup[1].Electrode = "K";
    ChannelSetup[1].SerialNo = "K-1";
    ChannelSetup[2].RefSerialNo = "R-9";
    EXPECT_EQ(Differences(), "project name; channel 1: temperature sensor; channel 2: electrode, "
                             "serial number; channel 3: reference electrode");
    mWinInit::ProjectInfo.Experimentator = "B. Nalyst";
    EXPECT_TRUE(Differences().starts_with("project name, analyst; "));
}

TEST_F(HeaderDifference, Another_type_of_reference_is_another_reference_electrode) {
    ChannelSetup[3].RefType = "Calomel";
    EXPECT_EQ(Differences(), "channel 4: reference electrode");
}

TEST_F(HeaderDifference, A_calibration_differs_by_its_date_unit_or_points) {
    for (const auto& change : std::initializer_list<void (*)(CalibrationRecord&)>{
             [](CalibrationRecord& record) { record.CalibrationDate = "15:00 07.Mar.2003"; },
             [](CalibrationRecord& record) { record.StdUnit = 0; },
             [](CalibrationRecord& record) { record.PointCount = 2; },
             [](CalibrationRecord& record) { record.Standard[2] = 0.02F; },
             [](CalibrationRecord& record) { record.CaliData[0] = -55.4F; }}) {
        SetUpRun();
        change(Calibration[1]);
        EXPECT_EQ(Differences(), "channel 2: calibration");
    }
}

TEST_F(HeaderDifference, A_calibration_of_one_point_differs_by_it) {
    Calibration[1].PointCount = 1;
    written = FileOpr::RecordsInForce();
    Calibration[1].CaliData[0] = -55.4F;
    EXPECT_EQ(Differences(), "channel 2: calibration");
}

TEST_F(HeaderDifference, What_the_header_does_not_tell_is_no_difference) {
    ChannelSetup[2].TempSensor = -1;              // none, like 0
    ChannelSetup[1].MolarMass = 39;               // in no header
    Calibration[1].Standard[5] = 1;               // behind the points
    mWinInit::ProjectInfo.ExperimentDate = "now"; // in no header
    ChannelSetup[4].Electrode = "Na";             // beyond the four channels
    EXPECT_EQ(Differences(), "");
}

TEST_F(HeaderDifference, The_notice_names_the_file) {
    EXPECT_EQ(FileOpr::HeaderNotice("channel 2: calibration", "spring-1.4ch"),
              "Changed since the header of spring-1.4ch was written: channel 2: calibration");
}
