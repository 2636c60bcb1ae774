#include "screens/report/ReportScreen.h"

#include "screens/frmCommon/frmCommon.h"

#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

namespace {

class SelectionDialog : public ReportScreen {
protected:
    void Open() {
        shown = form->Shown();
        dialog = std::make_unique<frmCommon>(form->File(), shown, Graph());
        dialog->Redraw = [this] { ++redraws; };
        Show(*dialog);
    }
    Mreport::ShownGraph shown; ///< what the dialog changes
    std::unique_ptr<frmCommon> dialog;
    int redraws = 0;

    QCheckBox& Box(std::size_t index) { return Element<QCheckBox>(*dialog, "chkChan", index); }
    QString Heading() { return Find<QLabel>(*dialog, "lblChan_8").text(); }
};

} // namespace

TEST_F(SelectionDialog, It_shows_the_current_selection) {
    View(MeasurementText().File(3));
    Open();
    EXPECT_EQ(IndicesOf(*dialog, "optData"), (std::vector<int>{0, 1, 2, 3, 4}));
    EXPECT_EQ(IndicesOf(*dialog, "chkChan"), (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(IndicesOf(*dialog, "cmdBtn"), (std::vector<int>{0, 1}));
    EXPECT_TRUE(
        Element<QRadioButton>(*dialog, "optData", static_cast<int>(Quantity::mV)).isChecked());
    EXPECT_EQ(Heading(), "Channels");
    EXPECT_TRUE(Box(0).isChecked());
    EXPECT_TRUE(Box(3).isVisible());
    EXPECT_FALSE(Box(3).isEnabled()) << "the electrode is None";
    EXPECT_FALSE(Box(4).isVisible()) << "a file of four channels";
}

TEST_F(SelectionDialog, Degrees_turn_the_boxes_into_sensors) {
    View(MeasurementText().File(3));
    Open();
    Click(*dialog, "optData", static_cast<int>(Quantity::celsius));
    EXPECT_EQ(Heading(), "Temp. Sensors");
    EXPECT_TRUE(Box(0).isEnabled() && Box(0).isChecked());
    EXPECT_TRUE(Box(1).isEnabled());
    EXPECT_FALSE(Box(2).isEnabled());
    Click(*dialog, "chkChan_1");
    Click(*dialog, "cmdBtn", frmCommon::acceptButton);
    EXPECT_EQ(redraws, 1);
    EXPECT_EQ(Graph().NumSets(), 1);
    EXPECT_EQ(Graph().LeftTitle(), "\xB0"
                                   "C");
    EXPECT_EQ(Mreport::Series(form->File(), shown), std::vector<int>{1});
    EXPECT_FALSE(dialog->isVisible());
}

TEST_F(SelectionDialog, A_click_on_the_chosen_unit_keeps_the_check_marks) {
    View(MeasurementText().File(3));
    Open();
    Click(*dialog, "chkChan_0");
    Click(*dialog, "optData", static_cast<int>(Quantity::mV));
    EXPECT_FALSE(Box(0).isChecked());
}

TEST_F(SelectionDialog, What_a_tool_sets_has_the_same_effect_as_by_hand) {
    View(MeasurementText().File(3));
    Open();
    Element<QRadioButton>(*dialog, "optData", static_cast<int>(Quantity::celsius)).setChecked(true);
    EXPECT_EQ(Heading(), "Temp. Sensors");
    Box(1).setChecked(false);
    Click(*dialog, "cmdBtn", frmCommon::acceptButton);
    EXPECT_EQ(shown.unitCode, Quantity::celsius);
    EXPECT_EQ(Mreport::Series(form->File(), shown), std::vector<int>{1});
}

TEST_F(SelectionDialog, Cancel_changes_nothing) {
    View(MeasurementText().File(3));
    const auto sets = Graph().NumSets();
    Open();
    Click(*dialog, "optData", static_cast<int>(Quantity::pH));
    Click(*dialog, "cmdBtn", frmCommon::cancelButton);
    EXPECT_EQ(shown.unitCode, Quantity::mV);
    EXPECT_EQ(Graph().NumSets(), sets);
    EXPECT_EQ(redraws, 0);
}

TEST_F(SelectionDialog, Too_many_points_are_refused_and_the_dialog_stays) {
    View(MeasurementText().File(3));
    Open();
    Graph().SetNumPoints(500); // three boxes are checked
    platform.dialogs.ExpectMessage(
        "Too many points to draw them in this version software (Max 1500 points)", exclamation);
    Click(*dialog, "cmdBtn", frmCommon::acceptButton);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(redraws, 0);
    Graph().SetNumPoints(499);
    Click(*dialog, "cmdBtn", frmCommon::acceptButton);
    EXPECT_EQ(redraws, 1);
}

TEST_F(SelectionDialog, The_busy_sign_turns_through_its_cycle_and_leaves_other_texts) {
    View(MeasurementText().File(3));
    Open();
    auto& sign = Find<QLabel>(*dialog, "Label1");
    dialog->Redraw = [&] {
        std::vector<QString> seen = {sign.text()};
        for (int i = 0; i < 4; ++i) {
            Tick(*dialog, "Timer1");
            seen.push_back(sign.text());
        }
        EXPECT_EQ(seen, (std::vector<QString>{"/", "--", "\\", "|", "/"}));
        sign.setText("busy");
        Tick(*dialog, "Timer1");
        EXPECT_EQ(sign.text(), "busy");
        EXPECT_FALSE(Element<QPushButton>(*dialog, "cmdBtn", frmCommon::acceptButton).isEnabled());
        ++redraws;
    };
    Click(*dialog, "cmdBtn", frmCommon::acceptButton);
    EXPECT_EQ(redraws, 1);
}

TEST_F(SelectionDialog, Every_control_has_a_name_and_no_mnemonic_is_shared) {
    View(MeasurementText().File(3));
    Open();
    ExpectFitsAtDoubleScale(*dialog);
    EXPECT_EQ(ControlsWithoutName(*dialog), std::vector<std::string>{});
    EXPECT_EQ(SharedMnemonics(*dialog), std::vector<std::string>{});
}
