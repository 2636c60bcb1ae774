#include "screens/report/ReportScreen.h"

#include "screens/frmSrch/frmSrch.h"

#include <QComboBox>
#include <QLineEdit>
#include <QTest>

namespace {

class SearchDialog : public ReportScreen {
protected:
    void Open(int records = 20) {
        MeasurementText text;
        text.comment = [](int record) { return "note " + std::to_string(record); };
        View(text.File(records));
        dialog = std::make_unique<frmSrch>(form->File());
        Show(*dialog);
    }
    std::unique_ptr<frmSrch> dialog;

    void Search(const QString& number) {
        Type(*dialog, "txtEntry", number);
        QTest::keyClick(&Find<QLineEdit>(*dialog, "txtEntry"), Qt::Key_Return);
    }
    QString Label(const char* name) { return Find<QLabel>(*dialog, name).text(); }
    QComboBox& Box(const char* name) { return Find<QComboBox>(*dialog, name); }
    static std::vector<QString> Entries(const QComboBox& box) {
        std::vector<QString> texts;
        for (int i = 0; i < box.count(); ++i)
            texts.push_back(box.itemText(i));
        return texts;
    }
};

} // namespace

TEST_F(SearchDialog, A_record_is_found_by_its_number) {
    Open();
    Search("12");
    EXPECT_EQ(Label("lblStatus"), "Ready");
    EXPECT_EQ(Label("lblRtn"), "14:05:33 07.Mar.2003    12.0 mV");
    EXPECT_EQ(Find<QLineEdit>(*dialog, "txtComment").text(), "note 12");
    EXPECT_EQ(Entries(Box("cboChan")),
              (std::vector<QString>{"Chan. 1", "Chan. 2", "Chan. 3", "Temp. 1", "Temp. 2"}));
    EXPECT_EQ(Entries(Box("cboUnit")), (std::vector<QString>{"mV", "ppm", "mol/l"}));
    EXPECT_TRUE(Box("cboChan").isEnabled());
    EXPECT_EQ(Find<QLineEdit>(*dialog, "txtEntry").selectedText(), "12");
}

TEST_F(SearchDialog, Channel_and_unit_choose_the_value) {
    Open();
    Search("12");
    Pick(*dialog, "cboUnit", "mol/l");
    EXPECT_EQ(Label("lblRtn"), "14:05:33 07.Mar.2003    5.00E-01 mol/l");
    Pick(*dialog, "cboChan", "Chan. 2");
    EXPECT_EQ(Entries(Box("cboUnit")), (std::vector<QString>{"mV", "pH"}));
    Pick(*dialog, "cboChan", "Temp. 2");
    EXPECT_EQ(Label("lblRtn"), QString::fromUtf8("14:05:33 07.Mar.2003    1.5 °C"));
}

TEST_F(SearchDialog, A_number_that_is_not_there_is_not_found_and_the_dialog_stays_usable) {
    Open();
    Search("12");
    Search("21");
    EXPECT_EQ(Label("lblStatus"), "Not Found");
    EXPECT_EQ(Label("lblRtn"), "");
    EXPECT_EQ(Find<QLineEdit>(*dialog, "txtComment").text(), "");
    EXPECT_EQ(Box("cboUnit").count(), 0);
    Search("3");
    EXPECT_EQ(Label("lblStatus"), "Ready");
}

TEST_F(SearchDialog, Only_digits_are_taken) {
    Open();
    Type(*dialog, "txtEntry", "1a-2 ");
    EXPECT_EQ(Find<QLineEdit>(*dialog, "txtEntry").text(), "12");
}

TEST_F(SearchDialog, A_changed_entry_locks_the_choice_until_a_search_succeeds) {
    Open();
    Search("12");
    Type(*dialog, "txtEntry", "99");
    EXPECT_FALSE(Box("cboChan").isEnabled());
    EXPECT_FALSE(Box("cboUnit").isEnabled());
    QTest::keyClick(&Find<QLineEdit>(*dialog, "txtEntry"), Qt::Key_Return);
    EXPECT_FALSE(Box("cboChan").isEnabled());
}

TEST_F(SearchDialog, What_a_tool_sets_has_the_same_effect_as_by_hand) {
    Open();
    Search("12");
    Box("cboUnit").setCurrentIndex(2);
    EXPECT_EQ(Label("lblRtn"), "14:05:33 07.Mar.2003    5.00E-01 mol/l");
    Box("cboChan").setCurrentIndex(1);
    EXPECT_EQ(Entries(Box("cboUnit")), (std::vector<QString>{"mV", "pH"}));
    Find<QLineEdit>(*dialog, "txtEntry").setText("99");
    EXPECT_FALSE(Box("cboChan").isEnabled());
    EXPECT_FALSE(Box("cboUnit").isEnabled());
}

TEST_F(SearchDialog, Every_control_has_a_name_and_no_mnemonic_is_shared) {
    Open();
    ExpectFitsAtDoubleScale(*dialog);
    EXPECT_EQ(ControlsWithoutName(*dialog), std::vector<std::string>{});
    EXPECT_EQ(SharedMnemonics(*dialog), std::vector<std::string>{});
}
