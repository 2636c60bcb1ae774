#include "screens/frmMain/MainScreenTest.h"

#include "settings/mWinInit.h"

#include <QComboBox>
#include <QLineEdit>

namespace {

const std::string hardwareMessage =
    "The hardware properties have not been completed yet. Please complete it before activating "
    "the measurement.";
const std::string projectMessage =
    "The project details have not been completely filled yet. Please complete it before "
    "activating the measurement.";
const std::string boxesMessage = "Please complete all appropriate boxes for the selected "
                                 "electrode before activating measurement";
const std::string selectionMessage =
    "There has not channel being selected, please at least select one of those.";

std::string CalibrationMessage(std::size_t channel) {
    return "The electrode in channel " + std::to_string(channel) +
           " has not been calibrated.\nYou must either calibrate it or de-select it before "
           "continuing to measure.";
}

class SetupChecksTest : public MainScreenTest {
protected:
    /// "&Measure >" is refused with this message and the focus is on this control.
    void ExpectRefusal(const std::string& message, const char* focus) {
        platform.dialogs.ExpectMessage(message, information);
        Click(*form, "cmdPage", frmMain::switchPage);
        EXPECT_EQ(form->ShownPage(), frmMain::Page::setup);
        EXPECT_EQ(form->windowTitle(), "4-Channel Vantrel: Setup");
        EXPECT_TRUE(Find<QWidget>(*form, focus).hasFocus()) << focus;
    }

    void ExpectPass() {
        Click(*form, "cmdPage", frmMain::switchPage);
        EXPECT_EQ(form->ShownPage(), frmMain::Page::measuring);
    }
};

} // namespace

TEST_F(SetupChecksTest, A_complete_setup_leads_to_the_measuring_page) {
    Open();
    ExpectPass();
    EXPECT_EQ(form->windowTitle(), "4-Channel Vantrel : Data Acquisition");
    EXPECT_EQ(Element<QPushButton>(*form, "cmdPage", frmMain::switchPage).text(), "< &Back");
}

TEST_F(SetupChecksTest, An_averaging_number_must_be_a_whole_number_from_1_to_1000) {
    Open();
    for (const char* text : {"", "0", "1001", "2.5", "abc", "-3", "5x"}) {
        Type(*form, "txtEntry_0", text);
        ExpectRefusal(hardwareMessage, "txtEntry_0");
        EXPECT_EQ(Find<QLineEdit>(*form, "txtEntry_0").text(), text);
    }
    Type(*form, "txtEntry_0", "1000");
    Type(*form, "txtEntry_1", "x");
    ExpectRefusal(hardwareMessage, "txtEntry_1");
}

TEST_F(SetupChecksTest, The_first_invalid_hardware_box_gets_the_focus) {
    Open();
    Type(*form, "txtEntry_0", "x");
    Type(*form, "txtEntry_1", "x");
    ExpectRefusal(hardwareMessage, "txtEntry_0");
}

TEST_F(SetupChecksTest, Project_and_analyst_must_be_filled) {
    Open();
    Type(*form, "txtEntry_2", "   ");
    Type(*form, "txtEntry_3", "");
    ExpectRefusal(projectMessage, "txtEntry_2");
    Type(*form, "txtEntry_2", "River");
    ExpectRefusal(projectMessage, "txtEntry_3");
}

TEST_F(SetupChecksTest, A_project_box_with_its_prompt_is_refused_like_an_empty_one) {
    mWinInit::ProjectInfo.ProjectName = mWinInit::projectPlaceholder;
    Open();
    ExpectRefusal(projectMessage, "txtEntry_2");
    Type(*form, "txtEntry_2", "River");
    Type(*form, "txtEntry_3", "< Please type the name of analyst >");
    ExpectRefusal(projectMessage, "txtEntry_3");
}

TEST_F(SetupChecksTest, A_selected_electrode_needs_a_serial_number) {
    Open();
    Type(*form, "txtEntry_5", "  ");
    ExpectRefusal(boxesMessage, "txtEntry_5");
}

TEST_F(SetupChecksTest, A_selected_channel_needs_an_electrode_of_the_list) {
    mWinInit::ChannelSetup[1].Electrode = "Unobtainium";
    Open();
    EXPECT_TRUE(Find<QCheckBox>(*form, "chkSelect_1").isChecked());
    ExpectRefusal(boxesMessage, "cboEntry_1");
    EXPECT_EQ(mWinInit::ChannelSetup[1].Electrode, "Unobtainium");
}

