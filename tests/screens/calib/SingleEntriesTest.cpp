#include "screens/calib/SingleCalibration.h"

#include <QComboBox>

// ---- Units -----------------------------------------------------------------------------------

TEST_F(SingleCalibration, Another_unit_converts_what_is_typed_and_leaves_the_rest) {
    Open(firstCa);
    Pick(*form, "cboCalibPtrs", "4");
    Type(*form, "txtEntry_0", "400.78");
    Type(*form, "txtEntry_1", "ten");
    Pick(*form, "cboUnits", "Concentration (mol/l)");
    EXPECT_EQ(Text("txtEntry_0"), "1.00E-02");
    EXPECT_EQ(Text("txtEntry_1"), "ten");
    EXPECT_EQ(Text("txtEntry_2"), "< Type mol/l here >");
    EXPECT_EQ(Stored(firstCa).StdUnit, 1.0F);
    Pick(*form, "cboUnits", "Concentration (ppm)");
    EXPECT_EQ(Text("txtEntry_0"), "400.8");
    EXPECT_EQ(Text("txtEntry_2"), "< Type ppm here >");
    EXPECT_EQ(Stored(firstCa).StdUnit, 0.0F);
}

TEST_F(SingleCalibration, Without_a_molar_mass_typed_standards_keep_their_unit) {
    Open(clChannel);
    Type(*form, "txtEntry_0", "10");
    platform.dialogs.ExpectMessage("The molar mass of Cl is not known, so the standards cannot be "
                                   "converted.\nPlease enter it on the setup page first.",
                                   exclamation);
    Pick(*form, "cboUnits", "Concentration (mol/l)");
    EXPECT_EQ(Find<QComboBox>(*form, "cboUnits").currentIndex(), 0);
    EXPECT_EQ(Text("txtEntry_0"), "10");
    EXPECT_EQ(Stored(clChannel).StdUnit, 0.0F);
}

TEST_F(SingleCalibration, A_standard_too_large_for_the_other_unit_keeps_unit_and_text) {
    Open(firstCa);
    Pick(*form, "cboUnits", "Concentration (mol/l)");
    Type(*form, "txtEntry_0", "1E37");
    platform.dialogs.ExpectAnyMessage(critical);
    Pick(*form, "cboUnits", "Concentration (ppm)");
    EXPECT_EQ(Find<QComboBox>(*form, "cboUnits").currentIndex(), 1);
    EXPECT_EQ(Text("txtEntry_0"), "1E37");
    EXPECT_EQ(Stored(firstCa).StdUnit, 1.0F);
}

TEST_F(SingleCalibration, Without_a_molar_mass_the_unit_can_be_chosen_before_typing) {
    Open(clChannel);
    Pick(*form, "cboUnits", "Concentration (mol/l)");
    EXPECT_EQ(Text("txtEntry_0"), "< Type mol/l here >");
    EXPECT_EQ(Stored(clChannel).StdUnit, 1.0F);
}

// ---- Set by an assistive tool ----------------------------------------------------------------

TEST_F(SingleCalibration, A_standard_that_a_tool_sets_is_that_of_the_point_to_read) {
    Open(firstCa);
    Element<QLineEdit>(*form, "txtEntry", 1).setText("100");
    Click(*form, "cmdSys", frmCalib::mainButton);
    EXPECT_EQ(MainCaption(), "&Record");
    EXPECT_EQ(Text("lblReading_1"), "0.0");
    EXPECT_EQ(Text("lblReading_0"), "");
    Element<QLineEdit>(*form, "txtEntry", 0).setText("10");
    ReadingArrives(*form, 12.3);
    EXPECT_EQ(Text("lblReading_1"), "12.3") << "the point being read stays";
    GiveUp();
}

TEST_F(SingleCalibration, A_standard_that_a_tool_empties_asks_again) {
    Open(firstCa);
    Element<QLineEdit>(*form, "txtEntry", 1).setText("100");
    Element<QLineEdit>(*form, "txtEntry", 1).setText("");
    EXPECT_EQ(Text("txtEntry_1"), "< Type ppm here >");
}

TEST_F(SingleCalibration, A_hidden_field_that_a_tool_sets_changes_no_point) {
    Open(firstCa);
    RecordPoint(0, "1", 10);
    Element<QLineEdit>(*form, "txtEntry", 0).setFocus();
    Element<QLineEdit>(*form, "txtEntry", 5).setText("100");
    Click(*form, "cmdSys", frmCalib::mainButton);
    EXPECT_EQ(Text("lblReading_0"), "0.0");
    GiveUp();
}

TEST_F(SingleCalibration, A_standard_with_a_character_that_no_file_can_hold_is_no_number) {
    Open(firstCa);
    Element<QLineEdit>(*form, "txtEntry", 0).setText(QString(QChar(0x0663))); // an Arabic 3
    platform.dialogs.ExpectMessage("Input not correct.", exclamation);
    Click(*form, "cmdSys", frmCalib::mainButton);
    EXPECT_EQ(MainCaption(), "&Read");
}

TEST_F(SingleCalibration, Lists_that_a_tool_changes_while_a_point_is_read_show_what_is_in_force) {
    Open(firstCa);
    Pick(*form, "cboCalibPtrs", "3");
    ReadPoint(2, "100", 12.3);
    Find<QComboBox>(*form, "cboCalibPtrs").setCurrentIndex(0);
    Find<QComboBox>(*form, "cboUnits").setCurrentIndex(1);
    EXPECT_EQ(Find<QComboBox>(*form, "cboCalibPtrs").currentText(), "3");
    EXPECT_EQ(Find<QComboBox>(*form, "cboUnits").currentIndex(), 0);
    EXPECT_EQ(Text("txtEntry_2"), "100");
    EXPECT_EQ(Text("lblReading_2"), "12.3");
    GiveUp();
}
