#include "screens/frmLimits/frmLimits.h"

#include "screens/support/ScreenTest.h"
#include "settings/StoredLimits.h"
#include "settings/mWinInit.h"

#include <QComboBox>
#include <QPushButton>

namespace {

const QString degrees = QString("%1C").arg(QChar(0xB0));

/// Four channels: pH with a sensor, Ca, Redox, None.
class LimitsForm : public ScreenTest {
protected:
    LimitsForm() {
        mWinInit::Reset(4);
        mWinInit::ChannelSetup[0].Electrode = "H (pH)";
        mWinInit::ChannelSetup[0].TempSensor = 1;
        mWinInit::ChannelSetup[1].Electrode = "Ca";
        mWinInit::ChannelSetup[2].Electrode = "Redox";
        mWinInit::ChannelSetup[3].Electrode = "None";
    }

    void Open() {
        form = std::make_unique<frmLimits>();
        Show(*form);
    }
    QStringList Units(std::size_t channel) {
        auto& box = Element<QComboBox>(*form, "cboLimit", channel);
        QStringList units;
        for (int i = 0; i < box.count(); ++i)
            units += box.itemText(i);
        return units;
    }
    QString TextOf(const QString& name) { return Find<QLineEdit>(*form, name).text(); }

    std::unique_ptr<frmLimits> form;
};

} // namespace

TEST_F(LimitsForm, Each_channel_offers_the_units_that_it_shows) {
    Open();
    EXPECT_EQ(Units(0), (QStringList{"mV", "pH", degrees}));
    EXPECT_EQ(Units(1), (QStringList{"mV", "ppm", "mol/l"}));
    EXPECT_EQ(Units(2), QStringList("mV"));
    EXPECT_TRUE(Find<QLineEdit>(*form, "txtLow_3").isVisible());
    EXPECT_FALSE(Find<QLineEdit>(*form, "txtLow_4").isVisible()) << "four channels";
    EXPECT_EQ(IndicesOf(*form, "txtHigh"), (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7}));
}

TEST_F(LimitsForm, What_is_accepted_is_stored_and_shown_again) {
    Open();
    Type(*form, "txtLow_1", "1");
    Type(*form, "txtHigh_1", " 100 ");
    Pick(*form, "cboLimit_1", "ppm");
    Type(*form, "txtHigh_0", "8.5");
    Pick(*form, "cboLimit_0", "pH");
    Click(*form, "cmdBtn_0");
    EXPECT_EQ(form->result(), QDialog::Accepted);
    ChannelLimits expected;
    expected[0] = {std::nullopt, 8.5F, Quantity::pH};
    expected[1] = {1.0F, 100.0F, Quantity::ppm};
    EXPECT_EQ(form->Accepted(), expected);
    EXPECT_EQ(mWinInit::LoadLimits(), expected);
    Open();
    EXPECT_EQ(TextOf("txtLow_1"), "1");
    EXPECT_EQ(TextOf("txtHigh_1"), "100");
    EXPECT_EQ(Find<QComboBox>(*form, "cboLimit_1").currentText(), "ppm");
    EXPECT_EQ(TextOf("txtLow_0"), "");
}

TEST_F(LimitsForm, Cancelled_it_stores_nothing) {
    Open();
    Type(*form, "txtLow_1", "1");
    Click(*form, "cmdBtn_1");
    EXPECT_EQ(form->result(), QDialog::Rejected);
    EXPECT_EQ(mWinInit::LoadLimits(), ChannelLimits());
}

TEST_F(LimitsForm, A_text_that_is_no_number_is_refused_and_stays_to_be_mended) {
    Open();
    Type(*form, "txtHigh_2", "0,5");
    platform.dialogs.ExpectMessage("Channel 3: \"0,5\" is no number.", information);
    Click(*form, "cmdBtn_0");
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(TextOf("txtHigh_2"), "0,5");
    EXPECT_TRUE(Find<QLineEdit>(*form, "txtHigh_2").hasFocus());
    EXPECT_EQ(mWinInit::LoadLimits(), ChannelLimits());
}

TEST_F(LimitsForm, A_low_limit_above_the_high_one_is_refused) {
    Open();
    Type(*form, "txtLow_0", "9");
    Type(*form, "txtHigh_0", "8");
    platform.dialogs.ExpectMessage("Channel 1: the low limit is above the high one.", information);
    Click(*form, "cmdBtn_0");
    EXPECT_TRUE(form->isVisible());
    EXPECT_TRUE(Find<QLineEdit>(*form, "txtLow_0").hasFocus());
}

TEST_F(LimitsForm, Limits_of_a_channel_that_is_hidden_stay) {
    ChannelLimits stored;
    stored[6] = {1.0F, 2.0F, Quantity::mV};
    mWinInit::SaveLimits(stored);
    Open();
    Click(*form, "cmdBtn_0");
    EXPECT_EQ(mWinInit::LoadLimits(), stored);
}

TEST_F(LimitsForm, A_unit_that_the_electrode_no_longer_gives_is_kept_until_changed) {
    ChannelLimits stored;
    stored[2] = {1.0F, 2.0F, Quantity::ppm};
    mWinInit::SaveLimits(stored);
    Open();
    EXPECT_EQ(Units(2), (QStringList{"mV", "ppm"}));
    Click(*form, "cmdBtn_0");
    EXPECT_EQ(mWinInit::LoadLimits(), stored);
}

TEST_F(LimitsForm, A_settings_file_that_cannot_be_written_is_told) {
    std::filesystem::create_directories(platform.SettingsFile());
    Open();
    Type(*form, "txtLow_1", "1");
    platform.dialogs.ExpectAnyMessage(exclamation);
    Click(*form, "cmdBtn_0");
    EXPECT_EQ(form->Accepted()[1].low, 1.0F) << "it holds for this run all the same";
}

TEST_F(LimitsForm, It_can_be_used_by_keyboard_and_on_a_small_screen) {
    Open();
    EXPECT_EQ(ControlsWithoutName(*form), std::vector<std::string>());
    EXPECT_EQ(SharedMnemonics(*form), std::vector<std::string>());
    ExpectFitsAtDoubleScale(*form);
    ExpectRestsInEverySize(*form);
}