TEST_F(SetupChecksTest, A_molar_mass_must_be_a_number) {
    Open();
    Type(*form, "txtMolarMass_0", "40,078");
    ExpectRefusal(boxesMessage, "txtMolarMass_0");
    Type(*form, "txtMolarMass_0", "40.1");
    ExpectPass();
    EXPECT_EQ(mWinInit::ChannelSetup[0].MolarMass, 40.1F);
}

TEST_F(SetupChecksTest, An_unselected_channel_need_not_be_complete) {
    Open();
    Type(*form, "txtEntry_5", "");
    Click(*form, "chkSelect_1");
    ExpectPass();
}

TEST_F(SetupChecksTest, One_calibration_point_is_refused_and_two_pass) {
    mWinInit::Calibration[1].PointCount = 1;
    Open();
    ExpectRefusal(CalibrationMessage(2), "cmdCalib_1");
    mWinInit::Calibration[1].PointCount = 2;
    ExpectPass();
}

TEST_F(SetupChecksTest, A_Redox_electrode_needs_calibration_too) {
    mWinInit::Calibration[2].PointCount = 0;
    Open();
    ExpectRefusal(CalibrationMessage(3), "cmdCalib_2");
}

TEST_F(SetupChecksTest, A_selected_channel_without_electrode_needs_neither_serial_nor_calibration) {
    Open();
    Click(*form, "chkSelect_3");
    ExpectPass();
}

TEST_F(SetupChecksTest, At_least_one_channel_must_be_selected) {
    Open();
    for (std::size_t channel = 0; channel < 3; ++channel)
        Click(*form, "chkSelect", channel);
    ExpectRefusal(selectionMessage, "chkSelect_0");
}

TEST_F(SetupChecksTest, The_checks_come_in_their_order) {
    Open();
    for (std::size_t channel = 0; channel < 3; ++channel)
        Click(*form, "chkSelect", channel);
    Type(*form, "txtEntry_2", "");
    Type(*form, "txtEntry_0", "");
    ExpectRefusal(hardwareMessage, "txtEntry_0");
    Type(*form, "txtEntry_0", "2");
    ExpectRefusal(projectMessage, "txtEntry_2");
    Type(*form, "txtEntry_2", "River");
    ExpectRefusal(selectionMessage, "chkSelect_0");
}

TEST_F(SetupChecksTest, Boxes_of_all_channels_are_checked_before_any_calibration) {
    mWinInit::Calibration[0].PointCount = 0;
    Open();
    Type(*form, "txtEntry_6", "");
    ExpectRefusal(boxesMessage, "txtEntry_6");
}

TEST_F(SetupChecksTest, Only_the_channels_of_the_mode_are_checked) {
    mWinInit::ChannelSetup[5].Electrode = "Ca";
    mWinInit::Calibration[5].PointCount = 0;
    Open();
    ExpectPass();
    form.reset();

    mWinInit::HardwareSettings.ChannelCount = 8;
    mWinInit::ChannelSetup[5].SerialNo = "CA-6";
    Open();
    platform.dialogs.ExpectMessage(CalibrationMessage(6), information);
    Click(*form, "cmdPage", frmMain::switchPage);
    EXPECT_EQ(form->windowTitle(), "8-Channel Vantrel: Setup");
}

TEST_F(SetupChecksTest, A_refused_setup_stores_nothing) {
    Open();
    Type(*form, "txtEntry_2", "Lake");
    Type(*form, "txtEntry_4", "CA-99");
    Type(*form, "txtEntry_3", "");
    ExpectRefusal(projectMessage, "txtEntry_3");
    EXPECT_EQ(mWinInit::ProjectInfo.ProjectName, "River water");
    EXPECT_EQ(mWinInit::ChannelSetup[0].SerialNo, "CA-1");
}

TEST_F(SetupChecksTest, An_accepted_setup_is_stored_in_the_working_records) {
    Open();
    Type(*form, "txtEntry_1", "7");
    Type(*form, "txtEntry_2", "Lake");
    Type(*form, "txtEntry_4", "CA-99");
    Pick(*form, "cboEntry_16", "3");
    Find<QComboBox>(*form, "cboEntry_8").setEditText("Home made");
    ExpectPass();
    EXPECT_EQ(mWinInit::HardwareSettings.AveragingForMeasurement, 7);
    EXPECT_EQ(mWinInit::ProjectInfo.ProjectName, "Lake");
    EXPECT_EQ(mWinInit::ChannelSetup[0].SerialNo, "CA-99");
    EXPECT_EQ(mWinInit::ChannelSetup[0].TempSensor, 3);
    EXPECT_EQ(mWinInit::ChannelSetup[0].RefType, "Home made");
}
